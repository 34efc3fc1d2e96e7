#pragma once
// Shows dialogs to a person. The Qt view (ui/qt/) is the one implementation; batch runs have none.

class Dialog;

class VDialogView {
public:
    virtual ~VDialogView() = default;
    // Modal: draws the opened dialog, passes every user input on as a command and returns once
    // the dialog has ended.
    virtual void RunModal(Dialog& dialog) = 0;
};

enum class UnseenDialog {
    // A batch run answers the dialog as if nobody had touched it and confirmed.
    Confirms,
    Cancels,
};

// Opens the dialog and runs it in the view; without a view it is confirmed or cancelled unseen.
// Answers the dialog's result, 0 when it was not confirmed.
int RunDialog(Dialog& dialog, VDialogView* view, UnseenDialog unseen);
