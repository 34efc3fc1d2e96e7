#include "model/VMVisAntiPortal.h"

#include "model/MakeRecord.h"
#include "model/OwnedCorners.h"

std::unique_ptr<VMVisAntiPortal> VMVisAntiPortal::Create(int cornerCount)
{
    std::unique_ptr<VMVisAntiPortal> record = MakeRecord<VMVisAntiPortal>();
    if (!record || !MakeOwnedCorners(record->Corners, cornerCount))
        return nullptr;
    return record;
}
