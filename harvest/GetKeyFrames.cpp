#include "harvest/GetKeyFrames.h"

#include "harvest/HarvestState.h"
#include "report/DebugFile.h"
#include "report/VIssueKind.h"
#include "report/VReport.h"

#include <maya/MAnimUtil.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MItDag.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

int32_t ToTick(double frames, int64_t ticksPerFrame)
{
    const double ticks = std::trunc(frames * static_cast<double>(ticksPerFrame));
    constexpr double Low = std::numeric_limits<int32_t>::min();
    constexpr double High = std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(std::isnan(ticks) ? 0.0 : std::clamp(ticks, Low, High));
}

void AddCurveKeys(const MPlugArray& plugs, int64_t ticksPerFrame, KeyTimeSet& keys)
{
    const MTime::Unit unit = MTime::uiUnit();
    for (unsigned int p = 0; p < plugs.length(); ++p) {
        MObjectArray curves;
        MAnimUtil::findAnimation(plugs[p], curves);
        for (unsigned int c = 0; c < curves.length(); ++c) {
            const MFnAnimCurve curve(curves[c]);
            const unsigned int count = curve.numKeys();
            for (unsigned int k = 0; k < count; ++k)
                keys.insert(ToTick(curve.time(k).as(unit), ticksPerFrame));
        }
    }
}

// False when the walk cannot start or a path cannot be had; visit is called with every path.
template <class Visit>
bool WalkDagBreadthFirst(Visit visit)
{
    MStatus status;
    MItDag walk(MItDag::kBreadthFirst, MFn::kInvalid, &status);
    if (!status) {
        DebugPrint("Failure in DAG iterator setup.\r\n");
        return false;
    }
    for (; !walk.isDone(); walk.next()) {
        MDagPath path;
        if (!walk.getPath(path)) {
            DebugPrint("Failure getting DAG path.\r\n");
            return false;
        }
        visit(path);
    }
    return true;
}

// A character set whose "message" feeds another character is a sub-character; its keys come
// through the character it belongs to.
bool IsSubCharacter(const MObject& character)
{
    MPlugArray destinations;
    MFnDependencyNode(character).findPlug("message").connectedTo(destinations, false, true);
    for (unsigned int i = 0; i < destinations.length(); ++i) {
        if (destinations[i].node().hasFn(MFn::kCharacter))
            return true;
    }
    return false;
}

bool SelectedNodes(HarvestState& state, MSelectionList& nodes)
{
    MSelectionList active;
    MGlobal::getActiveSelectionList(active);
    std::vector<std::string> prefixes;
    for (unsigned int i = 0; i < active.length(); ++i) {
        MDagPath path;
        if (!active.getDagPath(i, path))
            continue;
        MStatus status;
        const MString name = path.fullPathName(&status);
        if (!status)
            state.Report.AddIssue(IssueInvalidDagNode, "Selection string");
        prefixes.push_back((status ? std::string(name.asChar()) : std::string()) + "|");
    }
    const bool walked = WalkDagBreadthFirst([&](const MDagPath& path) {
        MStatus status;
        const MString name = path.fullPathName(&status);
        if (!status)
            state.Report.AddIssue(IssueInvalidDagNode, "Global DAG iterator");
        const std::string below = (status ? std::string(name.asChar()) : std::string()) + "|";
        const bool selected = std::any_of(prefixes.begin(), prefixes.end(),
                                          [&](const std::string& prefix) { return below.starts_with(prefix); });
        if (selected)
            nodes.add(path);
    });
    if (!walked)
        return false;
    for (MItDependencyNodes it; !it.isDone(); it.next()) {
        const MObject node = it.thisNode();
        if (node.isNull() || node.hasFn(MFn::kDagNode))
            continue;
        if (node.hasFn(MFn::kCharacter) ? !IsSubCharacter(node) : MAnimUtil::isAnimated(node))
            nodes.add(node);
    }
    return true;
}

} // namespace

int GetKeyFrames(HarvestState& state, const VTimeBase& base, KeyTimeSet& keys)
{
    DebugPrint("Getting animation keyframes...\r\n");
    if (state.Parameters.SelectionOnly) {
        MSelectionList nodes;
        if (!SelectedNodes(state, nodes))
            return -1;
        MPlugArray plugs;
        MAnimUtil::findAnimatedPlugs(nodes, plugs, false);
        AddCurveKeys(plugs, base.TicksPerFrame, keys);
        return 0;
    }
    const bool walked = WalkDagBreadthFirst([&](const MDagPath& path) {
        MPlugArray plugs;
        MAnimUtil::findAnimatedPlugs(path, plugs, false);
        AddCurveKeys(plugs, base.TicksPerFrame, keys);
    });
    return walked ? 0 : -1;
}
