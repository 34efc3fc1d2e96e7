#pragma once
// Starting the viewer on the result of an export.

#include <string>
#include <string_view>

struct ExternalProgramServices;

// The export a viewer is started on, as system paths; the directories end with a backslash and
// the project directory is empty when the target lies in no project.
struct ViewerTarget {
    std::string TargetFile;
    std::string TargetDirectory;
    std::string ProjectDirectory;
};

// program is either a path to the viewer (it names an ".exe" or is absolute), which is opened
// through the shell in the target directory, or the name of a registered program. The argument
// template's macros are expanded with the target's native paths. Failures are reported in a
// message box and never fail the export; answers whether the viewer started.
bool StartViewerProgram(const ExternalProgramServices& services, std::string_view program,
                        std::string_view argumentTemplate, const ViewerTarget& target);
