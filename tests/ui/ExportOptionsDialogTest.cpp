#include "ui/ExportOptionsDialog.h"

#include "settings/ApplicationSettings.h"
#include "settings/VAnimationTable.h"
#include "settings/VExportOptions.h"
#include "ui/AnimationListDialog.h"

#include "DialogScript.h"
#include "TempSettings.h"
#include "tests/ScopedLocale.h"

#include <gmock/gmock.h>

#include <memory>

namespace oc = OptionsControl;

namespace {

class OptionsDialogTest : public ::testing::Test {
protected:
    OptionsDialogTest()
    {
        Context.TargetDirectory = "\\work\\level\\";
        Context.TargetFile = "\\work\\level\\level.qmesh";
        Context.ProjectDirectory = "\\work\\";
        Context.ProjectFile = "\\work\\game.project";
    }

    ExportOptionsDialog& Open(int formatKind)
    {
        Context.FormatKind = formatKind;
        Context.StaticGeometryControls = formatKind != kFormatKindModel;
        SetExportOptionDefaults(Options, ExportOptionDefaults {.FormatKind = formatKind});
        return Reopen();
    }
    // Opens on the record as it stands.
    ExportOptionsDialog& Reopen()
    {
        m_dialog = std::make_unique<ExportOptionsDialog>(Context, &Options, Animations,
                                                         OptionsDialogServices {Boxes, &View, Settings, m_temp.Store});
        m_dialog->Open();
        return *m_dialog;
    }
    OptionsDialogContext Context;
    VExportOptions Options;
    VAnimationTable Animations;
    ApplicationSettings Settings;
    ScriptedMessageBox Boxes;
    ScriptedView View;

private:
    TempSettings m_temp;
    std::unique_ptr<ExportOptionsDialog> m_dialog;
};

} // namespace

TEST_F(OptionsDialogTest, MeshDialogShowsTheRecordWithDecimalPointsUnderACommaLocale)
{
    // The process locale would write "1,000" and read "0,5" as 0; the dialog must do neither.
    const ScopedLocale locale("de_DE.UTF-8");
    Options.LightMapStretchFactor = 0.25f;
    ExportOptionsDialog& dialog = Open(kFormatKindStatic);

    EXPECT_EQ(dialog.Layout().Caption, "Mesh Export Settings");
    EXPECT_EQ(dialog.Text(oc::MeshFactor), "1.000");
    EXPECT_EQ(dialog.Text(oc::Tolerance), "0.000");
    EXPECT_EQ(dialog.Text(oc::LightScale), "1.000");
    EXPECT_EQ(dialog.Text(oc::LightmapStretch), "0.10");
    EXPECT_EQ(dialog.Text(oc::MaxStripSize), "1024.00");
    EXPECT_EQ(dialog.Text(oc::MaxStripLength), "10000");
    EXPECT_EQ(dialog.Text(oc::Project), "\\work\\game.project");
    EXPECT_EQ(dialog.Text(oc::Textures), "\\work\\Textures\\");
    EXPECT_EQ(dialog[oc::Visibility].Items[static_cast<size_t>(dialog[oc::Visibility].Selection)], "None");
    EXPECT_EQ(dialog[oc::CollisionMesh].Selection, 1);
    EXPECT_TRUE(dialog.Checked(oc::CenterScene));
    EXPECT_FALSE(dialog.Expanded());
    EXPECT_EQ(dialog.Text(oc::Advanced), "Advanced >>");

    Type(dialog, oc::MeshFactor, "0,5");
    dialog.Command(oc::Save);
    ASSERT_TRUE(dialog.Ended());
    EXPECT_EQ(dialog.Result(), 1);
    EXPECT_FLOAT_EQ(Options.MeshFactor, 0.5f);
    if (!locale.IsActive())
        GTEST_SKIP() << "no de_DE locale here: the numbers were only checked under the C locale";
}

TEST_F(OptionsDialogTest, ConfirmingTheMeshDialogStoresStripsLimitsAndOnlyTheShownMaterialBits)
{
    ExportOptionsDialog& dialog = Open(kFormatKindStatic);
    Options.ExportStrips = false;
    Options.DoLighting = true;
    Type(dialog, oc::MaxStripLength, "10000");
    Type(dialog, oc::Tolerance, "-0.5");
    Choose(dialog, oc::LightmapUVs, 1);
    Type(dialog, oc::LightmapStretch, "3");

    dialog.Command(oc::Save);
    EXPECT_EQ(dialog.Result(), 1);
    EXPECT_TRUE(Options.ExportStrips);
    EXPECT_EQ(Options.StripPerformance, 4);
    EXPECT_FALSE(Options.DoLighting);
    EXPECT_EQ(Options.ExportMaterialSettings, 29);
    EXPECT_EQ(dialog.TextureDirectory(), "\\work\\Textures\\");
    EXPECT_TRUE(Boxes.Requests.empty());
    // The largest strip length is accepted, a negative tolerance becomes zero, the stretch is capped.
    EXPECT_EQ(Options.MaxStripLength, 10000);
    EXPECT_EQ(Options.EpsVert, 0.0f);
    EXPECT_EQ(Options.LightMapStretchFactor, 1.0f);
}

