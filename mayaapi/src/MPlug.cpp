#include <maya/MPlug.h>

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MIntArray.h>
#include <maya/MPlugArray.h>
#include <maya/MTime.h>

#include "NumberCast.h"
#include "SceneGraph.h"

namespace {

using standin::AttrKind;
using standin::PlugKey;

void SetStatus(MStatus* status, MS::MStatusCode code)
{
  if (status)
    *status = code;
}

std::vector<const standin::Attribute*> Chain(const standin::Attribute* attribute)
{
  std::vector<const standin::Attribute*> chain;
  for (const standin::Attribute* a = attribute; a; a = a->parent)
    chain.insert(chain.begin(), a);
  return chain;
}

// Attribute path as Maya prints it: a parent compound is written only when it is an array element, so
// "pCube1.translateX" but "pCube1.instObjGroups[0].objectGroups[1]".
std::string AttributePath(const PlugKey& key, bool longNames)
{
  const auto chain = Chain(key.attribute);
  std::string text;
  size_t depth = 0;
  for (size_t i = 0; i < chain.size(); ++i) {
    const standin::Attribute* a = chain[i];
    const bool last = i + 1 == chain.size();
    std::string part = longNames || a->shortName.empty() ? a->name : a->shortName;
    bool written = last;
    if (a->array && depth < key.indices.size()) {
      part += '[';
      part += std::to_string(key.indices[depth++]);
      part += ']';
      written = true;
    }
    if (!written)
      continue;
    if (!text.empty())
      text += '.';
    text += part;
  }
  return text;
}

bool NumericKind(AttrKind kind)
{
  return kind != AttrKind::Message && kind != AttrKind::String && kind != AttrKind::Matrix && kind != AttrKind::Mesh &&
         kind != AttrKind::ComponentList && kind != AttrKind::PointArray && kind != AttrKind::Compound;
}

}

MPlug::MPlug(const MObject& node, const MObject& attribute)
{
  standin::Node* n = node.standinNode();
  standin::Attribute* a = attribute.standinAttribute();
  // Attribute objects of another node of the same type are matched by name, as Maya's static attributes are.
  if (n && a && a->owner != n)
    a = n->FindAttribute(a->name);
  if (n && a && a->owner == n) {
    m_node = n;
    m_key.attribute = a;
  }
}

MObject MPlug::node(MStatus* status) const
{
  SetStatus(status, m_node ? MS::kSuccess : MS::kFailure);
  return m_node ? MObject(m_node) : MObject();
}

MObject MPlug::attribute(MStatus* status) const
{
  SetStatus(status, m_node ? MS::kSuccess : MS::kFailure);
  return m_node ? MObject(m_key.attribute) : MObject();
}

MString MPlug::name(MStatus* status) const
{
  SetStatus(status, m_node ? MS::kSuccess : MS::kFailure);
  if (!m_node)
    return MString();
  return MString(m_node->name + "." + AttributePath(m_key, true));
}

MString MPlug::partialName(bool includeNodeName, bool, bool, bool, bool, bool useLongNames, MStatus* status) const
{
  SetStatus(status, m_node ? MS::kSuccess : MS::kFailure);
  if (!m_node)
    return MString();
  const std::string path = AttributePath(m_key, useLongNames);
  return MString(includeNodeName ? m_node->name + "." + path : path);
}

bool MPlug::isArray(MStatus* status) const
{
  SetStatus(status, m_node ? MS::kSuccess : MS::kFailure);
  return m_node && standin::IsArrayPlug(m_key);
}

bool MPlug::isElement(MStatus* status) const
{
  SetStatus(status, m_node ? MS::kSuccess : MS::kFailure);
  return m_node && m_key.attribute->array && m_key.indices.size() == m_key.attribute->ArrayDepth();
}

bool MPlug::isCompound(MStatus* status) const
{
  SetStatus(status, m_node ? MS::kSuccess : MS::kFailure);
  return m_node && m_key.attribute->kind == AttrKind::Compound && !standin::IsArrayPlug(m_key);
}

