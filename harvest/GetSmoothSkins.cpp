#include "harvest/GetSkins.h"

#include "harvest/ForEachVertexWeights.h"
#include "harvest/HarvestState.h"
#include "model/SkinInfluences.h"
#include "model/VMModel.h"
#include "report/DebugFile.h"
#include "report/VIssueKind.h"
#include "report/VReport.h"

#include <maya/MDagPathArray.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MItGeometry.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <string>
#include <vector>

namespace {

constexpr double kSmallestBlendedWeight = 0.001;

// The bone of every influence, null where the skeleton has none of that path. False when an
// influence has no path at all.
bool MapInfluences(const MDagPathArray& influences, const VMSkeleton* skeleton, std::vector<VMBone*>& bones)
{
    bones.assign(influences.length(), nullptr);
    for (unsigned int j = 0; j < influences.length(); ++j) {
        const std::string name = influences[j].fullPathName().asChar();
        DebugPrint("%s ", name.c_str());
        if (name.empty())
            return false;
        if (skeleton != nullptr)
            for (VMBone* bone : skeleton->Bones)
                if (bone != nullptr && bone->FullName == name) {
                    bones[j] = bone;
                    break;
                }
        DebugPrint(bones[j] != nullptr ? "\r\n" : "(missing)\r\n");
    }
    return true;
}

int Strongest(const double* weights, unsigned int count)
{
    unsigned int strongest = 0;
    for (unsigned int j = 1; j < count; ++j)
        if (weights[j] > weights[strongest])
            strongest = j;
    return static_cast<int>(strongest);
}

void SkinVertices(HarvestState& state, VMModel& model, const MFnSkinCluster& skin, const MDagPath& geometry,
                  int entry, const std::vector<VMBone*>& bones)
{
    const bool blended = state.Parameters.Options.ExportBlended != 0;
    const int base = state.MeshNodes[entry].VertexBase;
    const MStatus status =
        ForEachVertexWeights(skin, geometry, [&](int mayaIndex, const double* row, unsigned int count) {
            if (count == 0 || count != bones.size()) {
                DebugPrint("No influence objects.\r\n");
                return;
            }
            VMSkinVertex* vertex = MeshNodeVertex(state, model, entry, mayaIndex);
            if (blended) {
                for (unsigned int j = 0; j < count; ++j) {
                    if (!(row[j] > kSmallestBlendedWeight) || bones[j] == nullptr)
                        continue;
                    AttachVertex(bones[j], vertex, static_cast<float>(row[j]));
                    DebugPrint("Adding vertex %d, mesh node at %d, total %d, weight %f, bone %s\r\n", mayaIndex, base,
                               base + mayaIndex, row[j], bones[j]->Name.c_str());
                }
                return;
            }
            VMBone* bone = bones[static_cast<size_t>(Strongest(row, count))];
            if (bone == nullptr)
                return;
            AttachVertex(bone, vertex, 1.0f);
            DebugPrint("Adding vertex %d, mesh node at %d, total %d \r\n", mayaIndex, base, base + mayaIndex);
        });
    if (!status) {
        DebugPrint("Error getting weights.\r\n");
        DebugPrint("%s\r\n", status.errorString().asChar());
        DebugPrint("%s\r\n", geometry.fullPathName().asChar());
    }
}

// False once an influence without a path was met: no weights are gathered after that.
bool SkinOutputs(HarvestState& state, VMModel& model, const MFnSkinCluster& skin, const MDagPathArray& influences)
{
    MStatus status;
    const unsigned int outputs = skin.numOutputConnections(&status);
    for (unsigned int c = 0; status && c < outputs; ++c) {
        MStatus indexStatus;
        const unsigned int index = skin.indexForOutputConnection(c, &indexStatus);
        if (!indexStatus) {
            DebugPrint("Error getting geometry index.\r\n");
            continue;
        }
        MDagPath geometry;
        if (!skin.getPathAtIndex(index, geometry)) {
            DebugPrint("Error getting geometry path.\r\n");
            continue;
        }
        DebugPrint("Skin: %s   NumVerts: %d   NumBones: %d\r\n", geometry.partialPathName().asChar(),
                   MItGeometry(geometry).count(), static_cast<int>(influences.length()));
        // Each instance of the shape is a mesh node of its own; all of them follow the joints with the
        // shape's weights, each from where it stands, rather than the later ones staying rigid on the root.
        MDagPathArray instances;
        MDagPath::getAllPathsTo(geometry.node(), instances);
        std::vector<int> entries;
        for (unsigned int i = 0; i < instances.length(); ++i)
            if (const int entry = state.MeshNodes.Find(instances[i].fullPathName().asChar()); entry >= 0)
                entries.push_back(entry);
        if (entries.empty()) {
            DebugPrint("Mesh node '%s' not found for skinning\r\n", geometry.fullPathName().asChar());
            continue;
        }
        std::vector<VMBone*> bones;
        if (!MapInfluences(influences, model.Skeleton.get(), bones)) {
            state.Report.AddIssue(IssueNullBoneInfluence, "");
            return false;
        }
        for (const int entry : entries)
            SkinVertices(state, model, skin, geometry, entry, bones);
    }
    return true;
}

}

void GetSmoothSkins(HarvestState& state, VMModel& model)
{
    DebugPrint("Scanning for MAYA smooth skinning...\r\n");
    DebugPrint("Precalculating phase\r\n");
    for (MItDependencyNodes nodes(MFn::kSkinClusterFilter); !nodes.isDone(); nodes.next()) {
        MStatus status;
        const MFnSkinCluster skin(nodes.thisNode(), &status);
        DebugPrint("DepNode: %s\r\n", skin.name().asChar());
        MDagPathArray influences;
        const unsigned int influenceCount = status ? skin.influenceObjects(influences, &status) : 0;
        if (!status) {
            DebugPrint("Error getting influence objects.\r\n");
            continue;
        }
        if (influenceCount == 0) {
            DebugPrint("No influence objects found.\r\n");
            continue;
        }
        DebugPrint("Found! Smooth skinning...\r\n");
        if (!SkinOutputs(state, model, skin, influences))
            return;
    }
}
