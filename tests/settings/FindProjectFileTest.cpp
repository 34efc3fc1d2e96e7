#include "settings/FindProjectFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ScratchFolder.h"

// The search starts in x\y\z\ (or x for the bare folder name) and climbs to the nearest folder holding a file
// ending in .project, in any case, taking the first in name order.
TEST(FindProjectFile, NearestProjectFileUpTheFoldersIsFound)
{
    struct Case {
        std::vector<const char*> Files;
        const char* Start;
        const char* Found;
    };
    const Case cases[] = {
        {{"x/y/z/town.project"}, "x\\y\\z\\", "x\\y\\z\\town.project"},
        {{"x/town.project"}, "x\\y\\z\\", "x\\town.project"},
        {{"x/outer.project", "x/y/inner.project"}, "x\\y\\z\\", "x\\y\\inner.project"},
        {{"x/Town.PROJECT"}, "x", "x\\Town.PROJECT"},
        {{"x/y/z/town.project.bak", "x/y/.project"}, "x\\y\\z\\", "x\\y\\.project"},
        {{"x/b.project", "x/A.project"}, "x\\", "x\\A.project"},
        {{}, "x\\y\\z\\", nullptr},
    };
    for (const Case& c : cases) {
        ScratchFolder folder;
        folder.MakeFolder("x/y/z/folder.project");
        for (const char* file : c.Files)
            folder.Write(file, "");
        const auto project = FindProjectFile(folder.SystemPath(c.Start));
        if (c.Found == nullptr) {
            EXPECT_FALSE(project);
            continue;
        }
        ASSERT_TRUE(project) << c.Found;
        EXPECT_EQ(project->File, folder.SystemPath(c.Found));
        const std::string found = c.Found;
        EXPECT_EQ(project->Directory, folder.SystemPath(found.substr(0, found.rfind('\\') + 1)));
    }
}

TEST(FindProjectFile, PathWithFewerThanTwoSeparatorsIsNotSearched)
{
    EXPECT_FALSE(FindProjectFile(""));
    EXPECT_FALSE(FindProjectFile("C:\\"));
    EXPECT_FALSE(FindProjectFile("relative"));
}
