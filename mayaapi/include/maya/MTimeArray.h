#pragma once

#include <maya/MTime.h>
#include <standin/ArrayOf.h>

class MTimeArray : public standin::ArrayOf<MTime> {
public:
  using standin::ArrayOf<MTime>::ArrayOf;
};
