#pragma once
// The per-user store of application settings and of the programs the maker's installers
// registered: the registry on Windows, a settings file elsewhere. Keys are registry key paths
// ("HKEY_CURRENT_USER\Software\Orvalle\ZephraSDK\Kestrel"); the empty value name is the key's
// default value. Keys and value names compare ignoring case, as in the registry.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class VSettingsStore {
public:
    virtual ~VSettingsStore() = default;

    virtual bool HasKey(std::string_view key) const = 0;

    // Nothing when the value is missing or holds another type.
    virtual std::optional<uint32_t> ReadNumber(std::string_view key, std::string_view name) const = 0;
    virtual std::optional<std::string> ReadBinary(std::string_view key, std::string_view name) const = 0;
    virtual std::optional<std::string> ReadString(std::string_view key, std::string_view name) const = 0;

    // Creates the key when missing. Writes may be held back until Flush.
    virtual bool WriteNumber(std::string_view key, std::string_view name, uint32_t value) = 0;
    virtual bool WriteBinary(std::string_view key, std::string_view name, std::string_view bytes) = 0;
    virtual bool WriteString(std::string_view key, std::string_view name, std::string_view text) = 0;

    // Makes every write so far permanent.
    virtual bool Flush() = 0;
};
