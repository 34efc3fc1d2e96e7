#include "settings/LaunchRegisteredProgram.h"

#include "base/TextUtil.h"
#include "report/LogWindow.h"
#include "settings/ExternalProgramServices.h"
#include "settings/ProgramRegistry.h"
#include "settings/VProcessLauncher.h"
#include "ui/VMessageBox.h"

#include <string>

namespace {

// Only the one placeholder is filled: the format may come from the user's settings, and a
// printf-style fill would read arguments that are not there.
std::string FillArgumentFormat(std::string_view argumentFormat, std::optional<std::string_view> argument)
{
    std::string text(argumentFormat);
    if (!argument)
        return text;
    const size_t placeholder = text.find("%s");
    if (placeholder != std::string::npos)
        text.replace(placeholder, 2, *argument);
    return text;
}

} // namespace

bool LaunchRegisteredProgram(const ExternalProgramServices& services, std::string_view programName,
                             std::string_view argumentFormat, std::optional<std::string_view> argument)
{
    if (!IsProgramRegistered(services.Store, programName)) {
        VMessageBoxRequest request;
        request.Caption = "Error";
        request.Text = Format("Error: The location of program '%.*s' is unknown. Please run it once to register it.\r\n",
                              static_cast<int>(programName.size()), programName.data());
        services.MessageBox.Show(request);
        return false;
    }

    const std::string arguments = FillArgumentFormat(argumentFormat, argument);
    LogRaw("Launching '" + std::string(programName) + " " + arguments + "'...\r\n");

    const std::string path = UnquotedProgramPath(RegisteredProgramPath(services.Store, programName).value_or(""));
    return services.Launcher.StartProcess("\"" + path + "\" " + arguments);
}

bool LaunchLogViewer(const ExternalProgramServices& services)
{
    return LaunchRegisteredProgram(services, "Reslook", "-hide");
}
