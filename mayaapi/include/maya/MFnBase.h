#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

class MFnBase {
public:
  virtual ~MFnBase() = default;

  virtual MFn::Type type() const { return MFn::kBase; }
  bool hasObj(const MObject& object) const { return object.hasFn(type()); }
  MObject object(MStatus* status = nullptr) const
  {
    if (status)
      *status = m_object.isNull() ? MS::kFailure : MS::kSuccess;
    return m_object;
  }
  virtual MStatus setObject(const MObject& object)
  {
    if (!object.hasFn(type())) {
      m_object = MObject();
      return MS::kInvalidParameter;
    }
    m_object = object;
    return MS::kSuccess;
  }

protected:
  MObject m_object;
};
