#include "harvest/GetBoneAnimFrame.h"

#include "harvest/BoneMatrix.h"
#include "harvest/HarvestState.h"
#include "model/VMSkeleton.h"
#include "report/DebugFile.h"

#include <maya/MFnDagNode.h>
#include <maya/MItDag.h>

#include <algorithm>

BonePoseSampler::BonePoseSampler(const HarvestState& state, const VMSkeleton* skeleton)
    : m_exportBones(state.Parameters.Options.ExportBones)
{
    if (skeleton == nullptr)
        return;
    m_capacity = std::max(m_capacity, skeleton->Bones.Count());
    for (VMBone* bone : skeleton->Bones)
        m_bones.emplace(bone->FullName, bone);
}

std::unique_ptr<VMAnimFrame> BonePoseSampler::Sample() const
{
    DebugPrint("GetBoneAnimFrame()\r\n");
    std::unique_ptr<VMAnimFrame> frame = VMAnimFrame::Create(m_capacity, false);
    MStatus status;
    MItDag walk(MItDag::kBreadthFirst, MFn::kInvalid, &status);
    if (!frame || !status) {
        DebugPrint("Failure in DAG iterator setup.\r\n");
        return nullptr;
    }
    for (; !walk.isDone(); walk.next()) {
        MDagPath path;
        if (!walk.getPath(path)) {
            DebugPrint("Failure getting DAG path.\r\n");
            return nullptr;
        }
        if (!m_exportBones || !path.node().hasFn(MFn::kJoint) || MFnDagNode(path).isIntermediateObject())
            continue;
        const auto found = m_bones.find(path.fullPathName().asChar());
        if (found == m_bones.end())
            continue;
        const VMTransform world = BoneMatrix(path, false);
        frame->AddBone(found->second, nullptr, &world, nullptr);
    }
    frame->Close();
    return frame;
}

void PoseBones(const VMAnimFrame& frame)
{
    for (VMBone* bone : frame.Bones()) {
        bone->PosedWorldTransform = frame.World(bone->Index);
        bone->PosedLocalTransform = frame.Local(bone->Index);
    }
}
