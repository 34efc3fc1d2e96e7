#include "harvest/ExportTexture.h"

#include "harvest/AssignMaterialTextures.h"
#include "harvest/HarvestState.h"
#include "harvest/MaterialCache.h"
#include "harvest/NodeAttributes.h"
#include "model/VMMeshBase.h"
#include "report/DebugFile.h"
#include "report/VIssueKind.h"
#include "report/VReport.h"
#include "settings/ResolveTexture.h"

#include <maya/MColor.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnLambertShader.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace {

enum class WalkResult { Failed, NotFound, Found };

// Breadth first, node level, walking through nodes of other kinds.
WalkResult FirstUpstream(MPlug plug, MFn::Type filter, MObject& found)
{
    MStatus status;
    MItDependencyGraph walk(plug, filter, MItDependencyGraph::kUpstream, MItDependencyGraph::kBreadthFirst,
                            MItDependencyGraph::kNodeLevel, &status);
    if (!status)
        return WalkResult::Failed;
    walk.disablePruningOnFilter();
    for (; !walk.isDone(); walk.next()) {
        const MObject node = walk.thisNode();
        if (node.hasFn(filter)) {
            found = node;
            return WalkResult::Found;
        }
    }
    return WalkResult::NotFound;
}

MPlug FindShaderPlug(const MObject& shader, const char* name)
{
    MStatus status;
    MFnDependencyNode node(shader, &status);
    if (!status)
        return MPlug();
    MPlug plug = node.findPlug(MString(name), &status);
    return status ? plug : MPlug();
}

std::string FileTextureName(const MObject& fileNode)
{
    MPlug plug = FindShaderPlug(fileNode, "fileTextureName");
    MString value;
    if (plug.isNull() || !plug.getValue(value))
        return {};
    std::string name = value.asChar();
    std::replace(name.begin(), name.end(), '/', '\\');
    return name;
}

uint32_t ColourByte(float channel)
{
    const float scaled = channel * 255.0f + 0.5f;
    if (!(scaled > 0.0f))
        return 0;
    return static_cast<uint32_t>(std::min(scaled, 255.0f));
}

float ReadFloat(const MPlug& plug, float fallback)
{
    float value = fallback;
    if (!plug.isNull())
        plug.getValue(value);
    return value;
}

float ColourAverage(const MPlug& plug)
{
    float sum = 0.0f;
    for (unsigned int i = 0; i < 3 && i < plug.numChildren(); ++i)
        sum += ReadFloat(plug.child(i), 0.0f);
    return sum / 3.0f;
}

bool IsKnownShaderType(std::string_view type)
{
    static constexpr std::string_view kKnown[] = {"phong", "phongE", "blinn", "lambert", "layeredShader",
                                                  "anisotropic"};
    return std::find(std::begin(kKnown), std::end(kKnown), type) != std::end(kKnown);
}

// The bump file when a file texture and a bump node with a depth feed "normalCamera".
std::string ReadBumpMap(const MObject& shader)
{
    MPlug normalCamera = FindShaderPlug(shader, "normalCamera");
    if (normalCamera.isNull()) {
        DebugPrint("No bump map\r\n");
        return {};
    }
    MObject fileNode;
    const WalkResult file = FirstUpstream(normalCamera, MFn::kFileTexture, fileNode);
    if (file == WalkResult::Failed) {
        DebugPrint("Error: Can't find Dependency Graph iterator for bump map.\r\n");
        return {};
    }
    if (file == WalkResult::NotFound) {
        DebugPrint("No bump texture file node was found. Export without bump map.\r\n");
        return {};
    }
    const std::string fileName = FileTextureName(fileNode);
    DebugPrint("Bump Node Name: %s\r\n", GetNodeName(fileNode).c_str());
    DebugPrint("Bump File Name: %s\r\n", fileName.c_str());
    MObject bumpNode;
    const WalkResult bump = FirstUpstream(normalCamera, MFn::kBump, bumpNode);
    if (bump == WalkResult::Failed) {
        DebugPrint("Error: Nope!.\r\n");
        return {};
    }
    if (bump == WalkResult::NotFound || FindShaderPlug(bumpNode, "bumpDepth").isNull()) {
        DebugPrint("No bump map\r\n");
        return {};
    }
    return fileName;
}

struct ColourTexture {
    bool HasColourPlug = false;
    std::string FileName;
    float UVTransform[4] = {1.0f, 1.0f, 0.0f, 0.0f};
};