TEST_F(OptionsDialogTest, BlendThresholdIsShownInPercentAndStoredAsAFraction)
{
    Context.FormatKind = kFormatKindModel;
    SetExportOptionDefaults(Options, ExportOptionDefaults {});
    Options.ExportBones = true;
    Options.BlendThreshold = 0.05f;
    ExportOptionsDialog& dialog = Reopen();

    EXPECT_EQ(dialog.Layout().Caption, "Kestrel: Model Export Options");
    EXPECT_EQ(dialog.Text(oc::BlendThreshold), "5.00");
    EXPECT_EQ(dialog.Text(oc::RotateYaw), " 0.00");
    Click(dialog, oc::ThreeBones);
    dialog.Command(oc::Save);
    EXPECT_EQ(dialog.Result(), 1);
    EXPECT_FLOAT_EQ(Options.BlendThreshold, 0.05f);
    EXPECT_EQ(Options.MaxNumBones, 3);
}

struct RefusalCase {
    const char* Name;
    int FormatKind;
    int Field;
    const char* Typed;
    const char* Caption;
    const char* Message;
};

class OptionsRefusal : public OptionsDialogTest, public ::testing::WithParamInterface<RefusalCase> {};

TEST_P(OptionsRefusal, KeepsTheDialogOpenAndFocusesTheField)
{
    ExportOptionsDialog& dialog = Open(GetParam().FormatKind);
    if (GetParam().FormatKind == kFormatKindModel)
        Click(dialog, oc::ExportBones);
    Type(dialog, GetParam().Field, GetParam().Typed);

    dialog.Command(oc::Save);
    EXPECT_FALSE(dialog.Ended());
    EXPECT_EQ(dialog.Focus(), GetParam().Field);
    ASSERT_EQ(Boxes.Requests.size(), 1u);
    EXPECT_EQ(Boxes.Requests[0].Caption, GetParam().Caption);
    EXPECT_EQ(Boxes.Requests[0].Text, GetParam().Message);
}

INSTANTIATE_TEST_SUITE_P(Fields, OptionsRefusal, ::testing::Values(
    RefusalCase {"StripLength", kFormatKindStatic, oc::MaxStripLength, "10001", "Error!",
                 "Error! The max strip length must be below 10000.\r\n"},
    RefusalCase {"AbsoluteTextureFolder", kFormatKindStatic, oc::TextureSubdir, "C:\\textures", "Error",
                 "The texture subdirectory is not allowed to be an absolute path or contain '..\\'.\r\n"
                 "Please specify just a relative subdirectory like 'textures'"},
    RefusalCase {"ParentTextureFolder", kFormatKindModel, oc::TextureSubdir, "..\\textures", "Error",
                 "The texture subdirectory is not allowed to be an absolute path or contain '..\\'.\r\n"
                 "Please specify just a relative subdirectory like 'textures'"},
    RefusalCase {"Threshold", kFormatKindModel, oc::BlendThreshold, "100.5", "Insanity check",
                 "A threshold value under 0 and over 100 does not make sense"},
    RefusalCase {"NegativeThreshold", kFormatKindModel, oc::BlendThreshold, "-1", "Insanity check",
                 "A threshold value under 0 and over 100 does not make sense"},
    RefusalCase {"NotANumber", kFormatKindStatic, oc::Tolerance, "abc", "Error",
                 "'abc' is not a number.\r\nPlease enter a number."},
    RefusalCase {"NumberWithUnit", kFormatKindModel, oc::RotateYaw, "90deg", "Error",
                 "'90deg' is not a number.\r\nPlease enter a number."}),
    [](const auto& test) { return test.param.Name; });

TEST_F(OptionsDialogTest, ExtremelyLowScalingAnsweredNoKeepsTheDialogOpenWithZeroInTheRecord)
{
    ExportOptionsDialog& dialog = Open(kFormatKindStatic);
    Type(dialog, oc::MeshFactor, "0.00005");
    Boxes.Answers = {VMessageBoxAnswer::No};

    dialog.Command(oc::Save);
    EXPECT_FALSE(dialog.Ended());
    EXPECT_EQ(dialog.Focus(), oc::MeshFactor);
    EXPECT_EQ(Options.MeshFactor, 0.0f);
    EXPECT_EQ(Boxes.Requests.at(0).Buttons, VMessageBoxButtons::YesNo);

    dialog.Command(oc::Save);
    EXPECT_EQ(dialog.Result(), 1);
    EXPECT_FLOAT_EQ(Options.MeshFactor, 0.00005f);
}

