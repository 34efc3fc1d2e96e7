#include "model/VMPrimitive.h"

#include "model/VMMaterial.h"
#include "model/VMVisArea.h"

VMPrimitive::~VMPrimitive()
{
    SetMaterial(nullptr);
}

void VMPrimitive::LeaveOwners()
{
    for (VMVisArea* area : Owners)
        area->RemovePrimitive(this);
    Owners.Clear();
}

void VMPrimitive::SetMaterial(VMMaterial* material)
{
    if (material == m_material)
        return;
    if (material != nullptr)
        ++material->UseCount;
    if (m_material != nullptr && m_material->UseCount > 0)
        --m_material->UseCount;
    m_material = material;
}

void VMPrimitive::CopyAttributesFrom(const VMPrimitive& source)
{
    AttributeBits = source.AttributeBits;
    AttributeWord = source.AttributeWord;
    SourceNode = source.SourceNode;
    CollisionFlags = source.CollisionFlags;
    CastShadows = source.CastShadows;
    Visible = source.Visible;
    LayerAttribute = source.LayerAttribute;
    Name = source.Name;
    NameAttribute = source.NameAttribute;
    Opacity = source.Opacity;
    SetMaterial(source.Material());
}
