#pragma once
// A fresh folder per test, removed afterwards. Files are made and inspected through native paths;
// the code under test is handed system paths (backslashes, closing backslash on folders).

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "base/Path.h"
#include "tests/UniqueTempFolder.h"

class ScratchFolder {
public:
    // The folder, or a file or folder inside it given with forward slashes, as a system path.
    std::string SystemPath(const std::string& relative = {}) const
    {
        return m_folder.SystemPath() + "\\" + FromNativePath(relative);
    }
    std::filesystem::path Native(const std::string& relative) const { return m_folder.Native(relative); }

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
    UniqueTempFolder m_folder{"kestrel_project"};
};
