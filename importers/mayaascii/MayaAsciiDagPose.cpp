#include "importers/mayaascii/MayaAsciiDagPose.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MEulerRotation.h>
#include <maya/MQuaternion.h>
#include <maya/MPlug.h>
#include <standin/SceneBuilder.h>

#include <algorithm>
#include <utility>
#include <vector>

bool MaDagPose::Holds(const MaPlugPath& path)
{
    const std::string& name = path.Segments.front().Name;
    return name == "xformMatrix" || name == "xm";
}

bool MaDagPose::Take(const MaPlugPath& path, const MaSetAttr& set, std::string& why)
{
    const MaPlugSegment& segment = path.Segments.front();
    if (!segment.First) {
        return true; // "setAttr -s 8 .xm" only announces how many members follow
    }
    if (!set.Xform) {
        // A plain 4x4 matrix carries no pivots or orients to put back; Maya writes members in the xform form.
        why = "a bind pose member is written as an xform matrix";
        return false;
    }
    const size_t count = segment.Last - *segment.First + 1;
    if (set.Numbers.size() != count * kXformValues) {
        why = "an xform matrix takes " + std::to_string(kXformValues) + " values";
        return false;
    }
    for (size_t i = 0; i < count; ++i) {
        std::array<double, kXformValues>& values = m_members[*segment.First + static_cast<unsigned int>(i)];
        std::copy_n(set.Numbers.begin() + static_cast<long>(i * kXformValues), kXformValues, values.begin());
    }
    return true;
}

void MaDagPose::Build(const MObject& pose, const std::string& name, int line, ImportResult& result) const
{
    const MPlug members = MFnDependencyNode(pose).findPlug("members");
    for (const auto& [index, x] : m_members) {
        const MPlug source = members.elementByLogicalIndex(index).source();
        if (source.isNull())
            continue;
        const MObject member = source.node();
        std::vector<std::pair<std::string, double>> values = {
            {"scaleX", x[0]},     {"scaleY", x[1]},     {"scaleZ", x[2]},     {"rotateX", x[3]},
            {"rotateY", x[4]},    {"rotateZ", x[5]},    {"rotateOrder", x[6]}, {"translateX", x[7]},
            {"translateY", x[8]}, {"translateZ", x[9]},
        };
        if (member.hasFn(MFn::kJoint)) {
            // Joint orients are xyz Euler angles; the file stores them as a quaternion (x, y, z, w).
            const MEulerRotation orient = MQuaternion(x[29], x[30], x[31], x[32]).asEulerRotation();
            values.insert(values.end(), {{"jointOrientX", orient.x}, {"jointOrientY", orient.y}, {"jointOrientZ", orient.z}});
        }
        if (!member.hasFn(MFn::kTransform) || !standin::SetPoseMember(pose, member, values))
            result.Warn("the bind pose '" + name + "' holds '" + MFnDependencyNode(member).name().asChar() +
                            "', which has no transform to put back",
                        line);
    }
}
