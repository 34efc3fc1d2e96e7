#pragma once
// A settings file of its own per test, in a uniquely named temporary folder removed afterwards.

#include "base/Path.h"
#include "settings/IniSettingsStore.h"

#include <filesystem>
#include <random>
#include <string>

class TempSettings {
    std::filesystem::path m_folder = MakeFolder();

public:
    TempSettings() = default;
    ~TempSettings()
    {
        std::error_code error;
        std::filesystem::remove_all(m_folder, error);
    }
    TempSettings(const TempSettings&) = delete;
    TempSettings& operator=(const TempSettings&) = delete;

    std::filesystem::path Native(const std::string& name) const { return m_folder / name; }
    std::string SystemPath(const std::string& name) const { return FromNativePath(Native(name).string()); }

    IniSettingsStore Store {SystemPath("settings.ini")};

private:
    static std::filesystem::path MakeFolder()
    {
        std::random_device random;
        std::filesystem::path folder = std::filesystem::temp_directory_path() / ("kestrel_ui_" + std::to_string(random()));
        std::filesystem::create_directories(folder);
        return folder;
    }
};
