#pragma once
// A fresh folder per test, removed afterwards, handed out as a system path with its closing
// backslash, the way the exporter names its target directory.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "base/Path.h"
#include "tests/UniqueTempFolder.h"

class TempFolder {
public:
    std::string SystemPath() const { return m_folder.SystemPath() + "\\"; }
    std::filesystem::path Native(const std::string& name) const { return m_folder.Native(name); }

    bool Has(const std::string& name) const { return std::filesystem::exists(Native(name)); }
    std::string Read(const std::string& name) const
    {
        std::ifstream in(Native(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

private:
    UniqueTempFolder m_folder{"kestrel_report"};
};
