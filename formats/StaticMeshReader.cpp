#include "formats/StaticMeshReader.h"

#include "base/TextUtil.h"
#include "formats/ChunkReading.h"
#include "formats/DescribeText.h"
#include "formats/MaterialChunk.h"
#include "formats/MeshBuffer.h"
#include "formats/StaticMeshChunks.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VChunkedFile.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace {

// Start and end tag of the smallest chunk.
constexpr int32_t ChunkTagBytes = 20;
constexpr int32_t SubmeshRecordBytes = 9 * 4 + 6 * 4;

class StaticMeshParser {
public:
    StaticMeshParser(VChunkedFile& file, VStaticMeshFile& mesh)
        : m_file(file), m_mesh(mesh)
    {
    }

    // Empty when the file was read whole; else what is wrong with it.
    std::string Parse()
    {
        uint32_t id = 0;
        while (m_file.OpenChunk(VChunkedFile::AnyChunk, &id)) {
            m_mesh.Chunks.push_back(id);
            const char* problem = ParseChunk(id);
            if (problem != nullptr)
                return Format("%s in chunk %s", problem, ChunkName(id).c_str());
            if (!m_file.EndChunk())
                return m_file.GetMode() == VChunkedFile::Mode::Error ? LastError().Text : "File is truncated";
        }
        if (m_file.GetMode() == VChunkedFile::Mode::Error)
            return LastError().Text;
        if (!EndedAtMarker(m_file))
            return "File is truncated";
        for (uint32_t required : {ChunkVMSH, ChunkMTRS, ChunkSMSH, ChunkSUBM}) {
            if (std::find(m_mesh.Chunks.begin(), m_mesh.Chunks.end(), required) == m_mesh.Chunks.end())
                return "Missing chunk " + ChunkName(required);
        }
        return {};
    }

private:
    // Null when the chunk was read; else the problem.
    const char* ParseChunk(uint32_t id)
    {
        switch (id) {
        case ChunkVMSH:
            return ParseRenderMesh();
        case ChunkMTRS:
            return ParseMaterials();
        case ChunkSMSH:
            return ParseShadowMesh();
        case ChunkSUBM:
            return ParseSubmeshes();
        case ChunkSMPG:
            return ReadChunkArray(m_file, m_file.GetRemainingChunkBytes() / 4, m_mesh.Groups) ? nullptr
                                                                                                : "Truncated groups";
        default:
            return nullptr;
        }
    }

    template <class T>
    bool Expect(T expected)
    {
        T value {};
        return ReadChunkValue(m_file, value) && value == expected;
    }

    const char* ParseRenderMesh()
    {
        int32_t version = 0;
        if (!Expect(ChunkVMSH) || !ReadChunkValue(m_file, version) || version != StaticMeshVersion)
            return "Unknown render mesh header";
        if (const char* problem = ParseMeshBuffer())
            return problem;
        float box[6];
        if (!ReadChunkValue(m_file, box))
            return "Truncated bounding box";
        std::memcpy(m_mesh.Bounds.Min, box, sizeof m_mesh.Bounds.Min);
        std::memcpy(m_mesh.Bounds.Max, box + 3, sizeof m_mesh.Bounds.Max);
        return nullptr;
    }

    const char* ParseMeshBuffer()
    {
        uint8_t descriptor[VertexDescriptorSize];
        if (!Expect(MeshBufferMagic) || !Expect(MeshBufferVersion) || !Expect(VertexDescriptorMagic) ||
            !Expect(static_cast<uint32_t>(VertexDescriptorSize)) || !ReadChunkValue(m_file, descriptor) ||
            !Expect(VertexDescriptorMagic))
            return "Unknown mesh buffer header";
        for (int i = 0; i < VertexDescriptorWordCount; ++i)
            m_mesh.DescriptorWords[static_cast<size_t>(i)] =
                static_cast<uint16_t>(descriptor[2 * i] | descriptor[2 * i + 1] << 8);

        int32_t vertexCount = 0;
        int32_t indexCount = 0;
        uint8_t skipped[4];
        if (!ReadChunkValue(m_file, vertexCount) || !ReadChunkValue(m_file, skipped[0]) ||
            !ReadChunkValue(m_file, skipped) || !ReadChunkValue(m_file, indexCount) ||
            !ReadChunkValue(m_file, m_mesh.IndexWidth) || !ReadChunkValue(m_file, m_mesh.TriangleCount))
            return "Truncated mesh buffer header";
        uint8_t trailer[3 + 4 + 2 + 2];
        if (!ReadChunkValue(m_file, trailer))
            return "Truncated mesh buffer header";
        if (m_mesh.IndexWidth != 16 && m_mesh.IndexWidth != 32)
            return "Unknown index width";
        if (const char* problem = ReadVertices(vertexCount))
            return problem;
        return ReadIndices(indexCount);
    }