TEST_F(OptionsDialogTest, ControlsFollowEachOtherWhileTheUserWorks)
{
    ExportOptionsDialog& mesh = Open(kFormatKindStatic);
    EXPECT_FALSE(mesh[oc::LightmapStretch].Enabled);
    Choose(mesh, oc::LightmapUVs, 1);
    EXPECT_TRUE(mesh[oc::LightmapStretch].Enabled);
    Click(mesh, oc::StripRestriction);
    EXPECT_FALSE(mesh[oc::MaxStripSize].Enabled);
    Click(mesh, oc::SetMaxStripLength);
    EXPECT_FALSE(mesh[oc::MaxStripLength].Enabled);
    Type(mesh, oc::TextureSubdir, "maps");
    EXPECT_EQ(mesh.Text(oc::Textures), "\\work\\maps\\");
    Click(mesh, oc::UseProjectDir);
    EXPECT_EQ(mesh.Text(oc::Textures), "\\work\\level\\maps\\");
    Type(mesh, oc::TextureSubdir, "\\\\server\\maps");
    EXPECT_EQ(mesh.Text(oc::Textures), "Invalid");

    Click(mesh, oc::Advanced);
    EXPECT_TRUE(mesh.Expanded());
    EXPECT_EQ(mesh.Text(oc::Advanced), "Advanced <<");
    EXPECT_TRUE(Options.AdvancedMenu);
    Click(mesh, oc::Advanced);
    EXPECT_FALSE(mesh.Expanded());
    EXPECT_EQ(mesh.Text(oc::Advanced), "Advanced >>");
}

TEST_F(OptionsDialogTest, BoneControlsFollowExportBonesAndBlending)
{
    Context.FormatKind = kFormatKindModel;
    SetExportOptionDefaults(Options, ExportOptionDefaults {});
    ASSERT_EQ(Options.CenterMethod, 2);
    ExportOptionsDialog& dialog = Reopen();

    // A model without bones cannot centre on its root bone, even if the dialog is cancelled.
    EXPECT_EQ(Options.CenterMethod, 1);
    EXPECT_TRUE(dialog.Checked(oc::CenterMesh));
    for (int id : {oc::CenterRootBone, oc::Blended, oc::RemoveBones, oc::BindPose, oc::BlendThreshold, oc::TwoBones})
        EXPECT_FALSE(dialog[id].Enabled) << id;
    EXPECT_FALSE(dialog[oc::RootBone].Visible);

    Click(dialog, oc::ExportBones);
    for (int id : {oc::CenterRootBone, oc::Blended, oc::BlendThreshold, oc::TwoBones, oc::FourBones})
        EXPECT_TRUE(dialog[id].Enabled) << id;
    Click(dialog, oc::Blended);
    EXPECT_FALSE(dialog[oc::BlendThreshold].Enabled);
    EXPECT_FALSE(dialog[oc::FourBones].Enabled);
    EXPECT_TRUE(dialog[oc::TwoBones].Enabled);

    Click(dialog, oc::CenterRootBone);
    Click(dialog, oc::ExportBones);
    EXPECT_TRUE(dialog.Checked(oc::CenterMesh));
    EXPECT_FALSE(dialog.Checked(oc::CenterRootBone));
    dialog.Command(oc::Cancel);
    EXPECT_EQ(dialog.Result(), 0);
}

TEST_F(OptionsDialogTest, RootBoneListRunsFromTheLastRootToTheFirst)
{
    Context.FormatKind = kFormatKindModel;
    Context.RootBones = {"hips", "prop", "camera"};
    SetExportOptionDefaults(Options, ExportOptionDefaults {});
    Options.RootBoneName = "PROP";
    ExportOptionsDialog& dialog = Reopen();
    EXPECT_THAT(dialog[oc::RootBone].Items, ::testing::ElementsAre("camera", "prop", "hips"));
    EXPECT_EQ(dialog[oc::RootBone].Selection, 1);

    Options.RootBoneName = "gone";
    Reopen();
    EXPECT_EQ(Options.RootBoneName, "camera");
}

