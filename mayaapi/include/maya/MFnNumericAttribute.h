#pragma once

#include <maya/MFnAttribute.h>
#include <maya/MFnNumericData.h>

class MFnNumericAttribute : public MFnAttribute {
public:
  MFnNumericAttribute() = default;
  MFnNumericAttribute(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kNumericAttribute; }
  MObject create(const MString& fullName, const MString& briefName, MFnNumericData::Type unitType,
                 double defaultValue = 0.0, MStatus* status = nullptr);
  MObject createColor(const MString& fullName, const MString& briefName, MStatus* status = nullptr);
  MObject createPoint(const MString& fullName, const MString& briefName, MStatus* status = nullptr);
  MFnNumericData::Type unitType(MStatus* status = nullptr) const;
  MStatus getDefault(double& value) const;
  MStatus setDefault(double value);
};
