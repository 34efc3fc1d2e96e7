#pragma once

#include <maya/MPoint.h>
#include <standin/ArrayOf.h>

class MPointArray : public standin::ArrayOf<MPoint> {
public:
  using standin::ArrayOf<MPoint>::ArrayOf;
};
