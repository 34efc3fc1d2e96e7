// "kestrel options" run in-process with a scripted view standing in for the desktop.

#include "kestrel/OptionsCommand.h"

#include "ui/ExportOptionsDialog.h"

#include "../ui/DialogScript.h"
#include "CapturedRun.h"
#include "tests/UniqueTempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

using ::testing::HasSubstr;

namespace {

class OptionsCommand : public ::testing::Test {
protected:
    // The command keeps the user's application settings; tests keep theirs apart.
    OptionsCommand() { setenv("XDG_CONFIG_HOME", m_folder.Native("config").c_str(), 1); }

    int Run(const std::string& target, const DesktopDialogs& desktop)
    {
        CapturedRun run;
        const int code = run.Run([&](std::FILE* out, std::FILE* err) {
            return RunOptions(m_folder.Native(target).string(), desktop, out, err);
        });
        Out = run.Out;
        Err = run.Err;
        return code;
    }
    std::string Read(const std::string& relative) const
    {
        std::ifstream in(m_folder.Native(relative), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

    ScriptedView View;
    ScriptedMessageBox Boxes;
    std::string Out;
    std::string Err;

private:
    UniqueTempFolder m_folder {"kestrel_options"};
};

TEST_F(OptionsCommand, WithoutADisplaySaysSoAndPointsToTheHeadlessWay)
{
    EXPECT_EQ(Run("town.qmesh", {nullptr, nullptr, "neither DISPLAY nor WAYLAND_DISPLAY is set"}), 1);
    EXPECT_EQ(Err, "kestrel options: the options dialog needs a display: neither DISPLAY nor WAYLAND_DISPLAY is "
                   "set\nChange options without one with: kestrel export SCENE -o TARGET --set Key=Value\n");
}

TEST_F(OptionsCommand, SaveStoresTheEditedOptionsAndTheNextRunShowsThem)
{
    View.Scripts.push_back([](Dialog& dialog) {
        EXPECT_EQ(dialog.Layout().Caption, "Mesh Export Settings");
        Type(dialog, OptionsControl::MeshFactor, "2.5");
        Click(dialog, OptionsControl::Save);
    });
    ASSERT_EQ(Run("level/town.qmesh", {&View, &Boxes, {}}), 0) << Err;
    EXPECT_THAT(Out, HasSubstr("Stored the options of"));
    EXPECT_THAT(Read("level/town.qmesh_data/_config.Xportel"), HasSubstr("MeshFactor : 2.5"));

    View.Scripts.push_back([](Dialog& dialog) {
        EXPECT_EQ(dialog.Text(OptionsControl::MeshFactor), "2.500");
        Click(dialog, OptionsControl::Cancel);
    });
    EXPECT_EQ(Run("level/town.qmesh", {&View, &Boxes, {}}), 0);
    EXPECT_THAT(Out, HasSubstr("left as they were"));
}

TEST_F(OptionsCommand, ATargetOfNoKnownFormatIsRefused)
{
    EXPECT_EQ(Run("town.obj", {&View, &Boxes, {}}), 2);
    EXPECT_THAT(Err, HasSubstr("names no asset the exporter writes"));
    EXPECT_TRUE(View.Shown.empty());
}

} // namespace
