#pragma once
// "kestrel export SCENE -o TARGET [--selection NODE...] [--set Key=Value...] [--anim ENTRY...]
// [--clips] [--debug] [--no-progress] [--quiet] [--no-report-page] [--lightmap-png PICTURE]": loads
// the scene into the Maya stand-in, loads the plug-in through the host and runs the translator of
// the target's format in batch mode, as Maya's export-all or export-selection would (the plug-in
// writes the report page unless --no-report-page); then, if asked, draws the target's lightmap
// atlases. Several scenes, or
// "--batch FILE", run as a batch of export processes (BatchExport.h).

#include "importers/ImportResult.h"

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

struct ExportRequest {
    // Native paths, as typed.
    std::string Scene;
    std::string Target;
    // Nodes to select; empty exports the whole scene.
    std::vector<std::string> Selection;
    // "Key=Value" changes of the option record for this export.
    std::vector<std::string> Settings;
    // Animation entries to add or replace (AnimationEntries.h), after those of Clips.
    std::vector<std::string> Animations;
    // One entry per clip the importer found: bone animations with bones switched on when the
    // scene has joints (unless Settings name ExportBones), muscle animations otherwise. A scene
    // without clips whose curves animate it gives one entry over the playback range.
    bool Clips = false;
    bool Debug = false;
    // A progress bar on a terminal; plain lines when false or when the output is no terminal.
    bool Progress = true;
    // Only the report of issues and errors is printed.
    bool Quiet = false;
    // "report.html" beside the target.
    bool ReportPage = true;
    // Native path of the picture of the lightmap atlas; empty draws none.
    std::string LightmapPicture;
    // Native path that gets "triangles issues" of the export, for a batch run to gather.
    std::string ResultFile;
};

// Replaces the stand-in's scene by the file's (a system path).
using SceneLoader = std::function<ImportResult(const std::string& path)>;

// A path typed on the command line, made absolute and normal (as typed when that fails).
std::string AbsoluteNative(const std::string& path);

// Returns the process exit code: 0 when the translator answered success.
int RunExport(const ExportRequest& request, const SceneLoader& loadScene, std::FILE* out, std::FILE* err);

// Adds the subcommand; it loads scenes through the importers.
void AddExportCommand(CLI::App& app);
