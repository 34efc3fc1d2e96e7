// Feeds arbitrary text to the settings block reader and checks that what it loads survives a
// save and a reload: the saved text is a fixed point and reloads into the identical record.

#include "settings/SettingsBlock.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

struct Settings {
    VExportOptions Options;
    VAnimationTable Animations;

    bool operator==(const Settings&) const = default;
};

Settings Load(std::string_view text)
{
    Settings settings;
    LoadSettingsFromString(text, settings.Options, settings.Animations);
    return settings;
}

std::string Save(const Settings& settings) { return SaveSettingsToString(settings.Options, settings.Animations); }

[[noreturn]] void Fail(const char* what, const std::string& saved)
{
    std::fprintf(stderr, "%s\n--- saved text ---\n%s\n", what, saved.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const Settings loaded = Load(text);
    const std::string saved = Save(loaded);
    const Settings reloaded = Load(saved);
    const std::string savedAgain = Save(reloaded);
    if (savedAgain != saved)
        Fail("saving the reloaded settings gives another text", saved);
    if (!(Load(savedAgain) == reloaded))
        Fail("the saved text does not reload into the same record", saved);
    return 0;
}
