#pragma once
// A dialog's layout drawn with Qt widgets: one group box per section, every control named by its
// id (objectName), the controls in the layout's tab order. Each user input is written into the
// dialog's state and handed on as a command; the widgets are then brought up to the state.

#include "ui/Dialog.h"

#include <QDialog>

#include <map>

class QGroupBox;
class QLabel;

class QtDialogWindow final : public QDialog {
public:
    // The dialog must have been opened.
    QtDialogWindow(Dialog& dialog, QWidget* parent);

    // The widget of control id; null when the layout has none.
    QWidget* Control(int id) const;

    // Closing the window is the command kIdCancel; the dialog decides whether it ends.
    void reject() override;

private:
    void Build();
    QWidget* MakeControl(const ControlSpec& definition);
    void Send(int id);
    // Writes the dialog's state into the widgets; ends the window when the dialog has ended.
    void Refresh();
    void RefreshControl(const ControlSpec& definition, QWidget* widget);

    Dialog& m_dialog;
    std::map<int, QWidget*> m_controls;
    // The label before or the suffix after a control, shown and enabled with it.
    std::multimap<int, QLabel*> m_companions;
    std::map<int, QGroupBox*> m_advancedSections;
    bool m_refreshing = false;
};
