#include "model/VMVisArea.h"

#include "model/VMHeightfield.h"
#include "model/VMPatch.h"
#include "model/VMPolygon.h"
#include "model/VMTriList.h"

namespace {

template <class T>
int AddOnce(VPListT<T>& list, T* primitive, int& elementCount)
{
    if (primitive == nullptr)
        return -1;
    if (list.Find(primitive) < 0) {
        list.Add(primitive);
        ++elementCount;
    }
    return 0;
}

template <class T>
int RemoveListed(VPListT<T>& list, const T* primitive, int& elementCount)
{
    if (!list.RemoveItem(primitive))
        return -1;
    --elementCount;
    return 0;
}

template <class T>
void DropOwner(const VPListT<T>& list, VMVisArea* area)
{
    for (T* primitive : list)
        primitive->Owners.RemoveItem(area);
}

} // namespace

VMVisArea::~VMVisArea()
{
    DropOwner(m_polygons, this);
    DropOwner(m_patches, this);
    DropOwner(m_triLists, this);
    DropOwner(m_heightfields, this);
}

void VMVisArea::RecountElements()
{
    m_elementCount = m_polygons.Count() + m_patches.Count() + m_triLists.Count() + m_heightfields.Count();
}

int VMVisArea::AddPolygon(VMPolygon* polygon) { return AddOnce(m_polygons, polygon, m_elementCount); }
int VMVisArea::AddPatch(VMPatch* patch) { return AddOnce(m_patches, patch, m_elementCount); }
int VMVisArea::AddTriList(VMTriList* triList) { return AddOnce(m_triLists, triList, m_elementCount); }
int VMVisArea::AddHeightfield(VMHeightfield* heightfield)
{
    return AddOnce(m_heightfields, heightfield, m_elementCount);
}

int VMVisArea::RemovePolygon(const VMPolygon* polygon) { return RemoveListed(m_polygons, polygon, m_elementCount); }
int VMVisArea::RemovePatch(const VMPatch* patch) { return RemoveListed(m_patches, patch, m_elementCount); }
int VMVisArea::RemoveTriList(const VMTriList* triList) { return RemoveListed(m_triLists, triList, m_elementCount); }
int VMVisArea::RemoveHeightfield(const VMHeightfield* heightfield)
{
    return RemoveListed(m_heightfields, heightfield, m_elementCount);
}

int VMVisArea::AddPrimitive(VMPrimitive* primitive)
{
    if (primitive == nullptr)
        return -1;
    switch (primitive->Kind()) {
    case VMPrimitiveKind::Polygon: return AddPolygon(static_cast<VMPolygon*>(primitive));
    case VMPrimitiveKind::TriList: return AddTriList(static_cast<VMTriList*>(primitive));
    case VMPrimitiveKind::Patch: return AddPatch(static_cast<VMPatch*>(primitive));
    case VMPrimitiveKind::Heightfield: return AddHeightfield(static_cast<VMHeightfield*>(primitive));
    }
    return -1;
}

int VMVisArea::RemovePrimitive(const VMPrimitive* primitive)
{
    if (primitive == nullptr)
        return -1;
    switch (primitive->Kind()) {
    case VMPrimitiveKind::Polygon: return RemovePolygon(static_cast<const VMPolygon*>(primitive));
    case VMPrimitiveKind::TriList: return RemoveTriList(static_cast<const VMTriList*>(primitive));
    case VMPrimitiveKind::Patch: return RemovePatch(static_cast<const VMPatch*>(primitive));
    case VMPrimitiveKind::Heightfield: return RemoveHeightfield(static_cast<const VMHeightfield*>(primitive));
    }
    return -1;
}

bool VMVisArea::Lists(const VMPrimitive* primitive) const
{
    if (primitive == nullptr)
        return false;
    switch (primitive->Kind()) {
    case VMPrimitiveKind::Polygon: return m_polygons.Find(static_cast<const VMPolygon*>(primitive)) >= 0;
    case VMPrimitiveKind::TriList: return m_triLists.Find(static_cast<const VMTriList*>(primitive)) >= 0;
    case VMPrimitiveKind::Patch: return m_patches.Find(static_cast<const VMPatch*>(primitive)) >= 0;
    case VMPrimitiveKind::Heightfield: return m_heightfields.Find(static_cast<const VMHeightfield*>(primitive)) >= 0;
    }
    return false;
}

void VMVisArea::ClearPolygons()
{
    m_polygons.Clear();
    RecountElements();
}

void VMVisArea::ClearTriLists()
{
    m_triLists.Clear();
    RecountElements();
}

int VMVisArea::Link(VMPrimitive& primitive)
{
    // The two sides mirror each other, so the primitive's short owner list tells whether the
    // area's long list holds it already, without a search through the latter.
    if (primitive.Owners.Find(this) >= 0)
        return 0;
    switch (primitive.Kind()) {
    case VMPrimitiveKind::Polygon: m_polygons.Add(static_cast<VMPolygon*>(&primitive)); break;
    case VMPrimitiveKind::TriList: m_triLists.Add(static_cast<VMTriList*>(&primitive)); break;
    case VMPrimitiveKind::Patch: m_patches.Add(static_cast<VMPatch*>(&primitive)); break;
    case VMPrimitiveKind::Heightfield: m_heightfields.Add(static_cast<VMHeightfield*>(&primitive)); break;
    }
    ++m_elementCount;
    primitive.Owners.Add(this);
    return 0;
}

int VMVisArea::Unlink(VMPrimitive& primitive)
{
    primitive.Owners.RemoveItem(this);
    return RemovePrimitive(&primitive);
}

int VMVisArea::ReplacePolygon(VMPolygon& polygon, VMPolygon& replacement)
{
    const int index = m_polygons.Find(&polygon);
    if (index < 0)
        return -1;
    if (m_polygons.Find(&replacement) >= 0) {
        RemovePolygon(&polygon);
    } else {
        m_polygons.Set(index, &replacement);
        replacement.Owners.Add(this);
    }
    polygon.Owners.RemoveItem(this);
    return 0;
}
