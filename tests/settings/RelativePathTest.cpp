#include "settings/RelativePath.h"

#include <gtest/gtest.h>

#include <string>

TEST(RelativePath, FolderIsDroppedOrClimbedOutOfIgnoringCaseAndSlashKind)
{
    const std::string cases[][3] = {
        {"C:\\game\\Textures\\wood.dds", "C:\\game\\", "Textures\\wood.dds"},
        {"C:\\game\\Textures\\wood.dds", "C:\\game", "Textures\\wood.dds"},
        {"C:\\Game\\textures\\wood.dds", "c:\\GAME\\", "textures\\wood.dds"},
        {"C:\\game\\Textures\\a.dds", "C:\\game\\levels\\town\\", "..\\..\\Textures\\a.dds"},
        {"/work/game/Textures/a.dds", "\\work\\game\\", "Textures\\a.dds"},
        // Nothing shared keeps the path.
        {"D:\\art\\a.dds", "C:\\game\\", "D:\\art\\a.dds"},
        {"art\\a.dds", "C:\\game\\", "art\\a.dds"},
        {"C:\\art\\a.dds", "", "C:\\art\\a.dds"},
    };
    for (const auto& [path, folder, relative] : cases)
        EXPECT_EQ(RelativePath(path, folder), relative) << path << " in " << folder;
}
