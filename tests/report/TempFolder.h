#pragma once
// A fresh folder per test, removed afterwards, handed out as a system path with its closing
// backslash, the way the exporter names its target directory.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "base/Path.h"

class TempFolder {
public:
    TempFolder()
    {
        std::random_device random;
        m_native = std::filesystem::temp_directory_path() / ("kestrel_report_" + std::to_string(random()));
        std::filesystem::create_directories(m_native);
    }
    ~TempFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(m_native, error);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string SystemPath() const { return FromNativePath(m_native.string()) + "\\"; }
    std::filesystem::path Native(const std::string& name) const { return m_native / name; }

    bool Has(const std::string& name) const { return std::filesystem::exists(Native(name)); }
    std::string Read(const std::string& name) const
    {
        std::ifstream in(Native(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

private:
    std::filesystem::path m_native;
};
