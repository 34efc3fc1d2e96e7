#pragma once
// "Edit Bitmask": a 32-bit value as one named check box per bit shown. OK keeps only the bits
// shown, so a value with bits beyond them loses those bits.

#include "ui/Dialog.h"

#include <cstdint>
#include <string>
#include <vector>

class VDialogView;

namespace BitmaskControl {
inline constexpr int Bits = 12008;
inline constexpr int ClearAll = 12009;
inline constexpr int SetAll = 12010;
inline constexpr int Invert = 12011;
} // namespace BitmaskControl

class BitmaskDialog final : public Dialog {
public:
    // One check box per name, bit 0 first; value changes only on OK.
    BitmaskDialog(uint32_t& value, std::vector<std::string> bitNames);

    void Open() override;
    void Command(int id) override;

private:
    void CheckBits(uint32_t bits);

    uint32_t& m_value;
    std::vector<std::string> m_bitNames;
};

// Loads the bit names from the file (defaultCount unknown bits when it cannot be read), shows
// the dialog and answers whether it was confirmed; value then holds the checked bits.
bool EditBitmask(uint32_t& value, std::string_view bitNamesPath, int defaultCount, VDialogView* view);
