#pragma once
// A stable skeleton order: the same rig gives the same bone numbers whatever order Maya visited
// its joints in, and every parent comes before its children.

struct VMSkeleton;

// Sorts every bone's children by name and the bones without parent by name (case-insensitively;
// equal names keep their order), then lists the sorted roots, followed by each visited bone's
// children as one block, visiting the children in order. Each bone's sort index becomes its new
// position. A bone that no root reaches keeps its relative order at the end.
void ResortBones(VMSkeleton& skeleton);
