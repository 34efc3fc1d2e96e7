#include "kestrel/BatchExport.h"

#include "base/FileSystem.h"
#include "base/Number.h"
#include "base/Path.h"
#include "base/TextUtil.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <system_error>

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;

struct BatchResult {
    BatchEntry Entry;
    // The export process's exit code; negative for the signal that ended it.
    int ExitCode = 0;
    int Triangles = 0;
    int Issues = 0;
    double Seconds = 0.0;
};

// Splits at spaces; double quotes keep spaces inside a word.
bool SplitWords(const std::string& line, std::vector<std::string>& words)
{
    std::string word;
    bool inWord = false;
    bool quoted = false;
    for (const char c : line) {
        if (c == '"') {
            quoted = !quoted;
            inWord = true;
        } else if ((c == ' ' || c == '\t') && !quoted) {
            if (inWord)
                words.push_back(std::move(word));
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord)
        words.push_back(std::move(word));
    return !quoted;
}

std::string FromFolder(const std::filesystem::path& folder, const std::string& path)
{
    const std::filesystem::path given = path;
    return given.is_absolute() ? path : (folder / given).lexically_normal().string();
}

std::string ReadText(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// One export process under way.
struct RunningExport {
    size_t Index = 0;
    Clock::time_point Started;
    std::filesystem::path Output;
    std::filesystem::path Result;
};

pid_t StartExport(const BatchOptions& options, const BatchEntry& entry, const RunningExport& running)
{
    std::vector<std::string> arguments = {options.Program, "export", entry.Scene, "-o", entry.Target, "--quiet",
                                          "--result-file", running.Result.string()};
    for (const std::string& setting : entry.Settings) {
        arguments.push_back("--set");
        arguments.push_back(setting);
    }
    arguments.insert(arguments.end(), options.ExtraOptions.begin(), options.ExtraOptions.end());
    std::vector<char*> argv;
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, running.Output.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0644);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    pid_t pid = -1;
    if (posix_spawn(&pid, options.Program.c_str(), &actions, nullptr, argv.data(), environ) != 0)
        pid = -1;
    posix_spawn_file_actions_destroy(&actions);
    return pid;
}

void Finish(const RunningExport& running, int status, BatchResult& result, std::FILE* out)
{
    result.Seconds = std::chrono::duration<double>(Clock::now() - running.Started).count();
    result.ExitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    std::istringstream counts(ReadText(running.Result));
    counts >> result.Triangles >> result.Issues;
    const std::string printed = ReadText(running.Output);
    if (result.ExitCode != 0 || !printed.empty()) {
        std::fprintf(out, "== %s -> %s\n%s", result.Entry.Scene.c_str(), result.Entry.Target.c_str(), printed.c_str());
        if (result.ExitCode < 0)
            std::fprintf(out, "the export process was ended by signal %d\n", -result.ExitCode);
    }
    std::fflush(out);
}

std::string ResultText(int exitCode)
{
    if (exitCode == 0)
        return "ok";
    return exitCode > 0 ? Format("failed (%d)", exitCode) : Format("crashed (signal %d)", -exitCode);
}

std::string JsonString(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            quoted += std::string("\\") + c;
        else if (static_cast<unsigned char>(c) < 0x20)
            quoted += Format("\\u%04x", static_cast<unsigned char>(c));
        else
            quoted += c;
    }
    return quoted + "\"";
}


std::vector<BatchResult> RunExports(const std::vector<BatchEntry>& entries, const BatchOptions& options, std::FILE* out)
{
    std::vector<BatchResult> results(entries.size());
    std::string scratchName = (std::filesystem::temp_directory_path() / "kestrel-batch-XXXXXX").string();
    const bool haveScratch = mkdtemp(scratchName.data()) != nullptr;
    const std::filesystem::path scratch = scratchName;

    std::map<pid_t, RunningExport> running;
    size_t next = 0;
    while (next < entries.size() || !running.empty()) {
        while (next < entries.size() && static_cast<int>(running.size()) < std::max(options.Jobs, 1)) {
            BatchResult& result = results[next];
            result.Entry = entries[next];
            RunningExport started {next, Clock::now(), scratch / Format("%zu.out", next), scratch / Format("%zu.counts", next)};
            const pid_t pid = haveScratch ? StartExport(options, entries[next], started) : -1;
            if (pid > 0) {
                running.emplace(pid, std::move(started));
            } else {
                result.ExitCode = 1;
                std::fprintf(out, "== %s -> %s\ncannot start '%s'\n", result.Entry.Scene.c_str(),
                             result.Entry.Target.c_str(), options.Program.c_str());
            }
            ++next;
        }
        if (running.empty())
            continue;
        int status = 0;
        const pid_t ended = waitpid(-1, &status, 0);
        const auto found = running.find(ended);
        if (found == running.end())
            continue;
        Finish(found->second, status, results[found->second.Index], out);
        running.erase(found);
    }
    std::error_code ignored;
    if (haveScratch)
        std::filesystem::remove_all(scratch, ignored);
    return results;
}

