#include "plugin/VPrefabExportState.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/PrefabShapes.h"
#include "formats/ShapeOrientation.h"
#include "harvest/EngineTransform.h"
#include "harvest/HarvestState.h"
#include "harvest/NodeAttributes.h"
#include "harvest/ShouldSkipNode.h"
#include "settings/RelativePath.h"

#include <maya/MString.h>

#include <algorithm>

namespace {

// The node's world placement in the engine's axes, without its scale: the nested export bakes the
// scale into the mesh and places it at the node.
void PlaceAtNode(const MDagPath& path, VMWShapeInstance3D& shape)
{
    VMTransform world;
    Invert(PlacementFromNode(path), world);
    std::copy(world.Translation(), world.Translation() + 3, shape.Position);
    const float* forward = world.M;
    const float down[3] = {-world.M[6], -world.M[7], -world.M[8]};
    OrientationFromAxes(forward, down, shape.Orientation);
}

} // namespace

bool VPrefabExportState::VisitNode(const MDagPath& path)
{
    if (ShouldSkipNode(path))
        return false;
    std::string exportTo;
    if (GetOwnStringAttribute(MString("zephra_ExportTo"), path, exportTo) && !exportTo.empty()) {
        AddShapeInstance(path, exportTo);
        return false;
    }
    return CollectNode(path);
}

void VPrefabExportState::Reset()
{
    VExportState::Reset();
    Shapes.Clear();
    HasShapeInstances = false;
    World.Clear();
    NodeReferences.clear();
}

void VPrefabExportState::AddShapeInstance(const MDagPath& path, const std::string& fileName)
{
    const std::string& projectDirectory = m_state.Parameters.Textures.ProjectDirectory;
    const std::string relative = RelativePath(JoinPath(projectDirectory, fileName), projectDirectory);
    std::unique_ptr<VMWShapeInstance3D> shape;
    if (EndsWithNoCase(relative, "qmesh")) {
        auto mesh = std::make_unique<VMWStaticMeshInstance>();
        mesh->MeshFileName = relative;
        shape = std::move(mesh);
    } else if (EndsWithNoCase(relative, "model")) {
        auto entity = std::make_unique<VMWEntityInstance>();
        entity->ModelFile = relative;
        shape = std::move(entity);
    } else {
        // Nothing else nests: a prefab naming a prefab would export itself again.
        return;
    }

    const bool known = std::any_of(NodeReferences.begin(), NodeReferences.end(),
                                   [&](const VDictEntry<NodeReference>& entry) { return EqualsNoCase(entry.Name, fileName); });
    if (!known)
        NodeReferences.push_back({fileName, NodeReference {path}});

    shape->Name = path.partialPathName().asChar();
    shape->UniqueID = StableHash(shape->Name);
    PlaceAtNode(path, *shape);
    Shapes.Shapes.push_back(std::move(shape));
    HasShapeInstances = true;
}
