#include "ui/DialogLayoutBuilder.h"
#include "ui/ExportOptionsDialog.h"

namespace oc = OptionsControl;

namespace {

constexpr int kModelDialogResource = 101;
constexpr int kMeshDialogResource = 133;
// Static texts that no logic addresses.
constexpr int kHeading = -1;
constexpr int kBoneCountLabel = -2;

constexpr int kCenterGroup = 1;
constexpr int kBoneCountGroup = 2;
constexpr int kTextureGroup = 3;

} // namespace

DialogLayout ExportOptionsLayout(bool modelDialog)
{
    const bool mesh = !modelDialog;
    DialogLayoutBuilder b(modelDialog ? kModelDialogResource : kMeshDialogResource,
                          modelDialog ? "Kestrel: Model Export Options" : "Mesh Export Settings");
    const auto world = [mesh](const char* worldText, const char* modelText) { return mesh ? worldText : modelText; };

    b.Section("", 0, false, true);
    if (modelDialog) {
        b.Add(kHeading, ControlKind::Label, "Kestrel: Model Exporter - Export Options");
        b.NextRow();
    }
    b.Add(oc::File, ControlKind::Value, "File:");
    b.NextRow().Add(oc::Project, ControlKind::Value, "Project:",
                    "The project file found in the target's folder or above it; textures are copied into its "
                    "folder");
    b.NextRow().Add(oc::Textures, ControlKind::Value, "Textures:");

    b.Section("Export", 0);
    b.Add(oc::DisplayViewer, ControlKind::Check, "Display after export",
          world("Open the exported mesh in the mesh viewer when the export is done",
                "Open the exported model in the model viewer when the export is done"));
    b.NextRow().Add(oc::MeshFactor, ControlKind::Edit, "Scale mesh by factor:", "Resize factor");
    b.NextRow().Add(oc::LightmapUVs, ControlKind::Combo, "Lightmap UVs :");
    if (mesh)
        b.NextRow().Add(oc::LightmapStretch, ControlKind::Edit, "Max. lightmap stretch\n(0 keeps every angle,\n1 allows any)");
    b.NextRow().Add(oc::WarnVertexCount, ControlKind::Check, "Warn if model has > 65536 vertices\n(Wii hardware limit)");

    b.Section("Centering", 1);
    b.Add(oc::CenterScene, ControlKind::Radio, world("Scene origin", "Center to scene"),
          world("Keep the world where it is in the scene", "Keep the model where it is in the scene"))
        .Group = kCenterGroup;
    b.NextRow().Add(oc::CenterMesh, ControlKind::Radio, world("Midpoint", "Center to mesh center"),
                    world("Move the middle of the world's box to the origin", "Move the middle of the model's box to "
                                                                              "the origin"))
        .Group = kCenterGroup;
    if (modelDialog)
        b.NextRow().Add(oc::CenterRootBone, ControlKind::Radio, "Center to root bone",
                        "Move the root bone to the origin").Group = kCenterGroup;
    b.NextRow().Add(oc::CenterFloor, ControlKind::Radio, world("Floor", "Center to floor"),
                    world("Stand the world on the origin, centred on its floor",
                          "Stand the model on the origin, centred on its floor"))
        .Group = kCenterGroup;
    b.NextRow().Add(oc::CenterPivot, ControlKind::Radio, world("Pivot local space", "Use pivot local space"))
        .Group = kCenterGroup;

    if (modelDialog) {
        b.Section("Bones", 1);
        b.Add(oc::ExportBones, ControlKind::Check, "Export bones", "Export the skeleton and the skin weights");
        b.NextRow().Add(oc::Blended, ControlKind::Check, "Blended vertices with threshold",
                        "Let several bones move a vertex; influences below the threshold are dropped");
        b.Add(oc::BlendThreshold, ControlKind::Edit, "", "Influences weaker than this percentage are dropped")
            .Suffix = "%";
        b.NextRow().Add(kBoneCountLabel, ControlKind::Label, "Max. bones per vertex:");
        b.Add(oc::TwoBones, ControlKind::Radio, "2",
              "This sets the maximum number of influencing bones per blended vertex to 2")
            .Group = kBoneCountGroup;
        b.Add(oc::ThreeBones, ControlKind::Radio, "3",
              "This sets the maximum number of influencing bones per blended vertex to 3")
            .Group = kBoneCountGroup;
        b.Add(oc::FourBones, ControlKind::Radio, "4",
              "This sets the maximum number of influencing bones per blended vertex to 4")
            .Group = kBoneCountGroup;
        b.NextRow().Add(oc::RemoveBones, ControlKind::Check, "Remove \"dead\" bones without vertices",
                        "Leave out bones that move no vertex");
        b.NextRow().Add(oc::BindPose, ControlKind::Check, "Calculate bones from bind pose",
                        "Take the bones' rest pose from the skin's bind pose rather than the current frame");
        b.NextRow().Add(oc::AutoGenerateBones, ControlKind::Check, "Auto generate bones for stand-alone meshes");
        b.NextRow().Add(oc::Underscores, ControlKind::Check, "Replace spaces with underscores for bone names");
        b.NextRow().Add(oc::RootBoneLabel, ControlKind::Label, "Choose root bone:");
        b.Add(oc::RootBone, ControlKind::List, "");
        b.NextRow().Add(oc::NewRotDelta, ControlKind::Check, "Use new method for rotation deltas",
                        "Extract the root's turning per frame with the newer method");
        b.NextRow().Add(oc::RotateYaw, ControlKind::Edit, "Rotate model yaw CCW by (in degrees):");
        b.NextRow().Add(oc::AddAnimations, ControlKind::Button, "&Add Animations!",
                        "List the animations to export from the time line");
    } else {
        b.Section("World", 1);
        b.Add(oc::CollisionMesh, ControlKind::Combo, "Collision Mesh");
        b.NextRow().Add(oc::ExportLights, ControlKind::Check, "Export lights and scale by",
                        "Whether lights should be exported");
        b.Add(oc::LightScale, ControlKind::Edit, "", "Amount to scale the lighting intensity");
        b.NextRow().Add(oc::DebugVisInfo, ControlKind::Check, "Save debug .VisInfo file");
        b.NextRow().Add(oc::Visibility, ControlKind::Combo, "Visibility");
    }

    b.Section("", 0, false, true);
    b.Add(oc::Save, ControlKind::Button, "Save/&Export");
    b.Add(oc::Cancel, ControlKind::Button, "&Cancel");
    b.Add(oc::Advanced, ControlKind::Button, "Advanced >>", "Show or hide the advanced settings");
    b.Add(oc::Settings, ControlKind::Button, "&Settings", "Change the application settings: tool tips, debug printout");
    b.Add(oc::About, ControlKind::Button, "A&bout", "Show the exporter's version");

    b.Section("Mesh", 0, true);
    b.Add(oc::OptimizeMesh, ControlKind::Check, "Optimize Mesh", "Merge identical vertices and sort the triangles");
    b.NextRow().Add(oc::Tolerance, ControlKind::Edit, "Tolerance",
                    "Vertices closer than this distance are welded into one");
    b.NextRow().Add(oc::UVTolerance, ControlKind::Edit, "UV Tolerance",
                    "Texture coordinates closer than this are taken as equal when welding");
    if (mesh) {
        b.Section("Strips", 0, true);
        b.Add(oc::GroupByNode, ControlKind::Check, "Group by node", "Build the strips of each Maya node apart");
        b.NextRow().Add(oc::StripRestriction, ControlKind::Check, "Max. bounding box size",
                        "Limit the size of the box around each group of strips");
        b.Add(oc::MaxStripSize, ControlKind::Edit, "");
        b.NextRow().Add(oc::SetMaxStripLength, ControlKind::Check, "Max. triangle count",
                        "Limit the number of triangles in one strip or list");
        b.Add(oc::MaxStripLength, ControlKind::Edit, "");
    }

    b.Section("Materials", 1, true);
    b.Add(oc::CreateDataDir, ControlKind::Check, "Create Data directory",
          "Store the settings and the material files in the folder beside the target");
    b.NextRow().Add(oc::TextureFilenames, ControlKind::Check, "Texture filenames", "Export Texture file names");
    b.NextRow().Add(oc::Shaders, ControlKind::Check, "Shaders", "Export the shader assignments");
    b.NextRow().Add(oc::Transparency, ControlKind::Check, "Transparency mode", "Export the transparency modes");
    b.NextRow().Add(oc::DoubleSidedBit, ControlKind::Check, "Double Sided", "Export Double-sided-ness");
    b.Add(oc::DoubleSided, ControlKind::Combo, "");
    b.NextRow().Add(oc::Specular, ControlKind::Check, "Specular Exponent and Multiplier",
                    "Export the specular exponent and multiplier");

    b.Section("Textures", 1, true);
    b.Add(oc::UseProjectDir, ControlKind::Check, "Use project directory",
          "Put the textures below the project's folder rather than the target's");
    b.NextRow().Add(oc::CopyTextures, ControlKind::Radio, "Copy texture files to").Group = kTextureGroup;
    b.NextRow().Add(oc::UseExistingTextures, ControlKind::Radio, "Use existing texture files in").Group = kTextureGroup;
    b.NextRow().Add(oc::TextureSubdir, ControlKind::Edit, "");
    b.NextRow().Add(oc::ProjectRelative, ControlKind::Check, "Make filenames project relative");
    return b.Build();
}
