#pragma once
// Numbers typed into dialog fields. They are read with a decimal point whatever the process
// locale, and a comma typed instead counts as the point, so that "0,5" from a German keyboard
// means what its typist meant. Unlike scanf, a field must hold one number and nothing else:
// "1.5cm" or "abc" is refused with a message rather than read as 1.5 or left at what it was.

#include <cstdint>
#include <string_view>

class VMessageBox;

bool ReadDialogFloat(std::string_view text, float& value);
// Decimal digits only, as "%d" reads them.
bool ReadDialogInt(std::string_view text, int32_t& value);
bool ReadDialogUnsigned(std::string_view text, uint32_t& value);

// "'<text>' is not a number.\r\nPlease enter a number." with caption "Error".
void ShowNotANumber(VMessageBox& messageBox, std::string_view text);
