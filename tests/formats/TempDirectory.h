#pragma once
// A fresh folder per test, removed afterwards, named as a system path.

#include "base/Path.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

class TempDirectory {
public:
    TempDirectory()
    {
        std::random_device random;
        m_native = std::filesystem::temp_directory_path() / ("kestrel_formats_" + std::to_string(random()));
        std::filesystem::create_directories(m_native);
    }
    ~TempDirectory()
    {
        std::error_code error;
        std::filesystem::permissions(m_native, std::filesystem::perms::owner_all, error);
        std::filesystem::remove_all(m_native, error);
    }
    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;

    // The system path of a name inside the folder.
    std::string Path(const std::string& name) const { return JoinPath(FromNativePath(m_native.string()), name); }
    std::filesystem::path Native(const std::string& name) const { return m_native / name; }

    void Write(const std::string& name, const std::string& text) const
    {
        std::filesystem::create_directories(Native(name).parent_path());
        std::ofstream(Native(name), std::ios::binary) << text;
    }
    std::string Read(const std::string& name) const
    {
        std::ifstream in(Native(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    bool Has(const std::string& name) const { return std::filesystem::exists(Native(name)); }

private:
    std::filesystem::path m_native;
};
