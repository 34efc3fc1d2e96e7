#pragma once

#include <maya/MFnBase.h>
#include <maya/MString.h>

class MFnAttribute : public MFnBase {
public:
  MFnAttribute() = default;
  MFnAttribute(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kAttribute; }
  MString name(MStatus* status = nullptr) const;
  MString shortName(MStatus* status = nullptr) const;
  bool isHidden(MStatus* status = nullptr) const;
  MStatus setHidden(bool hidden);
  bool isArray(MStatus* status = nullptr) const;
  MStatus setArray(bool array);
  bool isDynamic(MStatus* status = nullptr) const;
  // Storage, keyability and the like do not change what the stand-in evaluates; they are accepted and ignored.
  MStatus setKeyable(bool) { return m_object.isNull() ? MS::kFailure : MS::kSuccess; }
  MStatus setStorable(bool) { return m_object.isNull() ? MS::kFailure : MS::kSuccess; }
  MStatus setReadable(bool) { return m_object.isNull() ? MS::kFailure : MS::kSuccess; }
  MStatus setWritable(bool) { return m_object.isNull() ? MS::kFailure : MS::kSuccess; }
};
