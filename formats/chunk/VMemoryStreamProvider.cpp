#include "formats/chunk/VMemoryStreamProvider.h"

#include "base/TextUtil.h"
#include "formats/chunk/VBufferStreams.h"

#include <utility>

void VMemoryStreamProvider::SetFile(std::string_view path, std::string bytes)
{
    for (File& file : m_files) {
        if (EqualsNoCase(file.Path, path)) {
            file.Bytes = std::move(bytes);
            return;
        }
    }
    m_files.push_back({std::string(path), std::move(bytes)});
}

const std::string* VMemoryStreamProvider::FindFile(std::string_view path) const
{
    for (const File& file : m_files)
        if (EqualsNoCase(file.Path, path))
            return &file.Bytes;
    return nullptr;
}

std::unique_ptr<VChunkInStream> VMemoryStreamProvider::OpenInput(std::string_view path)
{
    const std::string* bytes = FindFile(path);
    return bytes ? std::make_unique<VMemoryInStream>(*bytes) : nullptr;
}

std::unique_ptr<VChunkOutStream> VMemoryStreamProvider::CreateOutput(std::string_view path)
{
    if (path.empty())
        return nullptr;
    return std::make_unique<VBufferedOutStream>(
        [this, target = std::string(path)](std::string_view bytes, std::string&) {
            SetFile(target, std::string(bytes));
            return true;
        });
}
