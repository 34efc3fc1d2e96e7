#include <maya/MFnAttribute.h>
#include <maya/MFnEnumAttribute.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnStringData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MFnUnitAttribute.h>

#include "NumberCast.h"
#include "SceneGraph.h"

#include <algorithm>

namespace {

using standin::AttrKind;

void SetStatus(MStatus* status, MStatus value)
{
  if (status)
    *status = value;
}

standin::Attribute* AttributeOf(const MObject& object) { return object.standinAttribute(); }

// A new attribute that belongs to no node until MFnDependencyNode::addAttribute adopts it.
standin::Attribute* Pending(const MString& fullName, const MString& briefName, AttrKind kind)
{
  auto attribute = std::make_unique<standin::Attribute>();
  attribute->name = fullName.asChar();
  attribute->shortName = briefName.asChar();
  attribute->kind = kind;
  standin::Attribute* made = attribute.get();
  standin::CurrentScene().pendingAttributes.push_back(std::move(attribute));
  return made;
}

// A numeric compound of two or three children named by suffix (translateX, colorR ...).
standin::Attribute* PendingNumbers(const MString& fullName, const MString& briefName, AttrKind kind,
                                   const char* suffixes, int count)
{
  standin::Attribute* parent = Pending(fullName, briefName, AttrKind::Compound);
  for (int i = 0; i < count; ++i) {
    standin::Attribute* child = Pending(fullName + MString(&suffixes[i], 1), briefName + MString(&suffixes[i], 1).toLowerCase(), kind);
    child->parent = parent;
    parent->children.push_back(child);
  }
  return parent;
}

template <typename Fn>
void Attach(Fn& fn, const MObject& object, MStatus* status)
{
  SetStatus(status, fn.setObject(object));
}

}

