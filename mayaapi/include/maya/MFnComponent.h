#pragma once

#include <maya/MFnBase.h>

class MFnComponent : public MFnBase {
public:
  MFn::Type type() const override { return MFn::kComponent; }
  int elementCount(MStatus* status = nullptr) const;
  bool isEmpty(MStatus* status = nullptr) const { return elementCount(status) == 0; }
  bool isComplete(MStatus* status = nullptr) const;
  MFn::Type componentType(MStatus* status = nullptr) const;
};
