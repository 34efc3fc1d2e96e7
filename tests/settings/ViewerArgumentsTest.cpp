#include "settings/ViewerArguments.h"

#include <gtest/gtest.h>

#include <string>

TEST(ViewerArguments, EachMacroIsReplacedOnceByItsPathIgnoringCase)
{
    struct Case {
        const char* Template;
        const char* File;
        const char* Dir;
        const char* Project;
        const char* Expanded;
    };
    const Case cases[] = {
        {"-file \"$targetfile\" -in $targetdir -project $projectdir", "C:\\a\\rock.qmesh", "C:\\a\\", "C:\\",
         "-file \"C:\\a\\rock.qmesh\" -in C:\\a\\ -project C:\\"},
        {"$TARGETFILE $targetfile", "rock.qmesh", "", "", "rock.qmesh $targetfile"},
        {"$projectdir|$TargetDir|$targetFile", "F", "D", "P", "P|D|F"},
        {"-fullscreen $target", "F", "D", "P", "-fullscreen $target"},
        {"", "F", "D", "P", ""},
        // A macro name inside a path is not expanded again.
        {"$targetfile $targetdir", "C:\\$targetdir\\x.model", "C:\\d\\", "", "C:\\$targetdir\\x.model C:\\d\\"},
        {"-p \"$projectdir\"", "F", "D", "", "-p \"\""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ExpandViewerArguments(c.Template, c.File, c.Dir, c.Project), c.Expanded) << c.Template;
}
