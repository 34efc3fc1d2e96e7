#include "importers/assimp/AssimpContext.h"

#include "importers/TransformMath.h"

#include "base/TextUtil.h"

#include <assimp/anim.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

namespace {

// Key times stored in milliseconds as floats land a little off whole frames.
constexpr double kFrameTolerance = 1e-3;

template <typename Value>
struct Key {
    double Time;
    Value Data;
};

template <typename Value, typename AssimpKey>
std::vector<Key<Value>> SortedKeys(const AssimpKey* keys, unsigned int count)
{
    std::vector<Key<Value>> sorted;
    for (unsigned int i = 0; keys && i < count; ++i)
        if (std::isfinite(keys[i].mTime))
            sorted.push_back({keys[i].mTime, keys[i].mValue});
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.Time < b.Time; });
    return sorted;
}

aiVector3D Lerp(const aiVector3D& a, const aiVector3D& b, float t) { return a + (b - a) * t; }

aiQuaternion Slerp(const aiQuaternion& a, const aiQuaternion& b, float t)
{
    aiQuaternion result;
    aiQuaternion::Interpolate(result, a, b, t);
    return result.Normalize();
}

// Assimp's channels hold linear keys (glTF's step and cubic keys arrive resampled), so values between keys are
// blended linearly, rotations along the shorter arc.
template <typename Value, typename Blend>
Value ValueAt(const std::vector<Key<Value>>& keys, double time, const Value& rest, Blend blend)
{
    if (keys.empty())
        return rest;
    if (time <= keys.front().Time)
        return keys.front().Data;
    if (time >= keys.back().Time)
        return keys.back().Data;
    const auto next = std::upper_bound(keys.begin(), keys.end(), time, [](double t, const auto& k) { return t < k.Time; });
    const auto previous = next - 1;
    const double span = next->Time - previous->Time;
    const double factor = span > 0.0 ? (time - previous->Time) / span : 0.0;
    return blend(previous->Data, next->Data, static_cast<float>(factor));
}

struct ChannelKeys {
    int Node = -1;
    std::vector<Key<aiVector3D>> Positions;
    std::vector<Key<aiQuaternion>> Rotations;
    std::vector<Key<aiVector3D>> Scalings;
    std::vector<double> Times; // union of the three, in ticks
};

RecordChannel SampleChannel(const AssimpContext& context, const ChannelKeys& channel, double ticksPerSecond,
                            double offsetSeconds)
{
    const aiNode& node = *context.Nodes[static_cast<size_t>(channel.Node)];
    aiVector3D restScaling(1.0f);
    aiQuaternion restRotation;
    aiVector3D restPosition;
    node.mTransformation.Decompose(restScaling, restRotation, restPosition);
    RecordChannel record;
    record.Node = channel.Node;
    MVector previous = context.Record.Nodes[static_cast<size_t>(channel.Node)].Rest.Rotate;
    for (double time : channel.Times) {
        const aiVector3D position = ValueAt(channel.Positions, time, restPosition, Lerp);
        const aiQuaternion rotation = ValueAt(channel.Rotations, time, restRotation, Slerp);
        const aiVector3D scaling = ValueAt(channel.Scalings, time, restScaling, Lerp);
        RecordKey key;
        key.Seconds = time / ticksPerSecond + offsetSeconds;
        key.Value = DecomposeTransform(context.LocalToMaya(node, aiMatrix4x4(scaling, rotation, position)));
        key.Value.Rotate = NearestEuler(key.Value.Rotate, previous);
        previous = key.Value.Rotate;
        record.Keys.push_back(key);
    }
    return record;
}

