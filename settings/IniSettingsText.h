#pragma once
// The text form of the per-user settings file: each registry key as a section, each value in the
// registry editor's export form.
//
//   [HKEY_CURRENT_USER\Software\Orvalle\ZephraSDK\Kestrel]
//   "ShowLog"=dword:00000001
//   "MeshFactor"=hex:00,00,80,3f
//   "ModelViewer"="Modlook"
//   @="default value of the key"
//
// Names and strings escape the backslash, the double quote, carriage return and line feed with a
// backslash. Lines starting with ';' or '#' are comments.

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "settings/NoCaseLess.h"

enum class StoredValueType { Number, Binary, String };

struct StoredValue {
    StoredValueType Type = StoredValueType::String;
    uint32_t Number = 0;
    // The raw bytes of a binary value or the text of a string value.
    std::string Bytes;

    bool operator==(const StoredValue&) const = default;
};

// Value name ("" for the key's default value) to value.
using StoredKey = std::map<std::string, StoredValue, NoCaseLess>;
using StoredKeys = std::map<std::string, StoredKey, NoCaseLess>;

// Adds what the text holds to keys; a value given twice takes the later one. Lines that cannot be
// read are skipped: false is answered and error names the first ("line 4: ...").
bool ParseIniSettings(std::string_view text, StoredKeys& keys, std::string& error);

// Lines end with "\n"; keys and values come in name order.
std::string FormatIniSettings(const StoredKeys& keys);