bool MPlug::isChild(MStatus* status) const
{
  SetStatus(status, m_node ? MS::kSuccess : MS::kFailure);
  return m_node && m_key.attribute->parent != nullptr;
}

unsigned int MPlug::numChildren(MStatus* status) const
{
  SetStatus(status, isCompound() ? MS::kSuccess : MS::kInvalidParameter);
  return isCompound() ? static_cast<unsigned int>(m_key.attribute->children.size()) : 0;
}

MPlug MPlug::child(unsigned int index, MStatus* status) const
{
  if (!isCompound() || index >= m_key.attribute->children.size()) {
    SetStatus(status, MS::kInvalidParameter);
    return MPlug();
  }
  SetStatus(status, MS::kSuccess);
  return MPlug(m_node, PlugKey{m_key.attribute->children[index], m_key.indices});
}

MPlug MPlug::child(const MObject& attribute, MStatus* status) const
{
  if (isCompound())
    for (unsigned int i = 0; i < m_key.attribute->children.size(); ++i)
      if (m_key.attribute->children[i] == attribute.standinAttribute())
        return child(i, status);
  SetStatus(status, MS::kInvalidParameter);
  return MPlug();
}

MPlug MPlug::parent(MStatus* status) const
{
  if (!m_node || !m_key.attribute->parent || standin::IsArrayPlug(m_key)) {
    SetStatus(status, MS::kInvalidParameter);
    return MPlug();
  }
  PlugKey up{m_key.attribute->parent, m_key.indices};
  if (m_key.attribute->array && !m_key.indices.empty())
    up.indices.pop_back();
  SetStatus(status, MS::kSuccess);
  return MPlug(m_node, up);
}

MPlug MPlug::array(MStatus* status) const
{
  if (!isElement()) {
    SetStatus(status, MS::kInvalidParameter);
    return MPlug();
  }
  SetStatus(status, MS::kSuccess);
  return MPlug(m_node, standin::ParentKey(m_key));
}

unsigned int MPlug::numElements(MStatus* status) const
{
  if (!isArray()) {
    SetStatus(status, MS::kInvalidParameter);
    return 0;
  }
  SetStatus(status, MS::kSuccess);
  const auto found = m_node->elements.find(m_key);
  return found == m_node->elements.end() ? 0 : static_cast<unsigned int>(found->second.size());
}

MPlug MPlug::elementByLogicalIndex(unsigned int index, MStatus* status) const
{
  if (!isArray()) {
    SetStatus(status, MS::kInvalidParameter);
    return MPlug();
  }
  SetStatus(status, MS::kSuccess);
  PlugKey element = m_key;
  element.indices.push_back(index);
  return MPlug(m_node, element);
}

MPlug MPlug::elementByPhysicalIndex(unsigned int index, MStatus* status) const
{
  if (!isArray() || index >= numElements()) {
    SetStatus(status, MS::kInvalidParameter);
    return MPlug();
  }
  const auto& indices = m_node->elements.find(m_key)->second;
  auto it = indices.begin();
  std::advance(it, index);
  return elementByLogicalIndex(*it, status);
}

unsigned int MPlug::logicalIndex(MStatus* status) const
{
  if (!isElement()) {
    SetStatus(status, MS::kInvalidParameter);
    return 0;
  }
  SetStatus(status, MS::kSuccess);
  return m_key.indices.back();
}

unsigned int MPlug::getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status) const
{
  indices.clear();
  const unsigned int count = numElements(status);
  if (count > 0)
    for (unsigned int i : m_node->elements.find(m_key)->second)
      indices.append(static_cast<int>(i));
  return count;
}

bool MPlug::isConnected(MStatus* status) const { return isDestination(status) || isSource(status); }

