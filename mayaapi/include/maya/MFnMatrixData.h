#pragma once

#include <maya/MFnData.h>
#include <maya/MMatrix.h>

class MFnMatrixData : public MFnData {
public:
  MFnMatrixData() = default;
  MFnMatrixData(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kMatrixData; }
  MObject create(const MMatrix& matrix, MStatus* status = nullptr);
  MMatrix matrix(MStatus* status = nullptr) const;
  MStatus set(const MMatrix& matrix);
};
