#include "harvest/SampleAnimations.h"

#include "base/TextUtil.h"
#include "harvest/GetBoneAnimFrame.h"
#include "harvest/GetKeyFrames.h"
#include "harvest/HarvestState.h"
#include "harvest/MuscleDeltas.h"
#include "model/VMModel.h"
#include "report/DebugFile.h"
#include "report/LogWindow.h"
#include "report/VIssueKind.h"
#include "report/VReport.h"
#include "settings/VAnimationTable.h"

#include <maya/MGlobal.h>

namespace {

// The entry's frame times; false (with the issue raised) when there are none.
bool FrameTimesOf(HarvestState& state, VAnimationDescription& entry, const VTimeBase& base)
{
    const FrameTimesResult result = ComputeFrameTimes(entry, base, state.KeyTimes);
    if (result == FrameTimesResult::InvalidRange)
        entry.KeyFrameCount = 0;
    if (result == FrameTimesResult::Capped)
        state.Report.AddIssue(IssueTooManyAnimationFrames, entry.Name);
    if (entry.KeyFrameCount > 0)
        return true;
    state.Report.AddIssue(IssueAnimationWithoutFrames, entry.Name);
    return false;
}

// Maya samples whole frames of the UI unit.
void GoToTick(int32_t tick, const VTimeBase& base)
{
    MGlobal::viewFrame(static_cast<double>(tick / base.TicksPerFrame));
}

// Frame k's time in seconds since the first frame and its duration in milliseconds.
float SecondsOf(const VAnimationDescription& entry, int k)
{
    const int64_t ticks = int64_t {entry.KeyFrameTimes[static_cast<size_t>(k)]} - entry.KeyFrameTimes[0];
    return static_cast<float>(ticks) / static_cast<float>(TicksPerSecond);
}

int32_t MillisecondsOf(const VAnimationDescription& entry, int k)
{
    return entry.KeyFrameDurations[static_cast<size_t>(k)] / 24;
}

void TraceFrame(const VAnimationDescription& entry, int k)
{
    DebugPrint("Frame %d at %d\r\n", k, entry.KeyFrameTimes[static_cast<size_t>(k)] - entry.KeyFrameTimes[0]);
    LogPrint("Frame: %d / %d\r\n", k, entry.KeyFrameCount);
}

void CopyEntrySettings(const VAnimationDescription& entry, VMAnimation& animation)
{
    animation.Compressed = entry.Compressed ? 1 : 0;
    if (!entry.MotionDelta)
        return;
    animation.ExtractMotionDelta = 1;
    animation.CompensateRotation = entry.CompensateRotation != 0 ? 1 : 0;
    if (entry.RotationAxis >= 1 && entry.RotationAxis <= 3)
        animation.RotationAxis[entry.RotationAxis - 1] = 1;
    animation.Move[0] = entry.MoveX != 0 ? 1 : 0;
    animation.Move[1] = entry.MoveY != 0 ? 1 : 0;
    animation.Move[2] = entry.MoveZ != 0 ? 1 : 0;
}

void BoneAnimation(HarvestState& state, VMModel& model, VAnimationDescription& entry, const VTimeBase& base)
{
    DebugPrint("BoneAnimation()\r\n");
    if (!model.Skeleton || model.Skeleton->Bones.IsEmpty()) {
        state.Report.AddIssue(IssueNoBonesInAnimation);
        DebugPrint("No bones in animation. Failing...\r\n");
        return;
    }
    LogRaw(Format("Exporting bone animation: %s\r\n", entry.Name.c_str()));
    if (!FrameTimesOf(state, entry, base))
        return;
    std::unique_ptr<VMAnimation> animation = VMModel::NewAnimation(entry.Name, entry.Frames);
    LogPrint("Bone animation...\r\n");
    const BonePoseSampler sampler(state, model.Skeleton.get());
    for (int k = 0; k < entry.KeyFrameCount; ++k) {
        TraceFrame(entry, k);
        GoToTick(entry.KeyFrameTimes[static_cast<size_t>(k)], base);
        std::unique_ptr<VMAnimFrame> frame = sampler.Sample();
        if (!frame)
            continue;
        const VMAnimFrame& pose = *frame;
        if (animation->AddFrame(std::move(frame), SecondsOf(entry, k), MillisecondsOf(entry, k)) != 0) {
            state.Report.AddIssue(IssueOutOfMemory, "BoneAnimation");
            return;
        }
        PoseBones(pose);
    }
    CopyEntrySettings(entry, *animation);
    model.BoneAnimations.Add(std::move(animation));
}

void MuscleAnimation(HarvestState& state, VMModel& model, VAnimationDescription& entry, const VTimeBase& base)
{
    DebugPrint("MuscleAnimation()\r\n");
    LogPrint("Exporting muscle animation: %s\r\n", entry.Name.c_str());
    if (!FrameTimesOf(state, entry, base))
        return;
    GoToTick(entry.KeyFrameTimes[0], base);
    std::unique_ptr<VMAnimFrame> reference;
    if (state.Parameters.Options.ExportBones && model.Skeleton && !model.Skeleton->Bones.IsEmpty())
        reference = BonePoseSampler(state, model.Skeleton.get()).Sample();
    std::unique_ptr<VMAnimation> animation = VMModel::NewAnimation(entry.Name, entry.Frames);
    MuscleDeltas deltas(state, model, reference.get(), entry.Name);
    for (int k = 0; k < entry.KeyFrameCount; ++k) {
        TraceFrame(entry, k);
        if (k > 0)
            GoToTick(entry.KeyFrameTimes[static_cast<size_t>(k)], base);
        if (animation->AddVertexFrame(deltas.Frame(), SecondsOf(entry, k), MillisecondsOf(entry, k)) != 0) {
            state.Report.AddIssue(IssueOutOfMemory, "MuscleAnimation");
            return;
        }
    }
    model.VertexAnimations.Add(std::move(animation));
}

} // namespace

void SampleAnimations(HarvestState& state, VMModel& model, VAnimationTable& animations)
{
    DebugPrint("Animation()\r\n");
    if (!state.KeyTimesGathered) {
        GetKeyFrames(state, ReadTimeBase(), state.KeyTimes);
        state.KeyTimesGathered = true;
    }
    DebugPrint("Starting to calculate animations...\r\n");
    for (int i = 0; i < animations.Count(); ++i) {
        VAnimationDescription& entry = animations[i];
        const VTimeBase base = ReadTimeBase();
        switch (entry.Type) {
        case kAnimTypeBone:
            BoneAnimation(state, model, entry, base);
            break;
        case kAnimTypeMuscle:
        case kAnimTypeMorphTarget:
            MuscleAnimation(state, model, entry, base);
            break;
        default:
            DebugPrint("Animation %s has unknown animation type %d\r\n", entry.Name.c_str(), entry.Type);
            state.Report.AddIssue(IssueUnknownAnimationType, entry.Name);
            break;
        }
    }
    DebugPrint("End of Animation()\r\n");
}
