#pragma once
// Starting one of the maker's programs by name, wherever it was installed.

#include <optional>
#include <string_view>

struct ExternalProgramServices;

// The argument text is argumentFormat with its first "%s" replaced by argument when one is given,
// else argumentFormat unchanged. Logs "Launching '<name> <arguments>'..." and starts the
// registered path with the arguments. An unregistered program is reported in a message box.
// Answers whether the process started.
bool LaunchRegisteredProgram(const ExternalProgramServices& services, std::string_view programName,
                             std::string_view argumentFormat, std::optional<std::string_view> argument = std::nullopt);

// The log viewer, started hidden when the log window is wanted and not running.
bool LaunchLogViewer(const ExternalProgramServices& services);
