#include "formats/LoadModel.h"

#include "base/TextUtil.h"
#include "formats/ChunkReading.h"
#include "formats/MaterialChunk.h"
#include "formats/ModelChunks.h"
#include "formats/SkeletonChunks.h"
#include "formats/StaticMeshChunks.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VChunkedFile.h"
#include "model/SkinInfluences.h"
#include "model/VMModel.h"

#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr int32_t ChunkTagBytes = 20;
constexpr int32_t TriangleRecordBytes = 3 * 4 + 2;
constexpr int32_t WeightRecordBytes = 4 + 2 + 4;
constexpr int32_t BoxBytes = 6 * 4;

struct VertexField {
    uint16_t Bit;
    int32_t Bytes;
};

// In the order a vertex record holds them.
constexpr VertexField VertexFields[] = {
    {ModelVertexPosition, 12}, {ModelVertexNormal, 12}, {ModelVertexTangent, 12}, {ModelVertexColour, 4},
    {ModelVertexBaseUV, 8},    {ModelVertexSecondUV, 8}, {ModelVertexSkin, 8},     {ModelVertexIdLink, 4},
};

// The bytes of one vertex record; -1 for flag bits that no writer sets.
int32_t VertexRecordBytes(uint16_t flags)
{
    int32_t bytes = 0;
    uint16_t known = 0;
    for (const VertexField& field : VertexFields) {
        known = static_cast<uint16_t>(known | field.Bit);
        if (flags & field.Bit)
            bytes += field.Bytes;
    }
    return (flags & ~known) != 0 ? -1 : bytes;
}

class ModelParser {
public:
    ModelParser(VChunkedFile& file, VMModel& model) : m_file(file), m_model(model) {}

    // Empty when the file was read whole; else what is wrong with it.
    std::string Parse()
    {
        if (!m_file.OpenChunk(ChunkMODL))
            return m_file.GetMode() == VChunkedFile::Mode::Error ? LastError().Text : "Missing chunk MODL";
        uint16_t version = 0;
        // A model chunk without content is an empty model.
        if (m_file.GetRemainingChunkBytes() > 0 && !ReadChunkValue(m_file, version))
            return Truncated();
        while (m_file.GetRemainingChunkBytes() > 0) {
            uint32_t id = 0;
            if (!m_file.OpenChunk(VChunkedFile::AnyChunk, &id))
                return Truncated();
            if (const char* problem = ParseChild(id))
                return Format("%s in chunk %s", problem, ChunkName(id).c_str());
            if (!m_file.EndChunk())
                return Truncated();
        }
        if (!m_file.EndChunk())
            return Truncated();
        m_model.HasBones = m_model.Skeleton && m_model.Skeleton->Bones.Count() > 0 ? 1 : 0;
        m_model.Enumerate();
        return {};
    }

private:
    std::string Truncated() const
    {
        return m_file.GetMode() == VChunkedFile::Mode::Error ? LastError().Text : "File is truncated";
    }

    // Null when the chunk was read (or skipped); else the problem.
    const char* ParseChild(uint32_t id)
    {
        switch (id) {
        case ChunkSKEL:
            return ReadSkeletonChunk(m_file, m_model.Skeleton);
        case ChunkBMSK:
            return ReadBoneMaskChunk(m_file, m_model.BoneMasks);
        case ChunkGEOM:
            return ParseGeometry();
        case ChunkWGHT:
            return ParseWeights();
        case ChunkBBBX:
        case ChunkBBOX:
            return ParseBoneBoxes();
        case ChunkBNDS:
            return ParseBounds();
        default:
            return nullptr;
        }
    }

    // A count, then that many records of recordBytes each, the count checked against the chunk first.
    bool ReadRecords(int32_t recordBytes, int32_t& count, std::vector<uint8_t>& records)
    {
        return ReadChunkValue(m_file, count) && count >= 0 && count <= m_file.GetRemainingChunkBytes() / recordBytes &&
               ReadChunkArray(m_file, static_cast<int64_t>(count) * recordBytes, records);
    }

