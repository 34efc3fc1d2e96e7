#pragma once
// The textures an export has already processed: each source texture is copied or located once,
// and every material that uses it gets the same output name.

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "settings/NoCaseLess.h"

class TextureNameTable {
public:
    // Source paths compare ignoring case.
    std::optional<std::string> Find(std::string_view sourcePath) const;
    // Replaces the name of a source already held.
    void Add(std::string_view sourcePath, std::string_view outputName);
    void Clear() { m_names.clear(); }
    size_t Size() const { return m_names.size(); }

private:
    std::map<std::string, std::string, NoCaseLess> m_names;
};
