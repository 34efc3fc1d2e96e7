#include "model/VMVisPortal.h"

#include "model/MakeRecord.h"
#include "model/OwnedCorners.h"

std::unique_ptr<VMVisPortal> VMVisPortal::Create(int cornerCount)
{
    std::unique_ptr<VMVisPortal> record = MakeRecord<VMVisPortal>();
    if (!record || !MakeOwnedCorners(record->Corners, cornerCount))
        return nullptr;
    return record;
}
