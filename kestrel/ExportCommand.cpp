#include "kestrel/ExportCommand.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/LoadModel.h"
#include "formats/StaticMeshReader.h"
#include "formats/chunk/LastError.h"
#include "geometry/lightmap/GenerateLightmapUVs.h"
#include "importers/ImportScene.h"
#include "kestrel/AnimationEntries.h"
#include "kestrel/BatchExport.h"
#include "kestrel/LightmapPicture.h"
#include "kestrel/LoadedPlugin.h"
#include "model/VMModel.h"
#include "plugin/PluginModule.h"
#include "report/LogWindow.h"
#include "report/Progress.h"
#include "report/ReportText.h"
#include "report/TerminalLogSink.h"
#include "report/VReportView.h"
#include "settings/ApplicationSettings.h"
#include "settings/ExportOptionKeys.h"
#include "settings/IniSettingsStore.h"
#include "settings/PosixProcessLauncher.h"
#include "ui/BatchMessageBox.h"

#include <maya/MAnimControl.h>
#include <maya/MDagPath.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPxFileTranslator.h>
#include <standin/PluginHost.h>
#include <standin/SceneBuilder.h>

#include <CLI/CLI.hpp>

#include <unistd.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

namespace {

// The log window of a quiet run: it takes every line and shows none. Having a window at all keeps
// the export from going to look for the log viewer program, which a build machine never has.
class SilentLogSink final : public VLogSink {
public:
    void Send(std::string_view) override {}
};

class PrintedReport final : public VReportView {
public:
    PrintedReport(std::FILE* out, TerminalLogSink& log) : m_out(out), m_log(log) {}

    const std::vector<VReportEntry>& Shown() const { return m_shown; }

