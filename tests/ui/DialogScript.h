#pragma once
// Drives dialogs as a person would: types into fields, clicks, chooses, and answers message boxes
// from a script. Nested dialogs run the next script of the view.

#include "ui/Dialog.h"
#include "ui/VDialogView.h"
#include "ui/VMessageBox.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

class ScriptedMessageBox final : public VMessageBox {
public:
    VMessageBoxAnswer Show(const VMessageBoxRequest& request) override
    {
        Requests.push_back(request);
        if (Answers.empty())
            return request.DefaultAnswer;
        const VMessageBoxAnswer answer = Answers.front();
        Answers.pop_front();
        return answer;
    }

    std::deque<VMessageBoxAnswer> Answers;
    std::vector<VMessageBoxRequest> Requests;
};

// Each dialog the view is asked to show runs the next script; a dialog without one, or left open
// by its script, is closed as the window's close button would.
class ScriptedView final : public VDialogView {
public:
    void RunModal(Dialog& dialog) override
    {
        Shown.push_back(dialog.Layout().Caption);
        if (!Scripts.empty()) {
            const std::function<void(Dialog&)> script = Scripts.front();
            Scripts.pop_front();
            script(dialog);
        }
        if (!dialog.Ended())
            dialog.Command(kIdCancel);
    }

    std::deque<std::function<void(Dialog&)>> Scripts;
    std::vector<std::string> Shown;
};

inline void Type(Dialog& dialog, int id, const std::string& text)
{
    ASSERT_TRUE(dialog[id].Enabled) << id;
    dialog[id].Text = text;
    dialog.Command(id);
}

// A check box toggles, a radio button becomes the checked one of its group.
inline void Click(Dialog& dialog, int id)
{
    ASSERT_TRUE(dialog[id].Enabled && dialog[id].Visible) << id;
    if (dialog.Definition(id).Kind == ControlKind::Check)
        dialog[id].Checked = !dialog[id].Checked;
    else if (dialog.Definition(id).Kind == ControlKind::Radio)
        dialog.CheckRadio(id);
    dialog.Command(id);
}

inline void Choose(Dialog& dialog, int id, int item)
{
    ASSERT_TRUE(dialog[id].Enabled) << id;
    dialog[id].Selection = item;
    dialog.Command(id);
}
