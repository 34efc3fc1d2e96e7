#pragma once
// The working data of the visibility builder, shared by its stages (one file each) and read
// by the debug dump and the tests. Polygons refer to each other by their number in the
// polygon pool, areas by their number in the area list; -1 stands for none.

#include "geometry/visibility/VBVector.h"

#include <cstdint>
#include <string>
#include <vector>

class VMPolygon;
class VMVisArea;

// Flag bits of a builder polygon.
enum VBPolygonFlag : uint32_t {
    // Touches its portal on the front or the back side.
    VBFlagFront = 1u << 29,
    VBFlagBack = 1u << 30,
    // The bits that a piece or copy does not inherit from its source: the sides and the scratch
    // bits beside them.
    VBFlagSideBits = (1u << 26) | (1u << 27) | (1u << 28) | (1u << 29) | (1u << 30),
};

struct VBPlane {
    VBVector Normal;
    double D = 0.0;
    // False when the first three corners gave no direction (a point X of the plane satisfies
    // Normal . X = D only when valid).
    bool Valid = false;
};

struct VBPolygon {
    // Corners are VBState::Corners[FirstCorner, FirstCorner + CornerCount); a copy shares the
    // corners of its source.
    uint32_t FirstCorner = 0;
    uint32_t CornerCount = 0;
    VBPlane Plane;
    uint32_t Flags = 0;
    // The portal that classified it.
    int32_t Portal = -1;
    int32_t Area = -1;
    uint32_t Sequence = 0;
    // The polygon it was cut or copied from.
    int32_t Source = -1;
    // Position in the polygon list; -1 once a cut has replaced it.
    int32_t ListIndex = -1;
    // Made by copying (beside a polygon that touches a second portal, or into a further area),
    // so not part of the tiling of its world polygon.
    bool Copy = false;
    VMPolygon* Primitive = nullptr;
};

struct VBPortalState {
    VBPlane Plane;
    // The corner box grown by the classification tolerance.
    VBBox GrownBox;
    // One per edge, pointing away from the interior: Normal . X - D <= 0 for interior points.
    std::vector<VBPlane> EdgePlanes;
    std::vector<int32_t> FrontTouching;
    std::vector<int32_t> BackTouching;
    int32_t FrontArea = -1;
    int32_t BackArea = -1;
    bool Bad = false;
};

struct VBArea {
    // 1-based; after merging the live areas are numbered 1, 2, ... and merged ones carry 0.
    int32_t Id = 0;
    int32_t References = 0;
    int32_t Elements = 0;
    std::string Name;
    VBBox Box;
    // The area it was merged into.
    int32_t MergedInto = -1;
    VMVisArea* Record = nullptr;
};

struct VBState {
    int Mode = 0;
    std::vector<VBVector> Corners;
    // Every polygon made: the world's, the pieces and copies, and the polygons that cuts have
    // replaced (kept as the sources of their pieces).
    std::vector<VBPolygon> Polygons;
    // The polygon list: pool numbers in list order.
    std::vector<int32_t> List;
    // Connections of pool polygon p: ConnectionTargets[ConnectionStart[p], ConnectionStart[p + 1]).
    std::vector<uint32_t> ConnectionStart;
    std::vector<int32_t> ConnectionTargets;
    std::vector<VBPortalState> Portals;
    std::vector<VBArea> Areas;
    // Polygons still without area after merging.
    std::vector<int32_t> Floating;
    // Per placement item, the areas it was placed in.
    std::vector<std::vector<int32_t>> ItemAreas;
    uint32_t SequenceCounter = 0;

    std::vector<std::string> LeakingPortals;
    std::vector<std::string> SameAreaPortals;
    std::vector<std::string> NamedMergePortals;
    std::vector<std::string> UntouchedPortals;

    const VBVector* CornersOf(const VBPolygon& polygon) const { return Corners.data() + polygon.FirstCorner; }
    int32_t LiveArea(int32_t area) const
    {
        while (area >= 0 && Areas[static_cast<size_t>(area)].MergedInto >= 0)
            area = Areas[static_cast<size_t>(area)].MergedInto;
        return area;
    }
};