    // The component's offset when it lies within the stride, else -1.
    int32_t OffsetOf(int word, int32_t size, int32_t stride) const
    {
        const uint16_t value = m_mesh.DescriptorWords[static_cast<size_t>(word)];
        if (value == AbsentComponent)
            return -1;
        const int32_t offset = value & 0x0FFF;
        return offset + size <= stride ? offset : -1;
    }

    const char* ReadVertices(int32_t vertexCount)
    {
        const int32_t stride = m_mesh.DescriptorWords[DescriptorStride];
        if (stride < 32)
            return "Vertex stride below 32 bytes";
        std::vector<uint8_t> data;
        if (!ReadChunkArray(m_file, static_cast<int64_t>(vertexCount) * stride, data))
            return "Vertex count exceeds the chunk";
        struct Component {
            int Word;
            int32_t Size;
            size_t Field;
        };
        const Component components[] = {
            {DescriptorPosition, 12, offsetof(VStaticMeshVertex, Position)},
            {DescriptorNormal, 12, offsetof(VStaticMeshVertex, Normal)},
            {DescriptorBaseUV, 8, offsetof(VStaticMeshVertex, BaseUV)},
            {DescriptorSecondUV, 8, offsetof(VStaticMeshVertex, SecondUV)},
            {DescriptorTangent, 12, offsetof(VStaticMeshVertex, Tangent)},
            {DescriptorColour, 4, offsetof(VStaticMeshVertex, Colour)},
        };
        m_mesh.Vertices.resize(static_cast<size_t>(vertexCount));
        for (const Component& component : components) {
            const int32_t offset = OffsetOf(component.Word, component.Size, stride);
            if (offset < 0)
                continue;
            for (size_t v = 0; v < m_mesh.Vertices.size(); ++v) {
                auto* target = reinterpret_cast<uint8_t*>(&m_mesh.Vertices[v]) + component.Field;
                std::memcpy(target, data.data() + v * static_cast<size_t>(stride) + static_cast<size_t>(offset),
                            static_cast<size_t>(component.Size));
            }
        }
        return nullptr;
    }

    const char* ReadIndices(int32_t indexCount)
    {
        if (m_mesh.IndexWidth == 16) {
            std::vector<uint16_t> narrow;
            if (!ReadChunkArray(m_file, indexCount, narrow))
                return "Index count exceeds the chunk";
            m_mesh.Indices.assign(narrow.begin(), narrow.end());
        } else if (!ReadChunkArray(m_file, indexCount, m_mesh.Indices)) {
            return "Index count exceeds the chunk";
        }
        for (uint32_t index : m_mesh.Indices) {
            if (index >= m_mesh.Vertices.size())
                return "Index outside the vertices";
        }
        return nullptr;
    }

    const char* ParseMaterials()
    {
        int32_t count = 0;
        if (!ReadChunkValue(m_file, count) || count < 0 || count > m_file.GetRemainingChunkBytes() / ChunkTagBytes)
            return "Material count exceeds the chunk";
        for (int32_t i = 0; i < count; ++i) {
            auto material = std::make_unique<VMMaterial>();
            if (!m_file.OpenChunk(ChunkMTRL) || !ReadMaterialChunk(m_file, *material) || !m_file.EndChunk())
                return "Damaged material";
            m_mesh.Materials.push_back(std::move(material));
        }
        return nullptr;
    }

    const char* ParseShadowMesh()
    {
        int32_t count = 0;
        if (!ReadChunkValue(m_file, count) || count < 0 || count % 3 != 0)
            return "Bad shadow index count";
        if (!ReadChunkArray(m_file, count, m_mesh.ShadowIndices) ||
            !ReadChunkArray(m_file, static_cast<int64_t>(count / 3) * 4, m_mesh.ShadowPlanes) ||
            !ReadChunkArray(m_file, count, m_mesh.ShadowNeighbours))
            return "Shadow index count exceeds the chunk";
        return nullptr;
    }

