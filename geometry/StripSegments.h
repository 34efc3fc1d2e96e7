#pragma once
// The output of one strip batch: its triangles in output order and the segments that cut that
// order into runs, each becoming one tri-list.

#include <memory>
#include <vector>

class VMPolygon;
class VMTriList;
struct VMVertex;

struct StripSegment {
    // Position of the first triangle in output order, and the number of triangles.
    int Start = 0;
    int Count = 0;
    // -1 for a list run; 0 to 5 for a strip, the start orientation (1, 3 or 5 for a strip that
    // leaves its first triangle across edge 0, 1 or 2).
    int Type = -1;
};

struct StripBatchOutput {
    // Three per output triangle, in the order that the tri-list stores them.
    std::vector<VMVertex*> Corners;
    // The batch position of each output triangle, for the attributes of a segment's first.
    std::vector<int> Triangles;
    std::vector<StripSegment> Segments;
};

// The lists of a batch: its triangles, in their own order, cut into runs of maxLength triangles
// (the last run shorter), one tri-list each with the corners as the triangles hold them. The
// runs come out in the order that EmitSegments would take them. Answers 0, or -301 when memory
// runs out.
int EmitListRuns(const std::vector<VMPolygon*>& batch, int maxLength, std::vector<std::unique_ptr<VMTriList>>& triLists);

// Makes one tri-list per segment, taking each time the segment with the most triangles (the
// first on ties); a segment longer than maxLength first gives its tail beyond maxLength
// triangles to a new segment of the same type. A tri-list takes the corners of its triangles,
// the attribute copy and group attribute of its first triangle, and kind 0 for a list run or
// 2 - (type mod 2) for a strip. The tri-lists are appended to triLists in the order made; none
// is added to a world. Answers 0, or -301 when memory runs out.
int EmitSegments(StripBatchOutput& output, const std::vector<VMPolygon*>& batch, int maxLength,
                 std::vector<std::unique_ptr<VMTriList>>& triLists);
