// The file layout of PNG (ISO/IEC 15948): the signature, then chunks of
// big-endian length, type, data and the CRC-32 of type and data: IHDR, one IDAT, IEND.

#include "formats/EncodePng.h"

#include <zlib.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace {

void PutBigEndian(std::string& out, uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<char>((value >> shift) & 0xFFu));
}

void PutChunk(std::string& out, std::string_view type, std::string_view data)
{
    PutBigEndian(out, static_cast<uint32_t>(data.size()));
    const size_t start = out.size();
    out.append(type);
    out.append(data);
    const auto* bytes = reinterpret_cast<const Bytef*>(out.data() + start);
    PutBigEndian(out, static_cast<uint32_t>(crc32(0L, bytes, static_cast<uInt>(out.size() - start))));
}

} // namespace

std::string EncodePng(int width, int height, std::span<const uint8_t> rgb)
{
    if (width <= 0 || height <= 0)
        return {};
    const size_t rowBytes = 3 * static_cast<size_t>(width);
    if (rgb.size() != rowBytes * static_cast<size_t>(height))
        return {};
    // Filter type 0 (none) before every row.
    std::vector<uint8_t> raw;
    raw.reserve((rowBytes + 1) * static_cast<size_t>(height));
    for (size_t row = 0; row < static_cast<size_t>(height); ++row) {
        raw.push_back(0);
        raw.insert(raw.end(), rgb.begin() + static_cast<std::ptrdiff_t>(row * rowBytes),
                   rgb.begin() + static_cast<std::ptrdiff_t>((row + 1) * rowBytes));
    }
    uLongf packedSize = compressBound(static_cast<uLong>(raw.size()));
    std::string packed(packedSize, '\0');
    if (compress2(reinterpret_cast<Bytef*>(packed.data()), &packedSize, raw.data(), static_cast<uLong>(raw.size()),
                  Z_BEST_SPEED) != Z_OK)
        return {};
    packed.resize(packedSize);

    std::string header;
    PutBigEndian(header, static_cast<uint32_t>(width));
    PutBigEndian(header, static_cast<uint32_t>(height));
    // Bit depth 8, colour type 2 (RGB), deflate, adaptive filtering method 0, no interlace.
    header += std::string_view("\x08\x02\x00\x00\x00", 5);

    std::string file("\x89PNG\r\n\x1a\n", 8);
    PutChunk(file, "IHDR", header);
    PutChunk(file, "IDAT", packed);
    PutChunk(file, "IEND", {});
    return file;
}
