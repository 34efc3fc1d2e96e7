#pragma once

#include <maya/MDagPath.h>
#include <standin/ArrayOf.h>

class MDagPathArray : public standin::ArrayOf<MDagPath> {
public:
  using standin::ArrayOf<MDagPath>::ArrayOf;
};
