#include "settings/ViewerArguments.h"

#include "base/TextUtil.h"

#include <vector>

namespace {

struct Span {
    size_t Start = 0;
    size_t Length = 0;
    std::string_view Replacement;
};

// Where the first occurrence of macro lies outside every span already taken; npos when none.
size_t FindMacro(std::string_view text, std::string_view macro, const std::vector<Span>& taken)
{
    for (size_t start = 0; start + macro.size() <= text.size(); ++start) {
        if (!EqualsNoCase(text.substr(start, macro.size()), macro))
            continue;
        bool overlaps = false;
        for (const Span& span : taken)
            overlaps = overlaps || (start < span.Start + span.Length && span.Start < start + macro.size());
        if (!overlaps)
            return start;
    }
    return std::string_view::npos;
}

} // namespace

std::string ExpandViewerArguments(std::string_view argumentTemplate, std::string_view targetFile,
                                  std::string_view targetDirectory, std::string_view projectDirectory)
{
    const std::pair<std::string_view, std::string_view> macros[] = {
        {"$targetfile", targetFile},
        {"$targetdir", targetDirectory},
        {"$projectdir", projectDirectory},
    };
    std::vector<Span> taken;
    for (const auto& [macro, value] : macros) {
        const size_t start = FindMacro(argumentTemplate, macro, taken);
        if (start != std::string_view::npos)
            taken.push_back({start, macro.size(), value});
    }

    std::string expanded;
    size_t next = 0;
    for (;;) {
        const Span* first = nullptr;
        for (const Span& span : taken)
            if (span.Start >= next && (!first || span.Start < first->Start))
                first = &span;
        if (!first)
            break;
        expanded += argumentTemplate.substr(next, first->Start - next);
        expanded += first->Replacement;
        next = first->Start + first->Length;
    }
    expanded += argumentTemplate.substr(next);
    return expanded;
}
