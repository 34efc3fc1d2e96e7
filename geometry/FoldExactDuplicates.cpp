#include "geometry/FoldExactDuplicates.h"

#include "model/VMWorld.h"
#include "report/GeometryLog.h"

#include <cmath>
#include <cstddef>

namespace {

constexpr float NormalTolerance = 0.002f;

bool IsDuplicate(const VMVertex& v, const VMVertex& w, float epsUV)
{
    for (int k = 0; k < 2; ++k) {
        if (!(std::fabs(w.BaseUV[k] - v.BaseUV[k]) <= epsUV && std::fabs(w.SecondUV[k] - v.SecondUV[k]) <= epsUV))
            return false;
    }
    for (int k = 0; k < 3; ++k) {
        if (!(std::fabs(w.Normal[k] - v.Normal[k]) <= NormalTolerance))
            return false;
        if (w.Tangent[k] != v.Tangent[k] || w.Position[k] != v.Position[k])
            return false;
    }
    for (int k = 0; k < 4; ++k) {
        if (w.Colour[k] != v.Colour[k])
            return false;
    }
    return true;
}

}

int FoldExactDuplicates(VMWorld& world, const PositionRings& rings, float epsVert, float epsUV)
{
    // The search box of half-width 2 x epsVert around v holds exactly the vertices at v's
    // position (welding moved vertices by less than epsVert, which that width allows for), so
    // groups of equal positions answer the same.
    if (!(epsVert >= 0.0f))
        return 0;
    int links = 0;
    const int polygonCount = world.Polygons.Count();
    for (int index = 0; index < polygonCount; ++index) {
        if (index % 4096 == 0)
            GeometryLog("AdjustTri: Finding duplicate vertigons (%d / %d)\r\n", index, polygonCount);
        for (VMVertex* v : world.Polygons.Get(index)->Corners) {
            if (v->MergeLink != nullptr)
                continue;
            const int position = static_cast<int>(v->Index);
            if (world.Vertices.Get(position) != v)
                continue;
            // Each candidate's link depends on v and itself alone, so the ring may start anywhere.
            if (rings.Next(position) < 0)
                continue;
            for (int member = rings.Next(position); member != position; member = rings.Next(member)) {
                VMVertex* w = world.Vertices.Get(member);
                if (w->MergeLink == nullptr && IsDuplicate(*v, *w, epsUV)) {
                    w->MergeLink = v;
                    ++links;
                }
            }
        }
    }
    return links;
}