TEST_F(OptionsDialogTest, DuplicateAnimationNamesRefuseTheModelDialog)
{
    ExportOptionsDialog& dialog = Open(kFormatKindModel);
    // "Run" first: two names that differ in more than case are no duplicates.
    for (const char* name : {"Run", "Walk", "walk"}) {
        VAnimationDescription entry;
        entry.Name = name;
        Animations.Add(entry);
    }

    dialog.Command(oc::Save);
    EXPECT_FALSE(dialog.Ended());
    EXPECT_EQ(dialog.Focus(), oc::AddAnimations);
    ASSERT_EQ(Boxes.Requests.size(), 1u);
    EXPECT_EQ(Boxes.Requests[0].Caption, "Duplicate animation found");
    EXPECT_EQ(Boxes.Requests[0].Buttons, VMessageBoxButtons::OkCancel);
    EXPECT_EQ(Boxes.Requests[0].Text,
              "You have two animations named [Walk].\nPlease, make sure that all animations\nhave unique names.\n");
}

TEST_F(OptionsDialogTest, BoneAnimationsWithoutBonesAreConvertedOnlyWhenTheUserAgrees)
{
    ExportOptionsDialog& dialog = Open(kFormatKindModel);
    VAnimationDescription walk;
    walk.Name = "Walk";
    walk.Type = kAnimTypeBone;
    Animations.Add(walk);

    Boxes.Answers = {VMessageBoxAnswer::Cancel};
    dialog.Command(oc::Save);
    EXPECT_FALSE(dialog.Ended());
    EXPECT_EQ(dialog.Focus(), oc::ExportBones);
    EXPECT_EQ(Animations[0].Type, kAnimTypeBone);

    Boxes.Answers = {VMessageBoxAnswer::Ok};
    dialog.Command(oc::Save);
    EXPECT_EQ(dialog.Result(), 1);
    EXPECT_EQ(Animations[0].Type, kAnimTypeMuscle);
    EXPECT_EQ(Boxes.Requests.back().Caption, "Warning!");
}

TEST_F(OptionsDialogTest, PolygonWarningAsksOnlyAbove24000TrianglesWithPrompts)
{
    Settings.WarnPolyCount = true;
    Context.TriangleCount = 24000;
    Open(kFormatKindModel).Command(oc::Save);
    EXPECT_TRUE(Boxes.Requests.empty());

    Context.TriangleCount = 24001;
    Boxes.Answers = {VMessageBoxAnswer::Cancel};
    ExportOptionsDialog& dialog = Open(kFormatKindModel);
    dialog.Command(oc::Save);
    EXPECT_FALSE(dialog.Ended());
    ASSERT_EQ(Boxes.Requests.size(), 1u);
    EXPECT_THAT(Boxes.Requests[0].Text, ::testing::StartsWith("Warning! You are using way too many polygons"));
}

TEST_F(OptionsDialogTest, BatchConfirmationIsNeverSeenAndSkipsTheQuestionsOnlyAPersonCanAnswer)
{
    Settings.WarnPolyCount = true;
    Context.TriangleCount = 30000;
    Context.NoPrompt = true;
    Context.FormatKind = kFormatKindModel;
    SetExportOptionDefaults(Options, ExportOptionDefaults {});
    VAnimationDescription walk;
    walk.Type = kAnimTypeBone;
    Animations.Add(walk);
    std::string textures;
    TempSettings temp;
    const OptionsDialogServices services {Boxes, &View, Settings, temp.Store};

    EXPECT_EQ(ShowOptionsDialog(Context, &Options, Animations, services, textures), 1);
    EXPECT_TRUE(View.Shown.empty());
    EXPECT_TRUE(Boxes.Requests.empty());
    EXPECT_EQ(Animations[0].Type, kAnimTypeBone);
    EXPECT_EQ(textures, "\\work\\Textures\\");

    // A refusal cannot wait for anyone: the batch dialog answers cancelled.
    Options.TextureSubdir = "C:\\maps";
    EXPECT_EQ(ShowOptionsDialog(Context, &Options, Animations, services, textures), 0);
    EXPECT_EQ(Boxes.Requests.size(), 1u);
    EXPECT_EQ(ShowOptionsDialog(Context, nullptr, Animations, services, textures), 0);
}

TEST_F(OptionsDialogTest, SettingsDialogSwitchesTheToolTips)
{
    ExportOptionsDialog& dialog = Open(kFormatKindStatic);
    EXPECT_FALSE(dialog.ToolTipsShown());
    View.Scripts.push_back([](Dialog& settings) {
        Click(settings, 1077);
        settings.Command(kIdOk);
    });
    dialog.Command(oc::Settings);
    EXPECT_EQ(Settings.ToolTips, 1);
    EXPECT_TRUE(dialog.ToolTipsShown());
    EXPECT_THAT(View.Shown, ::testing::ElementsAre("Application Settings"));
}
