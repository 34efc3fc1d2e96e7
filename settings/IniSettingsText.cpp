#include "settings/IniSettingsText.h"

#include "base/TextUtil.h"

#include <charconv>
#include <optional>

namespace {

constexpr std::string_view kNumberPrefix = "dword:";
constexpr std::string_view kBinaryPrefix = "hex:";

int HexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// Reads a quoted text at the front of rest and removes it from rest.
std::optional<std::string> TakeQuoted(std::string_view& rest)
{
    if (rest.empty() || rest.front() != '"')
        return std::nullopt;
    std::string text;
    for (size_t i = 1; i < rest.size(); ++i) {
        const char c = rest[i];
        if (c == '"') {
            rest.remove_prefix(i + 1);
            return text;
        }
        if (c != '\\') {
            text += c;
            continue;
        }
        if (++i == rest.size())
            return std::nullopt;
        switch (rest[i]) {
        case 'r': text += '\r'; break;
        case 'n': text += '\n'; break;
        case '\\':
        case '"': text += rest[i]; break;
        default: return std::nullopt;
        }
    }
    return std::nullopt;
}

std::optional<uint32_t> ParseNumberData(std::string_view digits)
{
    if (digits.empty() || digits.size() > 8)
        return std::nullopt;
    uint32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    if (error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return number;
}

std::optional<std::string> ParseBinaryData(std::string_view data)
{
    std::string bytes;
    if (data.empty())
        return bytes;
    for (;;) {
        if (data.size() < 2 || HexDigit(data[0]) < 0 || HexDigit(data[1]) < 0)
            return std::nullopt;
        bytes += static_cast<char>(HexDigit(data[0]) * 16 + HexDigit(data[1]));
        data.remove_prefix(2);
        if (data.empty())
            return bytes;
        if (data.front() != ',')
            return std::nullopt;
        data.remove_prefix(1);
    }
}

std::optional<StoredValue> ParseData(std::string_view data)
{
    StoredValue value;
    if (data.starts_with(kNumberPrefix)) {
        const std::optional<uint32_t> number = ParseNumberData(data.substr(kNumberPrefix.size()));
        if (!number)
            return std::nullopt;
        value.Type = StoredValueType::Number;
        value.Number = *number;
        return value;
    }
    if (data.starts_with(kBinaryPrefix)) {
        std::optional<std::string> bytes = ParseBinaryData(data.substr(kBinaryPrefix.size()));
        if (!bytes)
            return std::nullopt;
        value.Type = StoredValueType::Binary;
        value.Bytes = std::move(*bytes);
        return value;
    }
    std::optional<std::string> text = TakeQuoted(data);
    if (!text || !TrimSpaces(data).empty())
        return std::nullopt;
    value.Type = StoredValueType::String;
    value.Bytes = std::move(*text);
    return value;
}

std::string Quoted(std::string_view text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        switch (c) {
        case '\r': quoted += "\\r"; break;
        case '\n': quoted += "\\n"; break;
        case '\\':
        case '"':
            quoted += '\\';
            quoted += c;
            break;
        default: quoted += c;
        }
    }
    return quoted + '"';
}

std::string FormatData(const StoredValue& value)
{
    switch (value.Type) {
    case StoredValueType::Number: return Format("dword:%08x", static_cast<unsigned>(value.Number));
    case StoredValueType::Binary: {
        std::string data(kBinaryPrefix);
        for (size_t i = 0; i < value.Bytes.size(); ++i)
            data += Format(i == 0 ? "%02x" : ",%02x", static_cast<unsigned>(static_cast<unsigned char>(value.Bytes[i])));
        return data;
    }
    case StoredValueType::String: break;
    }
    return Quoted(value.Bytes);
}

void NoteFirstError(std::string& error, size_t lineNumber, const char* what)
{
    if (error.empty())
        error = Format("line %zu: %s", lineNumber, what);
}

} // namespace

bool ParseIniSettings(std::string_view text, StoredKeys& keys, std::string& error)
{
    error.clear();
    StoredKey* current = nullptr;
    size_t lineNumber = 0;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        std::string_view line = TrimSpaces(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        ++lineNumber;
        if (!line.empty() && line.back() == '\r')
            line = TrimSpaces(line.substr(0, line.size() - 1));
        if (line.empty() || line.front() == ';' || line.front() == '#')
            continue;

        if (line.front() == '[') {
            if (line.back() != ']' || line.size() < 3) {
                NoteFirstError(error, lineNumber, "unreadable key name");
                current = nullptr;
                continue;
            }
            current = &keys[std::string(line.substr(1, line.size() - 2))];
            continue;
        }
        if (!current) {
            NoteFirstError(error, lineNumber, "value outside of any key");
            continue;
        }

        std::string_view rest = line;
        std::optional<std::string> name;
        if (rest.front() == '@') {
            name = std::string();
            rest.remove_prefix(1);
        } else {
            name = TakeQuoted(rest);
        }
        rest = TrimSpaces(rest);
        if (!name || rest.empty() || rest.front() != '=') {
            NoteFirstError(error, lineNumber, "unreadable value name");
            continue;
        }
        std::optional<StoredValue> value = ParseData(TrimSpaces(rest.substr(1)));
        if (!value) {
            NoteFirstError(error, lineNumber, "unreadable value");
            continue;
        }
        (*current)[*name] = std::move(*value);
    }
    return error.empty();
}

std::string FormatIniSettings(const StoredKeys& keys)
{
    std::string text;
    for (const auto& [keyName, key] : keys) {
        if (!text.empty())
            text += '\n';
        text += '[' + keyName + "]\n";
        for (const auto& [name, value] : key)
            text += (name.empty() ? std::string("@") : Quoted(name)) + '=' + FormatData(value) + '\n';
    }
    return text;
}
