#pragma once

#include <maya/MFnAttribute.h>

class MFnUnitAttribute : public MFnAttribute {
public:
  enum Type { kInvalid, kAngle, kDistance, kTime, kLast };

  MFnUnitAttribute() = default;
  MFnUnitAttribute(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kUnitAttribute; }
  Type unitType(MStatus* status = nullptr) const;
};
