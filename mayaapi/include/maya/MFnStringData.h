#pragma once

#include <maya/MFnData.h>
#include <maya/MString.h>

class MFnStringData : public MFnData {
public:
  MFnStringData() = default;
  MFnStringData(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kStringData; }
  MObject create(const MString& text, MStatus* status = nullptr);
  MObject create(MStatus* status = nullptr) { return create(MString(), status); }
  MString string(MStatus* status = nullptr) const;
  MStatus set(const MString& text);
};
