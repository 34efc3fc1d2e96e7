#include "model/ReplaceMaterial.h"

#include "model/VMModel.h"
#include "model/VMWorld.h"

namespace {

template <class T>
void ReplaceInPrimitives(const VMOwnedList<T>& list, VMMaterial* oldMaterial, VMMaterial* newMaterial)
{
    for (T* primitive : list)
        if (primitive != nullptr && primitive->Material() == oldMaterial)
            primitive->SetMaterial(newMaterial);
}

template <class T>
void ReplaceInVertices(const VMOwnedList<T>& vertices, VMMaterial* oldMaterial, VMMaterial* newMaterial)
{
    for (T* vertex : vertices)
        if (vertex != nullptr && vertex->MaterialLink == oldMaterial)
            vertex->MaterialLink = newMaterial;
}

} // namespace

void ReplaceMaterial(VMWorld& world, VMMaterial* oldMaterial, VMMaterial* newMaterial)
{
    if (oldMaterial == newMaterial)
        return;
    ReplaceInVertices(world.Vertices, oldMaterial, newMaterial);
    ReplaceInPrimitives(world.Polygons, oldMaterial, newMaterial);
    ReplaceInPrimitives(world.Patches, oldMaterial, newMaterial);
    ReplaceInPrimitives(world.TriLists, oldMaterial, newMaterial);
    ReplaceInPrimitives(world.Heightfields, oldMaterial, newMaterial);
}

void ReplaceMaterial(VMModel& model, VMMaterial* oldMaterial, VMMaterial* newMaterial)
{
    if (oldMaterial == newMaterial)
        return;
    ReplaceInVertices(model.Vertices, oldMaterial, newMaterial);
    ReplaceInPrimitives(model.Faces, oldMaterial, newMaterial);
}
