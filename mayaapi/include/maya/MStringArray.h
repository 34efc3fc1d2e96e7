#pragma once

#include <maya/MString.h>
#include <standin/ArrayOf.h>

class MStringArray : public standin::ArrayOf<MString> {
public:
  using standin::ArrayOf<MString>::ArrayOf;
};
