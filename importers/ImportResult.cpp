#include "importers/ImportResult.h"

#include <string>

void ImportResult::Warn(const std::string& text, int line)
{
    for (ImportWarning& warning : Warnings) {
        if (warning.Text == text) {
            ++warning.Count;
            return;
        }
    }
    Warnings.push_back({text, 1, line});
}

std::string ImportWarning::Describe() const
{
    std::string text = Line > 0 ? "line " + std::to_string(Line) + ": " + Text : Text;
    if (Count > 1)
        text += " (" + std::to_string(Count) + " times" + (Line > 0 ? " in all" : "") + ")";
    return text;
}

int ImportResult::WarningCount() const
{
    int count = 0;
    for (const ImportWarning& warning : Warnings)
        count += warning.Count;
    return count;
}
