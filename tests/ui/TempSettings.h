#pragma once
// A settings file of its own per test, in a folder of the test's own removed afterwards.

#include "settings/IniSettingsStore.h"
#include "tests/UniqueTempFolder.h"

#include <filesystem>
#include <string>

class TempSettings {
    UniqueTempFolder m_folder {"kestrel_ui"};

public:
    std::filesystem::path Native(const std::string& name) const { return m_folder.Native(name); }
    std::string SystemPath(const std::string& name) const { return FromNativePath(Native(name).string()); }

    IniSettingsStore Store {SystemPath("settings.ini")};
};
