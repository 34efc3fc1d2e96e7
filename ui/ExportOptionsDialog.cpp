#include "ui/ExportOptionsDialog.h"

#include "base/TextUtil.h"
#include "report/LogWindow.h"
#include "settings/ApplicationSettings.h"
#include "settings/ScanNumber.h"
#include "settings/TextureDirectory.h"
#include "settings/VAnimationTable.h"
#include "settings/VExportOptions.h"
#include "ui/AboutDialog.h"
#include "ui/AnimationListDialog.h"
#include "ui/ApplicationSettingsDialog.h"
#include "ui/DialogNumbers.h"
#include "ui/VDialogView.h"
#include "ui/VMessageBox.h"

#include <algorithm>
#include <array>

namespace oc = OptionsControl;

namespace {

constexpr int kPolygonWarningLimit = 24000;
constexpr int32_t kMaxStripLengthAccepted = 10000;

struct ComboItem {
    const char* Text;
    int32_t Value;
};

constexpr std::array kMeshLightmapItems {ComboItem {"None", 0}, ComboItem {"Generate", 1},
                                         ComboItem {"From uvset 'lightmap'", 2}};
constexpr std::array kModelLightmapItems {ComboItem {"None", 0}, ComboItem {"From uvset 'lightmap'", 2}};
constexpr std::array kDoubleSidedItems {ComboItem {"Don't export", 0}, ComboItem {"From node", 1},
                                        ComboItem {"From enhanced material", 2}};
constexpr std::array kCollisionItems {ComboItem {"None", 0}, ComboItem {"Triangles", 1}, ComboItem {"Convex hull", 2}};
constexpr std::array kVisibilityItems {ComboItem {"None", -1}, ComboItem {"Quick", 0},
                                       ComboItem {"Well connected (like CSG)", 1},
                                       ComboItem {"Arbitrary geometry. Calc. intersections", 4},
                                       ComboItem {"Use intersections and heuristics", 3}};

// The centring radio buttons in the order of the CenterMethod values they stand for.
constexpr std::array kCenterButtons {oc::CenterScene, oc::CenterMesh, oc::CenterRootBone, oc::CenterFloor,
                                     oc::CenterPivot};
constexpr std::array kBoneCountButtons {oc::TwoBones, oc::ThreeBones, oc::FourBones};
// ExportMaterialSettings bits 0 to 4.
constexpr std::array kMaterialBitBoxes {oc::TextureFilenames, oc::Shaders, oc::Transparency, oc::DoubleSidedBit,
                                        oc::Specular};
// Enabled only while "Export bones" is checked.
constexpr std::array kBoneControls {oc::CenterRootBone, oc::AutoGenerateBones, oc::Underscores, oc::RootBone,
                                    oc::BindPose, oc::Blended, oc::RemoveBones};
constexpr std::array kStripControls {oc::GroupByNode, oc::StripRestriction, oc::MaxStripSize, oc::SetMaxStripLength,
                                     oc::MaxStripLength};

template <size_t N>
void FillCombo(ControlState& combo, const std::array<ComboItem, N>& items, int32_t value)
{
    combo.Items.clear();
    combo.Selection = -1;
    for (const ComboItem& item : items) {
        if (item.Value == value)
            combo.Selection = static_cast<int>(combo.Items.size());
        combo.Items.emplace_back(item.Text);
    }
}

// With nothing selected a combo box reads as its default.
template <size_t N>
int32_t ComboValue(const ControlState& combo, const std::array<ComboItem, N>& items, int32_t fallback)
{
    return combo.Selection >= 0 && combo.Selection < static_cast<int>(N) ? items[static_cast<size_t>(combo.Selection)].Value
                                                                          : fallback;
}

} // namespace

ExportOptionsDialog::ExportOptionsDialog(const OptionsDialogContext& context, VExportOptions* options,
                                         VAnimationTable& animations, const OptionsDialogServices& services)
    : Dialog(ExportOptionsLayout(context.FormatKind == kFormatKindModel))
    , m_context(context)
    , m_options(options)
    , m_animations(animations)
    , m_services(services)
{
}

