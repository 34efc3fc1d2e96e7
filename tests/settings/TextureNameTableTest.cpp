#include "settings/TextureNameTable.h"

#include <gtest/gtest.h>

TEST(TextureNameTable, SourcesAreFoundAndReplacedIgnoringCaseUntilCleared)
{
    TextureNameTable table;
    table.Add("C:\\Art\\Wood.tga", "old");
    table.Add("c:\\art\\wood.tga", "Textures\\Wood.tga");
    table.Add("b", "2");
    EXPECT_EQ(table.Size(), 2u);
    EXPECT_EQ(table.Find("c:\\art\\WOOD.TGA"), "Textures\\Wood.tga");
    EXPECT_EQ(table.Find("C:\\Art\\Stone.tga"), std::nullopt);
    table.Clear();
    EXPECT_EQ(table.Size(), 0u);
    EXPECT_EQ(table.Find("b"), std::nullopt);
}
