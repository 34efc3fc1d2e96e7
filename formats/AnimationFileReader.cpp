#include "formats/AnimationFileReader.h"

#include "base/TextUtil.h"
#include "formats/AnimationChunks.h"
#include "formats/ChunkReading.h"
#include "formats/ModelChunks.h"
#include "formats/SkeletonChunks.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VChunkedFile.h"
#include "model/VMModel.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int32_t DeltaRecordBytes = 4 + 6 * 4;

class AnimationParser {
public:
    AnimationParser(VChunkedFile& file, VAnimationFile& animations) : m_file(file), m_animations(animations) {}

    // Empty when the file was read whole; else what is wrong with it.
    std::string Parse()
    {
        if (!m_file.OpenChunk(ChunkANIM))
            return m_file.GetMode() == VChunkedFile::Mode::Error ? LastError().Text : "Missing chunk ANIM";
        uint16_t version = 0;
        if (m_file.GetRemainingChunkBytes() > 0 && !ReadChunkValue(m_file, version))
            return Truncated();
        std::string problem = ParseChildren([&](uint32_t id) { return ParseTopLevel(id); });
        if (!problem.empty())
            return problem;
        return m_file.EndChunk() ? std::string() : Truncated();
    }

private:
    std::string Truncated() const
    {
        return m_file.GetMode() == VChunkedFile::Mode::Error ? LastError().Text : "File is truncated";
    }

    // Opens each child of the open chunk in turn and hands it to parse (null when read, else the
    // problem), skipping what parse leaves unread.
    template <class Parse>
    std::string ParseChildren(Parse parse)
    {
        while (m_file.GetRemainingChunkBytes() > 0) {
            uint32_t id = 0;
            if (!m_file.OpenChunk(VChunkedFile::AnyChunk, &id))
                return Truncated();
            if (const char* problem = parse(id))
                return Format("%s in chunk %s", problem, ChunkName(id).c_str());
            if (!m_file.EndChunk())
                return Truncated();
        }
        return {};
    }

    const char* ParseTopLevel(uint32_t id)
    {
        switch (id) {
        case ChunkHEAD:
            return ReadChunkValue(m_file, m_animations.DeclaredCount) ? nullptr : "Truncated header";
        case ChunkSKEL:
            return ReadSkeletonChunk(m_file, m_animations.Skeleton);
        case ChunkBANI:
        case ChunkVANI:
            return ParseAnimation(id);
        default:
            return nullptr;
        }
    }

    const char* ParseAnimation(uint32_t kind)
    {
        VAnimFileAnimation& animation = m_animations.Animations.emplace_back();
        animation.Kind = kind;
        if (!ReadChunkValue(m_file, animation.Version))
            return "Truncated animation";
        const bool bones = kind == ChunkBANI;
        const bool header = bones ? ReadChunkValue(m_file, animation.SkeletonNumber) &&
                                        ReadChunkValue(m_file, animation.BoneCount) &&
                                        ReadChunkString(m_file, animation.Name)
                                  : ReadChunkString(m_file, animation.Name) &&
                                        ReadChunkValue(m_file, animation.VertexCount);
        if (!header)
            return "Truncated animation";
        std::string problem = ParseChildren([&](uint32_t id) {
            animation.Chunks.push_back(id);
            return bones ? ParseBoneTrack(animation, id) : ParseVertexTrack(animation, id);
        });
        if (problem.empty())
            return nullptr;
        m_problem = "In animation \"" + animation.Name + "\": " + problem;
        return m_problem.c_str();
    }