bool ExportOptionsDialog::IsModelDialog() const
{
    return m_context.FormatKind == kFormatKindModel;
}

void ExportOptionsDialog::Open()
{
    if (!m_options) {
        End(0);
        return;
    }
    LogPrint("OptionsDlg::OnInitDlg()\r\n");
    ShowToolTips(m_services.Settings.ToolTips != 0);
    Fill();
    ShowAdvanced();
    SetFocus(oc::Save);
}

void ExportOptionsDialog::Fill()
{
    VExportOptions& options = *m_options;
    const bool mesh = !IsModelDialog();

    SetText(oc::File, m_context.TargetFile);
    SetText(oc::Project, m_context.UsesProject && !m_context.ProjectFile.empty() ? m_context.ProjectFile
                                                                                  : " - No project file found -");
    SetChecked(oc::DisplayViewer, options.DisplayViewer);
    if (mesh) {
        FillCombo((*this)[oc::LightmapUVs], kMeshLightmapItems, options.LightmapUVs);
        ShowNumber(oc::LightmapStretch, Format("%1.2f", options.LightMapStretchFactor));
        Enable(oc::LightmapStretch, options.LightmapUVs == 1);
    } else {
        FillCombo((*this)[oc::LightmapUVs], kModelLightmapItems, options.LightmapUVs);
    }
    ShowNumber(oc::MeshFactor, Format("%3.3f", options.MeshFactor));
    SetChecked(oc::WarnVertexCount, options.WarnIfMoreThan64kVerts);
    SetChecked(oc::OptimizeMesh, options.OptimizeMesh != 0);
    ShowNumber(oc::Tolerance, Format("%0.3f", options.EpsVert));
    ShowNumber(oc::UVTolerance, Format("%0.3f", options.EpsUV));
    SetChecked(oc::CreateDataDir, options.CreateDataDir);
    for (size_t bit = 0; bit < kMaterialBitBoxes.size(); ++bit)
        SetChecked(kMaterialBitBoxes[bit], (options.ExportMaterialSettings >> bit) & 1);
    FillCombo((*this)[oc::DoubleSided], kDoubleSidedItems, options.DoubleSided);
    SetChecked(oc::UseProjectDir, options.TextureUseProjDir);
    SetChecked(oc::CopyTextures, options.TextureBehaviour == 0);
    SetChecked(oc::UseExistingTextures, options.TextureBehaviour == 1);
    SetText(oc::TextureSubdir, options.TextureSubdir);
    SetChecked(oc::ProjectRelative, options.ProjRelativeFilenames);
    ShowTextureDirectory();

    if (mesh) {
        FillCombo((*this)[oc::CollisionMesh], kCollisionItems, options.ColMesh);
        SetChecked(oc::ExportLights, options.ExportLights);
        ShowNumber(oc::LightScale, Format("%3.3f", options.LightScale));
        SetChecked(oc::DebugVisInfo, options.DebugVisInfo);
        FillCombo((*this)[oc::Visibility], kVisibilityItems, options.ComputeVisibility);
        SetChecked(oc::GroupByNode, options.StripObject);
        SetChecked(oc::StripRestriction, options.StripRestriction);
        ShowNumber(oc::MaxStripSize, Format("%.2f", options.MaxStripSize));
        SetChecked(oc::SetMaxStripLength, options.SetMaxStripLength);
        ShowNumber(oc::MaxStripLength, Format("%i", options.MaxStripLength));
        for (int id : kStripControls)
            Enable(id, m_context.StaticGeometryControls);
        Enable(oc::MaxStripSize, m_context.StaticGeometryControls && options.StripRestriction);
        Enable(oc::MaxStripLength, m_context.StaticGeometryControls && options.SetMaxStripLength);
    } else {
        SetChecked(oc::ExportBones, options.ExportBones);
        SetChecked(oc::Blended, options.ExportBlended != 0);
        ShowNumber(oc::BlendThreshold, Format("%.2f", options.BlendThreshold * 100.0f));
        for (size_t i = 0; i < kBoneCountButtons.size(); ++i)
            SetChecked(kBoneCountButtons[i], options.MaxNumBones == static_cast<int32_t>(i) + 2);
        SetChecked(oc::RemoveBones, options.RemoveBones != 0);
        SetChecked(oc::BindPose, options.GotoBindPose);
        SetChecked(oc::AutoGenerateBones, options.AutoGenerateBones);
        SetChecked(oc::Underscores, options.UseUnderscoresInBoneNames);
        SetChecked(oc::NewRotDelta, false);
        ShowNumber(oc::RotateYaw, Format("%5.2f", options.RotateYaw));
        // A model without bones has no root bone to centre on.
        if (!options.ExportBones && options.CenterMethod == 2)
            options.CenterMethod = 1;
        EnableBoneControls();
        FillRootBones();
        for (int id : {oc::AutoGenerateBones, oc::Underscores, oc::RootBoneLabel, oc::RootBone})
            Show(id, false);
    }
    for (size_t method = 0; method < kCenterButtons.size(); ++method) {
        if (mesh && kCenterButtons[method] == oc::CenterRootBone)
            continue;
        SetChecked(kCenterButtons[method], options.CenterMethod == static_cast<int32_t>(method));
    }
}

