#include "geometry/visibility/VBStages.h"
#include "report/VReport.h"

namespace {

void MergePair(VBContext& context, size_t portalIndex, int32_t sideArea, int32_t otherArea)
{
    VBState& state = context.State;
    const int32_t sideLive = state.LiveArea(sideArea);
    const int32_t otherLive = state.LiveArea(otherArea);
    if (sideLive == otherLive)
        return;
    VBArea& side = state.Areas[static_cast<size_t>(sideLive)];
    VBArea& other = state.Areas[static_cast<size_t>(otherLive)];
    VBLog(context, "  VBVisBuilder: Merging Vis Areas: %i and %i \r\n", side.Id, other.Id);
    // The named area survives a merge with an unnamed one; on equal length the side's own.
    const bool sideAbsorbs = side.Name.size() >= other.Name.size();
    VBArea& absorbing = sideAbsorbs ? side : other;
    VBArea& absorbed = sideAbsorbs ? other : side;
    if (!absorbed.Name.empty()) {
        const std::string& portalName = context.Portals[portalIndex]->Name;
        VBLog(context, "At portal %s:\r\n", portalName.c_str());
        VBLog(context, "Merging two named Vis Areas: %s and %s!. Please check for leaks or spelling errors.\r\n",
              absorbing.Name.c_str(), absorbed.Name.c_str());
        state.NamedMergePortals.push_back(portalName);
    }
    absorbing.Elements += absorbed.Elements;
    absorbing.References += absorbed.References;
    absorbed.Elements = 0;
    absorbed.References = 0;
    absorbed.MergedInto = sideAbsorbs ? sideLive : otherLive;
}

void MergeSide(VBContext& context, size_t portalIndex, int32_t sideArea, const std::vector<int32_t>& touching)
{
    for (const int32_t number : touching) {
        const int32_t area = context.State.Polygons[static_cast<size_t>(number)].Area;
        if (area >= 0 && context.State.LiveArea(area) != context.State.LiveArea(sideArea))
            MergePair(context, portalIndex, sideArea, area);
    }
}

void AddListIssue(VReport& report, const std::vector<std::string>& names, const char* title, const char* text)
{
    if (names.empty())
        return;
    VReportEntry entry;
    entry.Title = title;
    entry.Explanation = text;
    entry.Detail = "The following portals were affected:\r\n";
    for (const std::string& name : names)
        entry.Detail += name + "\r\n";
    entry.Severity = SeverityError;
    report.AddEntry(std::move(entry));
}

} // namespace

void MergeAreas(VBContext& context)
{
    VBState& state = context.State;
    for (size_t p = 0; p < state.Portals.size(); ++p) {
        VBPortalState& portal = state.Portals[p];
        if (portal.FrontArea == portal.BackArea) {
            const std::string& name = context.Portals[p]->Name;
            VBLog(context, "Bad portal detected: %i (%s). Same named area on both sides of the portal! \r\n",
                  static_cast<int>(p), name.c_str());
            portal.Bad = true;
            state.SameAreaPortals.push_back(name);
        }
        MergeSide(context, p, portal.FrontArea, portal.FrontTouching);
        MergeSide(context, p, portal.BackArea, portal.BackTouching);
    }

    VBLog(context, "  VBVisBuilder: Enumerating vis areas\r\n");
    int32_t live = 0;
    for (VBArea& area : state.Areas)
        area.Id = area.MergedInto < 0 ? ++live : 0;
    for (const int32_t number : state.List) {
        VBPolygon& polygon = state.Polygons[static_cast<size_t>(number)];
        polygon.Area = state.LiveArea(polygon.Area);
    }
    for (size_t p = 0; p < state.Portals.size(); ++p) {
        VBPortalState& portal = state.Portals[p];
        portal.FrontArea = state.LiveArea(portal.FrontArea);
        portal.BackArea = state.LiveArea(portal.BackArea);
        if (portal.FrontArea == portal.BackArea && !portal.Bad) {
            const std::string& name = context.Portals[p]->Name;
            VBLog(context,
                  "Bad portal detected: %i (%s). Visibility leaks from one side to the other. Please check if it is "
                  "large enough! \r\n",
                  static_cast<int>(p), name.c_str());
            portal.Bad = true;
            state.LeakingPortals.push_back(name);
        }
    }
    VBLog(context, "  VBVisBuilder: %i VisAreas after merging (before: %i) \r\n", static_cast<int>(live),
          static_cast<int>(state.Areas.size()));
}

void ReportPortalIssues(const VBState& state, VReport& report)
{
    AddListIssue(report, state.LeakingPortals, "Portal leak detected",
                 "The portal has geometry on both sides that seem to be connected. Please check if the portal is "
                 "large enough.");
    AddListIssue(report, state.SameAreaPortals, "Bad portal detected", "Same named area on both sides of the portal.");
    AddListIssue(report, state.NamedMergePortals, "Portal error",
                 "Merging two named Vis Areas. Please check for leaks or spelling errors.");
    AddListIssue(report, state.UntouchedPortals, "Portal error",
                 "Some portals did not touch any geometry. Either the portal doesn't cut geometry, or the geometry "
                 "has already been assigned to a different portal");
}
