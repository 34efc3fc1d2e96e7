#pragma once
// The stages of the visibility builder, in the order Build runs them, each in its own file.

#include "geometry/visibility/VBState.h"
#include "geometry/visibility/VBVisBuilder.h"

#include <memory>
#include <vector>

class VGLogger;
class VMWorld;
class VReport;

struct VBContext {
    VBState& State;
    const std::vector<std::unique_ptr<VBPortal>>& Portals;
    const std::vector<std::unique_ptr<VBPlacementItem>>& Items;
    // Null: no lines.
    VGLogger* Logger = nullptr;
};

// printf-style, to the context's logger when there is one.
void VBLog(const VBContext& context, const char* format, ...) __attribute__((format(printf, 2, 3)));

// Cuts the polygons that cross a portal into a front and a back piece, and records on every
// polygon that touches a portal which one and on which side.
void SplitAlongPortals(VBContext& context);

// Connects polygons that share a corner position (within 0.05 on each axis) and, in modes 3
// and above, polygons that pierce each other; pieces on opposite sides of one portal never
// connect.
void BuildVisConnectivity(VBContext& context);

// Fills every portal's lists of the polygons touching its front and back sides.
void AssignTouchingPolygons(VBContext& context);

// Gives every portal side an area and spreads it over the geometry connected to the side.
void FloodFillAreas(VBContext& context);

// Gives area to the seeds that have none and to every polygon connected to them through
// polygons without area, popping the seeds last first; answers the stack's peak entry count.
// Each polygon given the area is also appended to assigned when that is not null.
size_t FillFromPolygons(VBState& state, const std::vector<int32_t>& seeds, int32_t area,
                        std::vector<int32_t>* assigned = nullptr);

// Merges the areas that geometry connects past a portal, numbers the live areas and marks the
// portals that leak or have the same area on both sides.
void MergeAreas(VBContext& context);

// One issue per kind of portal problem that the stages found.
void ReportPortalIssues(const VBState& state, VReport& report);

// Each live area's box over its polygons and the placement items named after it.
void ComputeAreaBoxes(VBContext& context);

// Gives the polygons that no fill reached an area, by the mode's rule.
void AssignFloatingGeometry(VBContext& context);

// Writes the areas and portals into the world and lists the primitives and items in them.
void ExportVisibility(VBContext& context, VMWorld& world);
