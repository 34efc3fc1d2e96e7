#include "geometry/TessellatePolygons.h"

#include "geometry/SplitPolygon.h"
#include "model/VMWorld.h"
#include "report/GeometryLog.h"

#include <memory>

int TessellatePolygons(VMWorld& world)
{
    int visited = 0;
    int result = 0;
    // Sources leave empty slots that are dropped once at the end, so that a world of quads is
    // triangulated in linear time; the pieces are appended and need no further split.
    const int sourceCount = world.Polygons.Count();
    for (int index = 0; index < sourceCount && result == 0; ++index) {
        if (++visited % 1024 == 0)
            GeometryLog("Tessellating (%d / %d)", index, world.Polygons.Count());
        VMPolygon* polygon = world.Polygons.Get(index);
        if (polygon == nullptr || polygon->CornerCount() <= 3)
            continue;
        std::unique_ptr<VMPolygon> source = world.Polygons.TakeLeaveEmpty(index);
        result = SplitPolygon(world, *source, source->Corners.data(), source->CornerCount(), 0, 3);
    }
    world.Polygons.Compact();
    return result;
}
