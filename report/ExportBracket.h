#pragma once
// What opens and closes around every export: the issue report is emptied before and shown or filed
// after, the debug file and the log window are connected before and let go after. The services of
// other folders (starting programs, the report dialog) come in as parameters.

#include <functional>
#include <string>
#include <vector>

class VReport;
class VReportView;
struct VReportEntry;

struct VExportBracketParams {
    std::string TargetFile;
    // The target file's folder with its closing backslash; debug.txt and ErrLog.txt go there.
    std::string TargetDirectory;
    // Maya runs without prompts: errors are filed as ErrLog.txt and the log viewer is left open.
    bool NoPrompt = false;
    // The application settings of the same names.
    bool DebugPrint = false;
    bool ShowLog = false;
    // The option of the same name: start the viewer on the result after an interactive export.
    bool DisplayViewer = false;
    std::string MayaVersion;
    // Starts the log viewer ("Reslook" with "-hide") when ShowLog finds none running.
    std::function<void()> LaunchLogViewer;
    // Starts the viewer on the exported file.
    std::function<void()> LaunchViewer;
    // The report dialog, shown after an interactive export only: a batch export must not wait for
    // anyone to close a dialog.
    VReportView* ReportView = nullptr;
    // In a batch export, also handed the entries filed as ErrLog.txt; the command line prints them.
    VReportView* FiledReportView = nullptr;
    // Handed every entry of the report, whatever a batch export files of them: the report page.
    std::function<void(const std::vector<VReportEntry>& entries)> WriteReportPage;
};

void BeginExportBracket(VReport& report, const VExportBracketParams& params);
void EndExportBracket(VReport& report, const VExportBracketParams& params);
