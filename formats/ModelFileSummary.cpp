#include "formats/ModelFileSummary.h"

#include "base/TextUtil.h"
#include "formats/ChunkReading.h"
#include "formats/MaterialChunk.h"
#include "formats/StaticMeshChunks.h"
#include "formats/chunk/ChunkId.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VChunkedFile.h"

#include <algorithm>
#include <vector>

namespace {

constexpr uint32_t ChunkMODL = MakeChunkId("MODL");
constexpr uint32_t ChunkSKEL = MakeChunkId("SKEL");
constexpr uint32_t ChunkGEOM = MakeChunkId("GEOM");
constexpr uint32_t ChunkWGHT = MakeChunkId("WGHT");
constexpr uint32_t ChunkBNDS = MakeChunkId("BNDS");

// Parent number and two transforms of translation and quaternion.
constexpr int32_t BoneRecordBytesAfterName = 2 + 2 * 7 * 4;
constexpr int32_t TriangleRecordBytes = 3 * 4 + 2;
constexpr int32_t WeightRecordBytes = 4 + 2 + 4;
constexpr int32_t ChunkTagBytes = 20;

// The bytes of one vertex record for the flag bits; -1 for bits no writer sets.
int32_t VertexRecordBytes(uint16_t flags)
{
    struct Field {
        uint16_t Bit;
        int32_t Bytes;
    };
    constexpr Field Fields[] = {{0x001, 12}, {0x002, 12}, {0x004, 12}, {0x080, 4},
                                {0x008, 8},  {0x010, 8},  {0x100, 8},  {0x200, 4}};
    int32_t bytes = 0;
    uint16_t known = 0;
    for (const Field& field : Fields) {
        known = static_cast<uint16_t>(known | field.Bit);
        if (flags & field.Bit)
            bytes += field.Bytes;
    }
    return (flags & ~known) != 0 ? -1 : bytes;
}

bool Skip(VChunkedFile& file, int64_t bytes)
{
    std::vector<uint8_t> ignored;
    while (bytes > 0) {
        const int64_t block = std::min<int64_t>(bytes, 64 * 1024);
        if (!ReadChunkArray(file, block, ignored))
            return false;
        bytes -= block;
    }
    return true;
}

const char* ReadSkeleton(VChunkedFile& file, VModelFileSummary& summary)
{
    uint16_t version = 0;
    uint16_t count = 0;
    if (!ReadChunkValue(file, version) || !ReadChunkValue(file, count))
        return "Truncated skeleton";
    for (uint16_t i = 0; i < count; ++i) {
        if (file.GetRemainingChunkBytes() < 4)
            return "Truncated skeleton";
        summary.BoneNames.push_back(file.ReadString());
        if (!Skip(file, BoneRecordBytesAfterName))
            return "Truncated skeleton";
    }
    return nullptr;
}

const char* ReadGeometry(VChunkedFile& file, VModelFileSummary& summary)
{
    uint16_t version = 0;
    int32_t materialCount = 0;
    if (!ReadChunkValue(file, version) || !ReadChunkValue(file, materialCount) || materialCount < 0 ||
        materialCount > file.GetRemainingChunkBytes() / ChunkTagBytes)
        return "Material count exceeds the chunk";
    for (int32_t i = 0; i < materialCount; ++i) {
        auto material = std::make_unique<VMMaterial>();
        if (!file.OpenChunk(ChunkMTRL) || !ReadMaterialChunk(file, *material) || !file.EndChunk())
            return "Damaged material";
        summary.Materials.push_back(std::move(material));
    }
    if (!ReadChunkValue(file, summary.VertexCount) || !ReadChunkValue(file, summary.VertexFlags))
        return "Truncated geometry";
    const int32_t vertexBytes = VertexRecordBytes(summary.VertexFlags);
    if (vertexBytes < 0)
        return "Unknown vertex flags";
    if (summary.VertexCount < 0 || !Skip(file, static_cast<int64_t>(summary.VertexCount) * vertexBytes))
        return "Vertex count exceeds the chunk";
    if (!ReadChunkValue(file, summary.TriangleCount) || summary.TriangleCount < 0 ||
        summary.TriangleCount > file.GetRemainingChunkBytes() / TriangleRecordBytes)
        return "Triangle count exceeds the chunk";
    return nullptr;
}

const char* ReadWeights(VChunkedFile& file, VModelFileSummary& summary)
{
    if (!ReadChunkValue(file, summary.WeightCount) || summary.WeightCount < 0 ||
        summary.WeightCount > file.GetRemainingChunkBytes() / WeightRecordBytes)
        return "Weight count exceeds the chunk";
    return nullptr;
}

const char* ReadBounds(VChunkedFile& file, VModelFileSummary& summary)
{
    float sphere[4];
    if (!ReadChunkValue(file, summary.Bounds.Min) || !ReadChunkValue(file, summary.Bounds.Max) ||
        !ReadChunkValue(file, sphere) || !ReadChunkValue(file, summary.SecondBounds.Min) ||
        !ReadChunkValue(file, summary.SecondBounds.Max))
        return "Truncated bounds";
    summary.Radius = sphere[3];
    return nullptr;
}

const char* ReadChild(VChunkedFile& file, uint32_t id, VModelFileSummary& summary)
{
    switch (id) {
    case ChunkSKEL:
        return ReadSkeleton(file, summary);
    case ChunkGEOM:
        return ReadGeometry(file, summary);
    case ChunkWGHT:
        return ReadWeights(file, summary);
    case ChunkBNDS:
        return ReadBounds(file, summary);
    default:
        return nullptr;
    }
}

std::string Truncated(const VChunkedFile& file)
{
    return file.GetMode() == VChunkedFile::Mode::Error ? LastError().Text : "File is truncated";
}

std::string Parse(VChunkedFile& file, VModelFileSummary& summary)
{
    if (!file.OpenChunk(ChunkMODL))
        return file.GetMode() == VChunkedFile::Mode::Error ? LastError().Text : "Missing chunk MODL";
    if (!ReadChunkValue(file, summary.Version))
        return Truncated(file);
    while (file.GetRemainingChunkBytes() > 0) {
        uint32_t id = 0;
        if (!file.OpenChunk(VChunkedFile::AnyChunk, &id))
            return Truncated(file);
        summary.Chunks.push_back(id);
        if (const char* problem = ReadChild(file, id, summary))
            return Format("%s in chunk %s", problem, ChunkName(id).c_str());
        if (!file.EndChunk())
            return Truncated(file);
    }
    if (!file.EndChunk())
        return Truncated(file);
    return {};
}

std::string Box(const VMBoundingBox& box)
{
    return Format("(%g, %g, %g) - (%g, %g, %g)", static_cast<double>(box.Min[0]), static_cast<double>(box.Min[1]),
                  static_cast<double>(box.Min[2]), static_cast<double>(box.Max[0]), static_cast<double>(box.Max[1]),
                  static_cast<double>(box.Max[2]));
}

} // namespace

