#include "formats/DescribeAssetFile.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/AnimationFileReader.h"
#include "formats/CollisionMeshReader.h"
#include "formats/DescribeModel.h"
#include "formats/LoadModel.h"
#include "formats/StaticMeshReader.h"
#include "formats/chunk/LastError.h"
#include "model/VMModel.h"

bool DescribeAssetFile(std::string_view path, std::string& text, VChunkStreamProvider* provider)
{
    const std::string extension = ExtensionOf(path);
    if (EqualsNoCase(extension, ".qmesh")) {
        VStaticMeshFile mesh;
        if (!ReadStaticMesh(path, mesh, provider))
            return false;
        text = DescribeStaticMesh(mesh);
        return true;
    }
    if (EqualsNoCase(extension, ".qcolmesh")) {
        VCollisionMeshFile mesh;
        if (!ReadCollisionMesh(path, mesh, provider))
            return false;
        text = DescribeCollisionMesh(mesh);
        return true;
    }
    if (EqualsNoCase(extension, ".model")) {
        VMModel model;
        if (!LoadModel(model, path, provider))
            return false;
        text = DescribeModel(model);
        return true;
    }
    if (EqualsNoCase(extension, ".anim")) {
        VAnimationFile animations;
        if (!ReadAnimationFile(path, animations, provider))
            return false;
        text = DescribeAnimationFile(animations);
        return true;
    }
    SetLastError(
        Format("Unknown asset file type '%s': expected .qmesh, .qcolmesh, .model or .anim", extension.c_str()));
    return false;
}
