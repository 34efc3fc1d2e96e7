#pragma once
// The file-system boundary. Every path here is a system path (backslashes, any case); the
// functions convert it with ToNativePath. Failures answer false and, where asked, a text the
// user can act on.

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

bool FileExists(std::string_view path);
bool DirectoryExists(std::string_view path);
// Creates the folder with every missing level; true when it exists afterwards.
bool CreateDirectories(std::string_view path, std::string* error = nullptr);
bool CopyFileTo(std::string_view source, std::string_view target, bool overwrite, std::string* error = nullptr);
bool DeleteFileAt(std::string_view path, std::string* error = nullptr);
// Clears the read-only state that a copied file may bring along, so later exports can replace it.
bool MakeWritable(std::string_view path);
bool IsWritableDirectory(std::string_view path);

struct DirectoryEntry {
    std::string Name;
    bool IsDirectory = false;
};
// The entries of a folder, ordered by name ignoring case so that every run sees the same order.
std::vector<DirectoryEntry> ListDirectory(std::string_view dir);
// The name under which name exists in dir, ignoring case; nothing when there is no such entry.
std::optional<std::string> FindFileNoCase(std::string_view dir, std::string_view name);

bool ReadWholeFile(std::string_view path, std::string& contents, std::string* error = nullptr);
// Writes to a temporary file beside the target and renames it over the target once complete,
// so that a failed or interrupted write leaves the previous file intact.
bool WriteFileAtomically(std::string_view path, std::string_view contents, std::string* error = nullptr);

// The same, for contents that come in pieces: each piece goes to the temporary file as it comes, so
// a large file is never held whole. The first failure is kept and told by Commit; a writer dropped
// without Commit removes its temporary file and leaves the target as it was.
class AtomicFileWriter {
public:
    explicit AtomicFileWriter(std::string_view path);
    ~AtomicFileWriter();
    AtomicFileWriter(const AtomicFileWriter&) = delete;
    AtomicFileWriter& operator=(const AtomicFileWriter&) = delete;

    void Append(std::string_view bytes);
    bool Commit(std::string* error = nullptr);

private:
    bool Open();

    std::string m_target;    // native
    std::string m_temporary; // native
    std::FILE* m_file = nullptr;
    std::string m_error;
};

// The folder of the program file or shared library that holds the code at address, without a
// closing backslash; empty when the system cannot tell.
std::string ModuleFolderOf(const void* address);
