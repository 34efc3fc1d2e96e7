#include "settings/ViewerArguments.h"

#include <gtest/gtest.h>

TEST(ViewerArguments, EachMacroIsReplacedByItsPath)
{
    EXPECT_EQ(ExpandViewerArguments("-file \"$targetfile\" -in $targetdir -project $projectdir", "C:\\a\\rock.qmesh",
                                    "C:\\a\\", "C:\\"),
              "-file \"C:\\a\\rock.qmesh\" -in C:\\a\\ -project C:\\");
}

TEST(ViewerArguments, OnlyTheFirstOccurrenceIsReplacedAndCaseIsIgnored)
{
    EXPECT_EQ(ExpandViewerArguments("$TARGETFILE $targetfile", "rock.qmesh", "", ""), "rock.qmesh $targetfile");
}

TEST(ViewerArguments, MacrosAreReplacedWhereverTheyStandInTheTemplate)
{
    EXPECT_EQ(ExpandViewerArguments("$projectdir|$TargetDir|$targetFile", "F", "D", "P"), "P|D|F");
}

TEST(ViewerArguments, TemplateWithoutMacrosIsUnchanged)
{
    EXPECT_EQ(ExpandViewerArguments("-fullscreen $target", "F", "D", "P"), "-fullscreen $target");
    EXPECT_EQ(ExpandViewerArguments("", "F", "D", "P"), "");
}

TEST(ViewerArguments, MacroNamesInsideAPathAreNotExpandedAgain)
{
    EXPECT_EQ(ExpandViewerArguments("$targetfile $targetdir", "C:\\$targetdir\\x.model", "C:\\d\\", ""),
              "C:\\$targetdir\\x.model C:\\d\\");
}

TEST(ViewerArguments, EmptyProjectDirectoryLeavesNothingInItsPlace)
{
    EXPECT_EQ(ExpandViewerArguments("-p \"$projectdir\"", "F", "D", ""), "-p \"\"");
}
