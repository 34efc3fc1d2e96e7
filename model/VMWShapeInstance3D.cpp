#include "model/VMWShapeInstance3D.h"

#include "base/TextUtil.h"

void VMWShapeInstance3D::Prepare(VMWShapeInstance3DCollection& owner, int index)
{
    if (Name.empty())
        Name = DefaultName(index);
    for (size_t i = 0; i < Children.size(); ++i)
        Children[i]->Prepare(owner, static_cast<int>(i));
}

void VMWShapeInstance3D::ResolveReferences(VMWShapeInstance3DCollection&) {}

void VMWShapeInstance3D::LinkTargets(VMWShapeInstance3DCollection&) {}

void VMWShapeInstance3D::Scale(float factor)
{
    for (float& coordinate : Position)
        coordinate *= factor;
    for (const std::unique_ptr<VMWShapeInstance3D>& child : Children)
        child->Scale(factor);
}

std::string VMWShapeInstance3D::DefaultName(int index) const
{
    return Format("Shape%03i", index);
}

void VMWShapeInstance3DCollection::Scale(float factor)
{
    for (const std::unique_ptr<VMWShapeInstance3D>& shape : Shapes)
        shape->Scale(factor);
}

void VMWShapeInstance3DCollection::Clear()
{
    *this = VMWShapeInstance3DCollection();
}
