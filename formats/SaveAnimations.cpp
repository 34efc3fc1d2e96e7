#include "formats/SaveAnimations.h"

#include "formats/AnimationChunks.h"
#include "formats/ChunkByteWriter.h"
#include "formats/SkeletonChunks.h"
#include "formats/chunk/VChunkedFile.h"
#include "model/VMModel.h"

#include <algorithm>
#include <limits>
#include <new>
#include <vector>

namespace {

bool HasBones(const VMModel& model)
{
    return model.Skeleton && model.Skeleton->Bones.Count() > 0;
}

void PutString(ChunkByteWriter& out, const std::string& text)
{
    out.Put(static_cast<int32_t>(text.size()));
    out.PutBytes(text.data(), text.size());
}

// One key list: the count, then per key its time and what payload writes.
template <class Payload>
bool WriteKeyList(VChunkedFile& file, uint32_t id, const VMAnimation& animation, const std::vector<uint8_t>& prefix,
                  Payload payload)
{
    if (!file.StartChunk(id))
        return false;
    ChunkByteWriter out(file);
    out.PutBytes(prefix.data(), prefix.size());
    out.Put(static_cast<int32_t>(animation.FrameCount()));
    for (int key = 0; key < animation.FrameCount(); ++key) {
        out.Put(animation.Keys[static_cast<size_t>(key)].Time);
        payload(out, key);
    }
    return out.Flush() && file.EndChunk();
}

bool WriteEvents(VChunkedFile& file, const VMAnimation& animation)
{
    if (animation.Events.IsEmpty())
        return true;
    if (!file.StartChunk(ChunkEVNT))
        return false;
    ChunkByteWriter out(file);
    out.Put(uint16_t {0});
    out.Put(static_cast<int32_t>(animation.Events.Count()));
    for (const VMEvent* event : animation.Events) {
        out.Put(event->Time);
        PutString(out, event->Name);
    }
    return out.Flush() && file.EndChunk();
}

class BoneAnimationWriter {
public:
    BoneAnimationWriter(VChunkedFile& file, const VMModel& model, const VMAnimation& animation)
        : m_file(file), m_animation(animation)
    {
        if (HasBones(model))
            m_bones.assign(model.Skeleton->Bones.begin(), model.Skeleton->Bones.end());
        m_skeletonNumber = model.Skeleton ? model.Skeleton->Number : 0;
    }

    bool Write()
    {
        if (!m_file.StartChunk(ChunkBANI))
            return false;
        {
            ChunkByteWriter out(m_file);
            out.Put(BoneAnimationVersion);
            out.Put(static_cast<uint16_t>(m_skeletonNumber));
            out.Put(static_cast<uint16_t>(m_bones.size()));
            PutString(out, m_animation.Name);
            if (!out.Flush())
                return false;
        }
        const uint8_t* move = m_animation.Move;
        const uint8_t* rotation = m_animation.RotationAxis;
        const bool scaled = std::any_of(m_animation.Frames.begin(), m_animation.Frames.end(),
                                        [](const VMAnimFrame* frame) { return frame->HasScales(); });
        return (!m_animation.HasBoundaries || WriteBoxes()) && (!(move[0] || move[1] || move[2]) || WriteOffsets()) &&
               (!(rotation[0] || rotation[1] || rotation[2]) || WriteRotationDeltas()) && WritePositions() &&
               WriteRotations() && (!scaled || WriteScales()) && WriteEvents(m_file, m_animation) &&
               WriteBoneMaskChunk(m_file, m_animation.BoneMasks) && m_file.EndChunk();
    }

private:
    const VMAnimFrame& Frame(int key) const { return *m_animation.Frames[key]; }

    // The frame slot a bone's keys come from, -1 when the frame has no room for it.
    int Slot(const VMAnimFrame& frame, const VMBone& bone) const
    {
        const int slot = bone.TrackIndex >= 0 ? bone.TrackIndex : bone.Index;
        return slot < frame.Capacity() ? slot : -1;
    }

    VMTransform Pose(const VMAnimFrame& frame, const VMBone& bone) const
    {
        const int slot = Slot(frame, bone);
        return slot >= 0 ? frame.Local(slot) : VMTransform::Identity();
    }

    bool WriteBoxes()
    {
        return WriteKeyList(m_file, ChunkVSBX, m_animation, {}, [&](ChunkByteWriter& out, int key) {
            PutFloats(out, Frame(key).Box.Min, 3);
            PutFloats(out, Frame(key).Box.Max, 3);
        });
    }

    bool WriteOffsets()
    {
        return WriteKeyList(m_file, ChunkODTA, m_animation, {0, 0}, [&](ChunkByteWriter& out, int key) {
            PutFloats(out, Frame(key).MotionTranslation, 3);
        });
    }

    bool WriteRotationDeltas()
    {
        const uint8_t* flags = m_animation.RotationAxis;
        const uint8_t axis = flags[2] ? 2 : flags[1] ? 1 : 0;
        return WriteKeyList(m_file, ChunkRDTA, m_animation, {0, 0, axis}, [&](ChunkByteWriter& out, int key) {
            out.Put(Frame(key).MotionRotation[axis]);
        });
    }

    bool WritePositions()
    {
        return WriteKeyList(m_file, ChunkBPOS, m_animation, {}, [&](ChunkByteWriter& out, int key) {
            for (const VMBone* bone : m_bones)
                PutFloats(out, Pose(Frame(key), *bone).Translation(), 3);
        });
    }

