#include "ui/BitmaskDialog.h"

#include "ui/CollisionBitNames.h"
#include "ui/DialogLayoutBuilder.h"
#include "ui/VDialogView.h"

namespace bc = BitmaskControl;

namespace {

DialogLayout BitmaskLayout()
{
    DialogLayoutBuilder b(12008, "Edit Bitmask");
    b.Section("", 0);
    b.Add(bc::Bits, ControlKind::CheckList, "");
    b.Section("", 1);
    b.Add(bc::ClearAll, ControlKind::Button, "Clear all");
    b.NextRow().Add(bc::SetAll, ControlKind::Button, "Set all");
    b.NextRow().Add(bc::Invert, ControlKind::Button, "Invert");
    b.NextRow().Add(kIdOk, ControlKind::Button, "OK");
    b.NextRow().Add(kIdCancel, ControlKind::Button, "Cancel");
    return b.Build();
}

uint32_t BitOf(size_t item)
{
    return uint32_t {1} << item;
}

} // namespace

BitmaskDialog::BitmaskDialog(uint32_t& value, std::vector<std::string> bitNames)
    : Dialog(BitmaskLayout())
    , m_value(value)
    , m_bitNames(std::move(bitNames))
{
}

void BitmaskDialog::Open()
{
    (*this)[bc::Bits].Items = m_bitNames;
    CheckBits(m_value);
    SetFocus(bc::Bits);
}

void BitmaskDialog::CheckBits(uint32_t bits)
{
    ControlState& list = (*this)[bc::Bits];
    list.ItemChecks.resize(list.Items.size());
    for (size_t item = 0; item < list.Items.size(); ++item)
        list.ItemChecks[item] = (bits & BitOf(item)) != 0;
}

void BitmaskDialog::Command(int id)
{
    const ControlState& list = (*this)[bc::Bits];
    uint32_t checked = 0;
    for (size_t item = 0; item < list.ItemChecks.size(); ++item)
        checked |= list.ItemChecks[item] ? BitOf(item) : 0;

    switch (id) {
    case bc::ClearAll:
        CheckBits(0);
        break;
    case bc::SetAll:
        CheckBits(0xFFFFFFFFu);
        break;
    case bc::Invert:
        CheckBits(~checked);
        break;
    case kIdOk:
        m_value = checked;
        End(1);
        break;
    case kIdCancel:
        End(0);
        break;
    default:
        break;
    }
}

bool EditBitmask(uint32_t& value, std::string_view bitNamesPath, int defaultCount, VDialogView* view)
{
    BitmaskDialog dialog(value, LoadBitNames(bitNamesPath, defaultCount));
    return RunDialog(dialog, view, UnseenDialog::Cancels) == 1;
}
