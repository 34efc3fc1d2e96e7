// Exports with Maya's prompts on: the options dialog decides, the viewer is started afterwards.

#include "PluginFixture.h"
#include "TestScenes.h"

#include "formats/CollisionMeshReader.h"
#include "plugin/OptionsDialogHost.h"
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
        if (!Confirm || !OptionsDialogHost().ShowOptionsDialog(format, session))
            return false;
        if (Edit)
            Edit(session.Options);
        return true;
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

TEST_F(InteractiveExport, CancelledOptionsDialogWritesNothingAndConfirmedChoicesAreExportedAndStored)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    Dialog.Confirm = false;
    EXPECT_FALSE(ExportAll("cancelled.qmesh"));
    EXPECT_EQ(Dialog.Shown, 1);
    EXPECT_FALSE(Has("cancelled.qmesh"));
    EXPECT_FALSE(Has("cancelled.qmesh_data"));

    Dialog.Confirm = true;
    Dialog.Edit = [](VExportOptions& options) { options.ColMesh = 0; };
    EXPECT_TRUE(ExportAll("chosen.qmesh"));
    EXPECT_TRUE(Has("chosen.qmesh"));
    EXPECT_FALSE(Has("chosen.qcolmesh"));
    EXPECT_THAT(Read("chosen.qmesh_data/_config.Xportel"), HasSubstr("// ExportStrips : 1\r\n"));
}

TEST_F(InteractiveExport, UnregisteredMeshViewerIsReportedOnlyWhenDisplayViewerIsOnAndTheExportStillSucceeds)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    Dialog.Edit = [](VExportOptions& options) { options.DisplayViewer = false; };
    EXPECT_TRUE(ExportAll("unviewed.qmesh"));
    for (const VMessageBoxRequest& request : MessageBoxes.Requests)
        EXPECT_THAT(request.Text, ::testing::Not(HasSubstr("Worldlook")));

    Dialog.Edit = nullptr;
    EXPECT_TRUE(ExportAll("viewed.qmesh"));
    ASSERT_FALSE(MessageBoxes.Requests.empty());
    EXPECT_EQ(MessageBoxes.Requests.back().Text,
              "Error: The location of program 'Worldlook' is unknown. Please run it once to register it.\r\n");
    EXPECT_TRUE(Launcher.Started.empty());
}

TEST_F(InteractiveExport, StrippingStatisticsAndFailuresAreShownAndNotFiled)
{
    AssignMaterial(AddCube("boxA", 0, 0, 0, 100), "stone");
    AssignMaterial(AddCube("boxB", 300, 0, 0, 100), "wood");

    EXPECT_TRUE(ExportAll("stripped.qmesh"));
    const VReportEntry* entry = Report.Find("Triangle stripping and listing statistics");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->Detail, "Strips and lists: 2\r\nMaterials: 2\r\nVis areas: 0\r\n");
    EXPECT_EQ(entry->Severity, SeverityInformation);

    std::filesystem::create_directories(Native("blocked.qmesh"));
    EXPECT_TRUE(ExportAll("blocked.qmesh"));
    EXPECT_NE(Report.Find("Could not save file"), nullptr);
    EXPECT_FALSE(Has("ErrLog.txt"));
}

// "crates": two cubes 100 wide, 100 apart, in one mesh; "floor": one flat quad.
TEST_F(InteractiveExport, ConvexHullCollisionMeshHoldsEachNodesHullAndKeepsFlatNodes)
{
    standin::MeshDescription crates;
    for (int cube = 0; cube < 2; ++cube)
        for (int corner = 0; corner < 8; ++corner)
            crates.points.emplace_back(200.0 * cube + 100.0 * (corner & 1), 100.0 * ((corner >> 1) & 1),
                                       100.0 * ((corner >> 2) & 1));
    for (int cube = 0; cube < 2; ++cube)
        for (int corner : {0, 2, 3, 1, 4, 5, 7, 6, 0, 1, 5, 4, 2, 6, 7, 3, 0, 4, 6, 2, 1, 3, 7, 5})
            crates.connects.push_back(8 * cube + corner);
    crates.counts.assign(12, 4);
    AssignMaterial(standin::CreateMesh("cratesShape", standin::CreateNode("transform", "crates"), crates), "wood");
    const standin::MeshDescription floor {{MPoint(0, 0, 400), MPoint(100, 0, 400), MPoint(100, 0, 500), MPoint(0, 0, 500)},
                                          {4},
                                          {0, 3, 2, 1}};
    AssignMaterial(standin::CreateMesh("floorShape", standin::CreateNode("transform", "floor"), floor), "stone");
    Dialog.Edit = [](VExportOptions& options) { options.ColMesh = 2; };

    EXPECT_TRUE(ExportAll("hulls.qmesh"));

    VCollisionMeshFile collision;
    ASSERT_TRUE(ReadCollisionMesh(SystemPath("hulls.qcolmesh"), collision));
    // The crates' hull is their outer box: its 8 corners and 12 triangles, then the floor's 2.
    EXPECT_EQ(collision.Positions.size(), (8u + 4u) * 3u);
    EXPECT_EQ(collision.Indices.size(), (12u + 2u) * 3u);
    const VReportEntry* entry = Report.Find("Collision object without volume");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->Detail, "The following nodes kept their triangles in the collision mesh:\r\n|floor|floorShape\r\n");
}

// Separate flat triangles and quads, three or four vertices each, one material: nothing is welded,
// so the world keeps exactly 3 x triangles + 4 x quads vertices.
void AddSeparatePolygons(int triangles, int quads)
{
    const MObject transform = standin::CreateNode("transform", "soup");
    standin::MeshDescription description;
    for (int polygon = 0; polygon < triangles + quads; ++polygon) {
        const double x = 2.0 * (polygon % 256);
        const double z = 2.0 * (polygon / 256);
        const int corners = polygon < triangles ? 3 : 4;
        const int first = static_cast<int>(description.points.size());
        description.points.emplace_back(x, 0.0, z);
        description.points.emplace_back(x, 0.0, z + 1.0);
        description.points.emplace_back(x + 1.0, 0.0, z + 1.0);
        if (corners == 4)
            description.points.emplace_back(x + 1.0, 0.0, z);
        description.counts.push_back(corners);
        for (int corner = 0; corner < corners; ++corner)
            description.connects.push_back(first + corner);
    }
    AssignMaterial(standin::CreateMesh("soupShape", transform, description), "ground");
}

// 65535 vertices stay quiet, 65536 warn.
class VertexCountWarning : public InteractiveExport, public ::testing::WithParamInterface<int> {};

TEST_P(VertexCountWarning, StartsAt65536Vertices)
{
    Dialog.Edit = [](VExportOptions& options) {
        options.WarnIfMoreThan64kVerts = true;
        options.ExportStrips = false;
    };
    const int quads = GetParam();
    AddSeparatePolygons(21845 - quads, quads);
    EXPECT_TRUE(ExportAll("soup.qmesh"));
    EXPECT_EQ(Report.Find("Model has more than 65536 vertices") != nullptr, quads == 1);
}

INSTANTIATE_TEST_SUITE_P(InteractiveExport, VertexCountWarning, ::testing::Values(0, 1));

} // namespace
