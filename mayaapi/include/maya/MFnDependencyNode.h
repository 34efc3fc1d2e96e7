#pragma once

#include <maya/MFnBase.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

class MPlugArray;

class MFnDependencyNode : public MFnBase {
public:
  MFnDependencyNode() = default;
  MFnDependencyNode(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kDependencyNode; }
  MObject create(const MString& typeName, MStatus* status = nullptr);
  MObject create(const MString& typeName, const MString& name, MStatus* status = nullptr);
  MString name(MStatus* status = nullptr) const;
  MString setName(const MString& name, bool createNamespace = false, MStatus* status = nullptr);
  MString typeName(MStatus* status = nullptr) const;

  MPlug findPlug(const MString& attrName, MStatus* status = nullptr) const;
  MPlug findPlug(const MString& attrName, bool wantNetworkedPlug, MStatus* status = nullptr) const;
  MPlug findPlug(const MObject& attribute, MStatus* status = nullptr) const;
  MPlug findPlug(const MObject& attribute, bool wantNetworkedPlug, MStatus* status = nullptr) const;
  MObject attribute(const MString& attrName, MStatus* status = nullptr) const;
  unsigned int attributeCount(MStatus* status = nullptr) const;
  MObject attribute(unsigned int index, MStatus* status = nullptr) const;
  bool hasAttribute(const MString& attrName, MStatus* status = nullptr) const;
  MStatus addAttribute(const MObject& attribute);
  MStatus getConnections(MPlugArray& plugs) const;
};