bool MPlug::isDestination(MStatus* status) const
{
  SetStatus(status, m_node ? MS::kSuccess : MS::kFailure);
  return m_node && standin::IncomingConnection(m_node, m_key) != nullptr;
}

bool MPlug::isSource(MStatus* status) const
{
  SetStatus(status, m_node ? MS::kSuccess : MS::kFailure);
  if (!m_node)
    return false;
  for (size_t index : m_node->outgoing) {
    const standin::Connection& c = m_node->scene->connections[index];
    if (c.alive && c.src == m_key)
      return true;
  }
  return false;
}

bool MPlug::connectedTo(MPlugArray& plugs, bool asDst, bool asSrc, MStatus* status) const
{
  plugs.clear();
  SetStatus(status, m_node ? MS::kSuccess : MS::kFailure);
  if (!m_node)
    return false;
  if (asDst)
    if (const standin::Connection* c = standin::IncomingConnection(m_node, m_key))
      plugs.append(MPlug(c->srcNode, c->src));
  if (asSrc)
    for (size_t index : m_node->outgoing) {
      const standin::Connection& c = m_node->scene->connections[index];
      if (c.alive && c.src == m_key)
        plugs.append(MPlug(c.dstNode, c.dst));
    }
  return plugs.length() > 0;
}

MPlug MPlug::source(MStatus* status) const
{
  SetStatus(status, m_node ? MS::kSuccess : MS::kFailure);
  if (m_node)
    if (const standin::Connection* c = standin::IncomingConnection(m_node, m_key))
      return MPlug(c->srcNode, c->src);
  return MPlug();
}

MStatus MPlug::getValue(double& value) const
{
  if (!m_node || !NumericKind(m_key.attribute->kind) || standin::IsArrayPlug(m_key))
    return MS::kInvalidParameter;
  value = standin::EvaluatePlug(m_node, m_key).number;
  return MS::kSuccess;
}

MStatus MPlug::getValue(bool& value) const
{
  double number = 0.0;
  const MStatus status = getValue(number);
  if (status)
    value = number != 0.0;
  return status;
}

MStatus MPlug::getValue(int& value) const
{
  double number = 0.0;
  const MStatus status = getValue(number);
  if (status)
    value = standin::ClampTo<int>(number);
  return status;
}

MStatus MPlug::getValue(short& value) const
{
  double number = 0.0;
  const MStatus status = getValue(number);
  if (status)
    value = standin::ClampTo<short>(number);
  return status;
}

MStatus MPlug::getValue(float& value) const
{
  double number = 0.0;
  const MStatus status = getValue(number);
  if (status)
    value = standin::ClampTo<float>(number);
  return status;
}

MStatus MPlug::getValue(MTime& value) const
{
  double number = 0.0;
  const MStatus status = getValue(number);
  if (status)
    value = MTime(number, MTime::kSeconds);
  return status;
}

MStatus MPlug::getValue(MDistance& value) const
{
  double number = 0.0;
  const MStatus status = getValue(number);
  if (status)
    value = MDistance(number, MDistance::kCentimeters);
  return status;
}

MStatus MPlug::getValue(MAngle& value) const
{
  double number = 0.0;
  const MStatus status = getValue(number);
  if (status)
    value = MAngle(number, MAngle::kRadians);
  return status;
}

MStatus MPlug::getValue(MString& value) const
{
  if (!m_node || m_key.attribute->kind != AttrKind::String)
    return MS::kInvalidParameter;
  value = MString(standin::EvaluatePlug(m_node, m_key).text);
  return MS::kSuccess;
}

MStatus MPlug::getValue(MObject& value) const
{
  if (!m_node || standin::IsArrayPlug(m_key))
    return MS::kInvalidParameter;
  const AttrKind kind = m_key.attribute->kind;
  const standin::Value v = standin::EvaluatePlug(m_node, m_key);
  if (kind == AttrKind::String) {
    auto data = std::make_shared<standin::StringData>();
    data->text = v.text;
    value = MObject(std::shared_ptr<standin::Data>(data));
    return MS::kSuccess;
  }
  if (kind == AttrKind::Message || (kind == AttrKind::Compound && !m_key.attribute->IsNumericCompound()) ||
      NumericKind(kind))
    return MS::kInvalidParameter;
  value = MObject(v.data);
  return MS::kSuccess;
}

