#include <maya/MFnComponent.h>
#include <maya/MFnSingleIndexedComponent.h>

#include "SceneGraph.h"

namespace {

standin::ComponentData* DataOf(const MObject& object)
{
  return dynamic_cast<standin::ComponentData*>(object.standinData());
}

}

int MFnComponent::elementCount(MStatus* status) const
{
  const auto* data = DataOf(m_object);
  if (status)
    *status = data ? MS::kSuccess : MS::kFailure;
  return data ? static_cast<int>(data->elements.size()) : 0;
}

bool MFnComponent::isComplete(MStatus* status) const
{
  const auto* data = DataOf(m_object);
  if (status)
    *status = data ? MS::kSuccess : MS::kFailure;
  return data && data->complete;
}

MFn::Type MFnComponent::componentType(MStatus* status) const
{
  if (status)
    *status = m_object.isNull() ? MS::kFailure : MS::kSuccess;
  return m_object.apiType();
}

MFnSingleIndexedComponent::MFnSingleIndexedComponent(const MObject& object, MStatus* status)
{
  const MStatus result = setObject(object);
  if (status)
    *status = result;
}

MObject MFnSingleIndexedComponent::create(MFn::Type componentType, MStatus* status)
{
  if (componentType != MFn::kMeshPolygonComponent && componentType != MFn::kMeshVertComponent) {
    if (status)
      *status = MS::kInvalidParameter;
    return MObject();
  }
  setObject(MObject(std::shared_ptr<standin::Data>(std::make_shared<standin::ComponentData>(componentType))));
  if (status)
    *status = MS::kSuccess;
  return m_object;
}

MStatus MFnSingleIndexedComponent::addElement(int element)
{
  auto* data = DataOf(m_object);
  if (!data || element < 0)
    return MS::kInvalidParameter;
  data->elements.push_back(element);
  return MS::kSuccess;
}

MStatus MFnSingleIndexedComponent::addElements(const MIntArray& elements)
{
  for (unsigned int i = 0; i < elements.length(); ++i)
    if (MStatus status = addElement(elements[i]); !status)
      return status;
  return MS::kSuccess;
}

int MFnSingleIndexedComponent::element(int index, MStatus* status) const
{
  const auto* data = DataOf(m_object);
  const bool ok = data && index >= 0 && index < static_cast<int>(data->elements.size());
  if (status)
    *status = ok ? MS::kSuccess : MS::kInvalidParameter;
  return ok ? data->elements[static_cast<size_t>(index)] : -1;
}

MStatus MFnSingleIndexedComponent::getElements(MIntArray& elements) const
{
  const auto* data = DataOf(m_object);
  if (!data)
    return MS::kFailure;
  elements.items() = data->elements;
  return MS::kSuccess;
}

MStatus MFnSingleIndexedComponent::setCompleteData(int numElements)
{
  auto* data = DataOf(m_object);
  if (!data || numElements < 0)
    return MS::kInvalidParameter;
  data->complete = true;
  data->elements.clear();
  for (int i = 0; i < numElements; ++i)
    data->elements.push_back(i);
  return MS::kSuccess;
}
