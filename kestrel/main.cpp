// The command-line exporter: runs the plug-in's translators over scenes loaded into the
// Maya API stand-in, in batch mode.

#include "kestrel/ExportCommand.h"
#include "kestrel/ImportCommand.h"
#include "kestrel/InfoCommand.h"
#include "kestrel/PreviewCommand.h"
#include "kestrel/OptionsCommand.h"

#include "base/Version.h"

#include <CLI/CLI.hpp>

#ifdef KESTREL_WITH_QT
#include "ui/qt/QtDialogView.h"

#include <QApplication>

#include <memory>
#endif

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

namespace {

#ifdef KESTREL_WITH_QT
// Why there is no display to show dialogs on; empty when there is one. Qt ends the whole process
// when it cannot reach its display, so a local X display whose server socket is missing counts
// as none.
std::string MissingDisplay()
{
    const char* platform = std::getenv("QT_QPA_PLATFORM");
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    if ((platform && *platform) || (wayland && *wayland))
        return {};
    const char* display = std::getenv("DISPLAY");
    if (!display || !*display)
        return "neither DISPLAY nor WAYLAND_DISPLAY is set";
    const std::string name = display;
    if (name.front() != ':')
        return {};
    const std::string socket = "/tmp/.X11-unix/X" + name.substr(1, name.find('.') - 1);
    std::error_code error;
    if (std::filesystem::exists(socket, error))
        return {};
    return "no X server listens on DISPLAY=" + name;
}
#endif

// The desktop's dialogs, opened when a command first needs them. The application object must go
// before the process exits, so main owns it.
class Desktop {
public:
    explicit Desktop([[maybe_unused]] char* program)
#ifdef KESTREL_WITH_QT
        : m_argv {program, nullptr}
#endif
    {
    }

    DesktopDialogs Open()
    {
#ifdef KESTREL_WITH_QT
        if (std::string missing = MissingDisplay(); !missing.empty())
            return {nullptr, nullptr, std::move(missing)};
        if (!m_application)
            m_application = std::make_unique<QApplication>(m_argc, m_argv);
        return {&m_view, &m_messageBox, {}};
#else
        return {nullptr, nullptr, "this kestrel was built without Qt"};
#endif
    }

private:
#ifdef KESTREL_WITH_QT
    int m_argc = 1;
    char* m_argv[2];
    std::unique_ptr<QApplication> m_application;
    QtDialogView m_view;
    QtMessageBox m_messageBox;
#endif
};

} // namespace

int main(int argc, char** argv)
{
    CLI::App app {"Kestrel: exports Maya scenes to Zephra engine assets", "kestrel"};
    app.set_version_flag("--version", ExporterVersionText, "Print the exporter's version and exit");

    std::string infoFile;
    CLI::App* info = app.add_subcommand("info", "Describe a scene file (Maya ASCII, FBX, glTF, COLLADA, OBJ) or an asset file "
                                                "(.qmesh, .qcolmesh, .model, .anim, .prefab)");
    info->add_option("FILE", infoFile, "The file to describe")->required();

    AddExportCommand(app);
    AddPreviewCommand(app);
    AddImportCommand(app);
    Desktop desktop(argv[0]);
    AddOptionsCommand(app, [&desktop] { return desktop.Open(); });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const int code = app.exit(error);
        // The commands' own exit codes pass through; a command line the parser refused is a usage error.
        return code == 0 || dynamic_cast<const CLI::RuntimeError*>(&error) ? code : 2;
    }
    if (info->parsed())
        return RunInfo(infoFile, stdout, stderr);
    std::fputs(app.help().c_str(), stdout);
    return 0;
}
