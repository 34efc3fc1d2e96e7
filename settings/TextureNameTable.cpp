#include "settings/TextureNameTable.h"

std::optional<std::string> TextureNameTable::Find(std::string_view sourcePath) const
{
    const auto found = m_names.find(sourcePath);
    if (found == m_names.end())
        return std::nullopt;
    return found->second;
}

void TextureNameTable::Add(std::string_view sourcePath, std::string_view outputName)
{
    m_names.insert_or_assign(std::string(sourcePath), std::string(outputName));
}
