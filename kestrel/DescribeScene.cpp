#include "kestrel/DescribeScene.h"

#include "base/Number.h"
#include "base/Path.h"
#include "base/TextUtil.h"
#include "harvest/ForEachVertexWeights.h"

#include <maya/MAnimControl.h>
#include <maya/MDagPath.h>
#include <maya/MDistance.h>
#include <maya/MFn.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnLight.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSet.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MFnWeightGeometryFilter.h>
#include <maya/MItDag.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MObjectArray.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>
#include <maya/MDagPathArray.h>
#include <maya/MColor.h>
#include <maya/MTime.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

std::string Number(double value) { return FormatFloat(value, 3); }

const char* DistanceUnitName(MDistance::Unit unit)
{
    switch (unit) {
    case MDistance::kInches: return "inch";
    case MDistance::kFeet: return "foot";
    case MDistance::kYards: return "yard";
    case MDistance::kMiles: return "mile";
    case MDistance::kMillimeters: return "millimetre";
    case MDistance::kKilometers: return "kilometre";
    case MDistance::kMeters: return "metre";
    default: return "centimetre";
    }
}

std::string TimeUnitText(MTime::Unit unit)
{
    switch (unit) {
    case MTime::kFilm: return "film (24 fps)";
    case MTime::kPALFrame: return "pal (25 fps)";
    case MTime::kNTSCFrame: return "ntsc (30 fps)";
    case MTime::kGames: return "game (15 fps)";
    case MTime::kShowScan: return "show (48 fps)";
    case MTime::kPALField: return "palf (50 fps)";
    case MTime::kNTSCField: return "ntscf (60 fps)";
    default: return Number(1.0 / MTime::secondsPerUnit(unit)) + " fps";
    }
}

std::string NameOf(const MObject& node) { return MFnDependencyNode(node).name().asChar(); }

std::string PlugValueText(const MPlug& plug, MFn::Type attributeType)
{
    if (attributeType == MFn::kTypedAttribute)
        return "\"" + std::string(plug.asString().asChar()) + "\"";
    const double value = plug.asDouble();
    if (value == std::floor(value) && std::abs(value) < 1e15)
        return FormatInt(static_cast<long long>(value));
    return Number(value);
}

void DescribeCustomAttributes(const MObject& node, const std::string& indent, std::string& text)
{
    MFnDependencyNode fn(node);
    for (unsigned int i = 0; i < fn.attributeCount(); ++i) {
        const MObject attribute = fn.attribute(i);
        MFnAttribute attributeFn(attribute);
        if (!attributeFn.isDynamic())
            continue;
        const MPlug plug = fn.findPlug(attribute);
        text += indent + "attribute " + attributeFn.name().asChar() + " = " + PlugValueText(plug, attribute.apiType()) +
                "\n";
    }
}

std::string MeshSummary(const MDagPath& path)
{
    MFnMesh mesh(path);
    MStringArray sets;
    mesh.getUVSetNames(sets);
    const std::string current = mesh.currentUVSetName().asChar();
    std::string uvText;
    for (unsigned int i = 0; i < sets.length(); ++i) {
        uvText += (i ? ", " : "") + std::string(sets[i].asChar());
        if (current == sets[i].asChar())
            uvText += " (current)";
    }
    return Format(": %d vertices, %d polygons, %d face-vertices, UV sets: %s", mesh.numVertices(), mesh.numPolygons(),
                  mesh.numFaceVertices(), uvText.empty() ? "none" : uvText.c_str());
}

std::string LightSummary(const MDagPath& path)
{
    MFnLight light(path);
    const MColor color = light.color();
    return ": intensity " + Number(light.intensity()) + ", colour " + Number(color.r) + " " + Number(color.g) + " " +
           Number(color.b);
}

