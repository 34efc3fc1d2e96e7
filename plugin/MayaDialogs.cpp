#include "plugin/MayaDialogs.h"

#include "plugin/PluginModule.h"
#include "ui/ReportDialog.h"
#include "ui/qt/QtDialogView.h"

#include <maya/MGlobal.h>
#include <maya/MQtUtil.h>

void UseMayaDialogs()
{
    if (MGlobal::mayaState() != MGlobal::kInteractive)
        return;
    static QtDialogView view(MQtUtil::mainWindow());
    static QtMessageBox messageBox(MQtUtil::mainWindow());
    static DialogReportView report(view);
    PluginServices services = TheServices();
    services.DialogView = &view;
    services.MessageBox = &messageBox;
    services.ReportView = &report;
    StartPluginModule(services);
}
