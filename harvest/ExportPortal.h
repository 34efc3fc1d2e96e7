#pragma once
// Portal shapes: meshes tagged "ExportAs" = 2, one polygon each. A portal is an opening between
// two vis areas and goes to the visibility builder; an anti-portal ("antiportal" non-zero) is an
// occluder that the world keeps and the builder places in an area.

#include <maya/MDagPath.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

class VMWorld;
struct VMBoundingBox;
struct VMVisAntiPortal;

struct HarvestedPortal {
    std::string Name;
    // World positions in the engine's axes, in the polygon's corner order.
    std::vector<std::array<double, 3>> Corners;
    // Each set only when the shape carries the attribute.
    std::optional<std::string> Key;
    std::optional<std::string> FrontName;
    std::optional<std::string> BackName;
    bool CutGeometry = true;
};

// What the visibility builder of the export takes from the portal shapes.
class VisBuilderInput {
public:
    virtual ~VisBuilderInput() = default;
    virtual void AddPortal(const HarvestedPortal& portal) = 0;
    // visAreaName is empty when the occluder names no area.
    virtual void AddAntiPortal(VMVisAntiPortal& antiPortal, const VMBoundingBox& box,
                               const std::string& visAreaName) = 0;
};

// 1 when the shape became a portal or anti-portal; 0 when it was rejected (not exactly one
// polygon, fewer than three corners) or the export has no visibility builder; -1 when the mesh
// could not be read. The reasons are trace lines.
int ExportPortal(const MDagPath& path, VMWorld& world, VisBuilderInput* builder);
