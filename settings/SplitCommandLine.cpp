#include "settings/SplitCommandLine.h"

namespace {

bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}

} // namespace

std::vector<std::string> SplitArguments(std::string_view arguments)
{
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    bool quoted = false;
    size_t i = 0;
    while (i < arguments.size()) {
        const char c = arguments[i];
        if (!quoted && IsBlank(c)) {
            if (inWord)
                words.push_back(std::move(word));
            word.clear();
            inWord = false;
            ++i;
            continue;
        }
        inWord = true;
        if (c == '\\') {
            size_t backslashes = 0;
            while (i < arguments.size() && arguments[i] == '\\') {
                ++backslashes;
                ++i;
            }
            if (i < arguments.size() && arguments[i] == '"') {
                word.append(backslashes / 2, '\\');
                if (backslashes % 2 == 1) {
                    word += '"';
                    ++i;
                }
            } else {
                word.append(backslashes, '\\');
            }
            continue;
        }
        if (c == '"') {
            if (quoted && i + 1 < arguments.size() && arguments[i + 1] == '"') {
                word += '"';
                i += 2;
                continue;
            }
            quoted = !quoted;
            ++i;
            continue;
        }
        word += c;
        ++i;
    }
    if (inWord)
        words.push_back(std::move(word));
    return words;
}

std::vector<std::string> SplitCommandLine(std::string_view commandLine)
{
    size_t start = 0;
    while (start < commandLine.size() && IsBlank(commandLine[start]))
        ++start;
    if (start == commandLine.size())
        return {};

    std::string program;
    size_t next = start;
    if (commandLine[start] == '"') {
        const size_t close = commandLine.find('"', start + 1);
        const size_t end = close == std::string_view::npos ? commandLine.size() : close;
        program = commandLine.substr(start + 1, end - start - 1);
        next = end == commandLine.size() ? end : end + 1;
    } else {
        while (next < commandLine.size() && !IsBlank(commandLine[next]))
            ++next;
        program = commandLine.substr(start, next - start);
    }

    std::vector<std::string> words {std::move(program)};
    for (std::string& argument : SplitArguments(commandLine.substr(next)))
        words.push_back(std::move(argument));
    return words;
}
