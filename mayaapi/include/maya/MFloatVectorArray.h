#pragma once

#include <maya/MFloatVector.h>
#include <standin/ArrayOf.h>

class MFloatVectorArray : public standin::ArrayOf<MFloatVector> {
public:
  using standin::ArrayOf<MFloatVector>::ArrayOf;
};
