#include "harvest/GetSkins.h"

#include "base/TextUtil.h"
#include "harvest/HarvestState.h"
#include "model/SkinInfluences.h"
#include "model/VMModel.h"
#include "report/DebugFile.h"
#include "report/VIssueKind.h"
#include "report/VReport.h"

void GetSkins(HarvestState& state, VMModel& model)
{
    DebugPrint("GetSkins()\r\n");
    GetRigidSkins(state, model);
    GetSmoothSkins(state, model);
    BindUnweightedVertices(state, model);
}

VMSkinVertex* MeshNodeVertex(const HarvestState& state, const VMModel& model, int entry, int mayaIndex)
{
    const MeshNodeEntry& node = state.MeshNodes[entry];
    if (mayaIndex < 0 || mayaIndex >= node.VertexCount)
        return nullptr;
    return model.Vertices.Get(node.VertexBase + mayaIndex);
}

void BindUnweightedVertices(HarvestState& state, VMModel& model)
{
    DebugPrint("Post-check\r\n");
    VMBone* root = model.Skeleton ? model.Skeleton->GetRootBone() : nullptr;
    if (root == nullptr) {
        state.Report.AddIssue(IssueNoBonesInAnimation, "");
        return;
    }
    int unassigned = 0;
    // A split copy comes after its source, whose weights are therefore final when it is reached.
    for (VMSkinVertex* vertex : model.Vertices) {
        if (vertex == nullptr)
            continue;
        vertex->BoundToRoot = 0;
        if (vertex->InfluenceCount > 0)
            continue;
        if (const VMSkinVertex* source = vertex->Source) {
            for (uint32_t k = 0; k < source->InfluenceCount; ++k)
                AttachVertex(source->InfluenceBones[k], vertex, source->InfluenceWeights[k]);
            continue;
        }
        AttachVertex(root, vertex, 1.0f);
        vertex->BoundToRoot = 1;
        ++unassigned;
    }
    if (unassigned > 0)
        state.Report.AddIssue(IssueVertexWithoutSkin,
                              Format("%i vertices were not assigned\r\nPlease check for non-skinned vertices", unassigned));
}