ColourTexture ReadColourTexture(const MObject& shader)
{
    ColourTexture result;
    MPlug color = FindShaderPlug(shader, "color");
    if (color.isNull()) {
        DebugPrint("Error: No color plug found on surface!\r\n");
        return result;
    }
    result.HasColourPlug = true;
    MObject fileNode;
    const WalkResult walk = FirstUpstream(color, MFn::kFileTexture, fileNode);
    if (walk == WalkResult::Failed) {
        DebugPrint("Error: Can't find Dependency Graph iterator for texture. Expect this is an untextured node...\r\n");
        return result;
    }
    if (walk == WalkResult::NotFound) {
        DebugPrint("No texture file node was found. Let's revert to colour.\r\n");
        return result;
    }
    result.FileName = FileTextureName(fileNode);
    DebugPrint("Texture Node Name: %s\r\n", GetNodeName(fileNode).c_str());
    DebugPrint("Texture File Name: %s\r\n", result.FileName.c_str());
    static constexpr const char* kTransformPlugs[] = {"repeatU", "repeatV", "offsetU", "offsetV"};
    for (int i = 0; i < 4; ++i)
        result.UVTransform[i] = ReadFloat(FindShaderPlug(fileNode, kTransformPlugs[i]), result.UVTransform[i]);
    return result;
}

std::string ReadOpacityMap(const MObject& shader)
{
    MPlug transparency = FindShaderPlug(shader, "transparency");
    if (transparency.isNull()) {
        DebugPrint("No transparency\r\n");
        return {};
    }
    MObject fileNode;
    const WalkResult walk = FirstUpstream(transparency, MFn::kFileTexture, fileNode);
    if (walk == WalkResult::Failed) {
        DebugPrint("Error: Can't find Dependency Graph iterator for opacity map.\r\n");
        return {};
    }
    if (walk == WalkResult::NotFound) {
        DebugPrint("No opacity texture file node was found. Export without opacity.\r\n");
        return {};
    }
    const std::string fileName = FileTextureName(fileNode);
    DebugPrint("Opacity Node Name: %s\r\n", GetNodeName(fileNode).c_str());
    DebugPrint("Opacity File Name: %s\r\n", fileName.c_str());
    return fileName;
}

std::string ReadShaderString(const MObject& shader, const char* name)
{
    MPlug plug = FindShaderPlug(shader, name);
    MString value;
    if (plug.isNull() || !plug.getValue(value))
        return {};
    return value.asChar();
}

}

bool GetTextureFileName(const MObject& shader, const MString& attribute, std::string& fileName)
{
    MPlug plug = FindShaderPlug(shader, attribute.asChar());
    if (plug.isNull())
        return false;
    MObject fileNode;
    if (FirstUpstream(plug, MFn::kFileTexture, fileNode) != WalkResult::Found)
        return false;
    fileName = FileTextureName(fileNode);
    DebugPrint("GetTextureFileName '%s.%s'='%s'\r\n", GetNodeName(fileNode).c_str(), attribute.asChar(),
               fileName.c_str());
    return true;
}

SpecularValues ReadSpecular(const MObject& shader)
{
    SpecularValues specular;
    MPlug specularColor = FindShaderPlug(shader, "specularColor");
    if (!specularColor.isNull()) {
        if (GetTextureFileName(shader, MString("specularColor"), specular.FileName))
            specular.Multiplier = 1.0f;
        else
            specular.Multiplier = ColourAverage(specularColor);
    }

    // Each shader kind spreads its highlight by its own attribute; the engine wants one exponent.
    struct ExponentRule {
        MFn::Type Kind;
        const char* Attribute;
        float Textured;
        float (*FromValue)(float);
    };
    static constexpr ExponentRule kRules[] = {
        {MFn::kPhong, "cosinePower", 4.0f, [](float value) { return value * 4.0f; }},
        {MFn::kBlinn, "eccentricity", 128.0f,
         [](float value) { return value < 0.03125f ? 128.0f : 4.0f / value; }},
        {MFn::kPhongExplorer, "roughness", 4.0f, [](float value) { return value * 4.0f; }},
    };
    for (const ExponentRule& rule : kRules) {
        if (!shader.hasFn(rule.Kind))
            continue;
        MPlug plug = FindShaderPlug(shader, rule.Attribute);
        if (plug.isNull())
            break;
        if (GetTextureFileName(shader, MString(rule.Attribute), specular.FileName))
            specular.Exponent = rule.Textured;
        else
            specular.Exponent = rule.FromValue(ReadFloat(plug, 0.0f));
        break;
    }
    return specular;
}

