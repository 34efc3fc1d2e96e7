#include "base/FileSystem.h"

#include "base/Path.h"
#include "base/TextUtil.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

fs::path Native(std::string_view path) { return fs::path(ToNativePath(path)); }

bool Fail(std::string* error, const std::string& text)
{
    if (error)
        *error = text;
    return false;
}

std::string TemporarySibling(const fs::path& target)
{
    return target.string() + Format(".tmp%ld", static_cast<long>(getpid()));
}

} // namespace

bool FileExists(std::string_view path)
{
    std::error_code error;
    return fs::is_regular_file(Native(path), error);
}

bool DirectoryExists(std::string_view path)
{
    std::error_code error;
    return fs::is_directory(Native(path), error);
}

bool CreateDirectories(std::string_view path, std::string* error)
{
    std::error_code code;
    const fs::path native = Native(path);
    fs::create_directories(native, code);
    if (fs::is_directory(native))
        return true;
    return Fail(error, Format("cannot create folder %s: %s", native.string().c_str(), code.message().c_str()));
}

bool CopyFileTo(std::string_view source, std::string_view target, bool overwrite, std::string* error)
{
    std::error_code code;
    const fs::path from = Native(source), to = Native(target);
    const auto options = overwrite ? fs::copy_options::overwrite_existing : fs::copy_options::skip_existing;
    if (fs::copy_file(from, to, options, code) || (!code && fs::exists(to)))
        return true;
    return Fail(error, Format("cannot copy %s to %s: %s", from.string().c_str(), to.string().c_str(),
                              code ? code.message().c_str() : "target exists"));
}

bool DeleteFileAt(std::string_view path, std::string* error)
{
    std::error_code code;
    const fs::path native = Native(path);
    if (fs::remove(native, code) || (!code && !fs::exists(native)))
        return true;
    return Fail(error, Format("cannot delete %s: %s", native.string().c_str(), code.message().c_str()));
}

bool MakeWritable(std::string_view path)
{
    std::error_code code;
    fs::permissions(Native(path), fs::perms::owner_write, fs::perm_options::add, code);
    return !code;
}

bool IsWritableDirectory(std::string_view path)
{
    const std::string native = Native(path).string();
    return DirectoryExists(path) && access(native.c_str(), W_OK) == 0;
}

std::vector<DirectoryEntry> ListDirectory(std::string_view dir)
{
    std::vector<DirectoryEntry> entries;
    std::error_code code;
    for (fs::directory_iterator it(Native(dir), code), end; !code && it != end; it.increment(code)) {
        std::error_code typeCode;
        entries.push_back({it->path().filename().string(), it->is_directory(typeCode)});
    }
    std::sort(entries.begin(), entries.end(), [](const DirectoryEntry& a, const DirectoryEntry& b) {
        const int order = CompareNoCase(a.Name, b.Name);
        return order != 0 ? order < 0 : a.Name < b.Name;
    });
    return entries;
}

std::optional<std::string> FindFileNoCase(std::string_view dir, std::string_view name)
{
    for (const DirectoryEntry& entry : ListDirectory(dir))
        if (entry.Name == name)
            return entry.Name;
    for (const DirectoryEntry& entry : ListDirectory(dir))
        if (EqualsNoCase(entry.Name, name))
            return entry.Name;
    return std::nullopt;
}

bool ReadWholeFile(std::string_view path, std::string& contents, std::string* error)
{
    const fs::path native = Native(path);
    std::ifstream stream(native, std::ios::binary);
    if (!stream)
        return Fail(error, Format("cannot open %s: %s", native.string().c_str(), std::strerror(errno)));
    std::string data((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    if (stream.bad())
        return Fail(error, Format("cannot read %s", native.string().c_str()));
    contents = std::move(data);
    return true;
}

bool WriteFileAtomically(std::string_view path, std::string_view contents, std::string* error)
{
    AtomicFileWriter writer(path);
    writer.Append(contents);
    return writer.Commit(error);
}

AtomicFileWriter::AtomicFileWriter(std::string_view path)
    : m_target(Native(path).string()), m_temporary(TemporarySibling(Native(path)))
{
}

AtomicFileWriter::~AtomicFileWriter()
{
    if (m_file) {
        std::fclose(m_file);
        std::remove(m_temporary.c_str());
    }
}

bool AtomicFileWriter::Open()
{
    if (m_file || !m_error.empty())
        return m_file != nullptr;
    m_file = std::fopen(m_temporary.c_str(), "wb");
    if (!m_file)
        m_error = Format("cannot create %s: %s", m_temporary.c_str(), std::strerror(errno));
    return m_file != nullptr;
}

void AtomicFileWriter::Append(std::string_view bytes)
{
    if (Open() && std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size())
        m_error = Format("cannot write %s: %s", m_target.c_str(), std::strerror(errno));
}

bool AtomicFileWriter::Commit(std::string* error)
{
    Open();
    if (m_file) {
        const bool closed = std::fclose(m_file) == 0;
        m_file = nullptr;
        if (!closed && m_error.empty())
            m_error = Format("cannot write %s: %s", m_target.c_str(), std::strerror(errno));
        std::error_code code;
        if (m_error.empty())
            fs::rename(m_temporary, m_target, code);
        if (code)
            m_error = Format("cannot replace %s: %s", m_target.c_str(), code.message().c_str());
        if (!m_error.empty())
            std::remove(m_temporary.c_str());
    }
    return m_error.empty() || Fail(error, m_error);
}

std::string ModuleFolderOf(const void* address)
{
    Dl_info info {};
    if (dladdr(address, &info) == 0)
        return std::string();
    // The main program may be named as it was started, relative to a folder since left; the
    // kernel knows its file for certain.
    std::error_code error;
    fs::path file = info.dli_fname != nullptr ? fs::path(info.dli_fname) : fs::path();
    if (!file.is_absolute())
        file = fs::read_symlink("/proc/self/exe", error);
    if (error || file.empty())
        return std::string();
    return FromNativePath(file.lexically_normal().parent_path().string());
}
