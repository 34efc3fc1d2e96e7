#include "harvest/IsNodeVisible.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <string_view>

namespace {

bool ReadsBool(const MFnDependencyNode& node, const char* plugName, bool expected)
{
    MStatus status;
    MPlug plug = node.findPlug(MString(plugName), &status);
    bool value = !expected;
    return status && !plug.isNull() && plug.getValue(value) && value == expected;
}

bool InHiddenLayer(MObject node)
{
    MStatus status;
    MItDependencyGraph walk(node, MFn::kDisplayLayer, MItDependencyGraph::kUpstream,
                            MItDependencyGraph::kBreadthFirst, MItDependencyGraph::kNodeLevel, &status);
    if (!status)
        return false;
    walk.enablePruningOnFilter();
    for (; !walk.isDone(); walk.next()) {
        MFnDependencyNode layer(walk.thisNode(), &status);
        if (!status)
            continue;
        MPlug drawInfo = layer.findPlug(MString("drawInfo"), &status);
        if (!status || drawInfo.isNull())
            continue;
        const unsigned int childCount = drawInfo.numChildren();
        for (unsigned int i = 0; i < childCount; ++i) {
            MPlug child = drawInfo.child(i);
            const MString name = child.name();
            bool visible = true;
            if (std::string_view(name.asChar()).find(".visibility") != std::string_view::npos && child.getValue(visible) && !visible)
                return true;
        }
    }
    return false;
}

bool PassesOwnChecks(const MDagPath& path)
{
    MStatus status;
    MObject node = path.node();
    MFnDependencyNode fn(node, &status);
    if (!status)
        return true;
    if (ReadsBool(fn, "visibility", false))
        return false;
    if (InHiddenLayer(node))
        return false;
    return !ReadsBool(fn, "intermediateObject", true);
}

}

bool IsNodeVisible(const MDagPath& path)
{
    MDagPath current(path);
    while (current.isValid() && current.length() > 0) {
        if (!PassesOwnChecks(current))
            return false;
        if (!current.pop())
            return true;
    }
    return true;
}
