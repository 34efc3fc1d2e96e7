#include "formats/DescribeVisibility.h"

#include "base/Number.h"
#include "base/TextUtil.h"
#include "formats/PrefabShapes.h"

namespace {

std::string Point(const float (&point)[3])
{
    return "(" + FormatFloat(point[0], 1) + ", " + FormatFloat(point[1], 1) + ", " + FormatFloat(point[2], 1) + ")";
}

std::string SubmeshList(const std::vector<int32_t>& numbers)
{
    if (numbers.empty())
        return "none";
    std::string text;
    for (const int32_t number : numbers)
        text += (text.empty() ? "" : ",") + std::to_string(number);
    return text;
}

} // namespace

std::string DescribeVisibility(const VMWShapeInstance3DCollection& shapes)
{
    int zones = 0;
    int portals = 0;
    for (const auto& shape : shapes.Shapes)
        if (const auto* zone = dynamic_cast<const VMWVisibilityZoneInstance*>(shape.get())) {
            ++zones;
            portals += static_cast<int>(zone->Children.size());
        }
    std::string text = Format("Visibility: %d zones, %d portals\n", zones, portals);
    for (const auto& shape : shapes.Shapes) {
        const auto* zone = dynamic_cast<const VMWVisibilityZoneInstance*>(shape.get());
        if (zone == nullptr)
            continue;
        float low[3];
        float high[3];
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = zone->Position[axis] + zone->BoundingBoxMin[axis];
            high[axis] = zone->Position[axis] + zone->BoundingBoxMax[axis];
        }
        text += Format("  zone %s: box %s - %s, submeshes %s%s\n", zone->Name.c_str(), Point(low).c_str(),
                       Point(high).c_str(), SubmeshList(zone->SubMeshIndices).c_str(),
                       zone->MergeWithOutside ? ", merges with outside" : "");
        for (const auto& child : zone->Children) {
            const auto* portal = dynamic_cast<const VMWPortalInstance*>(child.get());
            if (portal == nullptr)
                continue;
            const std::string target = portal->TargetZone ? portal->TargetZone->Name
                                       : portal->LeadsToOutside ? std::string("outside")
                                                                : std::string("nowhere");
            text += Format("    portal %s -> %s, %zu corners\n", portal->Name.c_str(), target.c_str(),
                           portal->LocalVertexPositions.size() / 3);
        }
    }
    return text;
}
