#include "model/VMVertex.h"

#include "model/MakeRecord.h"

std::unique_ptr<VMVertex> VMVertex::Copy() const
{
    std::unique_ptr<VMVertex> copy = MakeRecord<VMVertex>();
    if (!copy)
        return nullptr;
    static_cast<VMVertexData&>(*copy) = static_cast<const VMVertexData&>(*this);
    // A copy is a new corner that has not been harvested a colour of its own.
    for (uint8_t& channel : copy->Colour)
        channel = 255;
    if (Attachment) {
        copy->Attachment = MakeRecord<VMVertexAttachment>(*Attachment);
        if (!copy->Attachment)
            return nullptr;
    }
    copy->MergeLink = MergeLink;
    copy->GroupNumber = GroupNumber;
    copy->UseCount = UseCount;
    copy->State = State;
    return copy;
}
