#include "ui/Dialog.h"

#include "ui/VDialogView.h"

#include <algorithm>
#include <cassert>

Dialog::Dialog(DialogLayout layout)
    : m_layout(std::move(layout))
{
    for (const ControlSpec& definition : m_layout.Controls) {
        assert(!m_controls.contains(definition.Id) && "control ids are unique within a dialog");
        const bool ownText = definition.Kind == ControlKind::Label || definition.Kind == ControlKind::Check ||
                             definition.Kind == ControlKind::Radio || definition.Kind == ControlKind::Button;
        if (ownText)
            m_controls[definition.Id].Text = definition.Label;
        else
            m_controls[definition.Id];
    }
}

const ControlSpec& Dialog::Definition(int id) const
{
    const auto found = std::find_if(m_layout.Controls.begin(), m_layout.Controls.end(),
                                    [id](const ControlSpec& definition) { return definition.Id == id; });
    assert(found != m_layout.Controls.end());
    return *found;
}

ControlState& Dialog::operator[](int id)
{
    const auto found = m_controls.find(id);
    assert(found != m_controls.end() && "the layout declares every control the logic uses");
    return found->second;
}

const ControlState& Dialog::operator[](int id) const
{
    const auto found = m_controls.find(id);
    assert(found != m_controls.end() && "the layout declares every control the logic uses");
    return found->second;
}

void Dialog::CheckRadio(int id)
{
    const int group = Definition(id).Group;
    for (const ControlSpec& definition : m_layout.Controls) {
        if (definition.Kind == ControlKind::Radio && definition.Group == group)
            m_controls[definition.Id].Checked = definition.Id == id;
    }
}

std::optional<int> Dialog::CheckedRadio(std::initializer_list<int> ids) const
{
    for (int id : ids) {
        if (Checked(id))
            return id;
    }
    return std::nullopt;
}

int RunDialog(Dialog& dialog, VDialogView* view, UnseenDialog unseen)
{
    dialog.Open();
    if (!dialog.Ended()) {
        if (view)
            view->RunModal(dialog);
        else if (unseen == UnseenDialog::Confirms)
            dialog.Command(kIdOk);
    }
    // Nobody can answer a dialog that nobody sees: one that a confirmation left open is cancelled.
    if (!dialog.Ended())
        dialog.End(0);
    return dialog.Result();
}
