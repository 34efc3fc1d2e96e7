#include "settings/SplitCommandLine.h"

#include <gtest/gtest.h>

using Words = std::vector<std::string>;

TEST(SplitCommandLine, BlanksSeparateAndQuotesGroup)
{
    EXPECT_EQ(SplitArguments("-mesh  \"C:\\my files\\rock.qmesh\"\t-x"), (Words {"-mesh", "C:\\my files\\rock.qmesh", "-x"}));
}

TEST(SplitCommandLine, QuotesInsideAWordJoinItsParts)
{
    EXPECT_EQ(SplitArguments("a\"b c\"d"), (Words {"ab cd"}));
}

TEST(SplitCommandLine, EmptyQuotesAreAnEmptyArgument)
{
    EXPECT_EQ(SplitArguments("-p \"\" -q"), (Words {"-p", "", "-q"}));
}

TEST(SplitCommandLine, BackslashesCountOnlyBeforeAQuote)
{
    EXPECT_EQ(SplitArguments("C:\\dir\\ a\\\\b"), (Words {"C:\\dir\\", "a\\\\b"}));
    // 2n backslashes then a quote: n backslashes, the quote delimits.
    EXPECT_EQ(SplitArguments("\"C:\\dir\\\\\" x"), (Words {"C:\\dir\\", "x"}));
    // 2n+1 backslashes then a quote: n backslashes and a literal quote.
    EXPECT_EQ(SplitArguments("a\\\"b a\\\\\\\"b"), (Words {"a\"b", "a\\\"b"}));
}

TEST(SplitCommandLine, DoubledQuoteInsideQuotesIsALiteralQuote)
{
    EXPECT_EQ(SplitArguments("\"say \"\"hi\"\"\""), (Words {"say \"hi\""}));
}

TEST(SplitCommandLine, UnclosedQuoteRunsToTheEnd)
{
    EXPECT_EQ(SplitArguments("\"open to end"), (Words {"open to end"}));
}

TEST(SplitCommandLine, BlankLineHasNoWords)
{
    EXPECT_TRUE(SplitArguments(" \t ").empty());
    EXPECT_TRUE(SplitCommandLine("   ").empty());
}

TEST(SplitCommandLine, QuotedProgramKeepsItsBackslashes)
{
    EXPECT_EQ(SplitCommandLine("\"C:\\Program Files\\Zephra\\\" -hide"), (Words {"C:\\Program Files\\Zephra\\", "-hide"}));
}

TEST(SplitCommandLine, UnquotedProgramEndsAtTheFirstBlank)
{
    EXPECT_EQ(SplitCommandLine("/usr/bin/modlook \"a b\""), (Words {"/usr/bin/modlook", "a b"}));
}

TEST(SplitCommandLine, ProgramWithoutClosingQuoteTakesTheRestOfTheLine)
{
    EXPECT_EQ(SplitCommandLine("\"C:\\a b"), (Words {"C:\\a b"}));
}