    void ShowReport(std::string_view caption, const std::vector<VReportEntry>& entries) override
    {
        m_shown.insert(m_shown.end(), entries.begin(), entries.end());
        m_log.EndLine();
        std::string text = ReportText(entries, caption);
        std::erase(text, '\r');
        std::fputs(text.c_str(), m_out);
    }

private:
    std::FILE* m_out;
    TerminalLogSink& m_log;
    std::vector<VReportEntry> m_shown;
};

// "Key=Value" lines as the settings block stores them; nothing (with the reason) for an
// unknown key or a value that could not be stored.
std::optional<std::string> OptionBlock(const std::vector<std::string>& settings, std::string& error)
{
    std::string block;
    for (const std::string& setting : settings) {
        const size_t equals = setting.find('=');
        const std::string key(TrimSpaces(std::string_view(setting).substr(0, equals)));
        if (equals == std::string::npos || key.empty()) {
            error = "'" + setting + "' is not of the form Key=Value";
            return std::nullopt;
        }
        const VOptionKey* option = FindExportOptionKey(key);
        if (!option) {
            error = "'" + key + "' is not an export option";
            return std::nullopt;
        }
        const std::string value(TrimSpaces(std::string_view(setting).substr(equals + 1)));
        if (value.find_first_of("\r\n") != std::string::npos) {
            error = "the value of '" + key + "' holds a line break";
            return std::nullopt;
        }
        block += "// " + std::string(option->Name) + " : " + value + "\r\n";
    }
    return block;
}

// The export translator that claims the target; the project translator is not one.
std::optional<std::string> ExportTranslatorFor(const std::string& target)
{
    for (const std::string& name : standin::TranslatorsFor(target)) {
        if (name != "Tessor_Project")
            return name;
    }
    return std::nullopt;
}

// The extensions of the export formats the plug-in registered.
std::string KnownExtensions()
{
    std::string known;
    for (const char* extension : {".qmesh", ".model", ".prefab"}) {
        if (ExportTranslatorFor(std::string("x") + extension))
            known += (known.empty() ? "" : ", ") + std::string(extension);
    }
    return known;
}

// The picture of each material's atlas goes to the file named, or, when several materials have
// one, to that name with the material's number before the extension.
int WriteLightmapPictures(const std::string& picture, const std::string& target, std::FILE* out, std::FILE* err)
{
    VStaticMeshFile mesh;
    if (!ReadStaticMesh(FromNativePath(target), mesh)) {
        std::fprintf(err, "kestrel export: cannot read '%s' back to draw its lightmap atlas: %s\n", target.c_str(),
                     LastError().Text.c_str());
        return 1;
    }
    const std::vector<AtlasPicture> pictures = DrawLightmapAtlases(mesh, LightmapAtlasSize);
    if (pictures.empty()) {
        std::fprintf(err, "kestrel export: '%s' has no lightmap UVs to draw; export with --set LightmapUVs=1\n",
                     target.c_str());
        return 1;
    }
    for (const AtlasPicture& drawn : pictures) {
        std::filesystem::path name = picture;
        if (pictures.size() > 1)
            name.replace_filename(name.stem().string() + "." + std::to_string(drawn.Material) + name.extension().string());
        std::string error;
        if (!WriteFileAtomically(FromNativePath(AbsoluteNative(name.string())), drawn.Png, &error)) {
            std::fprintf(err, "kestrel export: cannot write '%s': %s\n", name.string().c_str(), error.c_str());
            return 1;
        }
        std::fprintf(out, "Lightmap atlas of material '%s' drawn to '%s'\n",
                     mesh.Materials[static_cast<size_t>(drawn.Material)]->Name.c_str(), name.string().c_str());
    }
    return 0;
}

std::optional<std::vector<VAnimationDescription>> ParseAnimationEntries(const std::vector<std::string>& texts,
                                                                       std::string& error)
{
    std::vector<VAnimationDescription> entries;
    for (const std::string& text : texts) {
        std::optional<VAnimationDescription> entry = ParseAnimationEntry(text, error);
        if (!entry) {
            error = "'" + text + "': " + error;
            return std::nullopt;
        }
        entries.push_back(std::move(*entry));
    }
    return entries;
}

bool SceneHas(MFn::Type type)
{
    return !MItDependencyNodes(type).isDone();
}

// The clips of the loaded scene; one over the playback range when the file named none but its
// curves animate it.
std::vector<ImportedClip> ClipsOf(const ImportResult& import, const std::string& scene)
{
    if (!import.Clips.empty() || !SceneHas(MFn::kAnimCurve))
        return import.Clips;
    return {{std::filesystem::path(scene).stem().string(), MAnimControl::minTime().value(),
             MAnimControl::maxTime().value()}};
}

bool SetsOption(const std::vector<std::string>& settings, std::string_view key)
{
    return std::any_of(settings.begin(), settings.end(), [&](const std::string& setting) {
        return EqualsNoCase(TrimSpaces(std::string_view(setting).substr(0, setting.find('='))), key);
    });
}

// The triangles of the asset written, read back through our own readers; 0 for other targets.
int TrianglesOf(const std::string& target)
{
    if (EqualsNoCase(ExtensionOf(target), ".qmesh")) {
        VStaticMeshFile mesh;
        return ReadStaticMesh(target, mesh) ? mesh.TriangleCount : 0;
    }
    if (EqualsNoCase(ExtensionOf(target), ".model")) {
        VMModel model;
        return LoadModel(model, target) ? model.Faces.Count() : 0;
    }
    return 0;
}

// --debug switches debug printing on for one run; the user's own setting is back when it ends.
class DebugPrintForRun {
public:
    explicit DebugPrintForRun(bool on) : m_saved(TheApplicationSettings().DebugPrint)
    {
        if (on)
            TheApplicationSettings().DebugPrint = 1;
    }
    ~DebugPrintForRun() { TheApplicationSettings().DebugPrint = m_saved; }
    DebugPrintForRun(const DebugPrintForRun&) = delete;
    DebugPrintForRun& operator=(const DebugPrintForRun&) = delete;

private:
    int32_t m_saved;
};

// What the command line asks of a batch: several scenes into one folder, or a batch file, or both.
struct BatchCommand {
    std::vector<std::string> Scenes;
    std::string File;
    std::string Extension;
    BatchOptions Options;
};

int RunBatchCommand(const ExportRequest& request, BatchCommand batch, std::FILE* out, std::FILE* err)
{
    std::vector<BatchEntry> entries;
    if (!batch.Scenes.empty() && request.Target.empty()) {
        std::fputs("kestrel export: with several scenes, --output names the folder to export them into\n", err);
        return 2;
    }
    for (const std::string& scene : batch.Scenes)
        entries.push_back(BatchEntry {scene, TargetInFolder(scene, request.Target, batch.Extension), {}});
    std::string error;
    if (!batch.File.empty() && !ReadBatchFile(batch.File, entries, error)) {
        std::fprintf(err, "kestrel export: %s\n", error.c_str());
        return 2;
    }
    if (entries.empty()) {
        std::fputs("kestrel export: no scene to export\n", err);
        return 2;
    }
    if (!request.Selection.empty() || !request.LightmapPicture.empty()) {
        std::fputs("kestrel export: --selection and --lightmap-png take a single scene\n", err);
        return 2;
    }
    // Options of the command line come first, so that a line of the batch file can change them.
    for (BatchEntry& entry : entries)
        entry.Settings.insert(entry.Settings.begin(), request.Settings.begin(), request.Settings.end());
    std::error_code ignored;
    batch.Options.Program = std::filesystem::read_symlink("/proc/self/exe", ignored).string();
    if (request.Debug)
        batch.Options.ExtraOptions.push_back("--debug");
    if (request.Clips)
        batch.Options.ExtraOptions.push_back("--clips");
    for (const std::string& animation : request.Animations)
        batch.Options.ExtraOptions.insert(batch.Options.ExtraOptions.end(), {"--anim", animation});
    return ExportBatch(entries, batch.Options, out, err);
}

// What a batch run gathers from each export process: "triangles issues".
void WriteCounts(const std::string& nativePath, const std::string& target, int issues)
{
    std::error_code ignored;
    const std::string absolute = std::filesystem::absolute(nativePath, ignored).string();
    WriteFileAtomically(FromNativePath(absolute), Format("%d %d\n", TrianglesOf(target), issues));
}

} // namespace

