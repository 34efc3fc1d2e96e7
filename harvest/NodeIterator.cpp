#include "harvest/NodeIterator.h"

#include <maya/MGlobal.h>
#include <maya/MItDag.h>
#include <maya/MItSelectionList.h>
#include <maya/MObject.h>
#include <maya/MSelectionList.h>
#include <maya/MStatus.h>

#include <vector>

void NodeIterator::Iterate(const MDagPath& root, bool selectionOnlyWalk, bool recurseWalk)
{
    selectionOnly = selectionOnlyWalk ? 1 : 0;
    recurse = recurseWalk ? 1 : 0;

    if (!selectionOnly) {
        MDagPath start = root;
        if (!start.isValid()) {
            MStatus status;
            MItDag dag(MItDag::kDepthFirst, MFn::kInvalid, &status);
            if (!status || dag.isDone() || !dag.getPath(start))
                return;
        }
        VisitRecursive(start);
        return;
    }

    MSelectionList selection;
    if (!MGlobal::getActiveSelectionList(selection))
        return;
    for (MItSelectionList item(selection); !item.isDone(); item.next()) {
        MDagPath path;
        if (!item.getDagPath(path) || !path.isValid())
            continue;
        if (!VisitNode(path) || !recurse)
            continue;
        const unsigned int childCount = path.childCount();
        for (unsigned int i = 0; i < childCount; ++i) {
            MDagPath child(path);
            if (child.push(path.child(i)))
                VisitRecursive(child);
        }
    }
}

// An explicit stack keeps scenes with very deep hierarchies off the call stack; children are
// pushed in reverse so that they are visited in index order.
void NodeIterator::VisitRecursive(const MDagPath& start)
{
    std::vector<MDagPath> pending;
    pending.push_back(start);
    while (!pending.empty()) {
        MDagPath path = std::move(pending.back());
        pending.pop_back();
        if (!path.isValid())
            continue;
        if (!VisitNode(path) || !recurse)
            continue;
        const unsigned int childCount = path.childCount();
        for (unsigned int i = childCount; i-- > 0;) {
            MDagPath child(path);
            if (child.push(path.child(i)))
                pending.push_back(std::move(child));
        }
    }
}