    const char* ParseBoneTrack(VAnimFileAnimation& animation, uint32_t id)
    {
        const int32_t bones = animation.BoneCount;
        uint16_t unused = 0;
        switch (id) {
        case ChunkVSBX:
            return ReadKeyList(6, animation.Boxes);
        case ChunkODTA:
            return ReadChunkValue(m_file, unused) ? ReadKeyList(3, animation.Offsets) : "Truncated motion";
        case ChunkRDTA:
            if (!ReadChunkValue(m_file, unused) || !ReadChunkValue(m_file, animation.RotationAxis))
                return "Truncated motion";
            return ReadKeyList(1, animation.RotationDeltas);
        case ChunkBPOS:
            return ReadKeyList(3 * bones, animation.Positions);
        case ChunkBROT:
            return ReadKeyList(4 * bones, animation.Rotations);
        case ChunkBSCL:
            return ReadKeyList(3 * bones, animation.Scales);
        case ChunkEVNT:
            return ReadEvents(animation.Events);
        case ChunkBMSK:
            return ReadBoneMaskChunk(m_file, animation.BoneMasks);
        default:
            return nullptr;
        }
    }

    const char* ParseVertexTrack(VAnimFileAnimation& animation, uint32_t id)
    {
        switch (id) {
        case ChunkVDEL:
            return ReadDeltas(animation);
        case ChunkEVNT:
            return ReadEvents(animation.Events);
        case ChunkVMSK:
            if (!ReadChunkValue(m_file, animation.MaskBits) || animation.MaskBits < 0)
                return "Damaged vertex mask";
            return ReadChunkArray(m_file, (static_cast<int64_t>(animation.MaskBits) + 31) / 32, animation.MaskWords)
                       ? nullptr
                       : "Vertex mask exceeds the chunk";
        default:
            return nullptr;
        }
    }

    const char* ReadKeyList(int32_t width, VAnimKeyList& keys)
    {
        int32_t count = 0;
        const int64_t recordFloats = 1 + static_cast<int64_t>(width);
        std::vector<float> records;
        if (!ReadChunkValue(m_file, count) || count < 0 || count > m_file.GetRemainingChunkBytes() / (recordFloats * 4) ||
            !ReadChunkArray(m_file, count * recordFloats, records))
            return "Key count exceeds the chunk";
        keys.Width = width;
        keys.Times.resize(static_cast<size_t>(count));
        keys.Values.resize(static_cast<size_t>(count) * static_cast<size_t>(width));
        for (int32_t key = 0; key < count; ++key) {
            const float* record = records.data() + key * recordFloats;
            keys.Times[static_cast<size_t>(key)] = record[0];
            std::copy_n(record + 1, width, keys.Values.begin() + static_cast<std::ptrdiff_t>(key) * width);
        }
        return nullptr;
    }

    const char* ReadDeltas(VAnimFileAnimation& animation)
    {
        int32_t count = 0;
        // Each key holds at least its time and its entry count.
        if (!ReadChunkValue(m_file, count) || count < 0 || count > m_file.GetRemainingChunkBytes() / 8)
            return "Key count exceeds the chunk";
        animation.DeltaTimes.resize(static_cast<size_t>(count));
        animation.Deltas.resize(static_cast<size_t>(count));
        for (int32_t key = 0; key < count; ++key) {
            int32_t entries = 0;
            std::vector<uint8_t> records;
            if (!ReadChunkValue(m_file, animation.DeltaTimes[static_cast<size_t>(key)]) ||
                !ReadChunkValue(m_file, entries) || entries < 0 ||
                entries > m_file.GetRemainingChunkBytes() / DeltaRecordBytes ||
                !ReadChunkArray(m_file, static_cast<int64_t>(entries) * DeltaRecordBytes, records))
                return "Delta count exceeds the chunk";
            std::vector<VAnimFileDelta>& deltas = animation.Deltas[static_cast<size_t>(key)];
            deltas.resize(static_cast<size_t>(entries));
            for (int32_t i = 0; i < entries; ++i) {
                const uint8_t* record = records.data() + static_cast<size_t>(i) * DeltaRecordBytes;
                VAnimFileDelta& delta = deltas[static_cast<size_t>(i)];
                std::memcpy(&delta.Vertex, record, 4);
                std::memcpy(delta.Position, record + 4, 12);
                std::memcpy(delta.Normal, record + 16, 12);
            }
        }
        return nullptr;
    }

