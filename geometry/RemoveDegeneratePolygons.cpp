#include "geometry/RemoveDegeneratePolygons.h"

#include "geometry/PolygonArea.h"
#include "geometry/PolygonPlane.h"
#include "model/VMWorld.h"
#include "report/GeometryLog.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

enum class Defect { None, Area, Multi, Normal };

// Harvested corners may repeat where Maya had a collapsed edge.
void DropRepeatedCorners(VMPolygon& polygon)
{
    const size_t count = polygon.Corners.size();
    size_t repeats = 0;
    for (size_t k = 0; k < count; ++k) {
        if (polygon.Corners[k] == polygon.Corners[(k + 1) % count])
            ++repeats;
    }
    if (repeats == 0 || count - repeats < 3)
        return;
    std::vector<VMVertex*> kept;
    kept.reserve(count - repeats);
    for (size_t k = 0; k < count; ++k) {
        if (polygon.Corners[k] != polygon.Corners[(k + 1) % count])
            kept.push_back(polygon.Corners[k]);
    }
    polygon.Corners = std::move(kept);
    polygon.Neighbours.assign(polygon.Corners.size(), nullptr);
}

bool HasRepeatedVertex(const VMPolygon& polygon)
{
    const std::vector<VMVertex*>& corners = polygon.Corners;
    if (corners.size() <= 16) {
        for (size_t a = 0; a < corners.size(); ++a) {
            for (size_t b = a + 1; b < corners.size(); ++b) {
                if (corners[a] == corners[b])
                    return true;
            }
        }
        return false;
    }
    std::vector<VMVertex*> sorted = corners;
    std::sort(sorted.begin(), sorted.end());
    return std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end();
}

Defect FindDefect(VMPolygon& polygon, double smallestArea)
{
    if (PolygonArea(polygon.Corners.data(), polygon.CornerCount()) < smallestArea)
        return Defect::Area;
    if (HasRepeatedVertex(polygon))
        return Defect::Multi;
    double plane[4];
    if (PolygonPlane(polygon, plane)) {
        const double squaredLength = plane[0] * plane[0] + plane[1] * plane[1] + plane[2] * plane[2];
        if (!(squaredLength > 0.9 && squaredLength < 1.1))
            return Defect::Normal;
    }
    return Defect::None;
}

}

DegenerateCounts RemoveDegeneratePolygons(VMWorld& world, float epsVert)
{
    const float squaredEps = epsVert * epsVert;
    const double smallestArea = static_cast<double>(squaredEps);
    DegenerateCounts counts;
    const int count = world.Polygons.Count();
    // Removed polygons leave empty slots, dropped once at the end.
    for (int index = 0; index < count; ++index) {
        if (index % 4096 == 0)
            GeometryLog("AdjustTri: Removing Degenerate Triangles (%d / %d)\r\n", index, count);
        VMPolygon* polygon = world.Polygons.Get(index);
        if (polygon == nullptr)
            continue;
        DropRepeatedCorners(*polygon);
        switch (FindDefect(*polygon, smallestArea)) {
        case Defect::None: continue;
        case Defect::Area: ++counts.Area; break;
        case Defect::Multi: ++counts.Multi; break;
        case Defect::Normal: ++counts.Normal; break;
        }
        world.Polygons.RemoveLeaveEmpty(index);
    }
    world.Polygons.Compact();
    return counts;
}
