#pragma once
// The settings store of platforms without a registry: one per-user text file (IniSettingsText.h).
// Writes are kept in memory until Flush, which merges them into the file as it is then, so that
// values another Maya session changed meanwhile survive.

#include "settings/IniSettingsText.h"
#include "settings/VSettingsStore.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// "<config>\kestrel\settings.ini" where <config> is $XDG_CONFIG_HOME, or ~/.config when that is
// unset or relative; "" when neither is known.
std::string DefaultUserSettingsFilePath();

class IniSettingsStore final : public VSettingsStore {
public:
    // path is a system path; nothing is read before Load.
    explicit IniSettingsStore(std::string path);

    // Replaces what is held by the file's contents; a missing file is an empty store. Answers
    // false, with the reason in error, when the file cannot be read or holds unreadable lines
    // (the readable ones are kept).
    bool Load(std::string* error = nullptr);

    bool HasKey(std::string_view key) const override;
    std::optional<uint32_t> ReadNumber(std::string_view key, std::string_view name) const override;
    std::optional<std::string> ReadBinary(std::string_view key, std::string_view name) const override;
    std::optional<std::string> ReadString(std::string_view key, std::string_view name) const override;
    bool WriteNumber(std::string_view key, std::string_view name, uint32_t value) override;
    bool WriteBinary(std::string_view key, std::string_view name, std::string_view bytes) override;
    bool WriteString(std::string_view key, std::string_view name, std::string_view text) override;
    // Creates the file's folder when missing. On failure the writes stay pending and
    // LastError tells why.
    bool Flush() override;

    const std::string& LastError() const { return m_lastError; }

private:
    struct PendingWrite {
        std::string Key;
        std::string Name;
        StoredValue Value;
    };

    const StoredValue* Find(std::string_view key, std::string_view name) const;
    bool Write(std::string_view key, std::string_view name, StoredValue value);
    bool ReadFile(StoredKeys& keys, std::string& error) const;

    std::string m_path;
    StoredKeys m_keys;
    std::vector<PendingWrite> m_pending;
    std::string m_lastError;
};
