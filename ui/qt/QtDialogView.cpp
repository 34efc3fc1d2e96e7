#include "ui/qt/QtDialogView.h"

#include "ui/qt/QtDialogWindow.h"

#include <QMessageBox>

void QtDialogView::RunModal(Dialog& dialog)
{
    QtDialogWindow window(dialog, m_parent);
    if (!dialog.Ended())
        window.exec();
}

namespace {

QMessageBox::Icon ToQt(VMessageBoxIcon icon)
{
    switch (icon) {
    case VMessageBoxIcon::None:
        return QMessageBox::NoIcon;
    case VMessageBoxIcon::Information:
        return QMessageBox::Information;
    case VMessageBoxIcon::Exclamation:
        return QMessageBox::Warning;
    case VMessageBoxIcon::Error:
        return QMessageBox::Critical;
    case VMessageBoxIcon::Question:
        return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButton ToQt(VMessageBoxAnswer answer)
{
    switch (answer) {
    case VMessageBoxAnswer::Ok:
        return QMessageBox::Ok;
    case VMessageBoxAnswer::Cancel:
        return QMessageBox::Cancel;
    case VMessageBoxAnswer::Yes:
        return QMessageBox::Yes;
    case VMessageBoxAnswer::No:
        return QMessageBox::No;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButtons ToQt(VMessageBoxButtons buttons)
{
    switch (buttons) {
    case VMessageBoxButtons::Ok:
        return QMessageBox::Ok;
    case VMessageBoxButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case VMessageBoxButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case VMessageBoxButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

} // namespace

VMessageBoxAnswer QtMessageBox::Show(const VMessageBoxRequest& request)
{
    // The Windows texts end their lines with "\r\n".
    QString text = QString::fromStdString(request.Text);
    text.remove(QLatin1Char('\r'));
    QMessageBox box(ToQt(request.Icon), QString::fromStdString(request.Caption), text, ToQt(request.Buttons),
                    m_parent);
    box.setDefaultButton(ToQt(request.DefaultAnswer));
    switch (box.exec()) {
    case QMessageBox::Ok:
        return VMessageBoxAnswer::Ok;
    case QMessageBox::Yes:
        return VMessageBoxAnswer::Yes;
    case QMessageBox::No:
        return VMessageBoxAnswer::No;
    default:
        // Escape or the close button: the answer a Windows message box gives for them.
        return request.Buttons == VMessageBoxButtons::Ok ? VMessageBoxAnswer::Ok
               : request.Buttons == VMessageBoxButtons::YesNo ? VMessageBoxAnswer::No
                                                               : VMessageBoxAnswer::Cancel;
    }
}
