#include "settings/IniSettingsStore.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace {

// Far beyond any real settings file; a bigger one is not ours and is not read into memory.
constexpr uintmax_t kMaxSettingsFileSize = 1u << 20;

std::string EnvironmentValue(const char* name)
{
    const char* value = std::getenv(name);
    return value ? std::string(value) : std::string();
}

bool IsValidKeyName(std::string_view key)
{
    return !key.empty() && key.find_first_of("\r\n") == std::string_view::npos;
}

} // namespace

std::string DefaultUserSettingsFilePath()
{
    std::string configHome = EnvironmentValue("XDG_CONFIG_HOME");
    if (configHome.empty() || configHome.front() != '/') {
        const std::string home = EnvironmentValue("HOME");
        if (home.empty())
            return {};
        configHome = home + "/.config";
    }
    return JoinPath(FromNativePath(configHome), "kestrel\\settings.ini");
}

IniSettingsStore::IniSettingsStore(std::string path)
    : m_path(std::move(path))
{
}

bool IniSettingsStore::ReadFile(StoredKeys& keys, std::string& error) const
{
    if (!FileExists(m_path))
        return true;
    std::error_code sizeError;
    const uintmax_t size = std::filesystem::file_size(ToNativePath(m_path), sizeError);
    if (sizeError || size > kMaxSettingsFileSize) {
        error = Format("%s: not a settings file (%s)", m_path.c_str(),
                       sizeError ? sizeError.message().c_str() : "too large");
        return false;
    }
    std::string text;
    if (!ReadWholeFile(m_path, text, &error))
        return false;
    if (ParseIniSettings(text, keys, error))
        return true;
    error = m_path + ", " + error;
    return false;
}

bool IniSettingsStore::Load(std::string* error)
{
    StoredKeys keys;
    std::string readError;
    const bool read = ReadFile(keys, readError);
    m_keys = std::move(keys);
    for (const PendingWrite& write : m_pending)
        m_keys[write.Key][write.Name] = write.Value;
    m_lastError = readError;
    if (error)
        *error = readError;
    return read;
}

const StoredValue* IniSettingsStore::Find(std::string_view key, std::string_view name) const
{
    const auto keyIt = m_keys.find(key);
    if (keyIt == m_keys.end())
        return nullptr;
    const auto valueIt = keyIt->second.find(name);
    return valueIt == keyIt->second.end() ? nullptr : &valueIt->second;
}

bool IniSettingsStore::HasKey(std::string_view key) const
{
    return m_keys.find(key) != m_keys.end();
}

std::optional<uint32_t> IniSettingsStore::ReadNumber(std::string_view key, std::string_view name) const
{
    const StoredValue* value = Find(key, name);
    if (!value || value->Type != StoredValueType::Number)
        return std::nullopt;
    return value->Number;
}

std::optional<std::string> IniSettingsStore::ReadBinary(std::string_view key, std::string_view name) const
{
    const StoredValue* value = Find(key, name);
    if (!value || value->Type != StoredValueType::Binary)
        return std::nullopt;
    return value->Bytes;
}

std::optional<std::string> IniSettingsStore::ReadString(std::string_view key, std::string_view name) const
{
    const StoredValue* value = Find(key, name);
    if (!value || value->Type != StoredValueType::String)
        return std::nullopt;
    return value->Bytes;
}

bool IniSettingsStore::Write(std::string_view key, std::string_view name, StoredValue value)
{
    if (!IsValidKeyName(key)) {
        m_lastError = Format("invalid settings key name '%.*s'", static_cast<int>(key.size()), key.data());
        return false;
    }
    m_keys[std::string(key)][std::string(name)] = value;
    m_pending.push_back({std::string(key), std::string(name), std::move(value)});
    return true;
}

bool IniSettingsStore::WriteNumber(std::string_view key, std::string_view name, uint32_t value)
{
    return Write(key, name, {StoredValueType::Number, value, {}});
}

bool IniSettingsStore::WriteBinary(std::string_view key, std::string_view name, std::string_view bytes)
{
    return Write(key, name, {StoredValueType::Binary, 0, std::string(bytes)});
}

bool IniSettingsStore::WriteString(std::string_view key, std::string_view name, std::string_view text)
{
    return Write(key, name, {StoredValueType::String, 0, std::string(text)});
}

bool IniSettingsStore::Flush()
{
    if (m_pending.empty())
        return true;
    if (m_path.empty()) {
        m_lastError = "no folder for the user's settings is known";
        return false;
    }
    StoredKeys keys;
    std::string readError;
    // What cannot be read would be lost by the rewrite, so the file is kept aside first.
    if (!ReadFile(keys, readError) && !CopyFileTo(m_path, m_path + ".bak", true, &m_lastError))
        return false;
    for (const PendingWrite& write : m_pending)
        keys[write.Key][write.Name] = write.Value;

    const std::string folder = DirectoryOf(m_path);
    if (!folder.empty() && !CreateDirectories(folder, &m_lastError))
        return false;
    if (!WriteFileAtomically(m_path, FormatIniSettings(keys), &m_lastError))
        return false;
    m_keys = std::move(keys);
    m_pending.clear();
    m_lastError.clear();
    return true;
}