bool MPlug::asBool(MStatus* status) const
{
  bool value = false;
  SetStatus(status, getValue(value).statusCode());
  return value;
}

int MPlug::asInt(MStatus* status) const
{
  int value = 0;
  SetStatus(status, getValue(value).statusCode());
  return value;
}

short MPlug::asShort(MStatus* status) const
{
  short value = 0;
  SetStatus(status, getValue(value).statusCode());
  return value;
}

float MPlug::asFloat(MStatus* status) const
{
  float value = 0.0f;
  SetStatus(status, getValue(value).statusCode());
  return value;
}

double MPlug::asDouble(MStatus* status) const
{
  double value = 0.0;
  SetStatus(status, getValue(value).statusCode());
  return value;
}

MString MPlug::asString(MStatus* status) const
{
  MString value;
  SetStatus(status, getValue(value).statusCode());
  return value;
}

MObject MPlug::asMObject(MStatus* status) const
{
  MObject value;
  SetStatus(status, getValue(value).statusCode());
  return value;
}

MTime MPlug::asMTime(MStatus* status) const
{
  MTime value;
  SetStatus(status, getValue(value).statusCode());
  return value;
}

MStatus MPlug::setNumber(double value)
{
  if (!m_node || !NumericKind(m_key.attribute->kind) || standin::IsArrayPlug(m_key))
    return MS::kInvalidParameter;
  standin::SetNumber(m_node, m_key, value);
  return MS::kSuccess;
}

MStatus MPlug::setValue(bool value) { return setNumber(value ? 1.0 : 0.0); }
MStatus MPlug::setValue(int value) { return setNumber(value); }
MStatus MPlug::setValue(short value) { return setNumber(value); }
MStatus MPlug::setValue(float value) { return setNumber(value); }
MStatus MPlug::setValue(double value) { return setNumber(value); }
MStatus MPlug::setValue(const MTime& value) { return setNumber(value.as(MTime::kSeconds)); }

MStatus MPlug::setValue(const MString& value)
{
  if (!m_node || m_key.attribute->kind != AttrKind::String)
    return MS::kInvalidParameter;
  m_node->values[m_key].text = value.asChar();
  standin::RegisterElements(m_node, m_key);
  m_node->scene->Touch();
  return MS::kSuccess;
}

MStatus MPlug::setValue(const MObject& value)
{
  if (!m_node || standin::IsArrayPlug(m_key))
    return MS::kInvalidParameter;
  standin::Attribute* a = m_key.attribute;
  if (a->kind == AttrKind::String) {
    const auto* text = dynamic_cast<const standin::StringData*>(value.standinData());
    return text ? setValue(MString(text->text)) : MStatus(MS::kInvalidParameter);
  }
  if (a->IsNumericCompound()) {
    const auto* numbers = dynamic_cast<const standin::NumericData*>(value.standinData());
    if (!numbers || numbers->count != a->children.size())
      return MS::kInvalidParameter;
    for (unsigned int i = 0; i < numbers->count; ++i)
      MPlug(m_node, PlugKey{a->children[i], m_key.indices}).setNumber(numbers->values[i]);
    return MS::kSuccess;
  }
  if (a->kind != AttrKind::Matrix && a->kind != AttrKind::Mesh && a->kind != AttrKind::ComponentList &&
      a->kind != AttrKind::PointArray)
    return MS::kInvalidParameter;
  m_node->values[m_key].data = value.standinDataRef();
  standin::RegisterElements(m_node, m_key);
  m_node->scene->Touch();
  return MS::kSuccess;
}