void ExportOptionsDialog::FillRootBones()
{
    ControlState& list = (*this)[oc::RootBone];
    m_rootBoneNames.assign(m_context.RootBones.rbegin(), m_context.RootBones.rend());
    list.Items = m_rootBoneNames;
    list.Selection = -1;
    if (m_rootBoneNames.empty())
        return;
    const auto chosen = std::find_if(m_rootBoneNames.begin(), m_rootBoneNames.end(),
                                     [&](const std::string& name) { return EqualsNoCase(name, m_options->RootBoneName); });
    if (chosen == m_rootBoneNames.end()) {
        list.Selection = 0;
        m_options->RootBoneName = m_rootBoneNames.front();
    } else {
        list.Selection = static_cast<int>(chosen - m_rootBoneNames.begin());
    }
}

void ExportOptionsDialog::ShowAdvanced()
{
    SetText(oc::Advanced, m_options->AdvancedMenu ? "Advanced <<" : "Advanced >>");
    SetExpanded(m_options->AdvancedMenu);
}

void ExportOptionsDialog::EnableBoneControls()
{
    const bool bones = Checked(oc::ExportBones);
    for (int id : kBoneControls)
        Enable(id, bones);
    const bool blended = bones && Checked(oc::Blended);
    Enable(oc::BlendThreshold, blended);
    for (int id : kBoneCountButtons)
        Enable(id, blended);
}

void ExportOptionsDialog::EnableBlendControls()
{
    const bool blended = Checked(oc::Blended);
    Enable(oc::BlendThreshold, blended);
    Enable(oc::ThreeBones, blended);
    Enable(oc::FourBones, blended);
}

void ExportOptionsDialog::ShowTextureDirectory()
{
    SetText(oc::Textures, TextureDirectoryForDisplay(Text(oc::TextureSubdir), Checked(oc::UseProjectDir),
                                                     m_context.ProjectDirectory, m_context.TargetDirectory));
}

