#include "importers/SceneRecordBytes.h"

#include <cstring>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

// One list of fields per record type serves both directions: the packer appends each field, the unpacker
// fills it back in the same order.
class Sizer {
public:
    static constexpr bool Reading = false;
    void Raw(void*, size_t length) { m_size += length; }
    bool Count(size_t&, size_t)
    {
        m_size += sizeof(size_t);
        return true;
    }
    size_t Size() const { return m_size; }

private:
    size_t m_size = 0;
};

// Fills a buffer sized by the Sizer beforehand, so that a large record is copied once.
class Packer {
public:
    static constexpr bool Reading = false;
    explicit Packer(size_t size) : m_bytes(size, '\0') {}
    void Raw(void* data, size_t length)
    {
        // An empty array hands no storage at all, which memcpy must not be given.
        if (length == 0)
            return;
        std::memcpy(m_bytes.data() + m_at, data, length);
        m_at += length;
    }
    bool Count(size_t& count, size_t)
    {
        Raw(&count, sizeof count);
        return true;
    }
    std::string Take() { return std::move(m_bytes); }

private:
    std::string m_bytes;
    size_t m_at = 0;
};

class Unpacker {
public:
    static constexpr bool Reading = true;
    explicit Unpacker(std::string_view bytes) : m_bytes(bytes) {}
    void Raw(void* data, size_t length)
    {
        if (!m_ok || length > m_bytes.size() - m_at) {
            m_ok = false;
            return;
        }
        if (length == 0)
            return;
        std::memcpy(data, m_bytes.data() + m_at, length);
        m_at += length;
    }
    // A count is refused when its items could not fit in what is left, so that a broken count cannot
    // make a huge allocation.
    bool Count(size_t& count, size_t itemBytes)
    {
        Raw(&count, sizeof count);
        m_ok = m_ok && count <= (m_bytes.size() - m_at) / itemBytes;
        return m_ok;
    }
    bool Finished() const { return m_ok && m_at == m_bytes.size(); }

private:
    std::string_view m_bytes;
    size_t m_at = 0;
    bool m_ok = true;
};

template <class Io, class T>
    requires std::is_trivially_copyable_v<T>
void Field(Io& io, T& value)
{
    io.Raw(&value, sizeof value);
}

template <class Io> void Field(Io& io, RecordAttribute& attribute);
template <class Io> void Field(Io& io, RecordNode& node);
template <class Io> void Field(Io& io, RecordUVSet& set);
template <class Io> void Field(Io& io, RecordSkin& skin);
template <class Io> void Field(Io& io, RecordMorphTarget& target);
template <class Io> void Field(Io& io, RecordMesh& mesh);
template <class Io> void Field(Io& io, RecordTexture& texture);
template <class Io> void Field(Io& io, RecordMaterial& material);
template <class Io> void Field(Io& io, RecordChannel& channel);
template <class Io> void Field(Io& io, RecordWeightChannel& channel);
template <class Io> void Field(Io& io, RecordClip& clip);
template <class Io> void Field(Io& io, ImportWarning& warning);
template <class Io> void Field(Io& io, ImportedClip& clip);

template <class Io>
void Field(Io& io, std::string& text)
{
    size_t length = text.size();
    if (!io.Count(length, 1))
        return;
    if constexpr (Io::Reading)
        text.resize(length);
    io.Raw(text.data(), length);
}

template <class Io, class T>
void Field(Io& io, std::vector<T>& items)
{
    constexpr bool flat = std::is_trivially_copyable_v<T>;
    size_t count = items.size();
    // Any item that is not flat starts with a count of its own.
    if (!io.Count(count, flat ? sizeof(T) : sizeof(size_t)))
        return;
    if constexpr (Io::Reading)
        items.resize(count);
    if constexpr (flat) {
        io.Raw(items.data(), count * sizeof(T));
    } else {
        for (T& item : items)
            Field(io, item);
    }
}

template <class Io, class... T>
void Fields(Io& io, T&... fields)
{
    (Field(io, fields), ...);
}

template <class Io>
void Field(Io& io, RecordAttribute& attribute)
{
    Fields(io, attribute.Name, attribute.Kind, attribute.Number, attribute.Text);
}

template <class Io>
void Field(Io& io, RecordNode& node)
{
    Fields(io, node.Name, node.Parent, node.Kind, node.Rest, node.HasBindPose, node.Bind, node.Mesh, node.Light,
           node.Attributes);
}

template <class Io>
void Field(Io& io, RecordUVSet& set)
{
    Fields(io, set.Name, set.U, set.V, set.Ids);
}

template <class Io>
void Field(Io& io, RecordSkin& skin)
{
    Fields(io, skin.Influences, skin.BindPreMatrices, skin.Weights);
}

template <class Io>
void Field(Io& io, RecordMorphTarget& target)
{
    Fields(io, target.Offsets, target.Weight);
}

template <class Io>
void Field(Io& io, RecordMesh& mesh)
{
    Fields(io, mesh.Name, mesh.Points, mesh.Counts, mesh.Connects, mesh.UVSets, mesh.Normals, mesh.FaceMaterials,
           mesh.Skin, mesh.MorphTargets);
}

template <class Io>
void Field(Io& io, RecordTexture& texture)
{
    Fields(io, texture.File, texture.RepeatU, texture.RepeatV, texture.OffsetU, texture.OffsetV);
}

template <class Io>
void Field(Io& io, RecordMaterial& material)
{
    Fields(io, material.Name, material.Model, material.Color, material.Diffuse, material.Ambient, material.Specular,
           material.Transparency, material.CosinePower, material.Eccentricity, material.ColorTexture,
           material.TransparencyTexture, material.BumpTexture, material.SpecularTexture);
}

template <class Io>
void Field(Io& io, RecordChannel& channel)
{
    Fields(io, channel.Node, channel.Keys);
}

template <class Io>
void Field(Io& io, RecordWeightChannel& channel)
{
    Fields(io, channel.Mesh, channel.Target, channel.Keys);
}

template <class Io>
void Field(Io& io, RecordClip& clip)
{
    Fields(io, clip.Name, clip.StartSeconds, clip.EndSeconds, clip.Channels, clip.WeightChannels);
}

template <class Io>
void Field(Io& io, ImportWarning& warning)
{
    Fields(io, warning.Text, warning.Count, warning.Line);
}

template <class Io>
void Field(Io& io, ImportedClip& clip)
{
    Fields(io, clip.Name, clip.StartFrame, clip.EndFrame);
}

template <class Io>
void AllFields(Io& io, bool& read, SceneRecord& record, ImportResult& result)
{
    Fields(io, read, record.Nodes, record.Meshes, record.Materials, record.Lights, record.Clips, record.TimeUnit,
           record.DistanceUnit, result.Error, result.Warnings, result.Clips);
}

} // namespace

std::string PackSceneRecord(bool read, const SceneRecord& record, const ImportResult& result)
{
    // The sizer and the packer only read; the field lists are shared with the unpacker, which writes.
    auto& fields = const_cast<SceneRecord&>(record);
    auto& answer = const_cast<ImportResult&>(result);
    Sizer sizer;
    AllFields(sizer, read, fields, answer);
    Packer packer(sizer.Size());
    AllFields(packer, read, fields, answer);
    return packer.Take();
}

bool UnpackSceneRecord(std::string_view bytes, bool& read, SceneRecord& record, ImportResult& result)
{
    Unpacker unpacker(bytes);
    AllFields(unpacker, read, record, result);
    return unpacker.Finished();
}