VMMaterial* ExportTexture(HarvestState& state, VMMeshBase& container, const MaterialCacheRecord& record)
{
    const MObject& shader = record.Shader;
    const VExportOptions& options = state.Parameters.Options;

    const std::string type = GetNodeTypeName(shader);
    if (!IsKnownShaderType(type))
        DebugPrint("Error: Unknown shader type '%s', trying it anyway\r\n", type.c_str());
    DebugPrint("doubleSided: %d\r\n", static_cast<int>(record.DoubleSided));

    uint32_t diffuse[3] = {128, 128, 128};
    uint32_t ambient[3] = {0, 0, 0};
    MStatus status;
    MFnLambertShader lambert(shader, &status);
    if (status) {
        MColor colour = lambert.color();
        const float coefficient = lambert.diffuseCoeff(&status);
        if (status) {
            colour.r *= coefficient;
            colour.g *= coefficient;
            colour.b *= coefficient;
        }
        const MColor ambientColour = lambert.ambientColor();
        for (unsigned int i = 0; i < 3; ++i) {
            diffuse[i] = ColourByte(colour[i]);
            ambient[i] = ColourByte(ambientColour[i]);
        }
    }

    const SpecularValues specular = ReadSpecular(shader);
    const std::string bumpMap = ReadBumpMap(shader);
    const ColourTexture colourTexture = ReadColourTexture(shader);
    if (!colourTexture.HasColourPlug)
        return nullptr;
    const std::string opacityMap = ReadOpacityMap(shader);

    auto material = VMMeshBase::NewMaterial();
    if (!material) {
        state.Report.AddIssue(IssueOutOfMemory, "ExportTexture: VMMaterial");
        return nullptr;
    }
    material->Name = GetNodeName(shader);
    if (options.DoubleSided == 1 && record.DoubleSided)
        material->Name += "_dbl";
    for (int i = 0; i < 3; ++i) {
        material->DiffuseColour[i] = diffuse[i];
        material->AmbientColour[i] = ambient[i];
    }
    material->DoubleSided = record.DoubleSided;
    material->Transparency = opacityMap.empty() ? 0 : 2;
    material->SpecularMultiplier = specular.Multiplier;
    material->SpecularExponent = specular.Exponent;
    std::copy(std::begin(colourTexture.UVTransform), std::end(colourTexture.UVTransform),
              std::begin(material->UVTransform));
    material->FurtherValue = 0.0f;
    material->WordAttributes[0] = 0;
    AssignMaterialTextures(state, *material, colourTexture.FileName, opacityMap, bumpMap);
    if (!specular.FileName.empty())
        if (auto name = ResolveTexture(specular.FileName, state.Parameters.Textures, state.TextureNames, state.Report))
            material->SpecularMap = *name;
    const bool whiteAmbient = ambient[0] == 255 && ambient[1] == 255 && ambient[2] == 255;
    material->LightingFlag = state.IsStaticExport() && !whiteAmbient ? 1 : 0;
    material->ModelFlag = state.IsStaticExport() ? 0 : 1;

    const std::string userData = ReadShaderString(shader, "v_userdata");
    if (!userData.empty())
        material->UserData = userData;
    if (options.DoubleSided == 2) {
        bool doubleSided = false;
        MPlug plug = FindShaderPlug(shader, "v_doublesided");
        if (!plug.isNull())
            plug.getValue(doubleSided);
        material->DoubleSided = doubleSided ? 1 : 0;
    }
    MPlug blendMode = FindShaderPlug(shader, "v_blendmode");
    int blend = 0;
    if (!blendMode.isNull() && blendMode.getValue(blend))
        material->Transparency = static_cast<uint32_t>(blend);
    const std::string bumpOverride = ReadShaderString(shader, "Bump_Texture_1");
    if (!bumpOverride.empty())
        if (auto name = ResolveTexture(bumpOverride, state.Parameters.Textures, state.TextureNames, state.Report))
            material->NormalMap = *name;

    VMMaterial* raw = material.get();
    if (container.Materials.Add(std::move(material)) != 0) {
        state.Report.AddIssue(IssueOutOfMemory, "ExportTexture: VMMaterial");
        return nullptr;
    }
    return raw;
}
