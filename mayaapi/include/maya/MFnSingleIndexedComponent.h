#pragma once

#include <maya/MFnComponent.h>
#include <maya/MIntArray.h>

class MFnSingleIndexedComponent : public MFnComponent {
public:
  MFnSingleIndexedComponent() = default;
  MFnSingleIndexedComponent(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kSingleIndexedComponent; }
  MObject create(MFn::Type componentType, MStatus* status = nullptr);
  MStatus addElement(int element);
  MStatus addElements(const MIntArray& elements);
  int element(int index, MStatus* status = nullptr) const;
  MStatus getElements(MIntArray& elements) const;
  MStatus setCompleteData(int numElements);
};
