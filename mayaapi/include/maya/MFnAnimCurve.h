#pragma once

#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>
#include <maya/MTime.h>

class MFnAnimCurve : public MFnDependencyNode {
public:
  enum AnimCurveType { kAnimCurveTA, kAnimCurveTL, kAnimCurveTT, kAnimCurveTU, kAnimCurveUA, kAnimCurveUL,
                       kAnimCurveUT, kAnimCurveUU, kAnimCurveUnknown };
  enum InfinityType { kConstant, kLinear, kCycle = 3, kCycleRelative, kOscillate };
  enum TangentType { kTangentGlobal, kTangentFixed, kTangentLinear, kTangentFlat, kTangentSmooth, kTangentStep,
                     kTangentSlow, kTangentFast, kTangentClamped, kTangentPlateau, kTangentStepNext, kTangentAuto };

  MFnAnimCurve() = default;
  MFnAnimCurve(const MObject& object, MStatus* status = nullptr);
  // The curve that drives the plug.
  MFnAnimCurve(const MPlug& plug, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kAnimCurve; }
  AnimCurveType animCurveType(MStatus* status = nullptr) const;
  unsigned int numKeys(MStatus* status = nullptr) const;
  unsigned int numKeyframes(MStatus* status = nullptr) const { return numKeys(status); }
  MTime time(unsigned int index, MStatus* status = nullptr) const;
  double value(unsigned int index, MStatus* status = nullptr) const;
  TangentType inTangentType(unsigned int index, MStatus* status = nullptr) const;
  TangentType outTangentType(unsigned int index, MStatus* status = nullptr) const;
  MStatus evaluate(const MTime& atTime, double& value) const;
  double evaluate(const MTime& atTime, MStatus* status = nullptr) const;
  bool isStatic(MStatus* status = nullptr) const;
  bool isWeighted(MStatus* status = nullptr) const;
  InfinityType preInfinityType(MStatus* status = nullptr) const;
  InfinityType postInfinityType(MStatus* status = nullptr) const;
  // Inserts a key in time order (replacing one at the same time); global tangents are clamped, Maya's default.
  unsigned int addKey(const MTime& time, double value, TangentType tangentInType = kTangentGlobal,
                      TangentType tangentOutType = kTangentGlobal, MStatus* status = nullptr);
};
