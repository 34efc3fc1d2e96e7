#include "formats/PrefabShapes.h"

#include "base/Number.h"
#include "base/TextUtil.h"
#include "formats/ShapeOrientation.h"
#include "formats/ShapePropertyExchange.h"
#include "model/VMLight.h"

#include <tinyxml2.h>

#include <algorithm>
#include <cstdio>

namespace {

uint32_t ColourChannel(float value)
{
    // Truncated; 256 and above is full.
    return static_cast<uint32_t>(std::clamp(value * 255.0f, 0.0f, 255.0f));
}

// "x/y/z" as the entity key list writes vectors.
bool ParseSlashVector(std::string_view text, float out[3])
{
    float values[3];
    for (int i = 0; i < 3; ++i) {
        const size_t slash = text.find('/');
        if ((i < 2) == (slash == std::string_view::npos) || !ParseFloat(text.substr(0, slash), values[i]))
            return false;
        text.remove_prefix(i < 2 ? slash + 1 : text.size());
    }
    std::copy(values, values + 3, out);
    return true;
}

const char* LightTypeName(int32_t type)
{
    switch (type) {
    case VMWLightInstance::PointType: return "Point";
    case VMWLightInstance::DirectionalType: return "Directional";
    case VMWLightInstance::SpotType: return "Spotlight";
    default: return nullptr;
    }
}

template <class Shape>
Shape* FindById(const std::vector<std::unique_ptr<VMWShapeInstance3D>>& shapes, uint64_t id)
{
    for (const std::unique_ptr<VMWShapeInstance3D>& shape : shapes) {
        if (auto* found = dynamic_cast<Shape*>(shape.get()); found && shape->UniqueID == id)
            return found;
        if (Shape* found = FindById<Shape>(shape->Children, id))
            return found;
    }
    return nullptr;
}

} // namespace

bool VMWPrefabShape::ExchangeXML(VMWShapeInstance3DCollection& /*owner*/, tinyxml2::XMLElement& element, bool write)
{
    if (write)
        element.SetAttribute("class", GetClassName());
    ShapePropertyExchange exchange(element, write);
    exchange.Text("ShapeName", Name, !Name.empty());
    exchange.Id("UniqueID", UniqueID);
    exchange.Bool("ExportShape", Export);
    exchange.Bool("Visible", Visible);
    exchange.Vector("Position", Position, 3);
    exchange.Vector("Orientation", Orientation, 3);
    exchange.Vector("Scaling", Scaling, 3);
    exchange.Text("ScriptFile", ScriptFile, !ScriptFile.empty());
    ExchangeOwnProperties(exchange);
    return true;
}

void VMWStaticMeshInstance::ExchangeOwnProperties(ShapePropertyExchange& exchange)
{
    exchange.Text("MeshFileName", MeshFileName, !MeshFileName.empty());
    exchange.Bitmask("VisibleBitmask", VisibleBitmask);
    exchange.Bitmask("LightInfluenceBitmask", LightInfluenceBitmask);
    exchange.Bitmask("CollisionBitmask", CollisionBitmask);
    exchange.Bool("CastStaticShadows", CastStaticShadows);
    exchange.Bool("CastDynamicShadows", CastDynamicShadows);
}

void VMWEntityInstance::Prepare(VMWShapeInstance3DCollection& owner, int index)
{
    for (const auto& [key, value] : Keys) {
        if (EqualsNoCase(key, "origin"))
            ParseSlashVector(value, Position);
        else if (EqualsNoCase(key, "orientation"))
            ParseSlashVector(value, Orientation);
        else if (EqualsNoCase(key, "entityKey"))
            EntityKey = value;
        else if (EqualsNoCase(key, "modelFile"))
            ModelFile = value;
    }
    VMWPrefabShape::Prepare(owner, index);
}

std::string VMWEntityInstance::DefaultName(int index) const
{
    return Format("Entity%03i", index);
}