    int BoneCount() const { return m_model.Skeleton ? m_model.Skeleton->Bones.Count() : 0; }

    const char* ParseGeometry()
    {
        if (!m_model.Vertices.IsEmpty() || !m_model.Materials.IsEmpty() || !m_model.Faces.IsEmpty())
            return "A second geometry";
        uint16_t version = 0;
        int32_t materialCount = 0;
        if (!ReadChunkValue(m_file, version) || !ReadChunkValue(m_file, materialCount) || materialCount < 0 ||
            materialCount > m_file.GetRemainingChunkBytes() / ChunkTagBytes)
            return "Material count exceeds the chunk";
        for (int32_t i = 0; i < materialCount; ++i) {
            VMMaterial* material = VMModel::NewMaterial().release();
            m_model.Materials.Add(material);
            if (!m_file.OpenChunk(ChunkMTRL) || !ReadMaterialChunk(m_file, *material) || !m_file.EndChunk())
                return "Damaged material";
        }
        if (const char* problem = ParseVertices())
            return problem;
        return ParseTriangles();
    }

    const char* ParseVertices()
    {
        int32_t count = 0;
        uint16_t flags = 0;
        if (!ReadChunkValue(m_file, count) || !ReadChunkValue(m_file, flags))
            return "Truncated geometry";
        const int32_t recordBytes = VertexRecordBytes(flags);
        if (recordBytes < 0)
            return "Unknown vertex flags";
        if (count < 0 || (recordBytes > 0 && count > m_file.GetRemainingChunkBytes() / recordBytes) ||
            (recordBytes == 0 && count > 0))
            return "Vertex count exceeds the chunk";
        std::vector<uint8_t> records;
        if (!ReadChunkArray(m_file, static_cast<int64_t>(count) * recordBytes, records))
            return "Truncated vertices";
        m_model.HasTangents = (flags & ModelVertexTangent) != 0;
        m_model.HasColours = (flags & ModelVertexColour) != 0;
        m_model.HasSecondUV = (flags & ModelVertexSecondUV) != 0;
        m_model.Vertices.Reserve(count);
        std::vector<int32_t> links(static_cast<size_t>(count), -1);
        const uint8_t* record = records.data();
        for (int32_t i = 0; i < count; ++i) {
            VMSkinVertex* vertex = VMModel::NewVertex().release();
            m_model.Vertices.Add(vertex);
            for (const VertexField& field : VertexFields) {
                if (flags & field.Bit) {
                    StoreField(*vertex, field.Bit, record, links[static_cast<size_t>(i)]);
                    record += field.Bytes;
                }
            }
        }
        for (int32_t i = 0; i < count; ++i) {
            const int32_t link = links[static_cast<size_t>(i)];
            if (link < -1 || link >= count)
                return "An ID link names no vertex";
            if (link >= 0)
                m_model.Vertices[i]->IdLink = m_model.Vertices[link];
        }
        return nullptr;
    }

    static void StoreField(VMSkinVertex& vertex, uint16_t bit, const uint8_t* bytes, int32_t& link)
    {
        switch (bit) {
        case ModelVertexPosition:
            std::memcpy(vertex.Position, bytes, 12);
            break;
        case ModelVertexNormal:
            std::memcpy(vertex.Normal, bytes, 12);
            break;
        case ModelVertexTangent:
            std::memcpy(vertex.Tangent, bytes, 12);
            break;
        case ModelVertexColour:
            // Stored red, green, blue, alpha: the bytes of a 32-bit 0xAARRGGBB in reverse.
            vertex.Colour[0] = bytes[2];
            vertex.Colour[1] = bytes[1];
            vertex.Colour[2] = bytes[0];
            vertex.Colour[3] = bytes[3];
            break;
        case ModelVertexBaseUV:
            std::memcpy(vertex.BaseUV, bytes, 8);
            break;
        case ModelVertexSecondUV:
            std::memcpy(vertex.SecondUV, bytes, 8);
            break;
        case ModelVertexIdLink:
            std::memcpy(&link, bytes, 4);
            break;
        default:
            // The skin values repeat what the weights say.
            break;
        }
    }

