#include "report/ExportBracket.h"

#include "base/Path.h"
#include "base/Version.h"

#include "report/DebugFile.h"
#include "report/LogWindow.h"
#include "report/VReport.h"
#include "report/VReportEntry.h"

namespace {

constexpr int SettingsVersion = 4;
constexpr const char* ReportCaption = "Exporter: Issues during export";

}

void BeginExportBracket(VReport& report, const VExportBracketParams& params)
{
    report.Clear();

    if (params.DebugPrint && !params.TargetDirectory.empty()) {
        OpenDebugFile(params.TargetDirectory + "debug.txt", DebugFileFlushEachLine);
        DebugPrint("Opening debug file for %s\r\n\r\n", params.TargetFile.c_str());
        DebugPrint("Exporter version: %s\r\n", ExporterVersionText);
        DebugPrint("Settings version: %i\r\n", SettingsVersion);
        DebugPrint("Maya version: %s\r\n", params.MayaVersion.c_str());
    }

    if (params.ShowLog && FindLogWindow() == LogWindowNotFound && params.LaunchLogViewer) {
        params.LaunchLogViewer();
        FindLogWindow();
    }
}

void EndExportBracket(VReport& report, const VExportBracketParams& params)
{
    report.Finalize(SeverityInformation);
    if (params.WriteReportPage)
        params.WriteReportPage(report.Entries());
    if (params.NoPrompt) {
        // Nobody is there to read warnings in a batch export; only errors are filed.
        report.DropEntriesBelow(SeverityError);
        report.WriteReportToFile(params.TargetDirectory + "ErrLog.txt");
        if (params.FiledReportView)
            report.ShowReportDialog(*params.FiledReportView, ReportCaption);
    } else {
        if (params.ReportView)
            report.ShowReportDialog(*params.ReportView, ReportCaption);
        if (params.DisplayViewer && params.LaunchViewer)
            params.LaunchViewer();
    }
    report.Clear();

    if (!params.NoPrompt) {
        LogControl(false);
        LogQuit();
    }
    // In an interactive export the window is already let go, so this reaches only the batch log.
    LogPrint("Closing debug file for %s\r\n", ShownPath(params.TargetFile).c_str());
    CloseDebugFile();
}
