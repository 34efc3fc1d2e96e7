#pragma once

#include <maya/MFnBase.h>

class MFnData : public MFnBase {
public:
  enum Type { kInvalid, kNumeric, kPlugin, kPluginGeometry, kString, kMatrix, kStringArray, kDoubleArray, kIntArray,
              kPointArray, kVectorArray, kComponentList, kMesh, kLattice, kNurbsCurve, kNurbsSurface, kSphere,
              kDynArrayAttrs, kDynSweptGeometry, kSubdSurface, kNObject, kAny, kLast };

  MFn::Type type() const override { return MFn::kData; }
};
