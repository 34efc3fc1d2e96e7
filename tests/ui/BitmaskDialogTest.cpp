#include "ui/BitmaskDialog.h"

#include "ui/CollisionBitNames.h"
#include "ui/NodePropertiesDialog.h"

#include "DialogScript.h"
#include "TempSettings.h"

#include <gmock/gmock.h>

#include <fstream>

namespace bc = BitmaskControl;
namespace nc = NodeControl;

namespace {

std::vector<std::string> SixteenNames()
{
    std::vector<std::string> names;
    for (int bit = 0; bit < 16; ++bit)
        names.push_back("Layer " + std::to_string(bit));
    return names;
}

std::vector<bool> Checks(const Dialog& dialog)
{
    return dialog[bc::Bits].ItemChecks;
}

} // namespace

TEST(CollisionBitNames, LinesNameTheirBitsUpToTheHighestNamedAndAMissingFileSixteenUnknownBits)
{
    EXPECT_THAT(ParseBitNames("0: Player\r\n// 1: comment\r\n3 :Vehicles\t\r\n40: Ignored\r\nno colon\r\n"),
                ::testing::ElementsAre("Player", "", "", "Vehicles"));
    EXPECT_THAT(ParseBitNames("2: Old\n2: New\n-1: Negative\n"), ::testing::ElementsAre("", "", "New"));

    TempSettings folder;
    const std::vector<std::string> names = LoadBitNames(folder.SystemPath("CollisionBitsWorld.txt"), 16);
    ASSERT_EQ(names.size(), 16u);
    EXPECT_EQ(names.front(), "Unknown (bit 0)");
    EXPECT_EQ(names.back(), "Unknown (bit 15)");
    std::ofstream(folder.Native("CollisionBitsWorld.txt")) << "1: Water\n";
    EXPECT_THAT(LoadBitNames(folder.SystemPath("CollisionBitsWorld.txt"), 16), ::testing::ElementsAre("", "Water"));
}

TEST(BitmaskDialog, SixteenNamedBitsRoundTripThroughTheCheckBoxes)
{
    uint32_t value = 0xA5A5;
    BitmaskDialog dialog(value, SixteenNames());
    dialog.Open();
    EXPECT_EQ(dialog[bc::Bits].Items.at(15), "Layer 15");
    const std::vector<bool> expected {true, false, true, false, false, true, false, true,
                                      true, false, true, false, false, true, false, true};
    EXPECT_EQ(Checks(dialog), expected);

    dialog.Command(bc::Invert);
    dialog[bc::Bits].ItemChecks[0] = true;
    dialog.Command(bc::Bits);
    dialog.Command(kIdOk);
    EXPECT_EQ(dialog.Result(), 1);
    EXPECT_EQ(value, 0x5A5Bu);
}

TEST(BitmaskDialog, OnlyTheBitsShownSurviveOk)
{
    uint32_t value = 0;
    BitmaskDialog four(value, {"a", "b", "c", "d"});
    four.Open();
    four.Command(bc::SetAll);
    four.Command(kIdOk);
    EXPECT_EQ(value, 15u);

    value = 0x10001;
    BitmaskDialog sixteen(value, SixteenNames());
    sixteen.Open();
    sixteen.Command(kIdOk);
    EXPECT_EQ(value, 1u);

    BitmaskDialog cancelled(value, SixteenNames());
    cancelled.Open();
    cancelled.Command(bc::ClearAll);
    EXPECT_EQ(Checks(cancelled), std::vector<bool>(16, false));
    cancelled.Command(kIdCancel);
    EXPECT_EQ(cancelled.Result(), 0);
    EXPECT_EQ(value, 1u);
}

class NodePropertiesTest : public ::testing::Test {
protected:
    NodePropertiesDialog& Open()
    {
        m_dialog = std::make_unique<NodePropertiesDialog>(Properties, m_folder.SystemPath("CollisionBitsWorld.txt"),
                                                          Boxes, &View);
        m_dialog->Open();
        return *m_dialog;
    }

    NodeProperties Properties {"pCube1"};
    ScriptedMessageBox Boxes;
    ScriptedView View;

private:
    TempSettings m_folder;
    std::unique_ptr<NodePropertiesDialog> m_dialog;
};

TEST_F(NodePropertiesTest, BitmaskEditorSetsTheLowSixteenBitsOfTheFieldAndANegativeFieldIsRefused)
{
    NodePropertiesDialog& dialog = Open();
    EXPECT_EQ(dialog.Layout().Caption, "Zephra Geometry Properties");
    EXPECT_EQ(dialog.Text(nc::NodeName), "pCube1");
    EXPECT_TRUE(dialog.Checked(nc::Visible));
    EXPECT_EQ(dialog.Text(nc::CollisionFlags), "65535");

    Type(dialog, nc::CollisionFlags, "5");
    View.Scripts.push_back([](Dialog& bitmask) {
        EXPECT_EQ(bitmask.Layout().Caption, "Edit Bitmask");
        EXPECT_EQ(bitmask[bc::Bits].Items.at(3), "Unknown (bit 3)");
        bitmask.Command(bc::Invert);
        bitmask.Command(kIdOk);
    });
    dialog.Command(nc::EditBits);
    EXPECT_EQ(dialog.Text(nc::CollisionFlags), "65530");

    Type(dialog, nc::CollisionFlags, "-3");
    dialog.Command(kIdOk);
    EXPECT_FALSE(dialog.Ended());
    EXPECT_EQ(dialog.Focus(), nc::CollisionFlags);
    ASSERT_EQ(Boxes.Requests.size(), 1u);
    EXPECT_EQ(Boxes.Requests[0].Text, "'-3' is not a number.\r\nPlease enter a number.");

    Type(dialog, nc::CollisionFlags, "65530");
    Click(dialog, nc::Visible);
    dialog.Command(kIdOk);
    EXPECT_EQ(dialog.Result(), 1);
    EXPECT_FALSE(Properties.Visible);
    EXPECT_EQ(Properties.CollisionFlags, 65530u);
}
