#include "formats/chunk/VFileStreamProvider.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "formats/chunk/VBufferStreams.h"

#include <string>

std::unique_ptr<VChunkInStream> VFileStreamProvider::OpenInput(std::string_view path)
{
    std::string bytes;
    if (!FileExists(path) || !ReadWholeFile(path, bytes))
        return nullptr;
    return std::make_unique<VMemoryInStream>(std::move(bytes));
}

namespace {

// Hands each write on to a temporary file beside the target, so that a large asset is never held
// whole; the target is replaced on commit.
class AtomicFileOutStream : public VChunkOutStream {
public:
    explicit AtomicFileOutStream(std::string_view path) : m_writer(path) {}
    size_t Write(const void* data, size_t length) override
    {
        m_writer.Append(std::string_view(static_cast<const char*>(data), length));
        return length;
    }
    bool Commit(std::string& error) override { return m_writer.Commit(&error); }

private:
    AtomicFileWriter m_writer;
};

} // namespace

std::unique_ptr<VChunkOutStream> VFileStreamProvider::CreateOutput(std::string_view path)
{
    // The target is replaced only on commit; checking the folder now lets a bad target fail
    // where the caller expects it, when the file is created.
    const std::string folder = DirectoryOf(path);
    if (FileNameOf(path).empty() || DirectoryExists(path) || !IsWritableDirectory(folder.empty() ? "." : folder))
        return nullptr;
    return std::make_unique<AtomicFileOutStream>(path);
}

VChunkStreamProvider& DefaultChunkStreamProvider()
{
    static VFileStreamProvider provider;
    return provider;
}
