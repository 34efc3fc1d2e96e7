#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <standin/PlugKey.h>

class MPlugArray;
class MIntArray;
class MTime;
class MDistance;
class MAngle;

class MPlug {
public:
  MPlug() = default;
  MPlug(const MObject& node, const MObject& attribute);

  bool isNull(MStatus* status = nullptr) const { if (status) *status = MS::kSuccess; return !m_node; }
  MObject node(MStatus* status = nullptr) const;
  MObject attribute(MStatus* status = nullptr) const;
  MString name(MStatus* status = nullptr) const;
  MString partialName(bool includeNodeName = false, bool includeNonMandatoryIndices = false,
                      bool includeInstancedIndices = false, bool useAlias = false, bool useFullAttributePath = false,
                      bool useLongNames = false, MStatus* status = nullptr) const;

  bool isArray(MStatus* status = nullptr) const;
  bool isElement(MStatus* status = nullptr) const;
  bool isCompound(MStatus* status = nullptr) const;
  bool isChild(MStatus* status = nullptr) const;
  unsigned int numChildren(MStatus* status = nullptr) const;
  MPlug child(unsigned int index, MStatus* status = nullptr) const;
  MPlug child(const MObject& attribute, MStatus* status = nullptr) const;
  MPlug parent(MStatus* status = nullptr) const;
  MPlug array(MStatus* status = nullptr) const;
  unsigned int numElements(MStatus* status = nullptr) const;
  unsigned int evaluateNumElements(MStatus* status = nullptr) const { return numElements(status); }
  MPlug elementByLogicalIndex(unsigned int index, MStatus* status = nullptr) const;
  MPlug elementByPhysicalIndex(unsigned int index, MStatus* status = nullptr) const;
  MPlug operator[](unsigned int physicalIndex) const { return elementByPhysicalIndex(physicalIndex); }
  unsigned int logicalIndex(MStatus* status = nullptr) const;
  unsigned int getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status = nullptr) const;

  bool isConnected(MStatus* status = nullptr) const;
  bool isDestination(MStatus* status = nullptr) const;
  bool isSource(MStatus* status = nullptr) const;
  bool connectedTo(MPlugArray& plugs, bool asDst, bool asSrc, MStatus* status = nullptr) const;
  MPlug source(MStatus* status = nullptr) const;

  MStatus getValue(bool& value) const;
  MStatus getValue(int& value) const;
  MStatus getValue(short& value) const;
  MStatus getValue(float& value) const;
  MStatus getValue(double& value) const;
  MStatus getValue(MString& value) const;
  MStatus getValue(MObject& value) const;
  MStatus getValue(MTime& value) const;
  MStatus getValue(MDistance& value) const;
  MStatus getValue(MAngle& value) const;
  bool asBool(MStatus* status = nullptr) const;
  int asInt(MStatus* status = nullptr) const;
  short asShort(MStatus* status = nullptr) const;
  float asFloat(MStatus* status = nullptr) const;
  double asDouble(MStatus* status = nullptr) const;
  MString asString(MStatus* status = nullptr) const;
  MObject asMObject(MStatus* status = nullptr) const;
  MTime asMTime(MStatus* status = nullptr) const;

  MStatus setValue(bool value);
  MStatus setValue(int value);
  MStatus setValue(short value);
  MStatus setValue(float value);
  MStatus setValue(double value);
  MStatus setValue(const MString& value);
  MStatus setValue(const char* value) { return setValue(MString(value)); }
  MStatus setValue(const MObject& value);
  MStatus setValue(const MTime& value);
  MStatus setBool(bool value) { return setValue(value); }
  MStatus setInt(int value) { return setValue(value); }
  MStatus setFloat(float value) { return setValue(value); }
  MStatus setDouble(double value) { return setValue(value); }
  MStatus setString(const MString& value) { return setValue(value); }

  bool operator==(const MPlug& other) const { return m_node == other.m_node && m_key == other.m_key; }
  bool operator!=(const MPlug& other) const { return !(*this == other); }

  MPlug(standin::Node* node, standin::PlugKey key) : m_node(node), m_key(std::move(key)) {}
  standin::Node* standinNode() const { return m_node; }
  const standin::PlugKey& standinKey() const { return m_key; }

private:
  MStatus setNumber(double value);

  standin::Node* m_node = nullptr;
  standin::PlugKey m_key;
};
