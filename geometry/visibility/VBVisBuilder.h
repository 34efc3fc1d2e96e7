#pragma once
// The visibility builder: cuts a static world into visibility areas separated by the portals
// the artist drew, and writes the areas and portals into the world.
//
// One export uses one builder:
// 1. the harvest adds the portals (AddPortal) and the placement items, one per anti-portal
//    (AddItem), while it walks the scene;
// 2. the pipeline hands over the world's polygons (SetPolygons) and runs Build;
// 3. when Build answers 1, ExportToWorld writes the areas and portals into the world;
// 4. Clear (or the destructor) frees everything.
//
// The builder works on its own double-precision copies of the polygons and never changes the
// world's geometry: ExportToWorld only adds VMVisArea and VMVisPortal records and lists each
// primitive in its areas (both directions).

#include "geometry/visibility/VBVector.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class VGLogger;
class VMWorld;
class VReport;
struct VMVisAntiPortal;
struct VBState;

// A portal as the artist drew it. The harvest fills the fields; the builder derives the
// plane, edge planes and boxes itself when it runs, so nothing needs finishing.
struct VBPortal {
    // Engine axes, centimetres, in drawing order. The portal's front is the side its normal
    // points to, (P1 - P0) x (P2 - P0) over the first three corners.
    std::vector<VBVector> Corners;
    std::string Name = "Noname";
    std::string Key;
    // The areas on the two sides; sides of different portals that name the same area (letter
    // case aside) share it. Empty: the side makes an area of its own.
    std::string FrontName;
    std::string BackName;
    // Off: the portal cuts nothing; polygons that it crosses or touches count as touching its
    // front side.
    bool CutGeometry = true;
};

// Something that must land in an area without being cut: the harvest registers every
// anti-portal as one.
struct VBPlacementItem {
    static constexpr uint32_t PlaceInNearestArea = 1u;

    VMVisAntiPortal* AntiPortal = nullptr;
    VBBox Box;
    // Non-empty: the item goes into the area of that name and no other.
    std::string AreaName;
    // PlaceInNearestArea: an item that no area box holds goes into the area with the nearest
    // box instead of none.
    uint32_t Flags = 0;
};

// Build's mode, the export option ComputeVisibility.
enum VBMode : int {
    VBModeOff = -1,
    // Floating geometry is copied into every area whose box holds one of its corners.
    VBModeQuick = 0,
    // Floating geometry goes to the area of connected geometry, else of the nearest polygon.
    VBModeWellConnected = 1,
    // As below, with floating geometry that several areas could take decided last, nearest first.
    VBModeDeferredNearest = 2,
    // Also connects polygons that pierce each other; floating geometry as mode 2.
    VBModeIntersections = 3,
    // Also connects polygons that pierce each other; floating geometry as mode 1.
    VBModeArbitrary = 4,
};

class VBVisBuilder {
public:
    VBVisBuilder();
    ~VBVisBuilder();
    VBVisBuilder(const VBVisBuilder&) = delete;
    VBVisBuilder& operator=(const VBVisBuilder&) = delete;

    // Where the builder's lines go; null (the default) writes none. Not owned.
    void SetLogger(VGLogger* logger);

    // A new portal with cornerCount corners at the origin, for the caller to fill.
    VBPortal& AddPortal(int cornerCount);
    // A new placement item for the caller to fill.
    VBPlacementItem& AddItem();

    // One builder polygon per world polygon, corners copied in order (replacing any given
    // before). The world must outlive the builder's use of it: ExportToWorld lists these very
    // primitives in their areas.
    void SetPolygons(const VMWorld& world);

    // Runs the five stages. mode is one of VBMode; with debug on and a non-empty path each
    // stage is dumped to that file (a file that cannot be opened leaves the dumps out). Portal
    // problems go to the report. Answers 1 on success and when there is nothing to do (no
    // polygon, no portal, mode off), 0 when the portals made no area; ExportToWorld is only
    // meaningful after 1.
    int Build(int mode, bool debug, const std::string& debugPath, VReport& report);

    // Adds one VMVisArea per area that holds geometry and one VMVisPortal per usable portal
    // side to the world given to SetPolygons, and lists every polygon and placement item in
    // its areas.
    void ExportToWorld(VMWorld& world);

    // Frees portals, items, polygons and areas.
    void Clear();

    const std::vector<std::unique_ptr<VBPortal>>& Portals() const { return m_portals; }
    const std::vector<std::unique_ptr<VBPlacementItem>>& Items() const { return m_items; }
    // The working data of the last Build, for the debug dump and for inspection.
    const VBState& State() const { return *m_state; }

private:
    VGLogger* m_logger = nullptr;
    std::vector<std::unique_ptr<VBPortal>> m_portals;
    std::vector<std::unique_ptr<VBPlacementItem>> m_items;
    std::unique_ptr<VBState> m_state;
};