    const char* ParseSubmeshes()
    {
        int32_t count = 0;
        if (!ReadChunkValue(m_file, count) || count < 0 || count > m_file.GetRemainingChunkBytes() / SubmeshRecordBytes)
            return "Submesh count exceeds the chunk";
        m_mesh.Submeshes.resize(static_cast<size_t>(count));
        for (VStaticMeshSubmesh& submesh : m_mesh.Submeshes) {
            int32_t values[8];
            if (!ReadChunkValue(m_file, values) || !ReadChunkValue(m_file, submesh.Box.Min) ||
                !ReadChunkValue(m_file, submesh.Box.Max) || !ReadChunkValue(m_file, submesh.Material))
                return "Truncated submesh";
            submesh.RenderFirstIndex = values[0];
            submesh.RenderIndexCount = values[1];
            submesh.ShadowFirstIndex = values[2];
            submesh.ShadowIndexCount = values[3];
            submesh.RenderFirstVertex = values[4];
            submesh.RenderVertexCount = values[5];
            submesh.ShadowFirstVertex = values[6];
            submesh.ShadowVertexCount = values[7];
        }
        return nullptr;
    }

    VChunkedFile& m_file;
    VStaticMeshFile& m_mesh;
};

// The range of the lightmap coordinates, which a packed atlas keeps within [0, 1].
std::string SecondUVRange(const VStaticMeshFile& mesh)
{
    if (!mesh.HasComponent(DescriptorSecondUV) || mesh.Vertices.empty())
        return {};
    float low[2] = {mesh.Vertices[0].SecondUV[0], mesh.Vertices[0].SecondUV[1]};
    float high[2] = {low[0], low[1]};
    for (const VStaticMeshVertex& vertex : mesh.Vertices) {
        for (size_t k = 0; k < 2; ++k) {
            low[k] = std::min(low[k], vertex.SecondUV[k]);
            high[k] = std::max(high[k], vertex.SecondUV[k]);
        }
    }
    return Format("Second UV: (%g, %g) - (%g, %g)\n", static_cast<double>(low[0]), static_cast<double>(low[1]),
                  static_cast<double>(high[0]), static_cast<double>(high[1]));
}

std::string Components(const VStaticMeshFile& mesh)
{
    std::string text = "position, normal, uv";
    if (mesh.HasComponent(DescriptorSecondUV))
        text += ", second uv";
    if (mesh.HasComponent(DescriptorTangent))
        text += ", tangent";
    if (mesh.HasComponent(DescriptorColour))
        text += ", colour";
    return text;
}

} // namespace

bool ReadStaticMesh(std::string_view path, VStaticMeshFile& mesh, VChunkStreamProvider* provider)
{
    mesh = {};
    return ReadChunkFile(path, provider, "static mesh",
                         [&](VChunkedFile& file) { return StaticMeshParser(file, mesh).Parse(); });
}

std::string DescribeStaticMesh(const VStaticMeshFile& mesh)
{
    std::string text = "Static mesh\nChunks:";
    for (uint32_t id : mesh.Chunks)
        text += " " + ChunkName(id);
    text += Format("\nVertices: %zu (stride %u: %s)\n", mesh.Vertices.size(),
                   static_cast<unsigned>(mesh.DescriptorWords[DescriptorStride]), Components(mesh).c_str());
    text += SecondUVRange(mesh);
    text += Format("Indices: %zu (%d-bit), triangles %d\n", mesh.Indices.size(), mesh.IndexWidth, mesh.TriangleCount);
    text += "Bounds: " + DescribePoint(mesh.Bounds.Min) + " - " + DescribePoint(mesh.Bounds.Max) + "\n";
    text += Format("Materials: %zu\n", mesh.Materials.size());
    for (size_t i = 0; i < mesh.Materials.size(); ++i)
        text += DescribeMaterial(i, *mesh.Materials[i]);
    text += Format("Shadow triangles: %zu\n", mesh.ShadowIndices.size() / 3);
    text += Format("Submeshes: %zu\n", mesh.Submeshes.size());
    for (size_t i = 0; i < mesh.Submeshes.size(); ++i) {
        const VStaticMeshSubmesh& s = mesh.Submeshes[i];
        text += Format("  %zu: material %d, render indices %d+%d vertices %d+%d, shadow indices %d+%d vertices %d+%d", i,
                       s.Material, s.RenderFirstIndex, s.RenderIndexCount, s.RenderFirstVertex, s.RenderVertexCount,
                       s.ShadowFirstIndex, s.ShadowIndexCount, s.ShadowFirstVertex, s.ShadowVertexCount);
        if (i < mesh.Groups.size())
            text += Format(", group %d", mesh.Groups[i]);
        text += ", box " + DescribePoint(s.Box.Min) + " - " + DescribePoint(s.Box.Max) + "\n";
    }
    return text;
}