    bool WriteRotations()
    {
        return WriteKeyList(m_file, ChunkBROT, m_animation, {}, [&](ChunkByteWriter& out, int key) {
            for (const VMBone* bone : m_bones) {
                float quaternion[4];
                RotationToQuaternion(Pose(Frame(key), *bone), quaternion);
                PutFloats(out, quaternion, 4);
            }
        });
    }

    bool WriteScales()
    {
        return WriteKeyList(m_file, ChunkBSCL, m_animation, {}, [&](ChunkByteWriter& out, int key) {
            const VMAnimFrame& frame = Frame(key);
            for (const VMBone* bone : m_bones) {
                static constexpr float Unscaled[3] = {1.0f, 1.0f, 1.0f};
                const int slot = Slot(frame, *bone);
                const float* scale = slot >= 0 ? frame.Scale(slot) : nullptr;
                PutFloats(out, scale != nullptr ? scale : Unscaled, 3);
            }
        });
    }

    VChunkedFile& m_file;
    const VMAnimation& m_animation;
    std::vector<const VMBone*> m_bones;
    int32_t m_skeletonNumber = 0;
};

class VertexAnimationWriter {
public:
    VertexAnimationWriter(VChunkedFile& file, const VMModel& model, const VMAnimation& animation)
        : m_file(file), m_model(model), m_animation(animation)
    {
    }

    bool Write()
    {
        if (!m_file.StartChunk(ChunkVANI))
            return false;
        {
            ChunkByteWriter out(m_file);
            out.Put(VertexAnimationVersion);
            PutString(out, m_animation.Name);
            // A model of more vertices than 16 bits hold says so with the largest count there is.
            out.Put(static_cast<uint16_t>(std::min(m_model.Vertices.Count(), 65535)));
            if (!out.Flush())
                return false;
        }
        int64_t highest = -1;
        const bool written = WriteDeltas(highest) && WriteEvents(m_file, m_animation);
        return written && (highest < 0 || WriteMask(highest)) && m_file.EndChunk();
    }

private:
    static int64_t NumberOf(const VMVertexDelta& delta) { return delta.Vertex != nullptr ? delta.Vertex->Index : -1; }

    bool WriteDeltas(int64_t& highest)
    {
        std::vector<const VMVertexDelta*> sorted;
        return WriteKeyList(m_file, ChunkVDEL, m_animation, {}, [&](ChunkByteWriter& out, int key) {
            sorted.clear();
            if (const VMVertexTrack* track = m_animation.VertexTracks[key]) {
                for (const VMVertexDelta& delta : track->Deltas)
                    sorted.push_back(&delta);
            }
            std::stable_sort(sorted.begin(), sorted.end(), [](const VMVertexDelta* a, const VMVertexDelta* b) {
                return NumberOf(*a) < NumberOf(*b);
            });
            out.Put(static_cast<int32_t>(sorted.size()));
            for (const VMVertexDelta* delta : sorted) {
                highest = std::max(highest, NumberOf(*delta));
                out.Put(static_cast<int32_t>(NumberOf(*delta)));
                PutFloats(out, delta->Position, 3);
                PutFloats(out, delta->Normal, 3);
            }
        });
    }

    bool WriteMask(int64_t highest)
    {
        std::vector<uint32_t> words(static_cast<size_t>((highest + 1 + 31) / 32), 0u);
        for (const VMVertexTrack* track : m_animation.VertexTracks) {
            for (const VMVertexDelta& delta : track->Deltas) {
                const int64_t number = NumberOf(delta);
                if (number >= 0)
                    words[static_cast<size_t>(number / 32)] |= 1u << (number % 32);
            }
        }
        if (!m_file.StartChunk(ChunkVMSK))
            return false;
        ChunkByteWriter out(m_file);
        out.Put(static_cast<int32_t>(highest + 1));
        out.PutBytes(words.data(), words.size() * sizeof(uint32_t));
        return out.Flush() && m_file.EndChunk();
    }

    VChunkedFile& m_file;
    const VMModel& m_model;
    const VMAnimation& m_animation;
};

bool WriteAnimations(VMModel& model, std::string_view path, VChunkStreamProvider* streams)
{
    model.Enumerate();
    VChunkedFile file;
    if (!file.Create(path, streams))
        return false;
    bool ok = file.StartChunk(ChunkANIM) && file.Write("\0\0", 2) == 2;
    ok = ok && file.StartChunk(ChunkHEAD) &&
         file.WriteInt(model.BoneAnimations.Count() + model.VertexAnimations.Count()) && file.EndChunk();
    if (HasBones(model)) {
        ok = ok && WriteSkeletonChunk(file, *model.Skeleton);
        model.Skeleton->Number = 0;
    }
    for (const VMAnimation* animation : model.BoneAnimations)
        ok = ok && BoneAnimationWriter(file, model, *animation).Write();
    for (const VMAnimation* animation : model.VertexAnimations)
        ok = ok && VertexAnimationWriter(file, model, *animation).Write();
    ok = ok && file.EndChunk();
    return file.Close() && ok;
}

} // namespace

bool SaveAnimations(VMModel& model, std::string_view path, VChunkStreamProvider* streams)
{
    try {
        return WriteAnimations(model, path, streams);
    } catch (const std::bad_alloc&) {
        return false;
    }
}