bool ReadModelFileSummary(std::string_view path, VModelFileSummary& summary, VChunkStreamProvider* provider)
{
    summary = {};
    return ReadChunkFile(path, provider, "model file", [&](VChunkedFile& file) { return Parse(file, summary); });
}

std::string DescribeModelFile(const VModelFileSummary& summary)
{
    std::string text = Format("Model file, version %u\nChunks: MODL (", static_cast<unsigned>(summary.Version));
    for (size_t i = 0; i < summary.Chunks.size(); ++i)
        text += (i > 0 ? " " : "") + ChunkName(summary.Chunks[i]);
    text += Format(")\nBones: %zu\n", summary.BoneNames.size());
    for (size_t i = 0; i < summary.BoneNames.size(); ++i)
        text += Format("  %zu \"%s\"\n", i, summary.BoneNames[i].c_str());
    text += Format("Materials: %zu\n", summary.Materials.size());
    for (size_t i = 0; i < summary.Materials.size(); ++i)
        text += Format("  %zu \"%s\": diffuse \"%s\"\n", i, summary.Materials[i]->Name.c_str(),
                       summary.Materials[i]->DiffuseTexture.c_str());
    text += Format("Vertices: %d (flags 0x%03X)\nTriangles: %d\nWeights: %d\n", summary.VertexCount,
                   static_cast<unsigned>(summary.VertexFlags), summary.TriangleCount, summary.WeightCount);
    text += "Bounds: " + Box(summary.Bounds) + Format(", radius %g\n", static_cast<double>(summary.Radius));
    return text;
}
