#include "plugin/VExportFormat.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"
#include "plugin/ExportSession.h"
#include "plugin/PluginModule.h"
#include "plugin/VExportOptionsDialog.h"
#include "report/DebugFile.h"
#include "settings/ApplicationSettings.h"
#include "settings/ExternalProgramServices.h"
#include "settings/SettingsBlock.h"
#include "settings/StartViewerProgram.h"
#include "settings/TextureDirectory.h"
#include "ui/VMessageBox.h"

#include <maya/MDistance.h>

namespace {

std::string FolderWithSeparator(std::string_view path)
{
    const std::string folder = DirectoryOf(path);
    return folder.empty() ? folder : folder + "\\";
}

void ApplySettingsBlock(std::string_view text, ExportSession& session)
{
    LoadSettingsFromString(text, session.Options, session.Animations);
    session.TextureDirectory =
        TextureDirectoryFromOptions(session.Options, session.ProjectDirectory, session.TargetDirectory);
}

} // namespace

VExportFormat::VExportFormat(const Description& description, ExportSession& session)
    : m_description(description)
    , m_session(session)
{
}

bool VExportFormat::Init(std::string_view targetPath, int /*unused*/, bool noPrompt, bool loadSettings,
                         bool selectionOnly)
{
    const size_t dot = targetPath.rfind('.');
    const std::string_view extension = dot == std::string_view::npos ? std::string_view {} : targetPath.substr(dot + 1);
    if (FindExportFormat(extension) != this)
        return false;

    m_interactive = true;
    m_rootPath = MDagPath();
    m_settingsText.clear();

    ExportSession& session = m_session;
    InitForExport(session, *this, selectionOnly, TheApplicationSettings());
    session.TargetFile = std::string(targetPath);
    session.NoPrompt = noPrompt;
    session.TargetDirectory = FolderWithSeparator(targetPath);
    session.TextureDirectory = session.TargetDirectory + "Textures\\";

    if (!FindProjectForTarget(session, *this))
        return false;
    session.BaseDirectory = session.TargetDirectory;
    session.UnitFactor = static_cast<float>(MDistance(1.0, MDistance::uiUnit()).asCentimeters());

    if (loadSettings) {
        DebugPrint("LoadSettingsFromFile()\r\n");
        if (const std::optional<std::string> text = ReadSettingsFile(session.TargetFile))
            ApplySettingsBlock(*text, session);
        if (!TheServices().OptionOverrides.empty())
            ApplySettingsBlock(TheServices().OptionOverrides, session);
        for (const VAnimationDescription& entry : TheServices().AnimationOverrides)
            session.Animations.AddOrReplace(entry);
    }
    return true;
}

bool VExportFormat::Run()
{
    if (!Prepare())
        return false;
    const bool exported = Export();
    Finish();
    return exported;
}

bool VExportFormat::Prepare()
{
    DebugPrint(m_session.SelectionOnly ? "Export only selection\r\n" : "Export all\r\n");
    if (!(m_interactive ? ShowOptions() : PrepareTextureDir()))
        return false;
    m_settingsText = SaveSettingsToString(m_session.Options, m_session.Animations);
    return true;
}

bool VExportFormat::ShowOptions()
{
    for (;;) {
        if (!TheOptionsDialog().ShowOptionsDialog(*this, m_session)) {
            DebugPrint("Settings cancelled.\r\n");
            return false;
        }
        if (PrepareTextureDir())
            return true;
        // Nobody could change the folder in a batch export, so showing the dialog again would
        // never end.
        if (m_session.NoPrompt)
            return false;
    }
}

bool VExportFormat::PrepareTextureDir()
{
    const std::string& directory = m_session.TextureDirectory;
    DebugPrint("Texture directory: %s\r\n", directory.c_str());
    if (DirectoryExists(directory) || CreateDirectories(directory))
        return true;

    const char* const message = "Unable to create texture subdirectory:\r\n%s";
    DebugPrint(message, directory.c_str());
    VMessageBoxRequest request;
    request.Caption = "Error";
    request.Text = Format(message, ShownPath(directory).c_str());
    request.Owner = VMessageBoxOwner::ActiveWindow;
    request.Icon = VMessageBoxIcon::Exclamation;
    TheMessageBox().Show(request);
    return false;
}

void VExportFormat::DeleteCookedMeshes()
{
    const std::string dataFolder = m_session.TargetFile + "_data";
    for (const DirectoryEntry& entry : ListDirectory(dataFolder)) {
        if (!entry.IsDirectory && StartsWithNoCase(entry.Name, "cookedMesh"))
            DeleteFileAt(JoinPath(dataFolder, entry.Name));
    }
}

void VExportFormat::StartViewer(const std::string& program, const std::string& arguments) const
{
    const ExternalProgramServices services {TheSettingsStore(), TheProcessLauncher(), TheMessageBox()};
    StartViewerProgram(services, program, arguments,
                       ViewerTarget {m_session.TargetFile, m_session.TargetDirectory, m_session.ProjectDirectory});
}