std::string SummaryTable(const std::vector<BatchResult>& results)
{
    std::vector<std::vector<std::string>> rows = {{"scene", "target", "result", "triangles", "issues", "time"}};
    for (const BatchResult& result : results)
        rows.push_back({result.Entry.Scene, result.Entry.Target, ResultText(result.ExitCode),
                        FormatInt(result.Triangles), FormatInt(result.Issues), FormatFloat(result.Seconds, 1) + " s"});
    std::vector<size_t> widths(rows.front().size(), 0);
    for (const auto& row : rows)
        for (size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], row[column].size());
    std::string table;
    for (const auto& row : rows) {
        std::string line;
        for (size_t column = 0; column < row.size(); ++column) {
            // Text columns to the left, figures to the right.
            const size_t pad = widths[column] - row[column].size();
            if (column >= 3)
                line += std::string(pad, ' ') + row[column];
            else
                line += row[column] + std::string(pad, ' ');
            line += column + 1 < row.size() ? "  " : "";
        }
        while (!line.empty() && line.back() == ' ')
            line.pop_back();
        table += line + "\n";
    }
    const auto failed = std::count_if(results.begin(), results.end(), [](const BatchResult& r) { return r.ExitCode != 0; });
    table += Format("%zu exported, %zu failed\n", results.size() - static_cast<size_t>(failed), static_cast<size_t>(failed));
    return table;
}

std::string SummaryJson(const std::vector<BatchResult>& results)
{
    std::string json = "[\n";
    for (size_t index = 0; index < results.size(); ++index) {
        const BatchResult& result = results[index];
        json += "  {\"scene\": " + JsonString(result.Entry.Scene) + ", \"target\": " + JsonString(result.Entry.Target) +
                ", \"result\": " + JsonString(result.ExitCode == 0 ? "ok" : "failed") +
                ", \"exitCode\": " + FormatInt(result.ExitCode) + ", \"triangles\": " + FormatInt(result.Triangles) +
                ", \"issues\": " + FormatInt(result.Issues) + ", \"seconds\": " + FormatFloat(result.Seconds, 3) + "}";
        json += index + 1 < results.size() ? ",\n" : "\n";
    }
    return json + "]\n";
}

} // namespace


bool ReadBatchFile(const std::string& nativePath, std::vector<BatchEntry>& entries, std::string& error)
{
    std::ifstream in(nativePath, std::ios::binary);
    if (!in) {
        error = nativePath + ": cannot be read";
        return false;
    }
    const std::filesystem::path folder = std::filesystem::path(nativePath).parent_path();
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const std::string where = Format("%s:%d: ", nativePath.c_str(), number);
        std::vector<std::string> words;
        if (!SplitWords(line, words)) {
            error = where + "a double quote is not closed";
            return false;
        }
        if (words.empty() || words.front().starts_with('#'))
            continue;
        if (words.size() < 2) {
            error = where + "expected \"scene target [--set Key=Value ...]\"";
            return false;
        }
        BatchEntry entry;
        entry.Scene = FromFolder(folder, words[0]);
        entry.Target = FromFolder(folder, words[1]);
        for (size_t word = 2; word < words.size(); word += 2) {
            if (words[word] != "--set" || word + 1 == words.size()) {
                error = where + "after the target only \"--set Key=Value\" may follow, not '" + words[word] + "'";
                return false;
            }
            entry.Settings.push_back(words[word + 1]);
        }
        entries.push_back(std::move(entry));
    }
    return true;
}

std::string TargetInFolder(const std::string& scene, const std::string& folder, const std::string& extension)
{
    const std::string name = std::filesystem::path(scene).stem().string();
    return (std::filesystem::path(folder) / name / (name + extension)).string();
}

int ExportBatch(const std::vector<BatchEntry>& entries, const BatchOptions& options, std::FILE* out, std::FILE* err)
{
    const std::vector<BatchResult> results = RunExports(entries, options, out);
    std::fputs(SummaryTable(results).c_str(), out);
    int code = std::any_of(results.begin(), results.end(), [](const BatchResult& r) { return r.ExitCode != 0; }) ? 1 : 0;
    std::string error;
    if (!options.JsonPath.empty() && !WriteFileAtomically(FromNativePath(options.JsonPath), SummaryJson(results), &error)) {
        std::fprintf(err, "kestrel export: cannot write '%s': %s\n", options.JsonPath.c_str(), error.c_str());
        code = 1;
    }
    return code;
}