    const char* ParseTriangles()
    {
        int32_t count = 0;
        std::vector<uint8_t> records;
        if (!ReadRecords(TriangleRecordBytes, count, records))
            return "Triangle count exceeds the chunk";
        const int32_t vertexCount = m_model.Vertices.Count();
        m_model.Faces.Reserve(count);
        for (int32_t i = 0; i < count; ++i) {
            const uint8_t* record = records.data() + static_cast<size_t>(i) * TriangleRecordBytes;
            int32_t corners[3];
            uint16_t material = 0;
            std::memcpy(corners, record, sizeof corners);
            std::memcpy(&material, record + sizeof corners, sizeof material);
            VMFace* face = VMModel::NewFace().release();
            m_model.Faces.Add(face);
            for (int32_t corner : corners) {
                if (corner < 0 || corner >= vertexCount)
                    return "A triangle names no vertex";
                face->AddCorner(m_model.Vertices[corner]);
            }
            if (material != NoModelMaterial) {
                if (material >= m_model.Materials.Count())
                    return "A triangle names no material";
                face->SetMaterial(m_model.Materials[material]);
            }
        }
        return nullptr;
    }

    const char* ParseWeights()
    {
        if (BoneCount() == 0)
            return nullptr;
        int32_t count = 0;
        std::vector<uint8_t> records;
        if (!ReadRecords(WeightRecordBytes, count, records))
            return "Weight count exceeds the chunk";
        for (int32_t i = 0; i < count; ++i) {
            const uint8_t* record = records.data() + static_cast<size_t>(i) * WeightRecordBytes;
            int32_t vertex = 0;
            uint16_t bone = 0;
            float weight = 0.0f;
            std::memcpy(&vertex, record, 4);
            std::memcpy(&bone, record + 4, 2);
            std::memcpy(&weight, record + 6, 4);
            if (vertex < 0 || vertex >= m_model.Vertices.Count())
                return "A weight names no vertex";
            if (bone >= BoneCount())
                return "A weight names no bone";
            AttachVertex(m_model.Skeleton->Bones[bone], m_model.Vertices[vertex], weight);
        }
        return nullptr;
    }

    const char* ParseBoneBoxes()
    {
        uint16_t count = 0;
        if (!ReadChunkValue(m_file, count))
            return "Truncated bone boxes";
        // Boxes of another skeleton would land on the wrong bones; without bones there is nowhere
        // to put them.
        if (count != BoneCount() || count == 0)
            return nullptr;
        if (count > m_file.GetRemainingChunkBytes() / BoxBytes)
            return "Bone count exceeds the chunk";
        for (VMBone* bone : m_model.Skeleton->Bones) {
            if (!ReadChunkValue(m_file, bone->Box.Min) || !ReadChunkValue(m_file, bone->Box.Max))
                return "Truncated bone boxes";
        }
        return nullptr;
    }

    const char* ParseBounds()
    {
        float sphere[4];
        if (!ReadChunkValue(m_file, m_model.Box.Min) || !ReadChunkValue(m_file, m_model.Box.Max) ||
            !ReadChunkValue(m_file, sphere) || !ReadChunkValue(m_file, m_model.CollisionBox.Min) ||
            !ReadChunkValue(m_file, m_model.CollisionBox.Max))
            return "Truncated bounds";
        m_model.VisibilityRadius = sphere[3];
        return nullptr;
    }

    VChunkedFile& m_file;
    VMModel& m_model;
};

} // namespace

bool LoadModel(VMModel& model, std::string_view path, VChunkStreamProvider* provider)
{
    model.Clear();
    const bool read = ReadChunkFile(path, provider, "model file",
                                    [&](VChunkedFile& file) { return ModelParser(file, model).Parse(); });
    if (!read)
        model.Clear();
    return read;
}