void DescribeDag(std::string& text)
{
    text += "DAG:\n";
    for (MItDag it; !it.isDone(); it.next()) {
        MDagPath path;
        it.getPath(path);
        if (path.length() == 0)
            continue;
        const MObject node = path.node();
        MFnDagNode fn(path);
        const std::string indent(2 * path.length(), ' ');
        std::string line = indent + path.partialPathName().asChar() + " (" + fn.typeName().asChar();
        if (fn.isIntermediateObject())
            line += ", intermediate";
        line += ")";
        if (node.apiType() == MFn::kMesh)
            line += MeshSummary(path);
        else if (node.hasFn(MFn::kLight))
            line += LightSummary(path);
        text += line + "\n";
        DescribeCustomAttributes(node, indent + "  ", text);
    }
}

std::string UpstreamFile(const MObject& node, const char* plugName, int depth = 0)
{
    MPlugArray sources;
    MFnDependencyNode(node).findPlug(plugName).connectedTo(sources, true, false);
    if (sources.length() == 0 || depth > 4)
        return std::string();
    const MObject source = sources[0].node();
    if (source.apiType() == MFn::kFileTexture)
        return MFnDependencyNode(source).findPlug("fileTextureName").asString().asChar();
    if (source.apiType() == MFn::kBump)
        return UpstreamFile(source, "bumpValue", depth + 1);
    return std::string();
}

void DescribeShader(const MObject& shader, std::string& text)
{
    MFnDependencyNode fn(shader);
    text += Format("    shader %s (%s)\n", fn.name().asChar(), fn.typeName().asChar());
    const char* const slots[][2] = {
        {"color", "colour"}, {"transparency", "transparency"}, {"normalCamera", "bump"}, {"specularColor", "specular"}};
    for (const auto& slot : slots) {
        if (!fn.hasAttribute(slot[0]))
            continue;
        const std::string file = UpstreamFile(shader, slot[0]);
        if (!file.empty())
            text += Format("      %s texture \"%s\"\n", slot[1], ShownPath(file).c_str());
    }
}

void DescribeShading(std::string& text)
{
    text += "Shading sets:\n";
    for (MItDependencyNodes it(MFn::kShadingEngine); !it.isDone(); it.next()) {
        const MObject engine = it.thisNode();
        MFnSet set(engine);
        MSelectionList members;
        set.getMembers(members, false);
        text += Format("  %s: %u members\n", set.name().asChar(), members.length());
        MPlugArray sources;
        set.findPlug("surfaceShader").connectedTo(sources, true, false);
        if (sources.length() > 0)
            DescribeShader(sources[0].node(), text);
        for (unsigned int i = 0; i < members.length(); ++i) {
            MDagPath path;
            MObject component;
            members.getDagPath(i, path, component);
            const std::string faces =
                component.isNull() ? std::string("all faces") : Format("%d faces", MFnSingleIndexedComponent(component).elementCount());
            text += Format("    member %s: %s\n", path.partialPathName().asChar(), faces.c_str());
        }
    }
}

// Per influence, the vertices it moves; and the most influences any one vertex has.
struct SkinUse {
    std::vector<unsigned int> Vertices;
    unsigned int VertexCount = 0;
    unsigned int MostPerVertex = 0;
};

SkinUse CountSkinUse(const MFnSkinCluster& skin, unsigned int influenceCount)
{
    SkinUse use;
    use.Vertices.assign(influenceCount, 0);
    for (unsigned int c = 0; c < skin.numOutputConnections(); ++c) {
        MDagPath geometry;
        if (!skin.getPathAtIndex(skin.indexForOutputConnection(c), geometry))
            continue;
        ForEachVertexWeights(skin, geometry, [&](int, const double* weights, unsigned int count) {
            unsigned int used = 0;
            for (unsigned int j = 0; j < count && j < influenceCount; ++j)
                if (weights[j] > 0.0) {
                    ++use.Vertices[j];
                    ++used;
                }
            use.MostPerVertex = std::max(use.MostPerVertex, used);
            ++use.VertexCount;
        });
    }
    return use;
}

