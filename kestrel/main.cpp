// The command-line exporter: runs the plug-in's translators over scenes loaded into the
// Maya API stand-in, in batch mode.

#include "base/Version.h"

#include <CLI/CLI.hpp>

#include <cstdio>

int main(int argc, char** argv)
{
    CLI::App app {"Kestrel: exports Maya scenes to Zephra engine assets", "kestrel"};
    app.set_version_flag("--version", ExporterVersionText, "Print the exporter's version and exit");
    CLI11_PARSE(app, argc, argv);
    std::fputs(app.help().c_str(), stdout);
    return 0;
}
