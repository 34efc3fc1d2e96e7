#include "importers/assimp/AssimpContext.h"

#include "importers/TransformMath.h"

#include "base/TextUtil.h"

#include <assimp/anim.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
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

// Morph weights of one target of one mesh, times in the animation's ticks.
struct WeightKeys {
    int Mesh = -1;
    int Target = -1;
    std::vector<Key<double>> Keys;
};

// The mesh a morph channel drives: the one of the node it names. FBX names the channel after the mesh and
// its blend shape, "pCube1*0".
int MorphedMesh(const AssimpContext& context, const std::string& name)
{
    int node = context.FindNode(name);
    if (node < 0 && name.find('*') != std::string::npos)
        node = context.FindNode(name.substr(0, name.find('*')));
    return node < 0 ? -1 : context.Record.Nodes[static_cast<size_t>(node)].Mesh;
}

std::vector<WeightKeys> ReadWeightChannels(AssimpContext& context, const aiAnimation& animation)
{
    std::map<std::pair<int, int>, WeightKeys> channels;
    for (unsigned int c = 0; c < animation.mNumMorphMeshChannels; ++c) {
        const aiMeshMorphAnim* source = animation.mMorphMeshChannels[c];
        if (!source)
            continue;
        const int mesh = MorphedMesh(context, source->mName.C_Str());
        const size_t targets = mesh < 0 ? 0 : context.Record.Meshes[static_cast<size_t>(mesh)].MorphTargets.size();
        for (unsigned int k = 0; k < source->mNumKeys && source->mKeys; ++k) {
            const aiMeshMorphKey& key = source->mKeys[k];
            for (unsigned int i = 0; i < key.mNumValuesAndWeights && key.mValues && key.mWeights; ++i) {
                if (key.mValues[i] >= targets || !std::isfinite(key.mTime) || !std::isfinite(key.mWeights[i])) {
                    context.Result.Warn("Weights of morph targets that were not imported are ignored");
                    continue;
                }
                const int target = static_cast<int>(key.mValues[i]);
                WeightKeys& channel = channels[{mesh, target}];
                channel.Mesh = mesh;
                channel.Target = target;
                channel.Keys.push_back({key.mTime, key.mWeights[i]});
            }
        }
    }
    std::vector<WeightKeys> read;
    for (auto& [which, channel] : channels) {
        std::stable_sort(channel.Keys.begin(), channel.Keys.end(), [](const auto& a, const auto& b) { return a.Time < b.Time; });
        read.push_back(std::move(channel));
    }
    return read;
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
        if (animation->mNumMeshChannels > 0)
            context.Result.Warn("Mesh animations are not imported");
        const std::vector<ChannelKeys> channels = ReadChannels(context, *animation);
        const std::vector<WeightKeys> weights = ReadWeightChannels(context, *animation);
        if (channels.empty() && weights.empty())
            continue;
        const double ticksPerSecond =
            animation->mTicksPerSecond > 0.0 && std::isfinite(animation->mTicksPerSecond) ? animation->mTicksPerSecond
                                                                                          : framesPerSecond;
        double firstTick = std::numeric_limits<double>::infinity();
        double lastTick = -std::numeric_limits<double>::infinity();
        for (const ChannelKeys& channel : channels) {
            firstTick = std::min(firstTick, channel.Times.front());
            lastTick = std::max(lastTick, channel.Times.back());
        }
        for (const WeightKeys& channel : weights) {
            firstTick = std::min(firstTick, channel.Keys.front().Time);
            lastTick = std::max(lastTick, channel.Keys.back().Time);
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
        for (const WeightKeys& channel : weights) {
            RecordWeightChannel& record = clip.WeightChannels.emplace_back();
            record.Mesh = channel.Mesh;
            record.Target = channel.Target;
            for (const Key<double>& key : channel.Keys)
                record.Keys.push_back({key.Time / ticksPerSecond + offsetSeconds, key.Data});
        }
        nextStartFrame = std::ceil(clip.EndSeconds * framesPerSecond - kFrameTolerance) + 1.0;
        context.Record.Clips.push_back(std::move(clip));
    }
    HoldUnanimatedNodes(context.Record);
}
