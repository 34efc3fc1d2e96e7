#pragma once
// Many exports in one run: each scene is exported by a process of its own, so that a scene that
// brings the exporter down costs only its own asset; up to a number of them run at once. One
// summary table follows (and, if asked, the same as JSON for CI); the run fails when any export did.

#include <cstdio>
#include <string>
#include <vector>

struct BatchEntry {
    // Native paths.
    std::string Scene;
    std::string Target;
    // "Key=Value" option changes for this export.
    std::vector<std::string> Settings;
};

// Reads "scene target [--set Key=Value ...]" lines; blank lines and lines starting with '#' are
// skipped, a path holding spaces is written in double quotes, and relative paths are taken from
// the batch file's folder. False with "FILE:LINE: reason" in error.
bool ReadBatchFile(const std::string& nativePath, std::vector<BatchEntry>& entries, std::string& error);

// The target of a scene exported beside others into one folder: a folder of its own named after the
// scene, as each export writes its log, report and textures beside its target.
std::string TargetInFolder(const std::string& scene, const std::string& folder, const std::string& extension);

struct BatchOptions {
    // The kestrel executable each export runs in.
    std::string Program;
    // How many exports run at once.
    int Jobs = 1;
    // Passed to every export, such as "--debug".
    std::vector<std::string> ExtraOptions;
    // Native path of the summary as JSON; empty writes none.
    std::string JsonPath;
};

// Runs "Program export" for each entry, at most Jobs at a time; prints each export's own output
// as it ends, then the summary table (scene, target, result, triangles, issues, time). Answers the
// exit code: 0 when every export succeeded, 1 when any failed or the JSON could not be written.
int ExportBatch(const std::vector<BatchEntry>& entries, const BatchOptions& options, std::FILE* out, std::FILE* err);
