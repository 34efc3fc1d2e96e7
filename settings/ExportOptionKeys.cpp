#include "settings/ExportOptionKeys.h"

#include "base/TextUtil.h"

#include <array>

namespace {

using O = VExportOptions;

const std::array<VOptionKey, kExportOptionKeyCount> kKeys {{
    {"Version", &O::Version},
    {"ComputeVisibility", &O::ComputeVisibility},
    {"DebugVisInfo", &O::DebugVisInfo},
    {"ColMesh", &O::ColMesh},
    {"TextureBehaviour", &O::TextureBehaviour},
    {"TextureSubdir", &O::TextureSubdir},
    {"TextureUseProjDir", &O::TextureUseProjDir},
    {"ProjRelativeFilenames", &O::ProjRelativeFilenames},
    {"SnapAnimName", &O::SnapAnimName},
    {"SnapAnimFrame", &O::SnapAnimFrame},
    {"ExportLights", &O::ExportLights},
    {"DoLighting", &O::DoLighting},
    {"LightScale", &O::LightScale},
    {"RotateYaw", &O::RotateYaw},
    {"AdvancedMenu", &O::AdvancedMenu},
    {"ExportStrips", &O::ExportStrips},
    {"StripPerformance", &O::StripPerformance},
    {"StripObject", &O::StripObject},
    {"StripRestriction", &O::StripRestriction},
    {"MaxStripSize", &O::MaxStripSize},
    {"SetMaxStripLength", &O::SetMaxStripLength},
    {"MaxStripLength", &O::MaxStripLength},
    {"RootBoneName", &O::RootBoneName},
    {"DisplayViewer", &O::DisplayViewer},
    {"EmbedSettingsInScene", &O::EmbedSettingsInScene},
    {"CreateDataDir", &O::CreateDataDir},
    {"ExportMaterialSettings", &O::ExportMaterialSettings},
    {"ExportBones", &O::ExportBones},
    {"ExportBlended", &O::ExportBlended},
    {"MaxNumBones", &O::MaxNumBones},
    {"AutoGenerateBones", &O::AutoGenerateBones},
    {"UseUnderscoresInBoneNames", &O::UseUnderscoresInBoneNames},
    {"BlendThreshold", &O::BlendThreshold},
    {"RemoveBones", &O::RemoveBones},
    {"MeshFactor", &O::MeshFactor},
    {"CenterMethod", &O::CenterMethod},
    {"WarnIfMoreThan64kVerts", &O::WarnIfMoreThan64kVerts},
    {"OptimizeMesh", &O::OptimizeMesh},
    {"EpsVert", &O::EpsVert},
    {"EpsUV", &O::EpsUV},
    {"ExportVertexColors", &O::ExportVertexColors},
    {"ExportTangents", &O::ExportTangents},
    {"NewRotDelta", &O::NewRotDelta},
    {"GotoBindPose", &O::GotoBindPose},
    {"LightmapUVs", &O::LightmapUVs},
    {"LightmapUVChannel", &O::LightmapUVChannel},
    {"BaseUVs", &O::BaseUVs},
    {"BaseUVChannel", &O::BaseUVChannel},
    {"LightMapStretchFactor", &O::LightMapStretchFactor},
    {"DoubleSided", &O::DoubleSided},
}};

} // namespace

std::span<const VOptionKey, kExportOptionKeyCount> ExportOptionKeys() { return kKeys; }

const VOptionKey* FindExportOptionKey(std::string_view name)
{
    for (const VOptionKey& key : kKeys) {
        if (EqualsNoCase(key.Name, name))
            return &key;
    }
    return nullptr;
}
