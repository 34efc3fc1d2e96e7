#include "harvest/ExportBone.h"

#include "base/TextUtil.h"
#include "harvest/BoneMatrix.h"
#include "harvest/ClassifyNode.h"
#include "harvest/HarvestState.h"
#include "model/VMModel.h"
#include "report/DebugFile.h"
#include "report/VIssueKind.h"
#include "report/VReport.h"

#include <maya/MFnIkJoint.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <cstring>
#include <string>

namespace {

// The nearest ancestor that is a joint, false when none is.
bool FindParentJoint(const MDagPath& joint, MDagPath& parent)
{
    parent = joint;
    while (parent.length() > 0 && parent.pop()) {
        if (parent.length() > 0 && ClassifyNode(parent) == NodeClassJoint)
            return true;
    }
    return false;
}

}

VMBone* FindBoneByName(const VMSkeleton& skeleton, const char* name)
{
    for (VMBone* bone : skeleton.Bones)
        if (bone != nullptr && std::strcmp(bone->Name.c_str(), name) == 0)
            return bone;
    return nullptr;
}

int ExportBone(HarvestState& state, const MDagPath& joint, VMModel& model, uint32_t flags)
{
    MStatus status;
    MFnIkJoint fnJoint(joint, &status);
    if (!status) {
        DebugPrint("Invalid joint!\r\n");
        return -1;
    }
    const std::string fullName = joint.fullPathName().asChar();
    const std::string name = fnJoint.name().asChar();
    DebugPrint("ExportBone: '%s' '%s'\r\n", fullName.c_str(), name.c_str());

    if (!model.Skeleton)
        model.Skeleton = VMModel::NewSkeleton();
    auto bone = VMModel::NewBone();
    if (!model.Skeleton || !bone) {
        state.Report.AddIssue(IssueOutOfMemory, "ExportBone");
        return -1;
    }
    VMSkeleton& skeleton = *model.Skeleton;
    const bool first = skeleton.Bones.Count() == 0;

    MDagPath parentJoint;
    bool hasParentJoint = false;
    std::string parentName;
    if (!first) {
        hasParentJoint = FindParentJoint(joint, parentJoint);
        if (hasParentJoint)
            parentName = parentJoint.fullPathName().asChar();
        DebugPrint("Parent: %s\r\n", parentName.c_str());
    }

    if (const VMBone* namesake = FindBoneByName(skeleton, name.c_str()))
        state.Report.AddIssue(IssueDuplicateBoneNames,
                              Format("'%s' and '%s''", namesake->Name.c_str(), fullName.c_str()));

    bone->Name = name;
    bone->FullName = fullName;
    bone->GlobalTransform = BoneMatrix(joint, (flags & ExportBoneBindMatrix) != 0);
    VMBone* added = bone.get();
    if (skeleton.Bones.Add(std::move(bone)) != 0) {
        state.Report.AddIssue(IssueOutOfMemory, "ExportBone");
        return -1;
    }

    if (first) {
        skeleton.Root = added;
        return 0;
    }
    VMBone* parent = nullptr;
    if (hasParentJoint) {
        MFnIkJoint fnParent(parentJoint, &status);
        if (status)
            parent = FindBoneByName(skeleton, fnParent.name().asChar());
    }
    // A parent joint that the walk skipped may share the joint's name: the bone is then the only
    // one of that name and must not become its own parent.
    if (parent == nullptr || parent == added) {
        DebugPrint("Unable to find parent bone '%s'\r\n", parentName.c_str());
        return 0;
    }
    added->Parent = parent;
    parent->Children.Add(added);
    return 0;
}
