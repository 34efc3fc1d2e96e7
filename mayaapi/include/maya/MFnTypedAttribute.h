#pragma once

#include <maya/MFnAttribute.h>
#include <maya/MFnData.h>

class MFnTypedAttribute : public MFnAttribute {
public:
  MFnTypedAttribute() = default;
  MFnTypedAttribute(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kTypedAttribute; }
  // String, matrix and mesh data are supported; a string default comes from an MFnStringData object.
  MObject create(const MString& fullName, const MString& briefName, MFnData::Type dataType,
                 const MObject& defaultData = MObject::kNullObj, MStatus* status = nullptr);
  MFnData::Type attrType(MStatus* status = nullptr) const;
};