void ExportOptionsDialog::Command(int id)
{
    switch (id) {
    case oc::Save:
        Confirm();
        break;
    case oc::Cancel:
        End(0);
        break;
    case oc::Advanced:
        m_options->AdvancedMenu = !m_options->AdvancedMenu;
        ShowAdvanced();
        break;
    case oc::Blended:
        EnableBlendControls();
        break;
    case oc::ExportBones:
        EnableBoneControls();
        if (!Checked(oc::ExportBones) && Checked(oc::CenterRootBone))
            CheckRadio(oc::CenterMesh);
        break;
    case oc::StripRestriction:
        Enable(oc::MaxStripSize, Checked(oc::StripRestriction));
        break;
    case oc::SetMaxStripLength:
        Enable(oc::MaxStripLength, Checked(oc::SetMaxStripLength));
        break;
    case oc::LightmapUVs:
        if (!IsModelDialog())
            Enable(oc::LightmapStretch, ComboValue((*this)[oc::LightmapUVs], kMeshLightmapItems, 1) == 1);
        break;
    case oc::TextureSubdir:
    case oc::UseProjectDir:
        ShowTextureDirectory();
        break;
    case oc::RootBone: {
        const int selection = (*this)[oc::RootBone].Selection;
        if (selection >= 0 && selection < static_cast<int>(m_rootBoneNames.size()))
            m_options->RootBoneName = m_rootBoneNames[static_cast<size_t>(selection)];
        break;
    }
    case oc::AddAnimations:
        m_options->ExportBones = Checked(oc::ExportBones);
        OpenAnimationList();
        break;
    case oc::Settings:
        OpenApplicationSettings();
        break;
    case oc::About: {
        AboutDialog about;
        RunDialog(about, m_services.View, UnseenDialog::Cancels);
        break;
    }
    default:
        break;
    }
}

void ExportOptionsDialog::OpenAnimationList()
{
    AnimationListDialog list(m_animations, m_services.MessageBox, m_services.View, m_services.Settings.ToolTips != 0);
    RunDialog(list, m_services.View, UnseenDialog::Cancels);
}

void ExportOptionsDialog::OpenApplicationSettings()
{
    ApplicationSettingsDialog settings(m_services.Settings, m_services.SettingsStore);
    RunDialog(settings, m_services.View, UnseenDialog::Cancels);
    ShowToolTips(m_services.Settings.ToolTips != 0);
}

void ExportOptionsDialog::ShowNumber(int id, std::string text)
{
    m_shownNumbers[id] = text;
    SetText(id, std::move(text));
}

bool ExportOptionsDialog::Edited(int id) const
{
    const auto shown = m_shownNumbers.find(id);
    return shown == m_shownNumbers.end() || shown->second != Text(id);
}

bool ExportOptionsDialog::StayOpen(int focus)
{
    SetFocus(focus);
    return false;
}

bool ExportOptionsDialog::ReadFloat(int id, float& value)
{
    if (!Edited(id) || ReadDialogFloat(Text(id), value))
        return true;
    ShowNotANumber(m_services.MessageBox, Text(id));
    return StayOpen(id);
}

bool ExportOptionsDialog::ReadInt(int id, int32_t& value)
{
    if (!Edited(id) || ReadDialogInt(Text(id), value))
        return true;
    ShowNotANumber(m_services.MessageBox, Text(id));
    return StayOpen(id);
}

void ExportOptionsDialog::Confirm()
{
    if (!ConfirmShared())
        return;
    if (IsModelDialog() ? !ConfirmModel() : !ConfirmMesh())
        return;
    End(1);
    if (m_services.Settings.ShowLog)
        FindLogWindow();
}

