#include "model/VMMeshBase.h"

#include "model/MakeRecord.h"

std::unique_ptr<VMMaterial> VMMeshBase::NewMaterial()
{
    return MakeRecord<VMMaterial>();
}

void VMMeshBase::ClearMeshBase()
{
    Materials.Clear();
    Strings.clear();
    HasTangents = 0;
    HasColours = 0;
    HasSecondUV = 0;
}

void VMMeshBase::EnumerateMaterials()
{
    int index = 0;
    for (VMMaterial* material : Materials) {
        if (material != nullptr)
            material->Index = index;
        ++index;
    }
}
