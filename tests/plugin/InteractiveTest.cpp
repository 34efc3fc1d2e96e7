// Exports with Maya's prompts on: the options dialog decides, the viewer is started afterwards.

#include "PluginFixture.h"
#include "TestScenes.h"

#include "plugin/BatchOptionsDialog.h"
#include "plugin/ExportSession.h"
#include "plugin/VExportFormat.h"
#include "plugin/VExportOptionsDialog.h"

#include <gmock/gmock.h>

#include <filesystem>

using ::testing::HasSubstr;

namespace {

class ScriptedDialog final : public VExportOptionsDialog {
public:
    bool ShowOptionsDialog(const VExportFormat& format, ExportSession& session) override
    {
        ++Shown;
        if (!Confirm)
            return false;
        if (Edit)
            Edit(session.Options);
        return BatchOptionsDialog().ShowOptionsDialog(format, session);
    }

    bool Confirm = true;
    int Shown = 0;
    std::function<void(VExportOptions&)> Edit;
};

class InteractiveExport : public PluginFixture {
protected:
    void SetUp() override
    {
        Services.OptionsDialog = &Dialog;
        PluginFixture::SetUp();
        standin::SetInteractive(true);
    }
    void TearDown() override
    {
        standin::SetInteractive(false);
        PluginFixture::TearDown();
    }

    ScriptedDialog Dialog;
};

TEST_F(InteractiveExport, CancelledOptionsDialogWritesNothing)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    Dialog.Confirm = false;

    EXPECT_FALSE(ExportAll("cancelled.qmesh"));
    EXPECT_EQ(Dialog.Shown, 1);
    EXPECT_FALSE(Has("cancelled.qmesh"));
    EXPECT_FALSE(Has("cancelled.qmesh_data"));
}

TEST_F(InteractiveExport, ConfirmedChoicesAreExportedAndStored)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    Dialog.Edit = [](VExportOptions& options) { options.ColMesh = 0; };

    EXPECT_TRUE(ExportAll("chosen.qmesh"));
    EXPECT_TRUE(Has("chosen.qmesh"));
    EXPECT_FALSE(Has("chosen.qcolmesh"));
    EXPECT_THAT(Read("chosen.qmesh_data/_config.Xportel"), HasSubstr("// ExportStrips : 1\r\n"));
}

TEST_F(InteractiveExport, UnregisteredMeshViewerIsReportedAndTheExportStillSucceeds)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");

    EXPECT_TRUE(ExportAll("viewed.qmesh"));
    ASSERT_FALSE(MessageBoxes.Requests.empty());
    EXPECT_EQ(MessageBoxes.Requests.back().Text,
              "Error: The location of program 'Worldlook' is unknown. Please run it once to register it.\r\n");
    EXPECT_TRUE(Launcher.Started.empty());
}

TEST_F(InteractiveExport, ViewerIsNotStartedWhenDisplayViewerIsOff)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    Dialog.Edit = [](VExportOptions& options) { options.DisplayViewer = false; };

    EXPECT_TRUE(ExportAll("unviewed.qmesh"));
    for (const VMessageBoxRequest& request : MessageBoxes.Requests)
        EXPECT_THAT(request.Text, ::testing::Not(HasSubstr("Worldlook")));
}

TEST_F(InteractiveExport, InteractiveReportIsShownAndNotFiled)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    std::filesystem::create_directories(Native("blocked.qmesh"));

    EXPECT_TRUE(ExportAll("blocked.qmesh"));
    EXPECT_NE(Report.Find("Could not save file"), nullptr);
    EXPECT_FALSE(Has("ErrLog.txt"));
}

TEST_F(PluginFixture, CookedMeshesOfTheTargetAreDeleted)
{
    Write("town.qmesh_data/cookedMesh_0.bin", "x");
    Write("town.qmesh_data/CookedMesh17", "x");
    Write("town.qmesh_data/materials.xml", "<root/>");
    VExportFormat* format = FindExportFormat("qmesh");
    ASSERT_NE(format, nullptr);
    ASSERT_TRUE(format->Init(SystemPath("town.qmesh"), 0, true, false, false));

    format->DeleteCookedMeshes();
    EXPECT_FALSE(Has("town.qmesh_data/cookedMesh_0.bin"));
    EXPECT_FALSE(Has("town.qmesh_data/CookedMesh17"));
    EXPECT_TRUE(Has("town.qmesh_data/materials.xml"));
}

} // namespace