std::string AbsoluteNative(const std::string& path)
{
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

int RunExport(const ExportRequest& request, const SceneLoader& loadScene, std::FILE* out, std::FILE* err)
{
    std::string error;
    const std::optional<std::string> options = OptionBlock(request.Settings, error);
    if (!options) {
        std::fprintf(err, "kestrel export: --set %s\n", error.c_str());
        return 2;
    }

    const std::optional<std::vector<VAnimationDescription>> animations =
        ParseAnimationEntries(request.Animations, error);
    if (!animations) {
        std::fprintf(err, "kestrel export: --anim %s\n", error.c_str());
        return 2;
    }

    TerminalLogSink terminal(out, request.Progress && isatty(fileno(out)) != 0);
    SilentLogSink silent;
    VLogSink& log = request.Quiet ? static_cast<VLogSink&>(silent) : terminal;
    TakePhaseTimes();
    const std::string scene = FromNativePath(AbsoluteNative(request.Scene));
    SetLogSink(&log);
    BeginPhase("Importing");
    const ImportResult import = loadScene(scene);
    EndPhase();
    SetLogSink(nullptr);
    if (!request.Quiet)
        for (const ImportWarning& warning : import.Warnings)
            std::fprintf(err, "kestrel export: warning: %s\n", warning.Describe().c_str());
    if (!import.Ok) {
        std::fprintf(err, "kestrel export: cannot load '%s': %s\n", request.Scene.c_str(), import.Error.c_str());
        return 1;
    }
    std::vector<MDagPath> selection;
    for (const std::string& node : request.Selection) {
        const MDagPath path = standin::PathTo(node);
        if (!path.isValid()) {
            std::fprintf(err, "kestrel export: the scene has no node named '%s'\n", node.c_str());
            return 1;
        }
        selection.push_back(path);
    }
    standin::Select(selection);
    standin::SetSceneFileName(std::filesystem::path(AbsoluteNative(request.Scene)).generic_string());

    IniSettingsStore store(DefaultUserSettingsFilePath());
    store.Load();
    PosixProcessLauncher launcher;
    BatchMessageBox messageBox(out);
    PrintedReport report(out, terminal);
    PluginServices services;
    services.SettingsStore = &store;
    services.ProcessLauncher = &launcher;
    services.MessageBox = &messageBox;
    services.FiledReportView = &report;
    services.OptionOverrides = *options;
    services.ReportPage = request.ReportPage;
    if (request.Clips) {
        const bool bones = SceneHas(MFn::kJoint);
        const std::vector<ImportedClip> clips = ClipsOf(import, request.Scene);
        if (clips.empty())
            std::fprintf(err, "kestrel export: warning: --clips: the scene is not animated\n");
        std::vector<std::string> skipped;
        services.AnimationOverrides = ClipEntries(clips, bones ? kAnimTypeBone : kAnimTypeMuscle, skipped);
        for (const std::string& clip : skipped)
            std::fprintf(err, "kestrel export: warning: the clip '%s' begins before frame 0 and is left out\n",
                         clip.c_str());
        if (bones && !SetsOption(request.Settings, "ExportBones"))
            services.OptionOverrides += "// ExportBones : 1\r\n";
    }
    services.AnimationOverrides.insert(services.AnimationOverrides.end(), animations->begin(), animations->end());

    LoadedPlugin plugin(services);
    const DebugPrintForRun debugPrint(request.Debug);
    // The terminal is the log window of a batch run, whatever the user chose for Maya's.
    SetLogSink(&log);
    if (!plugin.Load()) {
        std::fprintf(err, "kestrel export: the plug-in did not load\n");
        return 1;
    }

    const std::string targetNative = AbsoluteNative(request.Target);
    const std::string target = FromNativePath(targetNative);
    const std::optional<std::string> translator = ExportTranslatorFor(target);
    if (!translator) {
        std::fprintf(err, "kestrel export: no translator writes '%s'; the known extensions are %s\n",
                     request.Target.c_str(), KnownExtensions().c_str());
        return 2;
    }
    // Maya's file dialog offers only existing folders; on the command line the folder is made.
    if (!CreateDirectories(DirectoryOf(target), &error)) {
        std::fprintf(err, "kestrel export: cannot create the folder of '%s': %s\n", request.Target.c_str(),
                     error.c_str());
        return 1;
    }

    const MPxFileTranslator::FileAccessMode mode =
        selection.empty() ? MPxFileTranslator::kExportAccessMode : MPxFileTranslator::kExportActiveAccessMode;
    const MStatus status = standin::ExportFile(*translator, target, mode);
    terminal.EndLine();
    if (!request.ResultFile.empty())
        WriteCounts(request.ResultFile, target, static_cast<int>(report.Shown().size()));
    if (!status) {
        std::fprintf(err, "kestrel export: the export to '%s' failed\n", targetNative.c_str());
        return 1;
    }
    if (!request.Quiet)
        std::fprintf(out, "Exported '%s' to '%s'\n", request.Scene.c_str(), targetNative.c_str());
    if (!request.LightmapPicture.empty())
        return WriteLightmapPictures(request.LightmapPicture, targetNative, out, err);
    return 0;
}

void AddExportCommand(CLI::App& app)
{
    auto request = std::make_shared<ExportRequest>();
    auto batch = std::make_shared<BatchCommand>();
    CLI::App* command = app.add_subcommand("export", "Export a scene (Maya ASCII, FBX, glTF, COLLADA, OBJ) to an "
                                                     "engine asset (.qmesh, .model, .prefab)");
    command->add_option("SCENE", batch->Scenes, "The scene file; with several, each is exported in a process of its own");
    command->add_option("-o,--output", request->Target,
                        "The asset file to write; with several scenes, the folder that gets a folder per scene");
    command->add_option("--batch", batch->File, "Export each line \"scene target [--set Key=Value ...]\" of this file");
    command->add_option("-j,--jobs", batch->Options.Jobs, "Run up to N exports of a batch at once")
        ->check(CLI::Range(1, 256));
    command->add_option("--json", batch->Options.JsonPath, "Write the summary of a batch to this file as JSON");
    command->add_option("--format", batch->Extension, "The asset type of several scenes exported to one folder")
        ->default_val(".qmesh");
    command->add_option("--result-file", request->ResultFile, "")->group("");
    command->add_option("--selection", request->Selection, "Export only these nodes, as Export Selection does");
    command->add_option("--set", request->Settings, "Change an export option for this export (Key=Value)");
    command->add_option("--anim", request->Animations,
                        "Add or replace an animation of a .model export: "
                        "NAME:START-END[:loop][:type=bone|muscle|morph][:motion=xyz][:rot=x|y|z]");
    command->add_flag("--clips", request->Clips, "Export each animation clip of the scene as an animation");
    command->add_flag("--debug", request->Debug, "Write debug.txt beside the target");
    command->add_flag("!--no-report-page", request->ReportPage, "Do not write report.html beside the target");
    command->add_flag("!--no-progress", request->Progress, "Print plain lines, no progress bar, even on a terminal");
    command->add_flag("-q,--quiet", request->Quiet, "Print only the report of issues and errors");
    command->add_option("--lightmap-png", request->LightmapPicture,
                        "Draw the lightmap atlas of each material into this PNG file (with LightmapUVs=1)");
    command->footer("Exit codes: 0 every export succeeded; 1 an export failed (in a batch: any); 2 the command "
                    "line or a batch file is wrong.");
    command->callback([request, batch] {
        if (batch->Scenes.size() != 1 || !batch->File.empty() || !batch->Options.JsonPath.empty()) {
            const int code = RunBatchCommand(*request, *batch, stdout, stderr);
            if (code == 0)
                throw CLI::Success();
            throw CLI::RuntimeError(code);
        }
        request->Scene = batch->Scenes.front();
        if (request->Target.empty()) {
            std::fputs("kestrel export: --output is required\n", stderr);
            throw CLI::RuntimeError(2);
        }
        const int code = RunExport(*request, [](const std::string& path) { return ImportScene(path); }, stdout, stderr);
        // The exit code travels through CLI11's own exit path, so that main stays one dispatch.
        if (code == 0)
            throw CLI::Success();
        throw CLI::RuntimeError(code);
    });
}
