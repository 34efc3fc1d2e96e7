#include "geometry/StripSegments.h"

#include "model/VMWorld.h"

#include <algorithm>
#include <queue>

namespace {

// The heap's top is the segment with the most triangles, the earliest in the table on ties.
struct Pending {
    int Count;
    int Segment;
};

struct FewerOrLater {
    bool operator()(const Pending& a, const Pending& b) const
    {
        if (a.Count != b.Count)
            return a.Count < b.Count;
        return a.Segment > b.Segment;
    }
};

VMTriListKind KindOf(int type)
{
    if (type < 0)
        return VMTriListKind::List;
    return type % 2 == 1 ? VMTriListKind::StripOddStart : VMTriListKind::StripEvenStart;
}

std::unique_ptr<VMTriList> MakeTriList(const StripBatchOutput& output, const StripSegment& segment,
                                       const std::vector<VMPolygon*>& batch)
{
    std::unique_ptr<VMTriList> triList = VMWorld::NewTriList();
    if (!triList)
        return nullptr;
    const auto first = output.Corners.begin() + 3 * static_cast<std::ptrdiff_t>(segment.Start);
    triList->Corners.assign(first, first + 3 * static_cast<std::ptrdiff_t>(segment.Count));
    const VMPolygon& firstTriangle = *batch[static_cast<size_t>(output.Triangles[static_cast<size_t>(segment.Start)])];
    triList->CopyAttributesFrom(firstTriangle);
    triList->Group = firstTriangle.Group;
    triList->ListKind = KindOf(segment.Type);
    return triList;
}

} // namespace

int EmitListRuns(const std::vector<VMPolygon*>& batch, int maxLength, std::vector<std::unique_ptr<VMTriList>>& triLists)
{
    const size_t runLength = static_cast<size_t>(maxLength);
    for (size_t start = 0; start < batch.size(); start += runLength) {
        const size_t end = std::min(batch.size(), start + runLength);
        std::unique_ptr<VMTriList> triList = VMWorld::NewTriList();
        if (!triList)
            return -301;
        triList->Corners.reserve((end - start) * 3);
        for (size_t triangle = start; triangle < end; ++triangle)
            for (size_t corner = 0; corner < 3; ++corner)
                triList->Corners.push_back(batch[triangle]->Corners[corner]);
        triList->CopyAttributesFrom(*batch[start]);
        triList->Group = batch[start]->Group;
        triLists.push_back(std::move(triList));
    }
    return 0;
}

int EmitSegments(StripBatchOutput& output, const std::vector<VMPolygon*>& batch, int maxLength,
                 std::vector<std::unique_ptr<VMTriList>>& triLists)
{
    std::vector<StripSegment>& segments = output.Segments;
    std::priority_queue<Pending, std::vector<Pending>, FewerOrLater> pending;
    for (int index = 0; index < static_cast<int>(segments.size()); ++index)
        pending.push({segments[static_cast<size_t>(index)].Count, index});

    while (!pending.empty()) {
        const Pending top = pending.top();
        pending.pop();
        StripSegment& segment = segments[static_cast<size_t>(top.Segment)];
        if (segment.Count > maxLength) {
            const StripSegment tail{segment.Start + maxLength, segment.Count - maxLength, segment.Type};
            segment.Count = maxLength;
            pending.push({segment.Count, top.Segment});
            segments.push_back(tail);
            pending.push({tail.Count, static_cast<int>(segments.size()) - 1});
            continue;
        }
        std::unique_ptr<VMTriList> triList = MakeTriList(output, segment, batch);
        if (!triList)
            return -301;
        triLists.push_back(std::move(triList));
    }
    return 0;
}
