#pragma once
// A polygon of a world: its corners (in the primitive base), the polygons across its edges
// and the cached plane.

#include "model/VMPrimitive.h"

#include <cstdint>
#include <vector>

class VMPolygon : public VMPrimitive {
public:
    static constexpr uint32_t PlaneValidFlag = 1u;

    VMPolygon() : VMPrimitive(VMPrimitiveKind::Polygon) {}
    // A triangle: corners and neighbours both of length 3.
    VMPolygon(VMVertex* a, VMVertex* b, VMVertex* c);
    ~VMPolygon() { LeaveOwners(); }

    // One entry per corner: the polygon across the edge from that corner to the next; filled
    // by the connectivity pass.
    std::vector<VMPolygon*> Neighbours;
    uint32_t PolygonAttributes[3] = {0, 0, 0};
    uint32_t Subdivisions[2] = {16, 16};
    float SurfaceValues[5] = {0.0f, 0.0f, 0.0f, 0.0f, 0.0f};
    // Kept across stripping. All bits set means no group, so worlds without groups write no
    // group chunk.
    uint32_t Group = NoGroup;
    float FurtherValues[3] = {0.0f, 0.0f, 0.0f};
    uint32_t PlaneFlags = 0;
    // Normal x, y, z and d: the polygon lies in normal . p = d, with a unit normal.
    double Plane[4] = {0.0, 0.0, 0.0, 0.0};

    bool HasValidPlane() const { return (PlaneFlags & PlaneValidFlag) != 0; }
    void InvalidatePlane() { PlaneFlags &= ~PlaneValidFlag; }

    // What a piece of a split polygon takes from its source: the attribute copy, the polygon
    // attributes, subdivisions, surface values, group and the plane (with its valid flag).
    void CopySplitAttributesFrom(const VMPolygon& source);
};
