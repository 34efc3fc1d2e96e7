#include "settings/TextureNameTable.h"

#include <gtest/gtest.h>

TEST(TextureNameTable, SourceIsFoundIgnoringCase)
{
    TextureNameTable table;
    table.Add("C:\\Art\\Wood.tga", "Textures\\Wood.tga");
    EXPECT_EQ(table.Find("c:\\art\\WOOD.TGA"), "Textures\\Wood.tga");
    EXPECT_EQ(table.Find("C:\\Art\\Stone.tga"), std::nullopt);
}

TEST(TextureNameTable, AddingAKnownSourceReplacesItsName)
{
    TextureNameTable table;
    table.Add("C:\\Art\\Wood.tga", "old");
    table.Add("c:\\art\\wood.tga", "new");
    EXPECT_EQ(table.Size(), 1u);
    EXPECT_EQ(table.Find("C:\\Art\\Wood.tga"), "new");
}

TEST(TextureNameTable, ClearForgetsEverySource)
{
    TextureNameTable table;
    table.Add("a", "1");
    table.Add("b", "2");
    table.Clear();
    EXPECT_EQ(table.Size(), 0u);
    EXPECT_EQ(table.Find("a"), std::nullopt);
}
