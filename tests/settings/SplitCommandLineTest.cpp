#include "settings/SplitCommandLine.h"

#include <gtest/gtest.h>

#include <utility>

using Words = std::vector<std::string>;

TEST(SplitCommandLine, ArgumentsFollowTheWindowsQuotingRules)
{
    const std::pair<const char*, Words> cases[] = {
        {"-mesh  \"C:\\my files\\rock.qmesh\"\t-x", {"-mesh", "C:\\my files\\rock.qmesh", "-x"}},
        {"a\"b c\"d", {"ab cd"}},
        {"-p \"\" -q", {"-p", "", "-q"}},
        // Backslashes count only before a quote: 2n then a quote give n and the quote delimits, 2n+1 give n and a
        // literal quote.
        {"C:\\dir\\ a\\\\b", {"C:\\dir\\", "a\\\\b"}},
        {"\"C:\\dir\\\\\" x", {"C:\\dir\\", "x"}},
        {"a\\\"b a\\\\\\\"b", {"a\"b", "a\\\"b"}},
        {"\"say \"\"hi\"\"\"", {"say \"hi\""}},
        {"\"open to end", {"open to end"}},
        {" \t ", {}},
    };
    for (const auto& [line, words] : cases)
        EXPECT_EQ(SplitArguments(line), words) << line;
}

TEST(SplitCommandLine, ProgramIsTakenWholeBeforeItsArguments)
{
    const std::pair<const char*, Words> cases[] = {
        {"\"C:\\Program Files\\Zephra\\\" -hide", {"C:\\Program Files\\Zephra\\", "-hide"}},
        {"/usr/bin/modlook \"a b\"", {"/usr/bin/modlook", "a b"}},
        {"\"C:\\a b", {"C:\\a b"}},
        {"   ", {}},
    };
    for (const auto& [line, words] : cases)
        EXPECT_EQ(SplitCommandLine(line), words) << line;
}