    const char* ReadEvents(std::vector<VMEvent>& events)
    {
        uint16_t version = 0;
        int32_t count = 0;
        // Each event holds at least its time and its name's length.
        if (!ReadChunkValue(m_file, version) || !ReadChunkValue(m_file, count) || count < 0 ||
            count > m_file.GetRemainingChunkBytes() / 8)
            return "Event count exceeds the chunk";
        events.resize(static_cast<size_t>(count));
        for (VMEvent& event : events) {
            if (!ReadChunkValue(m_file, event.Time) || !ReadChunkString(m_file, event.Name))
                return "Truncated event";
        }
        return nullptr;
    }

    VChunkedFile& m_file;
    VAnimationFile& m_animations;
    std::string m_problem;
};

std::string KeySpan(const std::vector<float>& times)
{
    if (times.empty())
        return "no keys";
    const auto [first, last] = std::minmax_element(times.begin(), times.end());
    return Format("%d keys, %g to %g s", static_cast<int>(times.size()), static_cast<double>(*first),
                  static_cast<double>(*last));
}

std::string DescribeBoneAnimation(const VAnimFileAnimation& animation)
{
    std::string text = Format(": %s, %u bone tracks\n", KeySpan(animation.Positions.Times).c_str(), animation.BoneCount);
    std::string tracks;
    for (uint32_t chunk : animation.Chunks)
        tracks += " " + ChunkName(chunk);
    text += "    tracks:" + tracks + "\n";
    if (animation.Has(ChunkODTA) || animation.Has(ChunkRDTA)) {
        text += "    root motion:";
        if (animation.Has(ChunkODTA))
            text += " translation";
        if (animation.Has(ChunkRDTA))
            text += Format(" rotation about %c", "xyz"[std::min<int>(animation.RotationAxis, 2)]);
        text += "\n";
    }
    return text;
}

std::string DescribeVertexAnimation(const VAnimFileAnimation& animation)
{
    size_t entries = 0;
    for (const std::vector<VAnimFileDelta>& key : animation.Deltas)
        entries += key.size();
    int moved = 0;
    for (uint32_t word : animation.MaskWords)
        moved += __builtin_popcount(word);
    std::string text = Format(": %s, model of %u vertices\n", KeySpan(animation.DeltaTimes).c_str(), animation.VertexCount);
    text += Format("    %zu vertex deltas, %d vertices moved\n", entries, moved);
    return text;
}

} // namespace

bool VAnimFileAnimation::IsBoneAnimation() const
{
    return Kind == ChunkBANI;
}

bool VAnimFileAnimation::Has(uint32_t chunk) const
{
    return std::find(Chunks.begin(), Chunks.end(), chunk) != Chunks.end();
}

bool ReadAnimationFile(std::string_view path, VAnimationFile& animations, VChunkStreamProvider* provider)
{
    animations = VAnimationFile {};
    const bool read = ReadChunkFile(path, provider, "animation file",
                                    [&](VChunkedFile& file) { return AnimationParser(file, animations).Parse(); });
    if (!read)
        animations = VAnimationFile {};
    return read;
}

std::string DescribeAnimationFile(const VAnimationFile& animations)
{
    std::string text = "Animation file\n";
    text += animations.Skeleton ? Format("Skeleton: %d bones\n", animations.Skeleton->Bones.Count())
                                : std::string("Skeleton: none\n");
    text += Format("Animations: %d\n", static_cast<int>(animations.Animations.size()));
    int number = 0;
    for (const VAnimFileAnimation& animation : animations.Animations) {
        const bool bones = animation.IsBoneAnimation();
        text += Format("  %d %s \"%s\"", number++, bones ? "bone" : "vertex", animation.Name.c_str());
        text += bones ? DescribeBoneAnimation(animation) : DescribeVertexAnimation(animation);
        if (!animation.Events.empty())
            text += Format("    %d events\n", static_cast<int>(animation.Events.size()));
    }
    return text;
}
