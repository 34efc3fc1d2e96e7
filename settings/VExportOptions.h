#pragma once
// The per-export option record. Every export starts from the defaults set by
// SetExportOptionDefaults; a target's stored settings block then overrides what it names.

#include <array>
#include <cstdint>
#include <string>

// Major, minor, patch, build.
using VSettingsVersion = std::array<int32_t, 4>;
inline constexpr VSettingsVersion kCurrentSettingsVersion {7, 6, 3, 0};

// Format kinds of the export under way.
inline constexpr int kFormatKindModel = 1;
inline constexpr int kFormatKindStatic = 2;

struct VExportOptions {
    // 0 don't export, 1 from the mesh node, 2 from the enhanced material.
    int32_t DoubleSided = 2;
    VSettingsVersion Version = kCurrentSettingsVersion;
    // -1 none, else the visibility builder mode (0, 1, 3 or 4).
    int32_t ComputeVisibility = -1;
    bool DebugVisInfo = true;
    // 0 none, 1 triangles, 2 convex hull.
    int32_t ColMesh = 1;
    bool ExportLights = false;
    // 0 copy textures into the texture folder, 1 use the files already there.
    int32_t TextureBehaviour = 0;
    std::string TextureSubdir = "Textures\\";
    bool ProjRelativeFilenames = false;
    std::string SnapAnimName;
    int32_t SnapAnimFrame = 0;
    bool DoLighting = false;
    float LightScale = 1.0f;
    float RotateYaw = 0.0f;
    bool AdvancedMenu = false;
    bool ExportStrips = false;
    int32_t StripPerformance = 0;
    bool StripObject = false;
    float MaxStripSize = 1024.0f;
    int32_t MaxStripLength = 10000;
    // The stripper's last two parameters; not saved and not set by any dialog control.
    int32_t MinStripLength = 0;
    int32_t StripFlags = 0;
    std::string RootBoneName;
    bool DisplayViewer = true;
    bool EmbedSettingsInScene = false;
    // 0 none, 1 generate (static formats only), 2 from the uv set "lightmap".
    int32_t LightmapUVs = 2;
    int32_t LightmapUVChannel = 3;
    int32_t BaseUVs = 2;
    int32_t BaseUVChannel = 1;
    float LightMapStretchFactor = 0.1f;
    bool CreateDataDir = true;
    // Bit 0 texture names, 1 shader assignments, 2 transparency, 3 double sided, 4 specular, 5 always on.
    int32_t ExportMaterialSettings = 61;
    bool ExportBones = false;
    int32_t ExportBlended = 1;
    bool AutoGenerateBones = false;
    bool UseUnderscoresInBoneNames = false;
    float BlendThreshold = 0.0f;
    int32_t RemoveBones = 1;
    float MeshFactor = 1.0f;
    // 0 scene, 1 mesh centre, 2 root bone, 3 floor, 4 pivot in local space.
    int32_t CenterMethod = 2;
    bool WarnIfMoreThan64kVerts = false;
    int32_t OptimizeMesh = 1;
    float EpsVert = 0.0f;
    float EpsUV = 0.0f;
    bool ExportVertexColors = true;
    bool ExportTangents = true;
    int32_t MaxNumBones = 4;
    bool TextureUseProjDir = true;
    bool StripRestriction = true;
    bool SetMaxStripLength = true;
    bool NewRotDelta = true;
    bool GotoBindPose = true;

    bool operator==(const VExportOptions&) const = default;
};

// What the defaults of an export depend on besides fixed values: the format and the
// application settings the user chose as defaults for new exports.
struct ExportOptionDefaults {
    int FormatKind = kFormatKindModel;
    bool TextureUseProjDir = true;
    bool EmbedSettingsInScene = false;
    int32_t LightmapUVs = 2;
    float MeshFactor = 1.0f;
    bool WarnIfMoreThan64kVerts = false;
};

// Resets every field to the default of a new export. RootBoneName survives: artists export
// the same rig again and again, so the previous export's root bone is the best guess.
void SetExportOptionDefaults(VExportOptions& options, const ExportOptionDefaults& defaults);
