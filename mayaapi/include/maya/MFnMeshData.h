#pragma once

#include <maya/MFnData.h>

class MFnMeshData : public MFnData {
public:
  MFnMeshData() = default;
  MFnMeshData(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kMeshData; }
  MObject create(MStatus* status = nullptr);
};
