#include "geometry/RepairNormals.h"

#include "geometry/PolygonPlane.h"
#include "model/VMWorld.h"
#include "report/GeometryLog.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

constexpr uint32_t Bad = 0;
constexpr uint32_t Good = 1;
constexpr float ShortestEdge = 0.01f;
constexpr float ShortestNormal = 1.1920929e-7f;

float Length(const float v[3])
{
    return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
}

void MarkUsableNormals(VMWorld& world)
{
    for (int i = 0; i < world.Vertices.Count(); ++i) {
        VMVertex* vertex = world.Vertices.Get(i);
        vertex->Index = static_cast<uint32_t>(i);
        const float* n = vertex->Normal;
        const float squaredLength = n[0] * n[0] + n[1] * n[1] + n[2] * n[2];
        if (squaredLength > 0.9f && squaredLength < 1.1f) {
            vertex->State = Good;
        } else {
            std::fill(std::begin(vertex->Normal), std::end(vertex->Normal), 0.0f);
            vertex->State = Bad;
        }
    }
}

// The plane's normal; without a plane, the first clearly non-zero corner normal, normalised.
void FaceNormal(VMPolygon& polygon, float normal[3])
{
    double plane[4];
    if (PolygonPlane(polygon, plane)) {
        for (int axis = 0; axis < 3; ++axis)
            normal[axis] = static_cast<float>(plane[axis]);
        return;
    }
    std::fill(normal, normal + 3, 0.0f);
    for (const VMVertex* corner : polygon.Corners) {
        const float* n = corner->Normal;
        const bool clear = std::fabs(n[0]) > 0.0001f || std::fabs(n[1]) > 0.0001f || std::fabs(n[2]) > 0.0001f;
        if (!clear)
            continue;
        const float length = Length(n);
        for (int axis = 0; axis < 3; ++axis)
            normal[axis] = n[axis] / length;
        return;
    }
}

// The angle at corner k between its edges to the next and the previous corner; 0 when either
// edge is too short to give a direction.
float CornerAngle(const VMPolygon& polygon, size_t k)
{
    const size_t count = polygon.Corners.size();
    const float* at = polygon.Corners[k]->Position;
    const float* next = polygon.Corners[(k + 1) % count]->Position;
    const float* previous = polygon.Corners[(k + count - 1) % count]->Position;
    float toNext[3];
    float toPrevious[3];
    for (int axis = 0; axis < 3; ++axis) {
        toNext[axis] = next[axis] - at[axis];
        toPrevious[axis] = previous[axis] - at[axis];
    }
    const float nextLength = Length(toNext);
    const float previousLength = Length(toPrevious);
    if (!(nextLength > ShortestEdge && previousLength > ShortestEdge))
        return 0.0f;
    const float dot = (toNext[0] * toPrevious[0] + toNext[1] * toPrevious[1] + toNext[2] * toPrevious[2]) /
                      (nextLength * previousLength);
    return std::acos(std::clamp(dot, -1.0f, 1.0f));
}

bool SharesSmoothing(const VMVertex& a, const VMVertex& b)
{
    return a.GroupNumber == b.GroupNumber && (a.SmoothingMask & b.SmoothingMask) != 0;
}

void AccumulateCornerNormals(VMWorld& world, VMPolygon& polygon)
{
    float faceNormal[3];
    FaceNormal(polygon, faceNormal);
    for (size_t k = 0; k < polygon.Corners.size(); ++k) {
        const VMVertex* corner = polygon.Corners[k];
        for (const VMVertex* sibling : corner->Siblings) {
            VMVertex* target = world.Vertices.Get(static_cast<int>(sibling->Index));
            if (target == nullptr || target->State != Bad)
                continue;
            if (target != corner && !SharesSmoothing(*target, *corner))
                continue;
            const float angle = CornerAngle(polygon, k);
            for (int axis = 0; axis < 3; ++axis)
                target->Normal[axis] += angle * faceNormal[axis];
        }
    }
}

}

int RepairNormals(VMWorld& world)
{
    MarkUsableNormals(world);

    int skipped = 0;
    for (VMPolygon* polygon : world.Polygons) {
        if (polygon->CornerCount() < 3)
            ++skipped;
        else
            AccumulateCornerNormals(world, *polygon);
    }
    if (skipped > 0)
        GeometryLog("%i bigons monogons or agons skipped.\n", skipped);

    int bad = 0;
    for (VMVertex* vertex : world.Vertices) {
        const float length = Length(vertex->Normal);
        if (length >= ShortestNormal) {
            for (float& component : vertex->Normal)
                component /= length;
        } else {
            ++bad;
        }
    }
    if (bad > 0)
        GeometryLog("%i Vertices with bad normals found.\n", bad);
    return 0;
}
