// "ZephraNodeProperties" run through the stand-in's command host, its dialogs answered by scripts.

#include "PluginFixture.h"
#include "TestScenes.h"
#include "../ui/DialogScript.h"

#include "settings/ProgramRegistry.h"
#include "ui/BitmaskDialog.h"
#include "ui/NodePropertiesDialog.h"

#include <maya/MFnAttribute.h>
#include <maya/MFnDependencyNode.h>

namespace {

class NodePropertiesCommand : public PluginFixture {
protected:
    void SetUp() override
    {
        PluginFixture::SetUp();
        Stop();
        Services.DialogView = &View;
        // The bit names are read from the installation folder.
        ASSERT_TRUE(RegisterProgram(*Services.SettingsStore, "Kestrel", SystemPath("install")));
        Start();
        AddCube("boxA", 0, 0, 0, 1);
        m_box = standin::PathTo("boxA").node();
    }

    int IntAttribute(const char* name, bool& hidden) const
    {
        const MFnDependencyNode node(m_box);
        int value = -1;
        EXPECT_TRUE(node.findPlug(name).getValue(value)) << name;
        hidden = MFnAttribute(node.attribute(name)).isHidden();
        return value;
    }

    ScriptedView View;
    // The transform: the attributes are the node's the artist selects.
    MObject m_box;
};

TEST_F(NodePropertiesCommand, OkOnANewNodeAddsVisibleAndAllCollisionBitsAsHiddenAttributes)
{
    standin::Select({standin::PathTo("boxA")});
    View.Scripts.push_back([](Dialog& dialog) {
        EXPECT_EQ(dialog.Layout().Caption, "Zephra Geometry Properties");
        EXPECT_EQ(dialog.Text(NodeControl::NodeName), "boxA");
        EXPECT_TRUE(dialog.Checked(NodeControl::Visible));
        EXPECT_EQ(dialog.Text(NodeControl::CollisionFlags), "65535");
        Click(dialog, kIdOk);
    });
    EXPECT_TRUE(standin::RunCommand("ZephraNodeProperties", {}));

    bool hidden = false;
    EXPECT_EQ(IntAttribute("Visible", hidden), 1);
    EXPECT_TRUE(hidden);
    EXPECT_EQ(IntAttribute("CollisionFlags", hidden), 65535);
    EXPECT_TRUE(hidden);
}

TEST_F(NodePropertiesCommand, BitmaskEditorNamesTheBitsFromTheInstallationFolderAndOkStoresThem)
{
    Write("install/CollisionBitsWorld.txt", "0: Player\n// comment\n3 :Vehicles\n40: Ignored\n");
    standin::Select({standin::PathTo("boxA")});
    View.Scripts.push_back([](Dialog& dialog) {
        Click(dialog, NodeControl::Visible);
        Click(dialog, NodeControl::EditBits);
        EXPECT_EQ(dialog.Text(NodeControl::CollisionFlags), "15");
        // A second run while the dialog is open opens nothing.
        EXPECT_TRUE(standin::RunCommand("ZephraNodeProperties", {}));
        Click(dialog, kIdOk);
    });
    View.Scripts.push_back([](Dialog& bitmask) {
        EXPECT_EQ(bitmask.Layout().Caption, "Edit Bitmask");
        EXPECT_EQ(bitmask[BitmaskControl::Bits].Items, (std::vector<std::string> {"Player", "", "", "Vehicles"}));
        Click(bitmask, BitmaskControl::SetAll);
        Click(bitmask, kIdOk);
    });
    EXPECT_TRUE(standin::RunCommand("ZephraNodeProperties", {}));
    EXPECT_EQ(View.Shown, (std::vector<std::string> {"Zephra Geometry Properties", "Edit Bitmask"}));

    bool hidden = false;
    EXPECT_EQ(IntAttribute("Visible", hidden), 0);
    EXPECT_EQ(IntAttribute("CollisionFlags", hidden), 15);

    // Reopened, the dialog shows what was stored; Cancel writes nothing.
    View.Scripts.push_back([](Dialog& dialog) {
        EXPECT_FALSE(dialog.Checked(NodeControl::Visible));
        EXPECT_EQ(dialog.Text(NodeControl::CollisionFlags), "15");
        Type(dialog, NodeControl::CollisionFlags, "3");
        Click(dialog, kIdCancel);
    });
    EXPECT_TRUE(standin::RunCommand("ZephraNodeProperties", {}));
    EXPECT_EQ(IntAttribute("CollisionFlags", hidden), 15);
}

TEST_F(NodePropertiesCommand, ASelectedShapeOrTwoNodesAreRefusedAndWithoutAViewNothingIsWritten)
{
    standin::Select({standin::PathTo("boxAShape")});
    EXPECT_FALSE(standin::RunCommand("ZephraNodeProperties", {}));
    AddCube("boxB", 2, 0, 0, 1);
    standin::Select({standin::PathTo("boxA"), standin::PathTo("boxB")});
    EXPECT_FALSE(standin::RunCommand("ZephraNodeProperties", {}));

    Stop();
    Services.DialogView = nullptr;
    Start();
    standin::Select({standin::PathTo("boxA")});
    EXPECT_TRUE(standin::RunCommand("ZephraNodeProperties", {}));
    EXPECT_FALSE(MFnDependencyNode(m_box).hasAttribute("Visible"));
}

} // namespace
