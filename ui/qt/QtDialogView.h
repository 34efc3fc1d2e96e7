#pragma once
// The dialogs shown with Qt: modal windows over the given parent (Maya's main window inside
// Maya, none on the command line), and message boxes likewise.

#include "report/VReportView.h"
#include "ui/VDialogView.h"
#include "ui/VMessageBox.h"

class QWidget;

class QtDialogView final : public VDialogView {
public:
    explicit QtDialogView(QWidget* parent = nullptr)
        : m_parent(parent)
    {
    }
    void RunModal(Dialog& dialog) override;

private:
    QWidget* m_parent;
};

class QtMessageBox final : public VMessageBox {
public:
    explicit QtMessageBox(QWidget* parent = nullptr)
        : m_parent(parent)
    {
    }
    VMessageBoxAnswer Show(const VMessageBoxRequest& request) override;

private:
    QWidget* m_parent;
};
