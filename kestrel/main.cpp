// The command-line exporter: runs the plug-in's translators over scenes loaded into the
// Maya API stand-in, in batch mode.

#include <CLI/CLI.hpp>

#include <cstdio>

namespace {

// The version the module reports to Maya, in the engine's comma-separated form.
constexpr const char* kVersionText = "7, 6, 3, 0";

} // namespace

int main(int argc, char** argv)
{
    CLI::App app {"Kestrel: exports Maya scenes to Zephra engine assets", "kestrel"};
    app.set_version_flag("--version", kVersionText, "Print the exporter's version and exit");
    CLI11_PARSE(app, argc, argv);
    std::fputs(app.help().c_str(), stdout);
    return 0;
}
