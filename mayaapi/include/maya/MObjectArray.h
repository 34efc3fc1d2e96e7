#pragma once

#include <maya/MObject.h>
#include <standin/ArrayOf.h>

class MObjectArray : public standin::ArrayOf<MObject> {
public:
  using standin::ArrayOf<MObject>::ArrayOf;
};
