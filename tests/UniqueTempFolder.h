#pragma once
// A folder of the test's own under the temp directory, removed with everything in it afterwards.
// mkdtemp picks a name no other process holds, so test runs from several checkouts at once never
// write into each other's folders (a fixed or test-named folder would).

#include "base/Path.h"

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

class UniqueTempFolder {
public:
    explicit UniqueTempFolder(const std::string& prefix = "kestrel")
    {
        std::string pattern = (std::filesystem::temp_directory_path() / (prefix + "_XXXXXX")).string();
        if (!mkdtemp(pattern.data()))
            throw std::runtime_error("cannot make a temp folder like " + pattern);
        m_native = pattern;
    }
    ~UniqueTempFolder()
    {
        // Tests make the folder read-only to provoke write failures; give it back before removing.
        std::error_code error;
        std::filesystem::permissions(m_native, std::filesystem::perms::owner_all, std::filesystem::perm_options::add,
                                     error);
        std::filesystem::remove_all(m_native, error);
    }
    UniqueTempFolder(const UniqueTempFolder&) = delete;
    UniqueTempFolder& operator=(const UniqueTempFolder&) = delete;

    const std::filesystem::path& Native() const { return m_native; }
    std::filesystem::path Native(const std::string& relative) const { return m_native / relative; }
    // The folder as a system path, without a closing backslash.
    std::string SystemPath() const { return FromNativePath(m_native.string()); }

private:
    std::filesystem::path m_native;
};
