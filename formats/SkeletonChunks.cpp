#include "formats/SkeletonChunks.h"

#include "formats/ChunkByteWriter.h"
#include "formats/ChunkReading.h"
#include "formats/ModelChunks.h"
#include "model/VMModel.h"

#include <string>

namespace {

// Translation and quaternion of the two transforms.
constexpr int32_t BoneTransformFloats = 14;

} // namespace

void PutFloats(ChunkByteWriter& out, const float* values, int count)
{
    out.PutBytes(values, static_cast<size_t>(count) * sizeof(float));
}

void PutTransform(ChunkByteWriter& out, const VMTransform& transform)
{
    float quaternion[4];
    RotationToQuaternion(transform, quaternion);
    PutFloats(out, transform.Translation(), 3);
    PutFloats(out, quaternion, 4);
}

bool WriteSkeletonChunk(VChunkedFile& file, const VMSkeleton& skeleton)
{
    if (!file.StartChunk(ChunkSKEL))
        return false;
    ChunkByteWriter out(file);
    out.Put(uint16_t {0});
    out.Put(static_cast<uint16_t>(skeleton.Bones.Count()));
    for (const VMBone* bone : skeleton.Bones) {
        out.Put(static_cast<int32_t>(bone->Name.size()));
        out.PutBytes(bone->Name.data(), bone->Name.size());
        const bool numbered = bone->Parent != nullptr && skeleton.Bones.Get(bone->Parent->Index) == bone->Parent;
        out.Put(numbered ? static_cast<uint16_t>(bone->Parent->Index) : NoParentBone);
        VMTransform inverse;
        Invert(bone->GlobalTransform, inverse);
        PutTransform(out, inverse);
        PutTransform(out, bone->LocalTransform);
    }
    out.Put(uint16_t {0});
    return out.Flush() && file.EndChunk();
}

bool WriteBoneMaskChunk(VChunkedFile& file, const std::vector<VMBoneMask>& masks)
{
    if (masks.empty())
        return true;
    if (!file.StartChunk(ChunkBMSK))
        return false;
    ChunkByteWriter out(file);
    out.Put(uint16_t {0});
    out.Put(static_cast<uint16_t>(masks.size()));
    for (const VMBoneMask& mask : masks) {
        out.Put(uint16_t {0});
        out.Put(static_cast<int32_t>(mask.Name.size()));
        out.PutBytes(mask.Name.data(), mask.Name.size());
        out.Put(static_cast<uint16_t>(mask.Values.size()));
        out.PutBytes(mask.Values.data(), mask.Values.size() * sizeof(uint32_t));
    }
    return out.Flush() && file.EndChunk();
}

const char* ReadSkeletonChunk(VChunkedFile& file, std::unique_ptr<VMSkeleton>& skeleton)
{
    if (skeleton)
        return "A second skeleton";
    uint16_t version = 0;
    uint16_t count = 0;
    if (!ReadChunkValue(file, version) || !ReadChunkValue(file, count))
        return "Truncated skeleton";
    // Each bone holds at least its name's length, its parent and its two transforms.
    if (count > file.GetRemainingChunkBytes() / (4 + 2 + BoneTransformFloats * 4))
        return "Bone count exceeds the chunk";
    skeleton = VMModel::NewSkeleton();
    skeleton->Bones.Reserve(count);
    for (uint16_t i = 0; i < count; ++i) {
        VMBone* bone = VMModel::NewBone().release();
        skeleton->Bones.Add(bone);
        uint16_t parent = 0;
        float transforms[BoneTransformFloats];
        if (!ReadChunkString(file, bone->Name) || !ReadChunkValue(file, parent) || !ReadChunkValue(file, transforms))
            return "Truncated bone";
        if (parent < i) {
            bone->Parent = skeleton->Bones[parent];
            bone->Parent->Children.Add(bone);
        }
        Invert(TransformFromQuaternion(transforms + 3, transforms), bone->GlobalTransform);
        bone->LocalTransform = TransformFromQuaternion(transforms + 10, transforms + 7);
    }
    skeleton->Enumerate();
    return nullptr;
}

const char* ReadBoneMaskChunk(VChunkedFile& file, std::vector<VMBoneMask>& masks)
{
    uint16_t version = 0;
    uint16_t count = 0;
    if (!ReadChunkValue(file, version) || !ReadChunkValue(file, count))
        return "Truncated bone masks";
    for (uint16_t i = 0; i < count; ++i) {
        VMBoneMask mask;
        uint16_t unused = 0;
        uint16_t values = 0;
        if (!ReadChunkValue(file, unused) || !ReadChunkString(file, mask.Name) || !ReadChunkValue(file, values) ||
            !ReadChunkArray(file, values, mask.Values))
            return "Truncated bone mask";
        masks.push_back(std::move(mask));
    }
    return nullptr;
}
