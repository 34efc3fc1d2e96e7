#pragma once

#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnGeometryFilter.h>

class MFnSkinCluster : public MFnGeometryFilter {
public:
  MFnSkinCluster() = default;
  MFnSkinCluster(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kSkinClusterFilter; }
  // Influences in the order of their "matrix" indices.
  unsigned int influenceObjects(MDagPathArray& paths, MStatus* status = nullptr) const;
  unsigned int indexForInfluenceObject(const MDagPath& path, MStatus* status = nullptr) const;
  // Weights of the component's vertices (all vertices for a null component), influence by influence per vertex.
  MStatus getWeights(const MDagPath& shape, const MObject& components, MDoubleArray& weights,
                     unsigned int& influenceCount) const;
  MStatus getWeights(const MDagPath& shape, const MObject& components, unsigned int influenceIndex,
                     MDoubleArray& weights) const;
};
