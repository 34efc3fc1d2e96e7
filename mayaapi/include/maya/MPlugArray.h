#pragma once

#include <maya/MPlug.h>
#include <standin/ArrayOf.h>

class MPlugArray : public standin::ArrayOf<MPlug> {
public:
  using standin::ArrayOf<MPlug>::ArrayOf;
};
