#include "harvest/GetSkins.h"

#include "harvest/ExportBone.h"
#include "harvest/HarvestState.h"
#include "model/SkinInfluences.h"
#include "model/VMModel.h"
#include "report/DebugFile.h"
#include "report/VIssueKind.h"
#include "report/VReport.h"

#include <maya/MFloatArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnSet.h>
#include <maya/MFnWeightGeometryFilter.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MItGeometry.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <string>

namespace {

constexpr float kSmallestRigidWeight = 0.001f;

// The node whose plug feeds the cluster's "matrix": the joint that moves its members.
bool FindClusterJoint(const MFnDependencyNode& cluster, MObject& joint)
{
    MStatus status;
    const MPlug matrix = cluster.findPlug(MString("matrix"), &status);
    MPlugArray sources;
    if (!status || matrix.isNull() || !matrix.connectedTo(sources, true, false) || sources.length() == 0)
        return false;
    joint = sources[0].node();
    return !joint.isNull();
}

bool ClusterMembers(const MFnWeightGeometryFilter& filter, MSelectionList& members)
{
    MStatus status;
    const MObject set = filter.deformerSet(&status);
    if (!status) {
        DebugPrint("ERROR: could not get cluster deformer set \r\n");
        return false;
    }
    MFnSet fnSet(set, &status);
    if (!status) {
        DebugPrint("ERROR: could not make MFnSet \r\n");
        return false;
    }
    if (!fnSet.getMembers(members, true)) {
        DebugPrint("ERROR: could not make member list with getMembers \r\n");
        return false;
    }
    return true;
}

void SkinMember(HarvestState& state, VMModel& model, const MFnWeightGeometryFilter& filter, VMBone* bone,
                const MDagPath& path, const MObject& component)
{
    const std::string name = path.fullPathName().asChar();
    const int entry = state.MeshNodes.Find(name);
    if (entry < 0) {
        DebugPrint("Mesh node '%s' not found for skinning\r\n", name.c_str());
        return;
    }
    MFloatArray weights;
    filter.getWeights(path, component, weights);
    MItGeometry vertices(path, component);
    const int count = vertices.count();
    const int weightCount = static_cast<int>(weights.length());
    DebugPrint(" index#:%d   weight#:%d \r\n", count, weightCount);
    if (count != weightCount) {
        DebugPrint("#indices(%i) != #weights(%i)\r\n", count, weightCount);
        return;
    }
    for (unsigned int k = 0; !vertices.isDone(); vertices.next(), ++k) {
        const float weight = weights[k];
        const int mayaIndex = vertices.index();
        DebugPrint("%i:%f\r\n", state.MeshNodes[entry].VertexBase + mayaIndex, static_cast<double>(weight));
        if (weight > kSmallestRigidWeight)
            AttachVertex(bone, MeshNodeVertex(state, model, entry, mayaIndex), weight);
    }
}

}

void GetRigidSkins(HarvestState& state, VMModel& model)
{
    DebugPrint("Scanning for MAYA rigid skinning...\r\n");
    for (MItDependencyNodes nodes(MFn::kJointCluster); !nodes.isDone(); nodes.next()) {
        const MObject cluster = nodes.thisNode();
        const MFnDependencyNode fnCluster(cluster);
        const std::string clusterName = fnCluster.name().asChar();
        DebugPrint("JointCluster DepNode: %s\r\n", clusterName.c_str());
        DebugPrint("Trying to get joint connection: [%s]\r\n", clusterName.c_str());
        MObject joint;
        if (!FindClusterJoint(fnCluster, joint)) {
            state.Report.AddIssue(IssueRigidClusterWithoutJoint, clusterName);
            continue;
        }
        const std::string jointName = MFnDependencyNode(joint).name().asChar();
        VMBone* bone = model.Skeleton ? FindBoneByName(*model.Skeleton, jointName.c_str()) : nullptr;
        if (bone == nullptr) {
            DebugPrint("Error: Bone %s was not previously registered.\r\n", jointName.c_str());
            continue;
        }
        DebugPrint("Got bone %s\r\n", jointName.c_str());
        MStatus status;
        const MFnWeightGeometryFilter filter(cluster, &status);
        if (!status) {
            DebugPrint("ERROR: could not wrap geometry filter \r\n");
            continue;
        }
        MSelectionList members;
        if (!ClusterMembers(filter, members))
            continue;
        for (unsigned int i = 0; i < members.length(); ++i) {
            MDagPath path;
            MObject component;
            if (members.getDagPath(i, path, component))
                SkinMember(state, model, filter, bone, path, component);
        }
    }
}
