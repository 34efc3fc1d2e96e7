#pragma once

#include <maya/MFloatArray.h>
#include <maya/MFnGeometryFilter.h>

class MFnWeightGeometryFilter : public MFnGeometryFilter {
public:
  MFnWeightGeometryFilter() = default;
  MFnWeightGeometryFilter(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kWeightGeometryFilt; }
  MStatus getWeights(unsigned int index, const MObject& components, MFloatArray& weights) const;
  MStatus getWeights(const MDagPath& path, const MObject& components, MFloatArray& weights) const;
};
