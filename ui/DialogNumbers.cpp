#include "ui/DialogNumbers.h"

#include "base/TextUtil.h"
#include "settings/ScanNumber.h"
#include "ui/VMessageBox.h"

#include <algorithm>
#include <string>

namespace {

// The field's text without surrounding blanks, with its commas read as decimal points.
std::string Normalised(std::string_view text)
{
    std::string normalised(TrimSpaces(text));
    std::replace(normalised.begin(), normalised.end(), ',', '.');
    return normalised;
}

} // namespace

bool ReadDialogFloat(std::string_view text, float& value)
{
    const std::string field = Normalised(text);
    float read = 0.0f;
    if (field.empty() || ScanFloat(field, read) != field.size())
        return false;
    value = read;
    return true;
}

bool ReadDialogInt(std::string_view text, int32_t& value)
{
    const std::string field = Normalised(text);
    int32_t read = 0;
    if (field.empty() || ScanDecimalInt(field, read) != field.size())
        return false;
    value = read;
    return true;
}

bool ReadDialogUnsigned(std::string_view text, uint32_t& value)
{
    const std::string field = Normalised(text);
    if (field.empty() || field.size() > 10 || !std::all_of(field.begin(), field.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return false;
    const unsigned long long read = std::stoull(field);
    if (read > 0xFFFFFFFFull)
        return false;
    value = static_cast<uint32_t>(read);
    return true;
}

void ShowNotANumber(VMessageBox& messageBox, std::string_view text)
{
    VMessageBoxRequest request;
    request.Caption = "Error";
    request.Text = Format("'%.*s' is not a number.\r\nPlease enter a number.", static_cast<int>(text.size()), text.data());
    request.Icon = VMessageBoxIcon::Exclamation;
    request.Owner = VMessageBoxOwner::ActiveWindow;
    messageBox.Show(request);
}
