#pragma once

#include <maya/MVector.h>
#include <standin/ArrayOf.h>

class MVectorArray : public standin::ArrayOf<MVector> {
public:
  using standin::ArrayOf<MVector>::ArrayOf;
};