bool ExportOptionsDialog::ConfirmShared()
{
    VExportOptions& options = *m_options;
    VMessageBox& messageBox = m_services.MessageBox;

    if (IsModelDialog() && m_services.Settings.WarnPolyCount && !m_context.NoPrompt &&
        m_context.TriangleCount > kPolygonWarningLimit) {
        VMessageBoxRequest request;
        request.Caption = "Warning!";
        request.Text = "Warning! You are using way too many polygons in your model. The engine will not load this "
                       "model properly. The current maximum number of polygons is 24000. Are you sure that you want "
                       "to export this model with these settings?";
        request.Buttons = VMessageBoxButtons::OkCancel;
        if (messageBox.Show(request) == VMessageBoxAnswer::Cancel)
            return StayOpen(oc::Save);
    }

    options.TextureUseProjDir = Checked(oc::UseProjectDir);
    options.TextureBehaviour = Checked(oc::UseExistingTextures) ? 1 : 0;
    options.TextureSubdir = Text(oc::TextureSubdir);
    ShowTextureDirectory();
    m_textureDirectory = Text(oc::Textures);
    if (IsInvalidTextureDirectory(m_textureDirectory)) {
        VMessageBoxRequest request;
        request.Caption = "Error";
        request.Text = std::string(kInvalidTextureSubdirMessage);
        request.Owner = VMessageBoxOwner::ActiveWindow;
        request.Icon = VMessageBoxIcon::Exclamation;
        messageBox.Show(request);
        return StayOpen(oc::TextureSubdir);
    }

    options.ProjRelativeFilenames = Checked(oc::ProjectRelative);
    if (!ReadFloat(oc::MeshFactor, options.MeshFactor))
        return false;
    if (options.MeshFactor > -0.0001f && options.MeshFactor < 0.0001f) {
        VMessageBoxRequest request;
        request.Caption = "Warning!";
        request.Text = "Warning! The scaling for this export is set to an extremely\r\n"
                       "low value. This may cause the export not to be visible at all\r\n"
                       "in the engine. Possible reason: Scaling set too low or to zero.\r\n"
                       "Are you sure you want to do this?";
        request.Buttons = VMessageBoxButtons::YesNo;
        request.DefaultAnswer = VMessageBoxAnswer::Yes;
        if (messageBox.Show(request) == VMessageBoxAnswer::No) {
            options.MeshFactor = 0.0f;
            return StayOpen(oc::MeshFactor);
        }
    }

    options.DisplayViewer = Checked(oc::DisplayViewer);
    if (IsModelDialog()) {
        options.LightmapUVs = ComboValue((*this)[oc::LightmapUVs], kModelLightmapItems, 1);
    } else {
        options.LightmapUVs = ComboValue((*this)[oc::LightmapUVs], kMeshLightmapItems, 1);
        if (!ReadFloat(oc::LightmapStretch, options.LightMapStretchFactor))
            return false;
        options.LightMapStretchFactor = std::clamp(options.LightMapStretchFactor, 0.0f, 1.0f);
    }
    options.DoubleSided = ComboValue((*this)[oc::DoubleSided], kDoubleSidedItems, 2);
    options.CenterMethod = 0;
    for (size_t method = 0; method < kCenterButtons.size(); ++method) {
        if ((IsModelDialog() || kCenterButtons[method] != oc::CenterRootBone) && Checked(kCenterButtons[method]))
            options.CenterMethod = static_cast<int32_t>(method);
    }
    options.WarnIfMoreThan64kVerts = Checked(oc::WarnVertexCount);
    options.OptimizeMesh = Checked(oc::OptimizeMesh) ? 1 : 0;
    if (!ReadFloat(oc::Tolerance, options.EpsVert) || !ReadFloat(oc::UVTolerance, options.EpsUV))
        return false;
    options.EpsVert = std::max(options.EpsVert, 0.0f);
    options.EpsUV = std::max(options.EpsUV, 0.0f);
    options.CreateDataDir = Checked(oc::CreateDataDir);
    options.ExportMaterialSettings = 0;
    for (size_t bit = 0; bit < kMaterialBitBoxes.size(); ++bit)
        options.ExportMaterialSettings |= Checked(kMaterialBitBoxes[bit]) ? 1 << bit : 0;
    return true;
}

