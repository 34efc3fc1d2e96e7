#include "formats/SaveVisibility.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/PrefabShapes.h"
#include "formats/PrefabXml.h"
#include "formats/chunk/LastError.h"
#include "model/VMWorld.h"

#include <map>
#include <random>

namespace {

// One number is drawn and dropped, then blue, green and red, each below 255; alpha is opaque.
uint32_t DebugColour(std::mt19937& random)
{
    random();
    const uint32_t blue = random() % 255;
    const uint32_t green = random() % 255;
    const uint32_t red = random() % 255;
    return 0xFF000000u | (red << 16) | (green << 8) | blue;
}

std::unique_ptr<VMWPortalInstance> MakePortalShape(const VMVisPortal& portal, const std::string& zoneName, int index)
{
    auto shape = std::make_unique<VMWPortalInstance>();
    shape->Name = Format("Portal_%s_%03i", zoneName.c_str(), index);
    const size_t count = portal.Corners.size();
    float centre[3] = {0.0f, 0.0f, 0.0f};
    for (const std::unique_ptr<VMVertex>& corner : portal.Corners)
        for (int axis = 0; axis < 3; ++axis)
            centre[axis] += corner->Position[axis] / static_cast<float>(count);
    std::copy(centre, centre + 3, shape->Position);
    // Last corner first: the editor winds portals the other way round.
    for (size_t k = count; k-- > 0;)
        for (int axis = 0; axis < 3; ++axis)
            shape->LocalVertexPositions.push_back(portal.Corners[k]->Position[axis] - centre[axis]);
    shape->LeadsToOutside = portal.LeadsOutside != 0;
    return shape;
}

} // namespace

bool SaveVisibility(const VMWorld& world, const std::string& settingsFolder, uint32_t colourSeed)
{
    if (!CreateDirectories(settingsFolder)) {
        SetLastError(Format("Failed to create settings directory : %s.\r\n", settingsFolder.c_str()));
        return false;
    }
    const std::string path = JoinPath(settingsFolder, "visibility.xml");
    if (world.VisAreas.IsEmpty() || world.Portals.IsEmpty()) {
        if (FileExists(path))
            DeleteFileAt(path);
        return true;
    }

    std::mt19937 random(colourSeed);
    VMWShapeInstance3DCollection shapes;
    std::map<const VMVisArea*, VMWVisibilityZoneInstance*> zoneOf;
    std::map<const VMVisPortal*, VMWPortalInstance*> portalOf;
    for (int a = 0; a < world.VisAreas.Count(); ++a) {
        const VMVisArea& area = *world.VisAreas[a];
        auto zone = std::make_unique<VMWVisibilityZoneInstance>();
        const std::string zoneName = area.Name.empty() ? Format("%03i", a) : area.Name;
        zone->Name = "VisZone_" + zoneName;
        for (int axis = 0; axis < 3; ++axis) {
            zone->Position[axis] = (area.Box.Min[axis] + area.Box.Max[axis]) * 0.5f;
            zone->BoundingBoxMin[axis] = area.Box.Min[axis] - zone->Position[axis];
            zone->BoundingBoxMax[axis] = area.Box.Max[axis] - zone->Position[axis];
        }
        zone->DebugColor = DebugColour(random);
        for (const VMSubmesh* submesh : area.Submeshes)
            zone->SubMeshIndices.push_back(submesh->Number);
        for (int p = 0; p < area.Portals.Count(); ++p) {
            std::unique_ptr<VMWPortalInstance> portal = MakePortalShape(*area.Portals[p], zoneName, p);
            portalOf[area.Portals[p]] = portal.get();
            zone->Children.push_back(std::move(portal));
        }
        zoneOf[&area] = zone.get();
        shapes.Shapes.push_back(std::move(zone));
    }
    for (const auto& [record, shape] : portalOf) {
        const auto portal = portalOf.find(record->Opposite);
        shape->TargetPortal = portal != portalOf.end() ? portal->second : nullptr;
        const auto zone = zoneOf.find(record->Back);
        shape->TargetZone = zone != zoneOf.end() ? zone->second : nullptr;
    }
    // A file that cannot be written loses the editor's zones, not the mesh: the export goes on.
    SavePrefabXML(shapes, path);
    return true;
}