void VMWEntityInstance::ExchangeOwnProperties(ShapePropertyExchange& exchange)
{
    exchange.Text("EntityClass", EntityClass, !EntityClass.empty());
    exchange.Text("ModelFile", ModelFile, !ModelFile.empty());
    exchange.Bitmask("VisibleBitmask", VisibleBitmask);
    exchange.Bool("CastStaticShadows", CastStaticShadows);
    exchange.Bool("CastDynamicShadows", CastDynamicShadows);
    exchange.Bitmask("LightInfluenceBitmask", LightInfluenceBitmask);
    exchange.Vector("LightGridSampleOfs", LightGridSampleOfs, 3);
}

void VMWLightInstance::Prepare(VMWShapeInstance3DCollection& owner, int index)
{
    Colour = 0xFF000000u | ColourChannel(Red) << 16 | ColourChannel(Green) << 8 | ColourChannel(Blue);
    VMWPrefabShape::Prepare(owner, index);
}

std::string VMWLightInstance::DefaultName(int index) const
{
    return Format("Light%03i", index);
}

void VMWLightInstance::ExchangeOwnProperties(ShapePropertyExchange& exchange)
{
    bool exportAsStatic = !Dynamic;
    bool previewAsDynamic = false;
    bool turnOffAfterLighting = true;
    exchange.Bool("ExportAsStatic", exportAsStatic);
    exchange.Bool("PreviewAsDynamicLight", previewAsDynamic);
    exchange.Bool("TurnOffAfterLighting", turnOffAfterLighting);
    // Older files call the radius "Intensity".
    if (!exchange.Writing() && !exchange.Find("Radius"))
        exchange.Float("Intensity", Radius);
    exchange.Float("Radius", Radius);
    exchange.Float("Multiplier", Multiplier);

    std::string typeName = LightTypeName(Type) ? LightTypeName(Type) : "";
    exchange.Text("LightType", typeName, !typeName.empty());
    if (!exchange.Writing()) {
        for (int32_t type : {PointType, DirectionalType, SpotType})
            if (typeName == LightTypeName(type))
                Type = type;
        Dynamic = !exportAsStatic;
    }
    exchange.Float("SpotAngle", SpotAngle, Type == SpotType);
    exchange.Text("ProjectedTexture", ProjectedTexture, Type == SpotType && !ProjectedTexture.empty());
    exchange.Colour("LightColor", Colour);
    if (!exchange.Writing()) {
        Red = static_cast<float>(Colour >> 16 & 0xFF) / 255.0f;
        Green = static_cast<float>(Colour >> 8 & 0xFF) / 255.0f;
        Blue = static_cast<float>(Colour & 0xFF) / 255.0f;
    }
    exchange.Text("LightKey", LightKey, !LightKey.empty());
    exchange.Int("WorldInfluenceMask", WorldInfluenceMask);
    exchange.Int("ObjectInfluenceMask", ObjectInfluenceMask);
    exchange.FlagBit("EnableCorona", Flags, VMLight::CoronaBit);
    exchange.FlagBit("EnableLensFlares", Flags, VMLight::LensflareBit);
    exchange.Text("CoronaTexture", CoronaTexture, !CoronaTexture.empty());
    exchange.FlagBit("CastWorldShadows", Flags, VMLight::CastWorldShadowsBit);
    exchange.FlagBit("CastModelShadows", Flags, VMLight::CastDynamicShadowsBit);
    exchange.Text("AnimationCurve", AnimationCurve, !AnimationCurve.empty());
    exchange.Float("AnimationTiming", AnimationTiming);
    exchange.Float("AnimationPhase", AnimationPhase);
}

void VMWPortalInstance::ResolveReferences(VMWShapeInstance3DCollection& owner)
{
    if (TargetPortalID != 0)
        TargetPortal = FindById<VMWPortalInstance>(owner.Shapes, TargetPortalID);
    if (TargetZoneID != 0)
        TargetZone = FindById<VMWVisibilityZoneInstance>(owner.Shapes, TargetZoneID);
}

void VMWPortalInstance::LinkTargets(VMWShapeInstance3DCollection& /*owner*/)
{
    if (TargetPortalID == 0 && TargetPortal)
        TargetPortalID = TargetPortal->UniqueID;
    if (TargetZoneID == 0 && TargetZone)
        TargetZoneID = TargetZone->UniqueID;
    if (StartsWithNoCase(Name, "OUTSIDE"))
        LeadsToOutside = true;
    if (LeadsToOutside && TargetZone)
        TargetZone->MergeWithOutside = true;
}

