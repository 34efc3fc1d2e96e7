#pragma once

#include <standin/ArrayOf.h>

class MIntArray : public standin::ArrayOf<int> {
public:
  using standin::ArrayOf<int>::ArrayOf;
};
