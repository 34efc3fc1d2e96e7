#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include <functional>

#include "SceneGraph.h"

const MObject MObject::kNullObj;

MFn::Type MObject::apiType() const
{
  if (m_node)
    return m_node->type;
  if (m_data)
    return m_data->type;
  if (!m_attribute)
    return MFn::kInvalid;
  switch (m_attribute->kind) {
  case standin::AttrKind::Message: return MFn::kMessageAttribute;
  case standin::AttrKind::Enum: return MFn::kEnumAttribute;
  case standin::AttrKind::Compound:
    return m_attribute->IsNumericCompound() ? MFn::kNumericAttribute : MFn::kCompoundAttribute;
  case standin::AttrKind::Matrix: return MFn::kMatrixAttribute;
  case standin::AttrKind::String:
  case standin::AttrKind::Mesh:
  case standin::AttrKind::ComponentList:
  case standin::AttrKind::PointArray: return MFn::kTypedAttribute;
  case standin::AttrKind::Distance:
  case standin::AttrKind::Angle:
  case standin::AttrKind::Time: return MFn::kUnitAttribute;
  default: return MFn::kNumericAttribute;
  }
}

bool MObject::hasFn(MFn::Type type) const { return !isNull() && standin::TypeHasFn(apiType(), type); }

const char* MObject::apiTypeStr() const { return standin::TypeName(apiType()); }

unsigned int MObjectHandle::hashCode() const
{
  const void* identity = m_object.standinNode() ? static_cast<const void*>(m_object.standinNode())
                                                : static_cast<const void*>(m_object.standinAttribute());
  return static_cast<unsigned int>(std::hash<const void*>()(identity));
}
