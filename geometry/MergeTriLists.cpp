#include "geometry/MergeTriLists.h"

#include "geometry/CheckTriList.h"
#include "geometry/StitchStrips.h"
#include "model/VMTriList.h"

#include <algorithm>

void MergeTriLists(std::vector<std::unique_ptr<VMTriList>> triLists, int minStripCorners,
                   std::vector<std::unique_ptr<VMTriList>>& kept, std::vector<std::unique_ptr<VMTriList>>& merged)
{
    std::vector<std::unique_ptr<VMTriList>> candidates;
    for (std::unique_ptr<VMTriList>& triList : triLists) {
        if (!triList->IsStrip() || triList->CornerCount() < minStripCorners)
            candidates.push_back(std::move(triList));
        else
            kept.push_back(std::move(triList));
    }
    std::reverse(candidates.begin(), candidates.end());
    for (std::unique_ptr<VMTriList>& candidate : candidates) {
        DropDegenerateTriangles(*candidate);
        candidate->ListKind = VMTriListKind::List;
    }

    size_t next = 0;
    while (next < candidates.size()) {
        std::unique_ptr<VMTriList> first = std::move(candidates[next++]);
        while (next < candidates.size()
               && first->CornerCount() + candidates[next]->CornerCount() < MaxJoinedCorners) {
            const std::vector<VMVertex*>& absorbed = candidates[next]->Corners;
            first->Corners.insert(first->Corners.end(), absorbed.begin(), absorbed.end());
            candidates[next++].reset();
        }
        merged.push_back(std::move(first));
    }
}