MFnAttribute::MFnAttribute(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnNumericAttribute::MFnNumericAttribute(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnTypedAttribute::MFnTypedAttribute(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnEnumAttribute::MFnEnumAttribute(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnUnitAttribute::MFnUnitAttribute(const MObject& object, MStatus* status) { Attach(*this, object, status); }

MFnUnitAttribute::Type MFnUnitAttribute::unitType(MStatus* status) const
{
  const standin::Attribute* a = AttributeOf(m_object);
  SetStatus(status, a ? MS::kSuccess : MS::kFailure);
  switch (a ? a->kind : AttrKind::Message) {
  case AttrKind::Angle: return kAngle;
  case AttrKind::Distance: return kDistance;
  case AttrKind::Time: return kTime;
  default: return kInvalid;
  }
}

MString MFnAttribute::name(MStatus* status) const
{
  const standin::Attribute* a = AttributeOf(m_object);
  SetStatus(status, a ? MS::kSuccess : MS::kFailure);
  return a ? MString(a->name) : MString();
}

MString MFnAttribute::shortName(MStatus* status) const
{
  const standin::Attribute* a = AttributeOf(m_object);
  SetStatus(status, a ? MS::kSuccess : MS::kFailure);
  return a ? MString(a->shortName) : MString();
}

bool MFnAttribute::isHidden(MStatus* status) const
{
  const standin::Attribute* a = AttributeOf(m_object);
  SetStatus(status, a ? MS::kSuccess : MS::kFailure);
  return a && a->hidden;
}

MStatus MFnAttribute::setHidden(bool hidden)
{
  standin::Attribute* a = AttributeOf(m_object);
  if (!a)
    return MS::kFailure;
  a->hidden = hidden;
  return MS::kSuccess;
}

bool MFnAttribute::isArray(MStatus* status) const
{
  const standin::Attribute* a = AttributeOf(m_object);
  SetStatus(status, a ? MS::kSuccess : MS::kFailure);
  return a && a->array;
}

MStatus MFnAttribute::setArray(bool array)
{
  standin::Attribute* a = AttributeOf(m_object);
  if (!a || a->owner)
    return MS::kFailure;
  a->array = array;
  return MS::kSuccess;
}

bool MFnAttribute::isDynamic(MStatus* status) const
{
  const standin::Attribute* a = AttributeOf(m_object);
  SetStatus(status, a ? MS::kSuccess : MS::kFailure);
  return a && a->dynamic;
}

MObject MFnNumericAttribute::create(const MString& fullName, const MString& briefName, MFnNumericData::Type unitType,
                                    double defaultValue, MStatus* status)
{
  standin::Attribute* made = nullptr;
  switch (unitType) {
  case MFnNumericData::kBoolean: made = Pending(fullName, briefName, AttrKind::Bool); break;
  case MFnNumericData::kByte:
  case MFnNumericData::kChar:
  case MFnNumericData::kShort: made = Pending(fullName, briefName, AttrKind::Short); break;
  case MFnNumericData::kInt: made = Pending(fullName, briefName, AttrKind::Int); break;
  case MFnNumericData::kFloat: made = Pending(fullName, briefName, AttrKind::Float); break;
  case MFnNumericData::kDouble: made = Pending(fullName, briefName, AttrKind::Double); break;
  case MFnNumericData::k2Float: made = PendingNumbers(fullName, briefName, AttrKind::Float, "XY", 2); break;
  case MFnNumericData::k2Double: made = PendingNumbers(fullName, briefName, AttrKind::Double, "XY", 2); break;
  case MFnNumericData::k3Float: made = PendingNumbers(fullName, briefName, AttrKind::Float, "XYZ", 3); break;
  case MFnNumericData::k3Double: made = PendingNumbers(fullName, briefName, AttrKind::Double, "XYZ", 3); break;
  default: break;
  }
  if (!made || fullName.isEmpty()) {
    SetStatus(status, MStatus(MS::kInvalidParameter, "Unsupported numeric attribute type"));
    return MObject();
  }
  made->defaultNumber = defaultValue;
  for (standin::Attribute* child : made->children)
    child->defaultNumber = defaultValue;
  setObject(MObject(made));
  SetStatus(status, MS::kSuccess);
  return m_object;
}

MObject MFnNumericAttribute::createColor(const MString& fullName, const MString& briefName, MStatus* status)
{
  standin::Attribute* made = PendingNumbers(fullName, briefName, AttrKind::Float, "RGB", 3);
  setObject(MObject(made));
  SetStatus(status, MS::kSuccess);
  return m_object;
}

MObject MFnNumericAttribute::createPoint(const MString& fullName, const MString& briefName, MStatus* status)
{
  return create(fullName, briefName, MFnNumericData::k3Double, 0.0, status);
}

MFnNumericData::Type MFnNumericAttribute::unitType(MStatus* status) const
{
  const standin::Attribute* a = AttributeOf(m_object);
  SetStatus(status, a ? MS::kSuccess : MS::kFailure);
  if (!a)
    return MFnNumericData::kInvalid;
  switch (a->kind) {
  case AttrKind::Bool: return MFnNumericData::kBoolean;
  case AttrKind::Short:
  case AttrKind::Enum: return MFnNumericData::kShort;
  case AttrKind::Int: return MFnNumericData::kInt;
  case AttrKind::Float: return MFnNumericData::kFloat;
  case AttrKind::Double:
  case AttrKind::Distance:
  case AttrKind::Angle:
  case AttrKind::Time: return MFnNumericData::kDouble;
  case AttrKind::Compound:
    if (a->IsNumericCompound()) {
      const bool isFloat = a->children.front()->kind == AttrKind::Float;
      if (a->children.size() == 2)
        return isFloat ? MFnNumericData::k2Float : MFnNumericData::k2Double;
      return isFloat ? MFnNumericData::k3Float : MFnNumericData::k3Double;
    }
    return MFnNumericData::kInvalid;
  default: return MFnNumericData::kInvalid;
  }
}

MStatus MFnNumericAttribute::getDefault(double& value) const
{
  const standin::Attribute* a = AttributeOf(m_object);
  if (!a)
    return MS::kFailure;
  value = a->defaultNumber;
  return MS::kSuccess;
}

MStatus MFnNumericAttribute::setDefault(double value)
{
  standin::Attribute* a = AttributeOf(m_object);
  if (!a)
    return MS::kFailure;
  a->defaultNumber = value;
  return MS::kSuccess;
}

MObject MFnTypedAttribute::create(const MString& fullName, const MString& briefName, MFnData::Type dataType,
                                  const MObject& defaultData, MStatus* status)
{
  AttrKind kind = AttrKind::String;
  switch (dataType) {
  case MFnData::kString: kind = AttrKind::String; break;
  case MFnData::kMatrix: kind = AttrKind::Matrix; break;
  case MFnData::kMesh: kind = AttrKind::Mesh; break;
  default:
    SetStatus(status, MStatus(MS::kInvalidParameter, "Unsupported typed attribute data"));
    return MObject();
  }
  if (fullName.isEmpty()) {
    SetStatus(status, MS::kInvalidParameter);
    return MObject();
  }
  standin::Attribute* made = Pending(fullName, briefName, kind);
  if (kind == AttrKind::String && !defaultData.isNull())
    made->defaultText = MFnStringData(defaultData).string().asChar();
  setObject(MObject(made));
  SetStatus(status, MS::kSuccess);
  return m_object;
}

MFnData::Type MFnTypedAttribute::attrType(MStatus* status) const
{
  const standin::Attribute* a = AttributeOf(m_object);
  SetStatus(status, a ? MS::kSuccess : MS::kFailure);
  if (!a)
    return MFnData::kInvalid;
  switch (a->kind) {
  case AttrKind::String: return MFnData::kString;
  case AttrKind::Matrix: return MFnData::kMatrix;
  case AttrKind::Mesh: return MFnData::kMesh;
  case AttrKind::ComponentList: return MFnData::kComponentList;
  case AttrKind::PointArray: return MFnData::kPointArray;
  default: return MFnData::kInvalid;
  }
}

MObject MFnEnumAttribute::create(const MString& fullName, const MString& briefName, short defaultValue, MStatus* status)
{
  if (fullName.isEmpty()) {
    SetStatus(status, MS::kInvalidParameter);
    return MObject();
  }
  standin::Attribute* made = Pending(fullName, briefName, AttrKind::Enum);
  made->defaultNumber = defaultValue;
  setObject(MObject(made));
  SetStatus(status, MS::kSuccess);
  return m_object;
}

MStatus MFnEnumAttribute::addField(const MString& fieldName, short index)
{
  standin::Attribute* a = AttributeOf(m_object);
  if (!a || fieldName.isEmpty())
    return MS::kInvalidParameter;
  for (const auto& [name, value] : a->enumFields)
    if (name == fieldName.asChar() || value == index)
      return MS::kInvalidParameter;
  a->enumFields.emplace_back(fieldName.asChar(), index);
  return MS::kSuccess;
}

MString MFnEnumAttribute::fieldName(short index, MStatus* status) const
{
  if (const standin::Attribute* a = AttributeOf(m_object))
    for (const auto& [name, value] : a->enumFields)
      if (value == index) {
        SetStatus(status, MS::kSuccess);
        return MString(name);
      }
  SetStatus(status, MS::kInvalidParameter);
  return MString();
}

short MFnEnumAttribute::fieldIndex(const MString& fieldName, MStatus* status) const
{
  if (const standin::Attribute* a = AttributeOf(m_object))
    for (const auto& [name, value] : a->enumFields)
      if (name == fieldName.asChar()) {
        SetStatus(status, MS::kSuccess);
        return value;
      }
  SetStatus(status, MS::kInvalidParameter);
  return 0;
}

MStatus MFnEnumAttribute::getMin(short& minValue) const
{
  const standin::Attribute* a = AttributeOf(m_object);
  if (!a || a->enumFields.empty())
    return MS::kFailure;
  minValue = std::min_element(a->enumFields.begin(), a->enumFields.end(),
                              [](const auto& x, const auto& y) { return x.second < y.second; })->second;
  return MS::kSuccess;
}

MStatus MFnEnumAttribute::getMax(short& maxValue) const
{
  const standin::Attribute* a = AttributeOf(m_object);
  if (!a || a->enumFields.empty())
    return MS::kFailure;
  maxValue = std::max_element(a->enumFields.begin(), a->enumFields.end(),
                              [](const auto& x, const auto& y) { return x.second < y.second; })->second;
  return MS::kSuccess;
}

MStatus MFnEnumAttribute::getDefault(short& value) const
{
  const standin::Attribute* a = AttributeOf(m_object);
  if (!a)
    return MS::kFailure;
  value = standin::ClampTo<short>(a->defaultNumber);
  return MS::kSuccess;
}
