#pragma once
// A fresh folder per test, removed afterwards. Files are made and inspected through native paths;
// the code under test is handed system paths (backslashes, closing backslash on folders).

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "base/Path.h"

class ScratchFolder {
public:
    ScratchFolder()
    {
        std::random_device random;
        m_native = std::filesystem::temp_directory_path() / ("kestrel_project_" + std::to_string(random()));
        std::filesystem::create_directories(m_native);
    }
    ~ScratchFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(m_native, error);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    // The folder, or a file or folder inside it given with forward slashes, as a system path.
    std::string SystemPath(const std::string& relative = {}) const
    {
        std::string path = FromNativePath(m_native.string()) + "\\" + FromNativePath(relative);
        return path;
    }
    std::filesystem::path Native(const std::string& relative) const { return m_native / relative; }

    void Write(const std::string& relative, const std::string& contents) const
    {
        std::filesystem::create_directories(Native(relative).parent_path());
        std::ofstream out(Native(relative), std::ios::binary);
        out << contents;
    }
    void MakeFolder(const std::string& relative) const { std::filesystem::create_directories(Native(relative)); }
    bool Has(const std::string& relative) const { return std::filesystem::exists(Native(relative)); }
    std::string Read(const std::string& relative) const
    {
        std::ifstream in(Native(relative), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

private:
    std::filesystem::path m_native;
};
