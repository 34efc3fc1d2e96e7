#pragma once

#include <standin/ArrayOf.h>

class MFloatArray : public standin::ArrayOf<float> {
public:
  using standin::ArrayOf<float>::ArrayOf;
};
