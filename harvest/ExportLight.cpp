#include "harvest/ExportLight.h"

#include "base/TextUtil.h"
#include "harvest/ParamEnumCB.h"
#include "model/VMWorld.h"
#include "report/DebugFile.h"

#include <maya/MFnLight.h>
#include <maya/MFnNonAmbientLight.h>
#include <maya/MFnSpotLight.h>
#include <maya/MMatrix.h>
#include <maya/MVector.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

// The float32 whose bits are 0x4D200000: a light without decay reaches everything.
constexpr float EndlessRadius = 167772160.0f;

void ToEngineAxes(double x, double y, double z, float out[3])
{
    out[0] = static_cast<float>(x);
    out[1] = static_cast<float>(-z);
    out[2] = static_cast<float>(y);
}

uint32_t PackedChannel(float value)
{
    return static_cast<uint32_t>(std::clamp(value * 255.0f, 0.0f, 255.0f));
}

class LightParamCB final : public ParamEnumCB {
public:
    explicit LightParamCB(VMLight& light) : m_light(light) {}

    void IntParam(const char* name, int value) override
    {
        if (EqualsNoCase(name, "Dynamic"))
            m_light.Dynamic = value > 0;
        else if (EqualsNoCase(name, "Animated"))
            SetFlag(VMLight::AnimatedBit, value);
        else if (EqualsNoCase(name, "Switchable"))
            SetFlag(VMLight::SwitchableBit, value);
        else if (EqualsNoCase(name, "CastDynamicShadows"))
            SetFlag(VMLight::CastDynamicShadowsBit, value);
        else if (EqualsNoCase(name, "Corona"))
            SetFlag(VMLight::CoronaBit, value);
        else if (EqualsNoCase(name, "Lensflare"))
            SetFlag(VMLight::LensflareBit, value);
        else if (EqualsNoCase(name, "Specularity"))
            SetFlag(VMLight::SpecularityBit, value);
        else if (EqualsNoCase(name, "AffectEntities"))
            m_light.AffectEntities = value;
        else if (EqualsNoCase(name, "AffectWorld"))
            m_light.AffectWorld = value;
        else if (EqualsNoCase(name, "Affect_Models"))
            m_light.AffectEntities = value > 0;
        else if (EqualsNoCase(name, "Affect_World_Geometry"))
            m_light.AffectWorld = value > 0;
    }

    void StringParam(const char* name, const char* text) override
    {
        if (EqualsNoCase(name, "Texture"))
            m_light.Texture = text;
        else if (EqualsNoCase(name, "Key"))
            m_light.Key = text;
        else if (EqualsNoCase(name, "AnimBitmap"))
            m_light.AnimBitmap = text;
        else if (EqualsNoCase(name, "Corona_Texture") || EqualsNoCase(name, "CoronaTexture"))
            m_light.CoronaTexture = text;
    }

    void EnumParam(const char* name, int value, const char* /*fieldName*/) override
    {
        if (EqualsNoCase(name, "Corona_Type"))
            SetFlag(VMLight::CoronaBit, value);
        else if (EqualsNoCase(name, "Speed"))
            m_light.Speed = value;
        else if (EqualsNoCase(name, "Patern"))
            m_light.Pattern = value;
        else if (EqualsNoCase(name, "Intensity_Range"))
            m_light.IntensityRange = value;
    }

    void FloatParam(const char* name, float value) override
    {
        if (EqualsNoCase(name, "Volumetric_Density"))
            m_light.VolumetricDensity = value;
        else if (EqualsNoCase(name, "AnimTime"))
            m_light.AnimTime = value;
        else if (EqualsNoCase(name, "AnimPhase"))
            m_light.AnimPhase = value;
    }

private:
    void SetFlag(uint32_t bit, int value)
    {
        if (value >= 1)
            m_light.Flags |= bit;
        else
            m_light.Flags &= ~bit;
    }

    VMLight& m_light;
};

std::unique_ptr<VMLight> BaseLight(const MDagPath& path, uint32_t type, float lightScale)
{
    MStatus status;
    const MFnLight fn(path, &status);
    if (!status) {
        DebugPrint("Error getting DependencyNode\r\n");
        return nullptr;
    }
    const float intensity = fn.intensity();
    const MColor colour = fn.color();
    const MMatrix world = path.inclusiveMatrix();

    std::unique_ptr<VMLight> light = VMWorld::NewLight();
    if (!light) {
        DebugPrint("Unable to allocate new light\r\n");
        return nullptr;
    }
    light->Name = path.partialPathName().asChar();
    light->Type = type;
    ToEngineAxes(world(3, 0), world(3, 1), world(3, 2), light->Position);
    light->Colour[0] = colour.r;
    light->Colour[1] = colour.g;
    light->Colour[2] = colour.b;
    light->PackedColour =
        0xFF000000u | PackedChannel(colour.r) << 16 | PackedChannel(colour.g) << 8 | PackedChannel(colour.b);
    light->Intensity = intensity;

    LightParamCB parameters(*light);
    EnumerateNodeParams(path.node(), parameters);

    const MFnNonAmbientLight nonAmbient(path, &status);
    if (!status) {
        light->Radius = intensity * 100.0f;
    } else if (const short decay = nonAmbient.decayRate(); decay != 0) {
        light->Radius = static_cast<float>(std::pow(intensity / 0.01, 1.0 / decay));
    } else {
        light->Radius = EndlessRadius;
    }
    light->Radius *= lightScale;
    return light;
}

// Maya lights shine down their -Z axis; -Y is the second axis the engine orients them by. Both
// follow the light's world rotation, so that a light inside a turned group (a Z-up file's root,
// a rig) shines where the artist sees it shine.
void SetDirections(const MDagPath& path, VMLight& light)
{
    MStatus status;
    const MMatrix world = path.inclusiveMatrix(&status);
    MVector direction = MVector(0.0, 0.0, -1.0) * world;
    MVector secondAxis = MVector(0.0, -1.0, 0.0) * world;
    if (!status || direction.length() == 0.0)
        return;
    direction.normalize();
    secondAxis -= direction * (secondAxis * direction);
    if (secondAxis.length() == 0.0)
        return;
    secondAxis.normalize();
    ToEngineAxes(direction.x, direction.y, direction.z, light.Direction);
    ToEngineAxes(secondAxis.x, secondAxis.y, secondAxis.z, light.SecondAxis);
}

} // namespace

std::unique_ptr<VMLight> ExportLight(const MDagPath& path, float lightScale)
{
    if (path.hasFn(MFn::kAmbientLight))
        return nullptr;
    if (path.hasFn(MFn::kPointLight))
        return BaseLight(path, VMLight::PointLight, lightScale);
    if (path.hasFn(MFn::kSpotLight)) {
        std::unique_ptr<VMLight> light = BaseLight(path, VMLight::SpotLight, lightScale);
        if (!light)
            return nullptr;
        MStatus status;
        const double cone = MFnSpotLight(path).coneAngle(&status);
        if (!status) {
            DebugPrint("Error getting spotlight angle\r\n");
            return nullptr;
        }
        light->ConeAngle = static_cast<float>(cone * 180.0 / std::numbers::pi);
        SetDirections(path, *light);
        return light;
    }
    if (path.hasFn(MFn::kDirectionalLight)) {
        std::unique_ptr<VMLight> light = BaseLight(path, VMLight::DirectionalLight, lightScale);
        if (light)
            SetDirections(path, *light);
        return light;
    }
    return nullptr;
}
