#include "formats/chunk/VFileStreamProvider.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "formats/chunk/VBufferStreams.h"

#include <string>
#include <utility>

std::unique_ptr<VChunkInStream> VFileStreamProvider::OpenInput(std::string_view path)
{
    std::string bytes;
    if (!FileExists(path) || !ReadWholeFile(path, bytes))
        return nullptr;
    return std::make_unique<VMemoryInStream>(std::move(bytes));
}

std::unique_ptr<VChunkOutStream> VFileStreamProvider::CreateOutput(std::string_view path)
{
    // The bytes reach the disk only on commit; checking the folder now lets a bad target fail
    // where the caller expects it, when the file is created.
    const std::string folder = DirectoryOf(path);
    if (FileNameOf(path).empty() || DirectoryExists(path) || !IsWritableDirectory(folder.empty() ? "." : folder))
        return nullptr;
    return std::make_unique<VBufferedOutStream>(
        [target = std::string(path)](std::string_view bytes, std::string& error) {
            return WriteFileAtomically(target, bytes, &error);
        });
}

VChunkStreamProvider& DefaultChunkStreamProvider()
{
    static VFileStreamProvider provider;
    return provider;
}
