#include "formats/MeshBuffer.h"

#include "formats/ChunkByteWriter.h"
#include "model/VMVertex.h"

#include <algorithm>
#include <cstring>

namespace {

void PutHeader(ChunkByteWriter& out, const VVertexLayout& layout, size_t vertexCount, size_t indexCount)
{
    const auto descriptor = MakeVertexDescriptor(layout);
    out.Put(MeshBufferMagic);
    out.Put(MeshBufferVersion);
    out.Put(VertexDescriptorMagic);
    out.Put(static_cast<uint32_t>(descriptor.size()));
    out.PutBytes(descriptor.data(), descriptor.size());
    out.Put(VertexDescriptorMagic);
    out.Put(static_cast<int32_t>(vertexCount));
    out.Put(uint8_t {0});
    out.Put(int32_t {0});
    out.Put(static_cast<int32_t>(indexCount));
    out.Put(IndexWidthFor(vertexCount));
    out.Put(static_cast<int32_t>(indexCount / 3));
    for (uint8_t flag : {0, 1, 1})
        out.Put(flag);
    out.Put(MeshBufferStreamWord);
    out.Put(uint8_t {1});
    out.Put(uint8_t {0});
    out.Put(uint16_t {0});
}

void PutVertices(ChunkByteWriter& out, const VVertexLayout& layout, const std::vector<const VMVertex*>& vertices)
{
    std::vector<uint8_t> record(static_cast<size_t>(layout.Stride));
    for (const VMVertex* vertex : vertices) {
        std::fill(record.begin(), record.end(), uint8_t {0});
        std::memcpy(record.data(), vertex->Position, 12);
        std::memcpy(record.data() + 12, vertex->Normal, 12);
        std::memcpy(record.data() + 24, vertex->BaseUV, 8);
        if (layout.SecondUVOffset >= 0)
            std::memcpy(record.data() + layout.SecondUVOffset, vertex->SecondUV, 8);
        if (layout.TangentOffset >= 0)
            std::memcpy(record.data() + layout.TangentOffset, vertex->Tangent, 12);
        if (layout.ColourOffset >= 0)
            std::memcpy(record.data() + layout.ColourOffset, vertex->Colour, 4);
        out.PutBytes(record.data(), record.size());
    }
}

void PutIndices(ChunkByteWriter& out, int32_t width, const std::vector<int32_t>& indices)
{
    for (int32_t index : indices) {
        if (width == 16)
            out.Put(static_cast<uint16_t>(index));
        else
            out.Put(index);
    }
}

} // namespace

int32_t IndexWidthFor(size_t vertexCount)
{
    return vertexCount <= static_cast<size_t>(MaxVerticesFor16BitIndices) ? 16 : 32;
}

bool WriteMeshBuffer(VChunkedFile& file, const VVertexLayout& layout, const std::vector<const VMVertex*>& vertices,
                     const std::vector<int32_t>& indices)
{
    ChunkByteWriter out(file);
    PutHeader(out, layout, vertices.size(), indices.size());
    PutVertices(out, layout, vertices);
    PutIndices(out, IndexWidthFor(vertices.size()), indices);
    return out.Flush();
}
