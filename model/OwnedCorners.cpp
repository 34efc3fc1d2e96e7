#include "model/OwnedCorners.h"

#include "model/MakeRecord.h"

#include <new>

bool MakeOwnedCorners(std::vector<std::unique_ptr<VMVertex>>& corners, int count)
{
    corners.clear();
    if (count < 0 || count > MaxOwnedCorners)
        return false;
    try {
        corners.reserve(static_cast<size_t>(count));
    } catch (const std::bad_alloc&) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        std::unique_ptr<VMVertex> corner = MakeRecord<VMVertex>();
        if (!corner) {
            corners.clear();
            return false;
        }
        corners.push_back(std::move(corner));
    }
    return true;
}