// Where the influence was when the skin was bound: the inverse of its "bindPreMatrix" entry.
std::string BindPosition(const MFnSkinCluster& skin, const MDagPath& influence)
{
    MStatus status;
    const unsigned int index = skin.indexForInfluenceObject(influence, &status);
    MObject data;
    if (!status || !skin.findPlug("bindPreMatrix").elementByLogicalIndex(index).getValue(data))
        return "with no bind matrix";
    const MMatrix bind = MFnMatrixData(data).matrix().inverse();
    return "bound at (" + Number(bind(3, 0)) + ", " + Number(bind(3, 1)) + ", " + Number(bind(3, 2)) + ") cm";
}

void DescribeRigidSkins(std::string& text)
{
    for (MItDependencyNodes it(MFn::kJointCluster); !it.isDone(); it.next()) {
        MFnWeightGeometryFilter cluster(it.thisNode());
        MPlugArray sources;
        cluster.findPlug("matrix").connectedTo(sources, true, false);
        const std::string joint = sources.length() > 0 ? NameOf(sources[0].node()) : std::string("no joint");
        MSelectionList members;
        MFnSet(cluster.deformerSet()).getMembers(members, true);
        for (unsigned int i = 0; i < members.length(); ++i) {
            MDagPath path;
            MObject component;
            members.getDagPath(i, path, component);
            text += Format("  %s binds %d vertices of %s rigidly to %s\n", cluster.name().asChar(),
                           MFnSingleIndexedComponent(component).elementCount(), path.partialPathName().asChar(),
                           joint.c_str());
        }
    }
}

void DescribeSkins(std::string& text)
{
    text += "Skins:\n";
    for (MItDependencyNodes it(MFn::kSkinClusterFilter); !it.isDone(); it.next()) {
        MFnSkinCluster skin(it.thisNode());
        MDagPathArray influences;
        const unsigned int count = skin.influenceObjects(influences);
        MObjectArray outputs;
        skin.getOutputGeometry(outputs);
        std::string shapes;
        for (unsigned int i = 0; i < outputs.length(); ++i)
            shapes += (i ? ", " : "") + NameOf(outputs[i]);
        const SkinUse use = CountSkinUse(skin, count);
        text += Format("  %s on %s: %u influences, %u vertices, at most %u influences a vertex\n", skin.name().asChar(),
                       shapes.c_str(), count, use.VertexCount, use.MostPerVertex);
        for (unsigned int j = 0; j < count; ++j)
            text += Format("    %s: %s, moves %u vertices\n", influences[j].partialPathName().asChar(),
                           BindPosition(skin, influences[j]).c_str(), use.Vertices[j]);
    }
    DescribeRigidSkins(text);
}

void DescribeAnimation(const ImportResult& import, std::string& text)
{
    unsigned int curves = 0;
    for (MItDependencyNodes it(MFn::kAnimCurve); !it.isDone(); it.next())
        ++curves;
    text += Format("Animation: %u curves", curves);
    if (curves > 0)
        text += ", playback range " + Number(MAnimControl::minTime().value()) + " to " +
                Number(MAnimControl::maxTime().value());
    text += "\n";
    const std::string rate = Number(1.0 / MTime::secondsPerUnit(MTime::uiUnit())) + " fps";
    for (const ImportedClip& clip : import.Clips) {
        const double seconds = (clip.EndFrame - clip.StartFrame) * MTime::secondsPerUnit(MTime::uiUnit());
        text += "  clip \"" + clip.Name + "\": frames " + Number(clip.StartFrame) + " to " + Number(clip.EndFrame) +
                " at " + rate + " (" + Number(seconds) + " s)\n";
    }
}

} // namespace

std::string DescribeScene(const ImportResult& import)
{
    std::string text;
    text += std::string("Units: ") + DistanceUnitName(MDistance::uiUnit()) + ", time " +
            TimeUnitText(MTime::uiUnit()) + "\n";
    DescribeDag(text);
    DescribeShading(text);
    DescribeSkins(text);
    DescribeAnimation(import, text);
    if (!import.Warnings.empty()) {
        text += "Warnings:\n";
        for (const ImportWarning& warning : import.Warnings)
            text += "  " + warning.Describe() + "\n";
    }
    return text;
}
