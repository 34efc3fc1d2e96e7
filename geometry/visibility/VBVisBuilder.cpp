#include "geometry/visibility/VBVisBuilder.h"

#include "base/TextUtil.h"
#include "geometry/visibility/VBGeometry.h"
#include "geometry/visibility/VBStages.h"
#include "geometry/visibility/VisDebugDump.h"
#include "model/VMWorld.h"
#include "report/VGLogger.h"
#include "report/VReport.h"

#include <algorithm>
#include <cstdarg>

namespace {

constexpr const char* StageTitles[] = {
    "1. Before visibility calculations (original data)",
    "2. After the polygons crossing the portals have been splitted",
    "3. After the scene has been floodfilled",
    "4. After the visibility areas have been merged (whenever possible)",
    "5. After the remaining floating geometry has been assigned to zones\t(Final Result)",
};

bool AnyAreaHoldsGeometry(const VBState& state)
{
    return std::any_of(state.Areas.begin(), state.Areas.end(),
                       [](const VBArea& area) { return area.MergedInto < 0 && area.Elements > 0; });
}

void ReportNoArea(const VBContext& context, VReport& report)
{
    VBLog(context, "Portals were found, but they didn't generate any valid visibility areas. Please correct this");
    VReportEntry entry;
    entry.Title = "Portals didn't generate any visibility areas.";
    entry.Explanation = "Portals were found, but they didn't generate any valid visibility areas.";
    entry.Severity = SeverityError;
    report.AddEntry(std::move(entry));
}

} // namespace

void VBLog(const VBContext& context, const char* format, ...)
{
    if (context.Logger == nullptr)
        return;
    va_list args;
    va_start(args, format);
    const std::string text = FormatV(format, args);
    va_end(args);
    context.Logger->Print("%s", text.c_str());
}

VBVisBuilder::VBVisBuilder() : m_state(std::make_unique<VBState>()) {}

VBVisBuilder::~VBVisBuilder() = default;

void VBVisBuilder::SetLogger(VGLogger* logger) { m_logger = logger; }

VBPortal& VBVisBuilder::AddPortal(int cornerCount)
{
    auto portal = std::make_unique<VBPortal>();
    portal->Corners.resize(static_cast<size_t>(std::max(cornerCount, 0)));
    m_portals.push_back(std::move(portal));
    return *m_portals.back();
}

VBPlacementItem& VBVisBuilder::AddItem()
{
    m_items.push_back(std::make_unique<VBPlacementItem>());
    return *m_items.back();
}

void VBVisBuilder::SetPolygons(const VMWorld& world)
{
    VBState& state = *m_state;
    state.Polygons.clear();
    state.Corners.clear();
    state.List.clear();
    state.Polygons.reserve(static_cast<size_t>(world.Polygons.Count()));
    for (VMPolygon* polygon : world.Polygons) {
        if (polygon == nullptr)
            continue;
        VBPolygon copy;
        copy.FirstCorner = static_cast<uint32_t>(state.Corners.size());
        copy.CornerCount = static_cast<uint32_t>(polygon->Corners.size());
        copy.Primitive = polygon;
        for (const VMVertex* corner : polygon->Corners)
            state.Corners.push_back({corner->Position[0], corner->Position[1], corner->Position[2]});
        copy.Plane = PlaneThroughCorners(state.Corners.data() + copy.FirstCorner, copy.CornerCount);
        copy.ListIndex = static_cast<int32_t>(state.List.size());
        state.List.push_back(static_cast<int32_t>(state.Polygons.size()));
        state.Polygons.push_back(copy);
    }
}

int VBVisBuilder::Build(int mode, bool debug, const std::string& debugPath, VReport& report)
{
    VBState& state = *m_state;
    if (state.List.empty() || m_portals.empty() || mode == VBModeOff)
        return 1;
    state.Mode = mode;
    VBContext context {state, m_portals, m_items, m_logger};
    VisDebugDump dump;
    if (debug && !debugPath.empty()) {
        dump.Open(debugPath);
        dump.WriteStage(StageTitles[0], state, m_portals);
    }

    VBLog(context, "  VBVisBuilder: Splitting geometry along portals (%i portals, %i polygons) ;\r\n",
          static_cast<int>(m_portals.size()), static_cast<int>(state.List.size()));
    SplitAlongPortals(context);
    dump.WriteStage(StageTitles[1], state, m_portals);

    VBLog(context, "  VBVisBuilder: Building conectivity information;\r\n");
    BuildVisConnectivity(context);

    VBLog(context, "  VBVisBuilder: Assigning touching polygons to portals;\r\n");
    AssignTouchingPolygons(context);

    VBLog(context, "  VBVisBuilder: Flood filling geometry;\r\n");
    FloodFillAreas(context);
    dump.WriteStage(StageTitles[2], state, m_portals);

    VBLog(context, "  VBVisBuilder: Merging visibility areas;\r\n");
    MergeAreas(context);
    ReportPortalIssues(state, report);

    int result = 0;
    if (AnyAreaHoldsGeometry(state)) {
        dump.WriteStage(StageTitles[3], state, m_portals);
        VBLog(context, "  VBVisBuilder: Assigning floating geometry;\r\n");
        ComputeAreaBoxes(context);
        state.Floating.clear();
        for (const int32_t number : state.List)
            if (state.Polygons[static_cast<size_t>(number)].Area < 0)
                state.Floating.push_back(number);
        AssignFloatingGeometry(context);
        dump.WriteStage(StageTitles[4], state, m_portals);
        ComputeAreaBoxes(context);
        result = 1;
    } else {
        ReportNoArea(context, report);
    }
    dump.Close();
    return result;
}

void VBVisBuilder::ExportToWorld(VMWorld& world)
{
    VBContext context {*m_state, m_portals, m_items, m_logger};
    ExportVisibility(context, world);
}

void VBVisBuilder::Clear()
{
    m_portals.clear();
    m_items.clear();
    m_state = std::make_unique<VBState>();
    VBLog(VBContext {*m_state, m_portals, m_items, m_logger}, "  VBVisBuilder: cleaned up.;\r\n");
}
