#pragma once

#include <standin/ArrayOf.h>

class MDoubleArray : public standin::ArrayOf<double> {
public:
  using standin::ArrayOf<double>::ArrayOf;
};
