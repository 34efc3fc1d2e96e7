#include "TempDirectory.h"
#include "TestWorlds.h"

#include "formats/SaveSideFiles.h"
#include "formats/SaveWorld.h"
#include "formats/chunk/LastError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>
#include <string>

namespace {

TEST(SaveSideFilesTest, NoSideFileFlagWritesNothingAndMakesNoFolder)
{
    TempDirectory folder;
    VMWorld world;
    AddMaterial(world, "brick");
    VSaveParams params;
    params.Flags = SaveFlagPosedModel;

    EXPECT_TRUE(SaveSideFiles(world, folder.Path("level.qmesh"), params));
    EXPECT_FALSE(folder.Has("level.qmesh_data"));
}

TEST(SaveSideFilesTest, ResourceFlagAloneWritesOnlyResources)
{
    TempDirectory folder;
    VMWorld world;
    AddMaterial(world, "brick").DiffuseTexture = "brick.dds";
    VSaveParams params;
    params.Flags = SaveFlagResources;

    ASSERT_TRUE(SaveSideFiles(world, folder.Path("level.qmesh"), params)) << LastError().Text;
    EXPECT_TRUE(folder.Has("level.qmesh_data/resources.xml"));
    EXPECT_FALSE(folder.Has("level.qmesh_data/materials.xml"));
    EXPECT_NE(folder.Read("level.qmesh_data/resources.xml").find("Filename=\"brick.dds\""), std::string::npos);
}

TEST(SaveSideFilesTest, VisibilityFlagCallsTheVisibilityWriterWithTheFolder)
{
    TempDirectory folder;
    VMWorld world;
    std::string seenFolder;
    VSaveParams params;
    params.Flags = SaveFlagVisibility | SaveFlagResources;
    params.SaveVisibility = [&](const VMWorld&, const std::string& settingsFolder) {
        seenFolder = settingsFolder;
        return true;
    };

    EXPECT_TRUE(SaveSideFiles(world, folder.Path("level.qmesh"), params));
    EXPECT_EQ(seenFolder, folder.Path("level.qmesh_data"));
}

TEST(SaveSideFilesTest, UnmakeableSettingsFolderFailsWithItsName)
{
    TempDirectory folder;
    folder.Write("blocked", "a file where a folder should go");
    VMWorld world;
    VSaveParams params;
    params.Flags = SaveFlagMaterialGroups;
    const std::string target = folder.Path("blocked\\level.qmesh");

    EXPECT_FALSE(SaveSideFiles(world, target, params));
    EXPECT_EQ(LastError().Text,
              "Failed to create settings directory : " + folder.Native("blocked/level.qmesh_data").string() + ".\r\n");
}

TEST(SaveSideFilesTest, SaveWorldWritesTheMeshAndItsSideFilesOnDisk)
{
    TempDirectory folder;
    VMWorld world;
    AddGrid(world, 1, AddMaterial(world, "brick"));
    VSaveParams params;
    params.Flags = SaveFlagMaterialGroups | SaveFlagResources;

    ASSERT_TRUE(SaveWorld(world, folder.Path("level.qmesh"), params)) << LastError().Text;
    EXPECT_TRUE(folder.Has("level.qmesh"));
    EXPECT_TRUE(folder.Has("level.qmesh_data/materials.xml"));
    EXPECT_TRUE(folder.Has("level.qmesh_data/resources.xml"));
}

TEST(SaveSideFilesTest, FailedSaveLeavesThePreviousFileIntact)
{
    TempDirectory folder;
    folder.Write("level.qmesh", "previous");
    VMWorld world;
    AddGrid(world, 1, AddMaterial(world, "brick"));
    VMVertex stray;
    world.Polygons[0]->Corners[0] = &stray;

    EXPECT_FALSE(SaveWorld(world, folder.Path("level.qmesh"), VSaveParams {}));
    EXPECT_EQ(folder.Read("level.qmesh"), "previous");
}

TEST(SaveSideFilesTest, TargetThatIsAFolderFailsWithoutCrashing)
{
    TempDirectory folder;
    std::filesystem::create_directories(folder.Native("level.qmesh"));
    VMWorld world;
    AddGrid(world, 1, AddMaterial(world, "brick"));

    EXPECT_FALSE(SaveWorld(world, folder.Path("level.qmesh"), VSaveParams {}));
    EXPECT_EQ(LastError().Text, "Failed to create file '" + folder.Native("level.qmesh").string() + "'");
}

TEST(SaveSideFilesTest, ReadOnlyTargetFolderFailsWithoutCrashing)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "permissions do not bind the superuser";
    TempDirectory folder;
    std::filesystem::create_directories(folder.Native("locked"));
    std::filesystem::permissions(folder.Native("locked"), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    VMWorld world;
    AddGrid(world, 1, AddMaterial(world, "brick"));
    const std::string target = folder.Path("locked\\level.qmesh");

    EXPECT_FALSE(SaveWorld(world, target, VSaveParams {}));
    EXPECT_EQ(LastError().Text, "Failed to create file '" + target + "'");
}

} // namespace