bool ExportOptionsDialog::ConfirmMesh()
{
    VExportOptions& options = *m_options;
    options.ExportLights = Checked(oc::ExportLights);
    options.DoLighting = false;
    if (!ReadFloat(oc::LightScale, options.LightScale))
        return false;
    options.ColMesh = ComboValue((*this)[oc::CollisionMesh], kCollisionItems, 1);
    options.DebugVisInfo = Checked(oc::DebugVisInfo);
    options.ComputeVisibility = ComboValue((*this)[oc::Visibility], kVisibilityItems, -1);
    options.ExportStrips = true;
    options.StripPerformance = 4;
    options.StripObject = Checked(oc::GroupByNode);
    if (Checked(oc::StripRestriction) && !ReadFloat(oc::MaxStripSize, options.MaxStripSize))
        return false;
    if (Checked(oc::SetMaxStripLength)) {
        if (!ReadInt(oc::MaxStripLength, options.MaxStripLength))
            return false;
        if (options.MaxStripLength > kMaxStripLengthAccepted) {
            VMessageBoxRequest request;
            request.Caption = "Error!";
            request.Text = "Error! The max strip length must be below 10000.\r\n";
            m_services.MessageBox.Show(request);
            return StayOpen(oc::MaxStripLength);
        }
    }
    return true;
}

bool ExportOptionsDialog::ConfirmModel()
{
    VExportOptions& options = *m_options;
    if (!CheckAnimationNames(m_animations, m_services.MessageBox))
        return StayOpen(oc::AddAnimations);
    if (!ReadFloat(oc::RotateYaw, options.RotateYaw))
        return false;

    const auto isBoneAnimation = [](const VAnimationDescription& entry) { return entry.Type == kAnimTypeBone; };
    if (!Checked(oc::ExportBones) && !m_context.NoPrompt &&
        std::any_of(m_animations.begin(), m_animations.end(), isBoneAnimation)) {
        VMessageBoxRequest request;
        request.Caption = "Warning!";
        request.Text = "Warning! You have chosen to export bone animations but not bones\nDo you want to convert all "
                       "bone animations to muscle animations?\n(Cancel will just return to the previous menu)";
        request.Buttons = VMessageBoxButtons::OkCancel;
        if (m_services.MessageBox.Show(request) == VMessageBoxAnswer::Cancel)
            return StayOpen(oc::ExportBones);
        for (int i = 0; i < m_animations.Count(); ++i) {
            if (isBoneAnimation(m_animations[i]))
                m_animations[i].Type = kAnimTypeMuscle;
        }
    }

    options.ExportBones = Checked(oc::ExportBones);
    return !options.ExportBones || ConfirmBones();
}

bool ExportOptionsDialog::ConfirmBones()
{
    VExportOptions& options = *m_options;
    options.ExportBlended = Checked(oc::Blended) ? 1 : 0;
    if (options.ExportBlended) {
        float percent = options.BlendThreshold * 100.0f;
        if (!ReadFloat(oc::BlendThreshold, percent))
            return false;
        if (percent < 0.0f || percent > 100.0f) {
            VMessageBoxRequest request;
            request.Caption = "Insanity check";
            request.Text = "A threshold value under 0 and over 100 does not make sense";
            m_services.MessageBox.Show(request);
            return StayOpen(oc::BlendThreshold);
        }
        if (Edited(oc::BlendThreshold))
            options.BlendThreshold = percent / 100.0f;
        for (size_t i = 0; i < kBoneCountButtons.size(); ++i) {
            if (Checked(kBoneCountButtons[i]))
                options.MaxNumBones = static_cast<int32_t>(i) + 2;
        }
    }
    options.RemoveBones = Checked(oc::RemoveBones) ? 1 : 0;
    options.NewRotDelta = Checked(oc::NewRotDelta);
    options.GotoBindPose = Checked(oc::BindPose);
    options.AutoGenerateBones = Checked(oc::AutoGenerateBones);
    options.UseUnderscoresInBoneNames = Checked(oc::Underscores);
    return true;
}

int ShowOptionsDialog(const OptionsDialogContext& context, VExportOptions* options, VAnimationTable& animations,
                      const OptionsDialogServices& services, std::string& textureDirectory)
{
    ExportOptionsDialog dialog(context, options, animations, services);
    const int result = RunDialog(dialog, context.NoPrompt ? nullptr : services.View, UnseenDialog::Confirms);
    if (result == 1)
        textureDirectory = dialog.TextureDirectory();
    return result;
}
