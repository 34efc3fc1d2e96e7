#pragma once
// The one traversal of the scene. Subclasses decide in VisitNode what each node contributes
// and whether its children are entered.

#include <maya/MDagPath.h>

#include <cstdint>

class NodeIterator {
public:
    virtual ~NodeIterator() = default;

    // True enters the node's children (when the walk recurses).
    virtual bool VisitNode(const MDagPath& path) = 0;
    virtual void Reset() {}

    // Depth first, parents before children, children in Maya's child order. Without
    // selectionOnly the walk starts at root when it is valid, else at the world. With it every
    // selected item that has a DAG path is a root of its own, so a node selected together with
    // its ancestor is visited twice.
    void Iterate(const MDagPath& root, bool selectionOnly, bool recurse);

    uint8_t recurse = 1;
    uint8_t selectionOnly = 0;

private:
    void VisitRecursive(const MDagPath& path);
};
