#include "importers/assimp/AssimpContext.h"

#include <assimp/camera.h>
#include <assimp/light.h>

#include <algorithm>
#include <cmath>

namespace {

RecordLightType LightTypeOf(const aiLight& light)
{
    switch (light.mType) {
    case aiLightSource_DIRECTIONAL: return RecordLightType::Directional;
    case aiLightSource_SPOT: return RecordLightType::Spot;
    case aiLightSource_AMBIENT: return RecordLightType::Ambient;
    // Maya's FBX importer makes an area light of an FBX area light.
    case aiLightSource_AREA: return RecordLightType::Area;
    default: return RecordLightType::Point;
    }
}

// Maya's cone angle is the full apex angle of the cone, its penumbra the angle added at the rim.
void SetCone(const aiLight& light, AssimpFormat format, RecordLight& record)
{
    const double outer = std::isfinite(light.mAngleOuterCone) ? light.mAngleOuterCone : 0.0;
    const double inner = std::isfinite(light.mAngleInnerCone) ? light.mAngleInnerCone : outer;
    double cone = 0.0;
    double penumbra = 0.0;
    switch (format) {
    case AssimpFormat::Gltf:
        // KHR_lights_punctual measures both angles from the axis to the rim.
        cone = 2.0 * outer;
        penumbra = outer - inner;
        break;
    case AssimpFormat::Collada:
        // Assimp keeps COLLADA's falloff_angle, the apex angle, as the inner cone and makes up an outer
        // cone from the falloff exponent, which is no angle of the file's.
        cone = inner;
        break;
    default:
        // FBX stores apex angles, as Maya and 3ds Max show them.
        cone = outer;
        penumbra = 0.5 * (outer - inner);
        break;
    }
    record.ConeAngle = std::clamp(cone, 0.0, 3.14159);
    record.PenumbraAngle = std::clamp(penumbra, 0.0, 0.5 * record.ConeAngle);
}

} // namespace

void ReadLights(AssimpContext& context)
{
    for (unsigned int i = 0; i < context.Scene.mNumLights; ++i) {
        const aiLight* light = context.Scene.mLights[i];
        const int node = light ? context.FindNode(light->mName.C_Str()) : -1;
        if (node < 0 || context.Record.Nodes[static_cast<size_t>(node)].Light >= 0) {
            context.Result.Warn("Lights without a node of their own are not imported");
            continue;
        }
        RecordLight record;
        record.Type = LightTypeOf(*light);
        const aiColor3D& source = record.Type == RecordLightType::Ambient &&
                                          light->mColorDiffuse.IsBlack() ? light->mColorAmbient : light->mColorDiffuse;
        MVector color(source.r, source.g, source.b);
        // Assimp folds the intensity into the colour; Maya keeps a colour and an intensity.
        const double brightest = std::max({color.x, color.y, color.z});
        if (std::isfinite(brightest) && brightest > 1.0) {
            record.Intensity = brightest;
            color = color / brightest;
        }
        if (!std::isfinite(brightest))
            color = MVector(1.0, 1.0, 1.0);
        record.Color = color;
        if (record.Type == RecordLightType::Spot)
            SetCone(*light, context.Format, record);
        record.DecayRate = light->mAttenuationQuadratic > 0.0f ? 2 : (light->mAttenuationLinear > 0.0f ? 1 : 0);
        // Assimp gives every FBX light the direction (0, -1, 0) whatever the file says; Maya's FBX lights
        // carry their aim in the node's rotation, as Maya's own lights do.
        const aiVector3D& direction = light->mDirection;
        const bool aimed = record.Type == RecordLightType::Spot || record.Type == RecordLightType::Directional;
        if (aimed && context.Format != AssimpFormat::Fbx && direction.SquareLength() > 0.0f &&
            (std::abs(direction.x) > 1e-4f || std::abs(direction.y) > 1e-4f || direction.z > 0.0f))
            context.Result.Warn("Lights aimed other than down their node's -Z axis keep the node's aim");
        context.Record.Nodes[static_cast<size_t>(node)].Light = static_cast<int>(context.Record.Lights.size());
        context.Record.Lights.push_back(record);
    }
}

void ReadCameras(AssimpContext& context)
{
    for (unsigned int i = 0; i < context.Scene.mNumCameras; ++i) {
        const aiCamera* camera = context.Scene.mCameras[i];
        const int node = camera ? context.FindNode(camera->mName.C_Str()) : -1;
        if (node >= 0)
            context.Record.Nodes[static_cast<size_t>(node)].Kind = RecordNodeKind::Camera;
    }
}

