// What Maya sees of the plug-in: its translators and commands and how they answer.

#include "PluginFixture.h"
#include "TestScenes.h"

#include "base/FileSystem.h"
#include "plugin/ImportExportScene.h"
#include "plugin/TotalTimeLine.h"
#include "settings/ProgramRegistry.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

class Translators : public PluginFixture {};

std::vector<std::string> TranslatorNames()
{
    std::vector<std::string> names;
    for (const standin::TranslatorInfo& info : standin::RegisteredTranslators())
        names.push_back(info.name);
    return names;
}

TEST_F(Translators, LoadingRegistersTheTranslatorsAndCommandsAndUnloadingRemovesThem)
{
    EXPECT_THAT(TranslatorNames(),
                ElementsAre("Zephra_Scene_Prefab", "Zephra_Static_Mesh", "Zephra_Model_File", "Tessor_Project"));
    EXPECT_THAT(standin::RegisteredCommands(), ElementsAre("ZephraNodeProperties", "ZephraPrefab"));
    Stop();
    EXPECT_TRUE(standin::RegisteredTranslators().empty());
    EXPECT_TRUE(standin::RegisteredCommands().empty());
    Start();
}

TEST_F(Translators, LoadingRecordsTheInstallationFolderRegisteredOrTheModulesOwn)
{
    EXPECT_EQ(TheInstallationFolder(), TheModuleFolder());
    EXPECT_TRUE(FileExists(JoinPath(TheModuleFolder(), "plugin_tests")));

    ASSERT_TRUE(RegisterProgram(TheSettingsStore(), "Kestrel", "\"C:\\Zephra\\Kestrel\\\""));
    Stop();
    Start();
    EXPECT_EQ(TheInstallationFolder(), "C:\\Zephra\\Kestrel");
}

TEST_F(Translators, EachTranslatorClaimsItsExtensionInAnyCase)
{
    EXPECT_THAT(standin::TranslatorsFor("/data/hero.MODEL"), ElementsAre("Zephra_Model_File"));
    EXPECT_THAT(standin::TranslatorsFor("/data/ROCK.qmesh"), ElementsAre("Zephra_Static_Mesh"));
    EXPECT_THAT(standin::TranslatorsFor("/data/rock.QMesh"), ElementsAre("Zephra_Static_Mesh"));
    EXPECT_TRUE(standin::TranslatorsFor("/data/rock.qmesh.bak").empty());
    EXPECT_THAT(standin::TranslatorsFor("/data/Town.Project"), ElementsAre("Tessor_Project"));
}

TEST(ExportTargetPath, DoubledExtensionIsCutOnce)
{
    EXPECT_EQ(ExportTargetPath("data/scene.model.model"), "data\\scene.model");
    EXPECT_EQ(ExportTargetPath("data/scene.QMESH.qmesh"), "data\\scene.QMESH");
    EXPECT_EQ(ExportTargetPath("data/scene.qmesh"), "data\\scene.qmesh");
    EXPECT_EQ(ExportTargetPath("data/a.qmesh.model"), "data\\a.qmesh.model");
    EXPECT_EQ(ExportTargetPath("noextension"), "noextension");
}

TEST_F(Translators, ProjectTranslatorCreatesTheProjectAndSaysSoButRefusesAnExistingOne)
{
    EXPECT_TRUE(standin::ExportFile("Tessor_Project", MayaName("game/town"), MPxFileTranslator::kExportAccessMode));
    EXPECT_TRUE(Has("game/town.project"));
    EXPECT_TRUE(Has("game/Textures"));
    ASSERT_EQ(MessageBoxes.Requests.size(), 1u);
    EXPECT_EQ(MessageBoxes.Requests[0].Caption, "Finished");
    EXPECT_EQ(MessageBoxes.Requests[0].Text, "Tessor project '" + MayaName("game/town") + "' created");

    EXPECT_FALSE(
        standin::ExportFile("Tessor_Project", MayaName("game/town.project"), MPxFileTranslator::kExportAccessMode));
    ASSERT_EQ(MessageBoxes.Requests.size(), 2u);
    EXPECT_EQ(MessageBoxes.Requests[1].Text, "Tessor project '" + MayaName("game/town.project") + "' create failed");
}

TEST_F(Translators, PrefabCommandWithoutArgumentIsAnInvalidParameter)
{
    EXPECT_EQ(standin::RunCommand("ZephraPrefab", {}).statusCode(), MS::kInvalidParameter);
    EXPECT_EQ(standin::RunCommand("ZephraPrefab", {"-unknown"}).statusCode(), MS::kSuccess);
}

TEST(TotalTimeLine, CountsWholeMinutesAndTheSecondsLeft)
{
    EXPECT_EQ(TotalTimeLine(125400), "Total time taken : 2 minutes, 5 seconds\r\n");
    EXPECT_EQ(TotalTimeLine(59999), "Total time taken : 0 minutes, 59 seconds\r\n");
}

} // namespace
