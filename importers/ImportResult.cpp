#include "importers/ImportResult.h"

void ImportResult::Warn(const std::string& text)
{
    for (ImportWarning& warning : Warnings) {
        if (warning.Text == text) {
            ++warning.Count;
            return;
        }
    }
    Warnings.push_back({text, 1});
}

int ImportResult::WarningCount() const
{
    int count = 0;
    for (const ImportWarning& warning : Warnings)
        count += warning.Count;
    return count;
}
