#pragma once

#include <maya/MFnData.h>

class MFnNumericData : public MFnData {
public:
  enum Type { kInvalid, kBoolean, kByte, kChar, kShort, k2Short, k3Short, kLong, kInt = kLong, k2Long, k2Int = k2Long,
              k3Long, k3Int = k3Long, kFloat, k2Float, k3Float, kDouble, k2Double, k3Double, k4Double, kAddr, kLast };

  MFnNumericData() = default;
  MFnNumericData(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kNumericData; }
  MObject create(Type dataType, MStatus* status = nullptr);
  Type numericType(MStatus* status = nullptr) const;
  MStatus getData(float& a, float& b) const;
  MStatus getData(double& a, double& b) const;
  MStatus getData(float& a, float& b, float& c) const;
  MStatus getData(double& a, double& b, double& c) const;
  MStatus getData(int& a, int& b, int& c) const;
  MStatus setData(float a, float b);
  MStatus setData(double a, double b);
  MStatus setData(float a, float b, float c);
  MStatus setData(double a, double b, double c);
};