std::vector<ChannelKeys> ReadChannels(AssimpContext& context, const aiAnimation& animation)
{
    std::vector<ChannelKeys> channels;
    for (unsigned int c = 0; c < animation.mNumChannels; ++c) {
        const aiNodeAnim* source = animation.mChannels[c];
        if (!source)
            continue;
        ChannelKeys channel;
        channel.Node = context.FindNode(source->mNodeName.C_Str());
        if (channel.Node < 0) {
            context.Result.Warn("Animation of nodes that do not exist is not imported");
            continue;
        }
        channel.Positions = SortedKeys<aiVector3D>(source->mPositionKeys, source->mNumPositionKeys);
        channel.Rotations = SortedKeys<aiQuaternion>(source->mRotationKeys, source->mNumRotationKeys);
        channel.Scalings = SortedKeys<aiVector3D>(source->mScalingKeys, source->mNumScalingKeys);
        for (const auto& key : channel.Positions)
            channel.Times.push_back(key.Time);
        for (const auto& key : channel.Rotations)
            channel.Times.push_back(key.Time);
        for (const auto& key : channel.Scalings)
            channel.Times.push_back(key.Time);
        std::sort(channel.Times.begin(), channel.Times.end());
        channel.Times.erase(std::unique(channel.Times.begin(), channel.Times.end()), channel.Times.end());
        if (!channel.Times.empty())
            channels.push_back(std::move(channel));
    }
    return channels;
}

// A node that one clip animates and another does not would carry the first clip's last pose into the second;
// two keys at its rest pose hold it still there.
void HoldUnanimatedNodes(SceneRecord& record)
{
    std::set<int> animated;
    for (const RecordClip& clip : record.Clips)
        for (const RecordChannel& channel : clip.Channels)
            animated.insert(channel.Node);
    for (RecordClip& clip : record.Clips) {
        std::set<int> inClip;
        for (const RecordChannel& channel : clip.Channels)
            inClip.insert(channel.Node);
        for (int node : animated) {
            if (inClip.count(node))
                continue;
            const RecordTransform& rest = record.Nodes[static_cast<size_t>(node)].Rest;
            clip.Channels.push_back({node, {{clip.StartSeconds, rest}, {clip.EndSeconds, rest}}});
        }
    }
}

} // namespace

void ReadAssimpAnimations(AssimpContext& context)
{
    const double framesPerSecond = context.FramesPerSecond;
    double nextStartFrame = 0.0;
    for (unsigned int a = 0; a < context.Scene.mNumAnimations; ++a) {
        const aiAnimation* animation = context.Scene.mAnimations[a];
        if (!animation)
            continue;
        if (animation->mNumMeshChannels > 0 || animation->mNumMorphMeshChannels > 0)
            context.Result.Warn("Mesh and morph target animations are not imported");
        const std::vector<ChannelKeys> channels = ReadChannels(context, *animation);
        if (channels.empty())
            continue;
        const double ticksPerSecond =
            animation->mTicksPerSecond > 0.0 && std::isfinite(animation->mTicksPerSecond) ? animation->mTicksPerSecond
                                                                                          : framesPerSecond;
        double firstTick = channels.front().Times.front();
        double lastTick = channels.front().Times.back();
        for (const ChannelKeys& channel : channels) {
            firstTick = std::min(firstTick, channel.Times.front());
            lastTick = std::max(lastTick, channel.Times.back());
        }
        // The first clip keeps the file's times; each further one starts on the frame after the one before ends.
        const double startSeconds = firstTick / ticksPerSecond;
        const double offsetSeconds = context.Record.Clips.empty() ? 0.0 : nextStartFrame / framesPerSecond - startSeconds;
        RecordClip clip;
        clip.Name = animation->mName.length > 0 ? std::string(animation->mName.C_Str()) : Format("clip%u", a + 1);
        clip.StartSeconds = startSeconds + offsetSeconds;
        clip.EndSeconds = lastTick / ticksPerSecond + offsetSeconds;
        if (!std::isfinite(clip.StartSeconds) || !std::isfinite(clip.EndSeconds) ||
            std::abs(clip.EndSeconds) * framesPerSecond > 1e9) {
            context.Result.Warn("Animations with key times beyond Maya's time line are not imported");
            continue;
        }
        for (const ChannelKeys& channel : channels)
            clip.Channels.push_back(SampleChannel(context, channel, ticksPerSecond, offsetSeconds));
        nextStartFrame = std::ceil(clip.EndSeconds * framesPerSecond - kFrameTolerance) + 1.0;
        context.Record.Clips.push_back(std::move(clip));
    }
    HoldUnanimatedNodes(context.Record);
}
