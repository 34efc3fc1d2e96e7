#include "ui/NodePropertiesDialog.h"

#include "base/TextUtil.h"
#include "ui/BitmaskDialog.h"
#include "ui/DialogLayoutBuilder.h"
#include "ui/DialogNumbers.h"
#include "ui/VDialogView.h"

namespace nc = NodeControl;

namespace {

constexpr int kDefaultBitCount = 16;
constexpr int kFlagsLabel = -1;

DialogLayout NodePropertiesLayout()
{
    DialogLayoutBuilder b(119, "Zephra Geometry Properties");
    b.Section("", 0);
    b.Add(nc::NodeName, ControlKind::Label, "No node selected");
    b.Section(" World geometry properties", 0);
    b.Add(nc::Visible, ControlKind::Check, "Visible (in the engine)");
    b.NextRow().Add(kFlagsLabel, ControlKind::Label, "Collision bitmask");
    b.Add(nc::CollisionFlags, ControlKind::Edit, "");
    b.Add(nc::EditBits, ControlKind::Button, "...");
    b.Section("", 0);
    b.Add(kIdOk, ControlKind::Button, "&OK");
    b.Add(kIdCancel, ControlKind::Button, "&Cancel");
    return b.Build();
}

} // namespace

NodePropertiesDialog::NodePropertiesDialog(NodeProperties& properties, std::string bitNamesPath,
                                           VMessageBox& messageBox, VDialogView* view)
    : Dialog(NodePropertiesLayout())
    , m_properties(properties)
    , m_bitNamesPath(std::move(bitNamesPath))
    , m_messageBox(messageBox)
    , m_view(view)
{
}

void NodePropertiesDialog::Open()
{
    SetText(nc::NodeName, m_properties.NodeName);
    SetChecked(nc::Visible, m_properties.Visible);
    SetText(nc::CollisionFlags, Format("%u", m_properties.CollisionFlags));
    SetFocus(kIdOk);
}

bool NodePropertiesDialog::ReadFlags(uint32_t& flags)
{
    if (ReadDialogUnsigned(Text(nc::CollisionFlags), flags))
        return true;
    ShowNotANumber(m_messageBox, Text(nc::CollisionFlags));
    SetFocus(nc::CollisionFlags);
    return false;
}

void NodePropertiesDialog::Command(int id)
{
    switch (id) {
    case kIdOk: {
        uint32_t flags = 0;
        if (!ReadFlags(flags))
            return;
        m_properties.Visible = Checked(nc::Visible);
        m_properties.CollisionFlags = flags;
        End(1);
        break;
    }
    case kIdCancel:
        End(0);
        break;
    case nc::EditBits: {
        uint32_t flags = 0;
        if (ReadFlags(flags) && EditBitmask(flags, m_bitNamesPath, kDefaultBitCount, m_view))
            SetText(nc::CollisionFlags, Format("%u", flags & 0xFFFFu));
        break;
    }
    default:
        break;
    }
}
