// The "ZephraPrefab" command's flows: the editor project it keeps and the export settings of the
// mesh a prefab node is exported to, with scripted file and options dialogs.

#include "PluginFixture.h"
#include "TestScenes.h"

#include "plugin/OptionsDialogHost.h"
#include "plugin/ExportSession.h"
#include "plugin/VExportOptionsDialog.h"
#include "ui/VFileDialog.h"

#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>
#include <standin/PluginHost.h>
#include <standin/SceneBuilder.h>

#include <gmock/gmock.h>

#include <optional>

namespace {

using ::testing::HasSubstr;

class ScriptedFileDialog final : public VFileDialog {
public:
    std::optional<std::string> Choose(const VFileDialogRequest& request) override
    {
        Requests.push_back(request);
        if (Answers.empty())
            return std::nullopt;
        const std::string answer = Answers.front();
        Answers.erase(Answers.begin());
        return answer;
    }
    std::vector<std::string> Answers;
    std::vector<VFileDialogRequest> Requests;
};

// Confirms as a batch export would; a new target stands for the user picking another file.
class ConfirmingOptionsDialog final : public VExportOptionsDialog {
public:
    bool ShowOptionsDialog(const VExportFormat& format, ExportSession& session) override
    {
        ShownWithCenterMethod.push_back(session.Options.CenterMethod);
        if (!NewTarget.empty())
            session.TargetFile = NewTarget;
        session.Options.MeshFactor = 2.5f;
        return OptionsDialogHost().ShowOptionsDialog(format, session);
    }
    std::vector<int32_t> ShownWithCenterMethod;
    std::string NewTarget;
};

class PrefabCommand : public PluginFixture {
protected:
    void SetUp() override
    {
        PluginFixture::SetUp();
        Stop();
        Services.FileDialog = &Files;
        Services.OptionsDialog = &Options;
        Start();
    }

    // A prefab node: a transform carrying "zephra_ExportTo" with the text given.
    MDagPath AddPrefabNode(const std::string& name, const std::string& exportTo)
    {
        const MObject node = standin::CreateNode("transform", name);
        standin::AddAttr(node, "zephra_ExportTo", standin::AttrType::String);
        standin::SetAttr(name + ".zephra_ExportTo", exportTo);
        return standin::PathTo(name);
    }
    static std::string ExportTo(const MDagPath& path)
    {
        MString text;
        MFnDependencyNode(path.node()).findPlug("zephra_ExportTo", true).getValue(text);
        return text.asChar();
    }
    static MStatus Prefab(const std::string& flag) { return standin::RunCommand("ZephraPrefab", {flag}); }

    ScriptedFileDialog Files;
    ConfirmingOptionsDialog Options;
};

TEST_F(PrefabCommand, NewProjectHoldsTheFileChosenForANodeAndItsSettingsCentredAtTheNode)
{
    Files.Answers = {SystemPath("game/Town"), SystemPath("game/Meshes/crate.qmesh")};
    ASSERT_TRUE(Prefab("-newproj"));
    EXPECT_TRUE(Has("game/Town.project"));
    EXPECT_TRUE(Has("game/Meshes"));

    const MDagPath crate = AddPrefabNode("crate", "");
    AssignMaterial(AddCube("ground", 0, 0, 0, 100), "stone");
    standin::Select({crate, standin::PathTo("ground")});
    ASSERT_TRUE(Prefab("-edit"));

    ASSERT_EQ(Files.Requests.size(), 2u);
    EXPECT_EQ(Files.Requests[0].Kind, VFileDialogKind::Save);
    EXPECT_EQ(Files.Requests[0].Filter, "Project file (*.Project)");
    EXPECT_EQ(Files.Requests[0].DefaultExtension, "Project");
    EXPECT_EQ(Files.Requests[1].Kind, VFileDialogKind::Save);
    EXPECT_EQ(Files.Requests[1].Filter, "QMesh files (*.qmesh)");
    EXPECT_EQ(Files.Requests[1].DefaultExtension, "qmesh");
    EXPECT_EQ(Files.Requests[1].StartFolder, SystemPath("game") + "\\");
    EXPECT_EQ(ExportTo(crate), "Meshes\\crate.qmesh");
    EXPECT_THAT(Options.ShownWithCenterMethod, ::testing::ElementsAre(4));
    const std::string settings = Read("game/Meshes/crate.qmesh_data/_config.Xportel");
    EXPECT_THAT(settings, HasSubstr("// CenterMethod : 4\r\n"));
    EXPECT_THAT(settings, HasSubstr("// MeshFactor : 2.5"));
    EXPECT_TRUE(Log.Has("Settings saved: " + ShownPath(SystemPath("game/Meshes/crate.qmesh_data/_config.Xportel")) + ".\r\n"));
    EXPECT_FALSE(Has("game/Meshes/crate.qmesh"));
}

TEST_F(PrefabCommand, EditAsksForTheProjectFirstAndFollowsATargetTheDialogMoved)
{
    Write("game/Game.project", "");
    const MDagPath rock = AddPrefabNode("rock", "Meshes\\rock.qmesh");
    standin::Select({rock});

    // Cancelling the project ends the command.
    ASSERT_TRUE(Prefab("-edit"));
    ASSERT_EQ(Files.Requests.size(), 1u);
    EXPECT_EQ(Files.Requests[0].Kind, VFileDialogKind::Open);
    EXPECT_EQ(Files.Requests[0].Title, "Please select the project file");
    EXPECT_EQ(Files.Requests[0].Filter, "Project files (*.Project)");
    EXPECT_TRUE(Options.ShownWithCenterMethod.empty());

    Files.Answers = {SystemPath("game/Game.project")};
    Options.NewTarget = SystemPath("game/Meshes/stone.qmesh");
    ASSERT_TRUE(Prefab("-edit"));
    EXPECT_EQ(Options.ShownWithCenterMethod.size(), 1u);
    EXPECT_EQ(ExportTo(rock), "Meshes\\stone.qmesh");
    EXPECT_TRUE(Has("game/Meshes/stone.qmesh_data/_config.Xportel"));
    EXPECT_FALSE(Has("game/Meshes/rock.qmesh_data"));
}

TEST_F(PrefabCommand, EditDoesNothingUnlessExactlyOneSelectedNodeNamesAFile)
{
    Files.Answers = {SystemPath("game/Game.project")};
    Write("game/Game.project", "");
    ASSERT_TRUE(Prefab("-setproj"));
    standin::Select({AddPrefabNode("a", "Meshes\\a.qmesh"), AddPrefabNode("b", "Meshes\\b.qmesh")});
    ASSERT_TRUE(Prefab("-edit"));
    standin::CreateNode("transform", "plain");
    standin::Select({standin::PathTo("plain")});
    ASSERT_TRUE(Prefab("-edit"));

    EXPECT_TRUE(Options.ShownWithCenterMethod.empty());
    EXPECT_EQ(Files.Requests.size(), 1u);
    EXPECT_FALSE(Has("game/Meshes"));
}

TEST_F(PrefabCommand, ProjectThatCannotBeCreatedIsNotTaken)
{
    Write("game/Game.project", "");
    Files.Answers = {SystemPath("game/Game.project")};
    ASSERT_TRUE(Prefab("-newproj"));
    EXPECT_TRUE(ThePrefabCommandProject().File.empty());
    EXPECT_EQ(Read("game/Game.project"), "");
}

} // namespace
