#include "importers/assimp/AssimpContext.h"

#include <assimp/camera.h>
#include <assimp/light.h>

#include <algorithm>
#include <cmath>

namespace {

RecordLightType LightTypeOf(const aiLight& light, ImportResult& result)
{
    switch (light.mType) {
    case aiLightSource_DIRECTIONAL: return RecordLightType::Directional;
    case aiLightSource_SPOT: return RecordLightType::Spot;
    case aiLightSource_AMBIENT: return RecordLightType::Ambient;
    case aiLightSource_AREA: result.Warn("Area lights are imported as point lights"); return RecordLightType::Point;
    default: return RecordLightType::Point;
    }
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
        record.Type = LightTypeOf(*light, context.Result);
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
        if (record.Type == RecordLightType::Spot) {
            const double outer = std::isfinite(light->mAngleOuterCone) ? light->mAngleOuterCone : 0.0;
            const double inner = std::isfinite(light->mAngleInnerCone) ? light->mAngleInnerCone : outer;
            record.ConeAngle = std::clamp(2.0 * outer, 0.0, 3.14159);
            record.PenumbraAngle = std::clamp(outer - inner, 0.0, 0.5 * record.ConeAngle);
        }
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