void VMWPortalInstance::ExchangeOwnProperties(ShapePropertyExchange& exchange)
{
    exchange.Id("TargetPortalID", TargetPortalID);
    exchange.Id("TargetZoneID", TargetZoneID);
    int32_t vertexCount = static_cast<int32_t>(LocalVertexPositions.size() / 3);
    exchange.Int("VertexCount", vertexCount);
    exchange.Vector("LocalVertexPositions", LocalVertexPositions, 3);
    exchange.Bool("LeadsToOutside", LeadsToOutside);
}

void VMWVisibilityZoneInstance::ExchangeOwnProperties(ShapePropertyExchange& exchange)
{
    exchange.Vector("BoundingBoxMin", BoundingBoxMin, 3);
    exchange.Vector("BoundingBoxMax", BoundingBoxMax, 3);
    exchange.Colour("DebugColor", DebugColor);
    exchange.IntList("SubMeshIndices", SubMeshIndices, !SubMeshIndices.empty());
    exchange.Bool("MergeWithOutside", MergeWithOutside);
}

void VMWLightGridInstance::ExchangeOwnProperties(ShapePropertyExchange& exchange)
{
    exchange.Float("BoxSizeX", BoxSize[0]);
    exchange.Float("BoxSizeY", BoxSize[1]);
    exchange.Float("BoxSizeZ", BoxSize[2]);
    exchange.Int("SubDivX", SubDiv[0]);
    exchange.Int("SubDivY", SubDiv[1]);
    exchange.Int("SubDivZ", SubDiv[2]);
}

void VMWCameraPositionInstance::ExchangeOwnProperties(ShapePropertyExchange& exchange)
{
    exchange.Text("ObjectKey", ObjectKey, !ObjectKey.empty());
}

std::unique_ptr<VMWPrefabShape> NewPrefabShape(std::string_view className)
{
    if (className == "StaticMeshShape")
        return std::make_unique<VMWStaticMeshInstance>();
    if (className == "EntityShape")
        return std::make_unique<VMWEntityInstance>();
    if (className == "DynLightShape")
        return std::make_unique<VMWLightInstance>();
    if (className == "PortalShape")
        return std::make_unique<VMWPortalInstance>();
    if (className == "VisibilityZoneShape")
        return std::make_unique<VMWVisibilityZoneInstance>();
    if (className == "LightGridDetailShape")
        return std::make_unique<VMWLightGridInstance>(false);
    if (className == "LightGridBoxShape")
        return std::make_unique<VMWLightGridInstance>(true);
    if (className == "CameraPositionShape")
        return std::make_unique<VMWCameraPositionInstance>();
    return nullptr;
}

std::unique_ptr<VMWLightInstance> MakeLightShape(const VMLight& light)
{
    auto shape = std::make_unique<VMWLightInstance>();
    shape->Name = light.Name;
    std::copy(light.Position, light.Position + 3, shape->Position);
    if (light.Type == VMLight::DirectionalLight || light.Type == VMLight::SpotLight)
        OrientationFromAxes(light.Direction, light.SecondAxis, shape->Orientation);
    // A harvested point light keeps its own type number, which the editor names no type for.
    shape->Type = static_cast<int32_t>(light.Type);
    shape->Dynamic = light.Dynamic;
    shape->Radius = light.Radius;
    shape->Multiplier = light.Intensity;
    shape->SpotAngle = light.ConeAngle;
    shape->ProjectedTexture = light.Texture;
    shape->Red = light.Colour[0];
    shape->Green = light.Colour[1];
    shape->Blue = light.Colour[2];
    shape->LightKey = light.Key;
    shape->WorldInfluenceMask = light.AffectWorld;
    shape->ObjectInfluenceMask = light.AffectEntities;
    shape->Flags = light.Flags;
    shape->CoronaTexture = light.CoronaTexture;
    shape->AnimationCurve = light.AnimBitmap;
    shape->AnimationTiming = light.AnimTime;
    shape->AnimationPhase = light.AnimPhase;
    return shape;
}
