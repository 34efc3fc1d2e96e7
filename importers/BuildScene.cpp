#include "importers/BuildScene.h"

#include "base/TextUtil.h"

#include <standin/SceneBuilder.h>

#include <maya/MAnimControl.h>
#include <maya/MDistance.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MTime.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <string>
#include <vector>

namespace {

struct Built {
    std::vector<MObject> Nodes;
    std::vector<std::string> NodeNames;
    std::vector<MObject> Shapes;            // per record mesh
    std::vector<MObject> ShadingEngines;    // per record material
    std::vector<std::string> BlendShapes;   // per record mesh; empty for a mesh without morph targets
};

std::string NameOf(const MObject& node)
{
    return MFnDependencyNode(node).name().asChar();
}

void SetTransform(const std::string& node, const RecordTransform& transform)
{
    standin::SetAttr(node + ".translate", transform.Translate.x, transform.Translate.y, transform.Translate.z);
    standin::SetAttr(node + ".rotate", transform.Rotate.x, transform.Rotate.y, transform.Rotate.z);
    standin::SetAttr(node + ".scale", transform.Scale.x, transform.Scale.y, transform.Scale.z);
}

void AddAttributes(const MObject& node, const std::vector<RecordAttribute>& attributes, ImportResult& result)
{
    const std::string name = NameOf(node);
    for (const RecordAttribute& attribute : attributes) {
        standin::AttrType type = standin::AttrType::Int;
        switch (attribute.Kind) {
        case RecordAttributeKind::Bool: type = standin::AttrType::Bool; break;
        case RecordAttributeKind::Int: type = standin::AttrType::Int; break;
        case RecordAttributeKind::Double: type = standin::AttrType::Double; break;
        case RecordAttributeKind::String: type = standin::AttrType::String; break;
        }
        if (!standin::AddAttr(node, attribute.Name, type, attribute.Number)) {
            result.Warn("Custom properties named like an attribute the node already has are not imported");
            continue;
        }
        const std::string plug = name + "." + attribute.Name;
        if (attribute.Kind == RecordAttributeKind::String)
            standin::SetAttr(plug, attribute.Text);
        else
            standin::SetAttr(plug, attribute.Number);
    }
}

const char* LightTypeName(RecordLightType type)
{
    switch (type) {
    case RecordLightType::Ambient: return "ambientLight";
    case RecordLightType::Spot: return "spotLight";
    case RecordLightType::Directional: return "directionalLight";
    case RecordLightType::Area: return "areaLight";
    case RecordLightType::Point: break;
    }
    return "pointLight";
}

void CreateLight(const MObject& transform, const RecordLight& light)
{
    const MObject shape = standin::CreateNode(LightTypeName(light.Type), ShapeNameFor(NameOf(transform)), transform);
    if (shape.isNull())
        return;
    const std::string name = NameOf(shape);
    standin::SetAttr(name + ".color", light.Color.x, light.Color.y, light.Color.z);
    standin::SetAttr(name + ".intensity", light.Intensity);
    if (light.Type == RecordLightType::Ambient)
        return;
    standin::SetAttr(name + ".decayRate", light.DecayRate);
    if (light.Type == RecordLightType::Spot) {
        standin::SetAttr(name + ".coneAngle", light.ConeAngle);
        standin::SetAttr(name + ".penumbraAngle", light.PenumbraAngle);
    }
}

bool CreateNodes(const SceneRecord& record, Built& built, ImportResult& result)
{
    for (const RecordNode& node : record.Nodes) {
        const MObject parent = node.Parent >= 0 ? built.Nodes[static_cast<size_t>(node.Parent)] : MObject::kNullObj;
        const MObject created =
            standin::CreateNode(node.Kind == RecordNodeKind::Joint ? "joint" : "transform", node.Name, parent);
        if (created.isNull()) {
            result.Error = "the scene could not be built at node '" + node.Name + "'";
            return false;
        }
        const std::string name = NameOf(created);
        built.Nodes.push_back(created);
        built.NodeNames.push_back(name);
        SetTransform(name, node.Rest);
        // The file's parent scale applies to its children as a plain transform's does.
        if (node.Kind == RecordNodeKind::Joint)
            standin::SetAttr(name + ".segmentScaleCompensate", 0.0);
        if (node.Kind == RecordNodeKind::Camera)
            standin::CreateNode("camera", ShapeNameFor(name), created);
        if (node.Light >= 0)
            CreateLight(created, record.Lights[static_cast<size_t>(node.Light)]);
        AddAttributes(created, node.Attributes, result);
    }
    return true;
}

const char* ShaderTypeName(RecordShadingModel model)
{
    switch (model) {
    case RecordShadingModel::Phong: return "phong";
    case RecordShadingModel::Blinn: return "blinn";
    case RecordShadingModel::Lambert: break;
    }
    return "lambert";
}

void SetPlacement(const MObject& file, const RecordTexture& texture)
{
    MPlugArray sources;
    MFnDependencyNode(file).findPlug("uvCoord").connectedTo(sources, true, false);
    if (sources.length() == 0)
        return;
    const std::string place = NameOf(sources[0].node());
    standin::SetAttr(place + ".repeatU", texture.RepeatU);
    standin::SetAttr(place + ".repeatV", texture.RepeatV);
    standin::SetAttr(place + ".offsetU", texture.OffsetU);
    standin::SetAttr(place + ".offsetV", texture.OffsetV);
}

void ConnectTexture(const RecordTexture& texture, const std::string& destination)
{
    if (texture.File.empty())
        return;
    const MObject file = standin::CreateFileTexture("file1", texture.File, destination);
    if (!file.isNull())
        SetPlacement(file, texture);
}

void ConnectBump(const RecordTexture& texture, const std::string& shader)
{
    if (texture.File.empty())
        return;
    const MObject bump = standin::CreateNode("bump2d", "bump2d1");
    const MObject file = standin::CreateFileTexture("file1", texture.File, "");
    if (bump.isNull() || file.isNull())
        return;
    SetPlacement(file, texture);
    standin::ConnectAttr(NameOf(file) + ".outAlpha", NameOf(bump) + ".bumpValue");
    standin::ConnectAttr(NameOf(bump) + ".outNormal", shader + ".normalCamera");
}

void CreateShaders(const SceneRecord& record, Built& built, ImportResult& result)
{
    for (const RecordMaterial& material : record.Materials) {
        const MObject engine = standin::CreateShader(ShaderTypeName(material.Model), material.Name);
        built.ShadingEngines.push_back(engine);
        MPlugArray sources;
        MFnDependencyNode(engine).findPlug("surfaceShader").connectedTo(sources, true, false);
        if (engine.isNull() || sources.length() == 0)
            continue;
        const std::string shader = NameOf(sources[0].node());
        standin::SetAttr(shader + ".color", material.Color.x, material.Color.y, material.Color.z);
        standin::SetAttr(shader + ".diffuse", material.Diffuse);
        standin::SetAttr(shader + ".ambientColor", material.Ambient.x, material.Ambient.y, material.Ambient.z);
        standin::SetAttr(shader + ".transparency", material.Transparency.x, material.Transparency.y,
                         material.Transparency.z);
        ConnectTexture(material.ColorTexture, shader + ".color");
        ConnectTexture(material.TransparencyTexture, shader + ".transparency");
        ConnectBump(material.BumpTexture, shader);
        if (material.Model == RecordShadingModel::Lambert) {
            if (!material.SpecularTexture.File.empty())
                result.Warn("Specular maps of Lambert materials are not imported");
            continue;
        }
        standin::SetAttr(shader + ".specularColor", material.Specular.x, material.Specular.y, material.Specular.z);
        if (material.Model == RecordShadingModel::Phong)
            standin::SetAttr(shader + ".cosinePower", material.CosinePower);
        else
            standin::SetAttr(shader + ".eccentricity", material.Eccentricity);
        ConnectTexture(material.SpecularTexture, shader + ".specularColor");
    }
}

MObject CreateShape(const RecordMesh& mesh, const MObject& transform, ImportResult& result)
{
    standin::MeshDescription description {mesh.Points, mesh.Counts, mesh.Connects};
    const MObject shape = standin::CreateMesh(ShapeNameFor(NameOf(transform)), transform, description);
    if (shape.isNull()) {
        result.Warn("Meshes Maya refuses are not imported");
        return shape;
    }
    for (const RecordUVSet& set : mesh.UVSets)
        standin::SetUVs(shape, {set.Name, set.U, set.V, set.Ids});
    if (!mesh.UVSets.empty())
        standin::SetCurrentUVSet(shape, mesh.UVSets.front().Name);
    if (!mesh.Normals.empty())
        standin::SetFaceVertexNormals(shape, mesh.Normals);
    return shape;
}

// One shading set per material; each instance of the shape joins it with that material's faces.
void AssignMaterials(const RecordMesh& mesh, const MObject& shape, const Built& built)
{
    std::map<int, std::vector<int>> facesOfMaterial;
    for (size_t face = 0; face < mesh.FaceMaterials.size(); ++face)
        facesOfMaterial[mesh.FaceMaterials[face]].push_back(static_cast<int>(face));
    const unsigned int instances = MFnDagNode(shape).instanceCount(true);
    for (unsigned int instance = 0; instance < instances; ++instance) {
        for (const auto& [material, faces] : facesOfMaterial) {
            const MObject& engine = built.ShadingEngines[static_cast<size_t>(material)];
            if (engine.isNull())
                continue;
            if (facesOfMaterial.size() == 1)
                standin::Assign(engine, shape, instance);
            else
                standin::Assign(engine, shape, instance, faces);
        }
    }
}

void CreateMeshes(const SceneRecord& record, Built& built, ImportResult& result)
{
    built.Shapes.assign(record.Meshes.size(), MObject());
    std::vector<bool> tried(record.Meshes.size(), false);
    for (size_t n = 0; n < record.Nodes.size(); ++n) {
        const int mesh = record.Nodes[n].Mesh;
        if (mesh < 0)
            continue;
        MObject& shape = built.Shapes[static_cast<size_t>(mesh)];
        if (!tried[static_cast<size_t>(mesh)]) {
            tried[static_cast<size_t>(mesh)] = true;
            shape = CreateShape(record.Meshes[static_cast<size_t>(mesh)], built.Nodes[n], result);
        } else if (!shape.isNull()) {
            standin::AddInstance(shape, built.Nodes[n]);
        }
    }
    for (size_t m = 0; m < record.Meshes.size(); ++m)
        if (!built.Shapes[m].isNull())
            AssignMaterials(record.Meshes[m], built.Shapes[m], built);
}

// Joints go to their bind pose while the skins are bound and the pose is saved, then back to the file's rest
// pose, which is what the scene shows after the import.
void CreateSkins(const SceneRecord& record, const Built& built, ImportResult& result)
{
    std::vector<MObject> joints;
    for (size_t n = 0; n < record.Nodes.size(); ++n) {
        if (record.Nodes[n].Kind != RecordNodeKind::Joint)
            continue;
        joints.push_back(built.Nodes[n]);
        if (record.Nodes[n].HasBindPose)
            SetTransform(built.NodeNames[n], record.Nodes[n].Bind);
    }
    for (size_t m = 0; m < record.Meshes.size(); ++m) {
        const RecordSkin& skin = record.Meshes[m].Skin;
        if (skin.Influences.empty() || built.Shapes[m].isNull())
            continue;
        std::vector<MObject> influences;
        for (int node : skin.Influences)
            influences.push_back(built.Nodes[static_cast<size_t>(node)]);
        const MObject cluster = standin::SkinMesh(built.Shapes[m], influences, skin.Weights);
        if (cluster.isNull()) {
            result.Warn("Skins Maya refuses are imported without their skin");
            continue;
        }
        const std::string name = NameOf(cluster);
        for (size_t j = 0; j < skin.BindPreMatrices.size(); ++j)
            standin::SetAttr(Format("%s.bindPreMatrix[%zu]", name.c_str(), j), skin.BindPreMatrices[j]);
    }
    if (!joints.empty())
        standin::SaveBindPose(joints);
    for (size_t n = 0; n < record.Nodes.size(); ++n)
        if (record.Nodes[n].HasBindPose)
            SetTransform(built.NodeNames[n], record.Nodes[n].Rest);
}

// A mesh below a joint that has no skin of its own moves rigidly with the nearest joint above it. Maya's rigid
// bind holds that as a joint cluster of all the mesh's vertices at full weight, which is what the exporter's rigid
// skinning reads; the mesh stays where the file put it.
void BindMeshesBelowJoints(const SceneRecord& record, const Built& built, ImportResult& result)
{
    std::vector<unsigned int> nextInstance(record.Meshes.size(), 0);
    for (size_t n = 0; n < record.Nodes.size(); ++n) {
        const int mesh = record.Nodes[n].Mesh;
        if (mesh < 0)
            continue;
        const unsigned int instance = nextInstance[static_cast<size_t>(mesh)]++;
        const MObject& shape = built.Shapes[static_cast<size_t>(mesh)];
        if (shape.isNull() || !record.Meshes[static_cast<size_t>(mesh)].Skin.Influences.empty())
            continue;
        int joint = static_cast<int>(n);
        while (joint >= 0 && record.Nodes[static_cast<size_t>(joint)].Kind != RecordNodeKind::Joint)
            joint = record.Nodes[static_cast<size_t>(joint)].Parent;
        if (joint < 0)
            continue;
        const int vertexCount = MFnMesh(shape).numVertices();
        std::vector<int> vertices(static_cast<size_t>(std::max(vertexCount, 0)));
        std::iota(vertices.begin(), vertices.end(), 0);
        const std::vector<double> weights(vertices.size(), 1.0);
        if (standin::BindRigid(built.Nodes[static_cast<size_t>(joint)], shape, vertices, weights, instance).isNull())
            result.Warn("Meshes below joints that Maya cannot bind rigidly are imported without a skin");
    }
}

// Morph targets become a blend shape on the mesh, its weights as the file leaves them.
void CreateBlendShapes(const SceneRecord& record, Built& built, ImportResult& result)
{
    built.BlendShapes.assign(record.Meshes.size(), std::string());
    for (size_t m = 0; m < record.Meshes.size(); ++m) {
        const std::vector<RecordMorphTarget>& targets = record.Meshes[m].MorphTargets;
        if (targets.empty() || built.Shapes[m].isNull())
            continue;
        std::vector<std::vector<MVector>> offsets;
        for (const RecordMorphTarget& target : targets)
            offsets.push_back(target.Offsets);
        const MObject blend = standin::BlendMesh(built.Shapes[m], offsets);
        if (blend.isNull()) {
            result.Warn("Morph targets Maya refuses are not imported");
            continue;
        }
        built.BlendShapes[m] = NameOf(blend);
        for (size_t t = 0; t < targets.size(); ++t)
            standin::SetAttr(Format("%s.weight[%zu]", built.BlendShapes[m].c_str(), t), targets[t].Weight);
    }
}

void CreateWeightCurves(const SceneRecord& record, const Built& built)
{
    std::map<std::pair<int, int>, std::vector<RecordWeightKey>> keysOfTarget;
    for (const RecordClip& clip : record.Clips) {
        for (const RecordWeightChannel& channel : clip.WeightChannels) {
            std::vector<RecordWeightKey>& keys = keysOfTarget[{channel.Mesh, channel.Target}];
            keys.insert(keys.end(), channel.Keys.begin(), channel.Keys.end());
        }
    }
    for (auto& [target, keys] : keysOfTarget) {
        const std::string& blend = built.BlendShapes[static_cast<size_t>(target.first)];
        if (blend.empty())
            continue;
        std::stable_sort(keys.begin(), keys.end(), [](const auto& a, const auto& b) { return a.Seconds < b.Seconds; });
        std::vector<standin::KeySpec> specs;
        for (const RecordWeightKey& key : keys)
            specs.push_back({MTime(key.Seconds, MTime::kSeconds), key.Weight, standin::TangentType::Linear,
                             standin::TangentType::Linear});
        standin::Animate(Format("%s.weight[%d]", blend.c_str(), target.second), specs);
    }
}

struct ChannelCurve {
    const char* Attribute;
    double (*Value)(const RecordTransform&);
};

constexpr ChannelCurve kChannelCurves[] = {
    {"translateX", [](const RecordTransform& t) { return t.Translate.x; }},
    {"translateY", [](const RecordTransform& t) { return t.Translate.y; }},
    {"translateZ", [](const RecordTransform& t) { return t.Translate.z; }},
    {"rotateX", [](const RecordTransform& t) { return t.Rotate.x; }},
    {"rotateY", [](const RecordTransform& t) { return t.Rotate.y; }},
    {"rotateZ", [](const RecordTransform& t) { return t.Rotate.z; }},
    {"scaleX", [](const RecordTransform& t) { return t.Scale.x; }},
    {"scaleY", [](const RecordTransform& t) { return t.Scale.y; }},
    {"scaleZ", [](const RecordTransform& t) { return t.Scale.z; }},
};

void CreateCurves(const SceneRecord& record, const Built& built)
{
    std::map<int, std::vector<RecordKey>> keysOfNode;
    for (const RecordClip& clip : record.Clips)
        for (const RecordChannel& channel : clip.Channels)
            keysOfNode[channel.Node].insert(keysOfNode[channel.Node].end(), channel.Keys.begin(), channel.Keys.end());
    for (auto& [node, keys] : keysOfNode) {
        std::stable_sort(keys.begin(), keys.end(), [](const RecordKey& a, const RecordKey& b) { return a.Seconds < b.Seconds; });
        const RecordTransform& rest = record.Nodes[static_cast<size_t>(node)].Rest;
        for (const ChannelCurve& curve : kChannelCurves) {
            // Channels that stay at the rest value throughout get no curve, as in a scene keyed by hand.
            const bool still = std::all_of(keys.begin(), keys.end(), [&](const RecordKey& key) {
                return std::abs(curve.Value(key.Value) - curve.Value(rest)) <= 1e-9 * std::max(1.0, std::abs(curve.Value(rest)));
            });
            if (still)
                continue;
            std::vector<standin::KeySpec> specs;
            for (const RecordKey& key : keys)
                specs.push_back({MTime(key.Seconds, MTime::kSeconds), curve.Value(key.Value), standin::TangentType::Linear,
                                 standin::TangentType::Linear});
            standin::Animate(built.NodeNames[static_cast<size_t>(node)] + "." + curve.Attribute, specs);
        }
    }
}

void SetTimeLine(const SceneRecord& record, ImportResult& result)
{
    if (record.Clips.empty())
        return;
    double first = record.Clips.front().StartSeconds;
    double last = record.Clips.front().EndSeconds;
    for (const RecordClip& clip : record.Clips) {
        const MTime start(clip.StartSeconds, MTime::kSeconds);
        const MTime end(clip.EndSeconds, MTime::kSeconds);
        result.Clips.push_back({clip.Name, start.as(record.TimeUnit), end.as(record.TimeUnit)});
        first = std::min(first, clip.StartSeconds);
        last = std::max(last, clip.EndSeconds);
    }
    const double startFrame = std::floor(MTime(first, MTime::kSeconds).as(record.TimeUnit) + 1e-3);
    const double endFrame = std::ceil(MTime(last, MTime::kSeconds).as(record.TimeUnit) - 1e-3);
    standin::SetPlaybackRange(MTime(startFrame, record.TimeUnit), MTime(std::max(startFrame, endFrame), record.TimeUnit));
}

} // namespace

std::string ShapeNameFor(const std::string& transformName)
{
    size_t digits = transformName.size();
    while (digits > 0 && transformName[digits - 1] >= '0' && transformName[digits - 1] <= '9')
        --digits;
    return transformName.substr(0, digits) + "Shape" + transformName.substr(digits);
}

bool BuildScene(const SceneRecord& record, ImportResult& result)
{
    MTime::setUIUnit(record.TimeUnit);
    MDistance::setUIUnit(record.DistanceUnit);
    Built built;
    if (!CreateNodes(record, built, result))
        return false;
    CreateShaders(record, built, result);
    CreateMeshes(record, built, result);
    CreateSkins(record, built, result);
    BindMeshesBelowJoints(record, built, result);
    CreateBlendShapes(record, built, result);
    CreateCurves(record, built);
    CreateWeightCurves(record, built);
    SetTimeLine(record, result);
    return true;
}
