#pragma once
// The 50 named keys through which the option record is saved and restored, in saving order.

#include "settings/VExportOptions.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

// The numbers are those of the variant alternatives in VOptionField.
enum class VOptionType : int { Int32 = 0, Bool = 1, Float32 = 2, String = 3, Version = 4 };

using VOptionField = std::variant<int32_t VExportOptions::*, bool VExportOptions::*, float VExportOptions::*,
                                  std::string VExportOptions::*, VSettingsVersion VExportOptions::*>;

struct VOptionKey {
    std::string_view Name;
    VOptionField Field;

    VOptionType Type() const { return static_cast<VOptionType>(Field.index()); }
};

inline constexpr int kExportOptionKeyCount = 50;

std::span<const VOptionKey, kExportOptionKeyCount> ExportOptionKeys();

// Case-insensitive; nullptr when the name is not one of the 50 keys.
const VOptionKey* FindExportOptionKey(std::string_view name);
