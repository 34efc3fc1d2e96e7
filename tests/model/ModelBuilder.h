#pragma once
// Small literal skinned models for the tests of the model, its passes and its file.

#include "model/SkinInfluences.h"
#include "model/VMModel.h"

#include <initializer_list>
#include <string>
#include <vector>

// The records of a model list (VMOwnedList, VPListT) as a vector, for gmock's container matchers.
template <class List>
auto Items(const List& list)
{
    return std::vector(list.begin(), list.end());
}

// Creates the skeleton on first use; a bone with a parent joins its children.
inline VMBone* AddBone(VMModel& model, const std::string& name, VMBone* parent = nullptr)
{
    if (!model.Skeleton)
        model.Skeleton = VMModel::NewSkeleton();
    VMBone* bone = VMModel::NewBone().release();
    bone->Name = name;
    bone->Parent = parent;
    if (parent != nullptr)
        parent->Children.Add(bone);
    model.Skeleton->Bones.Add(bone);
    return bone;
}

inline VMSkinVertex* AddSkinVertex(VMModel& model, float x, float y, float z)
{
    VMSkinVertex* vertex = VMModel::NewVertex().release();
    vertex->Position[0] = x;
    vertex->Position[1] = y;
    vertex->Position[2] = z;
    model.Vertices.Add(vertex);
    return vertex;
}

inline VMMaterial* AddModelMaterial(VMModel& model, const std::string& name)
{
    VMMaterial* material = VMModel::NewMaterial().release();
    material->Name = name;
    model.Materials.Add(material);
    return material;
}

inline VMFace* AddFace(VMModel& model, std::initializer_list<VMSkinVertex*> corners, VMMaterial* material)
{
    VMFace* face = VMModel::NewFace().release();
    for (VMSkinVertex* corner : corners)
        face->AddCorner(corner);
    face->SetMaterial(material);
    model.Faces.Add(face);
    return face;
}

inline void SetTranslation(VMTransform& transform, float x, float y, float z)
{
    transform.Translation()[0] = x;
    transform.Translation()[1] = y;
    transform.Translation()[2] = z;
}
