#pragma once

#include <maya/MFloatPoint.h>
#include <standin/ArrayOf.h>

class MFloatPointArray : public standin::ArrayOf<MFloatPoint> {
public:
  using standin::ArrayOf<MFloatPoint>::ArrayOf;
};
