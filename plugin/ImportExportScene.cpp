#include "plugin/ImportExportScene.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "plugin/ExportReportPage.h"
#include "plugin/ExportSession.h"
#include "plugin/ImportMesh.h"
#include "plugin/PluginModule.h"
#include "plugin/VExportFormat.h"
#include "report/ExportBracket.h"
#include "report/KestrelReportMessage.h"
#include "report/LogWindow.h"
#include "report/VIssueKind.h"
#include "settings/ApplicationSettings.h"
#include "settings/ExternalProgramServices.h"
#include "settings/LaunchRegisteredProgram.h"
#include "ui/VMessageBox.h"

#include <maya/MGlobal.h>
#include <maya/MTime.h>


namespace {

// The scene as Maya names it, shown as a person reads paths.
std::string ShownSceneName()
{
    MString name;
    MGlobal::executeCommand("file -q -sceneName", name);
    return ShownPath(FromNativePath(name.asChar()));
}

// The page only accompanies the asset: a page that cannot be written is said, and the export
// stands.
void WriteReportPageBeside(const std::string& target, const std::vector<VReportEntry>& entries)
{
    std::string error;
    if (WriteExportReportPage(ShownSceneName(), target, entries, error))
        return;
    VMessageBoxRequest request;
    request.Caption = "Error";
    request.Text = Format("Could not write the report page beside '%s': %s", ShownPath(target).c_str(), error.c_str());
    request.Icon = VMessageBoxIcon::Error;
    TheMessageBox().Show(request);
}

VExportBracketParams BracketParams(VExportFormat& format, const ExportSession& session)
{
    const ApplicationSettings& settings = TheApplicationSettings();
    VExportBracketParams params;
    params.TargetFile = session.TargetFile;
    params.TargetDirectory = session.TargetDirectory;
    params.NoPrompt = session.NoPrompt;
    params.DebugPrint = settings.DebugPrint != 0;
    params.ShowLog = settings.ShowLog;
    params.MayaVersion = MGlobal::mayaVersion().asChar();
    params.LaunchLogViewer = [] {
        LaunchLogViewer(ExternalProgramServices {TheSettingsStore(), TheProcessLauncher(), TheMessageBox()});
    };
    params.LaunchViewer = [&format] { format.LaunchViewer(); };
    params.ReportView = TheServices().ReportView;
    params.FiledReportView = TheServices().FiledReportView;
    if (TheServices().ReportPage)
        params.WriteReportPage = [target = session.TargetFile](const std::vector<VReportEntry>& entries) {
            WriteReportPageBeside(target, entries);
        };
    return params;
}

// Any exception out of the pipeline ends the export as the report's crash, never Maya's.
bool RunGuarded(VExportFormat& format)
{
    try {
        return format.Run();
    } catch (...) {
        ModuleReport().AddIssue(IssueCrash, "Export");
        LogRaw("***Crash during export***");
        return false;
    }
}

} // namespace

std::string ExportTargetPath(std::string_view fullName)
{
    std::string path = FromNativePath(fullName);
    const size_t lastDot = path.rfind('.');
    if (lastDot == std::string::npos || lastDot == 0)
        return path;
    const std::string_view extension = std::string_view(path).substr(lastDot);
    const std::string_view before = std::string_view(path).substr(0, lastDot);
    if (EndsWithNoCase(before, extension))
        path.resize(lastDot);
    return path;
}

ImportExportScene::ImportExportScene(VExportFormat* format)
    : m_format(format)
{
}

MStatus ImportExportScene::reader(const MFileObject& file, const MString& /*optionsString*/, FileAccessMode /*mode*/)
{
    return haveReadMethod() ? ImportMesh(file, TheMessageBox()) : MStatus(MS::kFailure);
}

MStatus ImportExportScene::writer(const MFileObject& file, const MString& /*optionsString*/, FileAccessMode mode)
{
    if (!m_format)
        return MS::kFailure;
    const std::string path = ExportTargetPath(file.fullName().asChar());

    int prompt = 1;
    MGlobal::executeCommand("file -q -prompt", prompt);
    const bool noPrompt = prompt == 0;
    const bool selectionOnly = mode == kExportActiveAccessMode;
    if (!m_format->Init(path, 0, noPrompt, true, selectionOnly))
        return MS::kFailure;

    ExportSession& session = TheExportSession();
    VExportBracketParams bracket = BracketParams(*m_format, session);
    BeginExportBracket(ModuleReport(), bracket);
    MGlobal::executeCommand("minimizeApp;");
    const bool exported = RunGuarded(*m_format);
    // The options dialog may have changed the choice.
    bracket.DisplayViewer = session.Options.DisplayViewer;
    EndExportBracket(ModuleReport(), bracket);
    MGlobal::viewFrame(MTime(session.RestoreFrame));
    MGlobal::executeCommand("showWindow MayaWindow;");
    return exported ? MS::kSuccess : MS::kFailure;
}

bool ImportExportScene::haveReadMethod() const
{
    return m_format && m_format->FormatKind() == kFormatKindStatic;
}

MString ImportExportScene::defaultExtension() const
{
    return m_format ? MString(m_format->ShortName()) : MString();
}

MString ImportExportScene::filter() const
{
    return MString("*.") + defaultExtension();
}

MPxFileTranslator::MFileKind ImportExportScene::identifyFile(const MFileObject& file, const char* /*buffer*/,
                                                            short /*size*/) const
{
    if (m_format && EndsWithNoCase(file.name().asChar(), m_format->ShortName()))
        return kIsMyFileType;
    return kNotMyFileType;
}
