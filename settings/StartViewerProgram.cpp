#include "settings/StartViewerProgram.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "settings/ExternalProgramServices.h"
#include "settings/LaunchRegisteredProgram.h"
#include "settings/VProcessLauncher.h"
#include "settings/ViewerArguments.h"
#include "ui/VMessageBox.h"

namespace {

// A program file: ".exe" somewhere, or a network path or one with a drive colon. Anything else
// names a registered program, also "\\tools\\viewer" or "/usr/bin/viewer", which register
// their path under their name like every other program of the maker.
bool NamesProgramFile(std::string_view program)
{
    const std::string lower = ToLowerAscii(program);
    return lower.find(".exe") != std::string::npos || program.starts_with("\\\\") ||
           program.find(':') != std::string_view::npos;
}

} // namespace

bool StartViewerProgram(const ExternalProgramServices& services, std::string_view program,
                        std::string_view argumentTemplate, const ViewerTarget& target)
{
    // The viewer is outside the system, so it is handed the paths in the platform's own form.
    const std::string arguments =
        ExpandViewerArguments(argumentTemplate, ToNativePath(target.TargetFile), ToNativePath(target.TargetDirectory),
                              target.ProjectDirectory.empty() ? std::string() : ToNativePath(target.ProjectDirectory));

    if (!NamesProgramFile(program))
        return LaunchRegisteredProgram(services, program, arguments);

    const int result = services.Launcher.ShellOpen(program, arguments, target.TargetDirectory);
    if (result > kShellOpenFailureLimit)
        return true;
    VMessageBoxRequest request;
    request.Caption = "Error";
    request.Text = Format("Unable to execute '%.*s'\r\n(Error:0x%x)\r\n", static_cast<int>(program.size()),
                          program.data(), static_cast<unsigned>(result));
    services.MessageBox.Show(request);
    return false;
}
