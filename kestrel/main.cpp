// The command-line exporter: runs the plug-in's translators over scenes loaded into the
// Maya API stand-in, in batch mode.

#include "kestrel/ExportCommand.h"
#include "kestrel/ImportCommand.h"
#include "kestrel/InfoCommand.h"

#include "base/Version.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <string>

int main(int argc, char** argv)
{
    CLI::App app {"Kestrel: exports Maya scenes to Zephra engine assets", "kestrel"};
    app.set_version_flag("--version", ExporterVersionText, "Print the exporter's version and exit");

    std::string infoFile;
    CLI::App* info = app.add_subcommand("info", "Describe a scene file (Maya ASCII, FBX, glTF, COLLADA, OBJ) or an asset file "
                                                "(.qmesh, .qcolmesh, .model, .anim, .prefab)");
    info->add_option("FILE", infoFile, "The file to describe")->required();

    AddExportCommand(app);
    AddImportCommand(app);

    CLI11_PARSE(app, argc, argv);
    if (info->parsed())
        return RunInfo(infoFile, stdout, stderr);
    std::fputs(app.help().c_str(), stdout);
    return 0;
}
