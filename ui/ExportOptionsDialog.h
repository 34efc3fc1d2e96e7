#pragma once
// The export options dialog: "Kestrel: Model Export Options" for models, "Mesh Export Settings"
// for the static formats. It fills its controls from the option record, keeps them consistent
// while the user works, checks the input on "Save/&Export" (a failed check shows why, keeps the
// dialog open and puts the focus on the field to mend) and writes it back into the record.
// Numbers are shown and read with a decimal point whatever the process locale; a comma typed
// instead is read as the point.

#include "ui/Dialog.h"

#include <map>
#include <string>
#include <vector>

struct ApplicationSettings;
struct VExportOptions;
class VAnimationTable;
class VDialogView;
class VMessageBox;
class VSettingsStore;

namespace OptionsControl {
inline constexpr int File = 1298;
inline constexpr int Project = 1118;
inline constexpr int Textures = 1297;
inline constexpr int DisplayViewer = 1076;
inline constexpr int LightmapUVs = 1131;
inline constexpr int LightmapStretch = 1145;
inline constexpr int MeshFactor = 1034;
inline constexpr int CenterScene = 1089;
inline constexpr int CenterMesh = 1072;
inline constexpr int CenterRootBone = 1087;
inline constexpr int CenterFloor = 1074;
inline constexpr int CenterPivot = 1246;
inline constexpr int WarnVertexCount = 1144;
inline constexpr int OptimizeMesh = 1142;
inline constexpr int Tolerance = 1045;
inline constexpr int UVTolerance = 1046;
inline constexpr int CreateDataDir = 1371;
inline constexpr int TextureFilenames = 1138;
inline constexpr int Shaders = 1137;
inline constexpr int Transparency = 1140;
inline constexpr int DoubleSidedBit = 1141;
inline constexpr int Specular = 1139;
inline constexpr int DoubleSided = 1061;
inline constexpr int UseProjectDir = 1320;
inline constexpr int CopyTextures = 1307;
inline constexpr int UseExistingTextures = 1306;
inline constexpr int TextureSubdir = 1308;
inline constexpr int ProjectRelative = 1372;
inline constexpr int CollisionMesh = 1361;
inline constexpr int ExportLights = 1135;
inline constexpr int LightScale = 1124;
inline constexpr int DebugVisInfo = 1129;
inline constexpr int Visibility = 1130;
inline constexpr int GroupByNode = 1054;
inline constexpr int StripRestriction = 1055;
inline constexpr int MaxStripSize = 1001;
inline constexpr int SetMaxStripLength = 1056;
inline constexpr int MaxStripLength = 1002;
inline constexpr int ExportBones = 1033;
inline constexpr int Blended = 1007;
inline constexpr int BlendThreshold = 1022;
inline constexpr int TwoBones = 1084;
inline constexpr int ThreeBones = 1085;
inline constexpr int FourBones = 1086;
inline constexpr int RemoveBones = 1023;
inline constexpr int BindPose = 1026;
inline constexpr int AutoGenerateBones = 1024;
inline constexpr int Underscores = 1369;
inline constexpr int RootBoneLabel = 1143;
inline constexpr int RootBone = 1350;
inline constexpr int NewRotDelta = 1127;
inline constexpr int RotateYaw = 1027;
inline constexpr int Save = kIdOk;
inline constexpr int Cancel = kIdCancel;
inline constexpr int Advanced = 1008;
inline constexpr int AddAnimations = 1050;
inline constexpr int Settings = 1110;
inline constexpr int About = 1003;
} // namespace OptionsControl

// What the dialog shows besides the record: the export under way.
struct OptionsDialogContext {
    // The model dialog for kFormatKindModel, the mesh dialog otherwise.
    int FormatKind = 0;
    // The format offers the strip controls.
    bool StaticGeometryControls = false;
    bool UsesProject = true;
    std::string TargetFile;
    std::string ProjectFile;
    // System paths with their closing backslash; the project's empty when there is none.
    std::string ProjectDirectory;
    std::string TargetDirectory;
    // Maya runs without prompts: the dialog confirms itself unseen and asks no question that
    // only a person could answer.
    bool NoPrompt = false;
    int TriangleCount = 0;
    // The skeleton's root bones in skeleton order.
    std::vector<std::string> RootBones;
};

struct OptionsDialogServices {
    VMessageBox& MessageBox;
    // Opens the animation list, application settings and about dialogs; null in batch use.
    VDialogView* View = nullptr;
    ApplicationSettings& Settings;
    VSettingsStore& SettingsStore;
};

DialogLayout ExportOptionsLayout(bool modelDialog);

class ExportOptionsDialog final : public Dialog {
public:
    // A null record ends the dialog at once with 0.
    ExportOptionsDialog(const OptionsDialogContext& context, VExportOptions* options, VAnimationTable& animations,
                        const OptionsDialogServices& services);

    void Open() override;
    void Command(int id) override;

    // The texture folder shown when the dialog was confirmed.
    const std::string& TextureDirectory() const { return m_textureDirectory; }

private:
    bool IsModelDialog() const;
    void Fill();
    void FillRootBones();
    void ShowAdvanced();
    void EnableBoneControls();
    void EnableBlendControls();
    void ShowTextureDirectory();
    void OpenAnimationList();
    void OpenApplicationSettings();
    void Confirm();
    bool ConfirmShared();
    bool ConfirmMesh();
    bool ConfirmModel();
    bool ConfirmBones();
    // A number field remembers what it showed: a field the user left alone keeps the record's
    // value at its full precision rather than the digits the field has room for.
    void ShowNumber(int id, std::string text);
    bool Edited(int id) const;
    // Reads an edited number field; when it holds no number, says so, focuses the field and
    // answers false.
    bool ReadFloat(int id, float& value);
    bool ReadInt(int id, int32_t& value);
    bool StayOpen(int focus);

    OptionsDialogContext m_context;
    VExportOptions* m_options;
    VAnimationTable& m_animations;
    OptionsDialogServices m_services;
    std::vector<std::string> m_rootBoneNames;
    std::map<int, std::string> m_shownNumbers;
    std::string m_textureDirectory;
};

// Shows the dialog (confirmed unseen when the context says Maya runs without prompts or there is
// no view) and answers 1 when it was confirmed, 0 when cancelled. On confirmation textureDirectory
// holds the folder the dialog showed.
int ShowOptionsDialog(const OptionsDialogContext& context, VExportOptions* options, VAnimationTable& animations,
                      const OptionsDialogServices& services, std::string& textureDirectory);
