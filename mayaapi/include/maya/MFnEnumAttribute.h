#pragma once

#include <maya/MFnAttribute.h>

class MFnEnumAttribute : public MFnAttribute {
public:
  MFnEnumAttribute() = default;
  MFnEnumAttribute(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kEnumAttribute; }
  MObject create(const MString& fullName, const MString& briefName, short defaultValue = 0, MStatus* status = nullptr);
  MStatus addField(const MString& fieldName, short index);
  MString fieldName(short index, MStatus* status = nullptr) const;
  short fieldIndex(const MString& fieldName, MStatus* status = nullptr) const;
  MStatus getMin(short& minValue) const;
  MStatus getMax(short& maxValue) const;
  MStatus getDefault(short& value) const;
};
