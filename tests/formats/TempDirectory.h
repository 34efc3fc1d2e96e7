#pragma once
// A fresh folder per test, removed afterwards, named as a system path.

#include "base/Path.h"
#include "tests/UniqueTempFolder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class TempDirectory {
public:
    // The system path of a name inside the folder.
    std::string Path(const std::string& name) const { return JoinPath(m_folder.SystemPath(), name); }
    std::filesystem::path Native(const std::string& name) const { return m_folder.Native(name); }

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
    UniqueTempFolder m_folder{"kestrel_formats"};
};
