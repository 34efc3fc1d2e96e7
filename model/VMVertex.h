#pragma once
// One distinct corner of static geometry.

#include "base/VPList.h"
#include "model/VMVertexData.h"

#include <cstdint>
#include <memory>
#include <vector>

// Data that the older model file attaches to a vertex; carried and deep-copied, never read by
// the geometry passes.
struct VMVertexAttachment {
    std::vector<uint8_t> Data;
};

struct VMVertex : VMVertexData {
    VMVertex() = default;
    VMVertex(const VMVertex&) = delete;
    VMVertex& operator=(const VMVertex&) = delete;

    std::unique_ptr<VMVertexAttachment> Attachment;
    // Duplicate-of or ID link; null when unset.
    VMVertex* MergeLink = nullptr;
    uint32_t GroupNumber = 0;
    // Vertices whose normals the normal repair updates together.
    VPListT<VMVertex> Siblings;
    // Number of polygon corners that reference the vertex, set by the connectivity pass.
    uint32_t UseCount = 0;
    // Scratch word of the geometry passes; each pass sets it before use.
    uint32_t State = 0;

    // Every field except the colour (the copy is white) and the siblings (the copy has none);
    // the attachment is deep-copied. Null when memory runs out.
    std::unique_ptr<VMVertex> Copy() const;
};
