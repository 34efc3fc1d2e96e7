#include "formats/EncodePng.h"

#include "GoldenBytes.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <string>
#include <vector>

namespace {

// Two pixels, red then green.
TEST(EncodePng, WritesSignatureHeaderOneDeflatedImageChunkAndEnd)
{
    const std::vector<uint8_t> rgb {255, 0, 0, 0, 255, 0};
    const std::string png = EncodePng(2, 1, rgb);

    const std::string head = GoldenBytes()
                                 .U8({0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'})
                                 .U8({0, 0, 0, 13, 'I', 'H', 'D', 'R'})
                                 .U8({0, 0, 0, 2, 0, 0, 0, 1})   // width, height
                                 .U8({8, 2, 0, 0, 0})            // 8 bits, RGB, deflate, filter 0, no interlace
                                 .U8({0x7B, 0x40, 0xE8, 0xDD})   // CRC-32 of type and data
                                 .Str();
    const std::string tail = GoldenBytes().U8({0, 0, 0, 0, 'I', 'E', 'N', 'D', 0xAE, 0x42, 0x60, 0x82}).Str();
    ASSERT_GT(png.size(), head.size() + 12 + tail.size());
    EXPECT_EQ(png.substr(0, head.size()), head);
    EXPECT_EQ(png.substr(png.size() - tail.size()), tail);

    const std::string idat = png.substr(head.size(), png.size() - head.size() - tail.size());
    EXPECT_EQ(idat.substr(4, 4), "IDAT");
    const size_t length = static_cast<uint8_t>(idat[0]) << 24 | static_cast<uint8_t>(idat[1]) << 16 |
                          static_cast<uint8_t>(idat[2]) << 8 | static_cast<uint8_t>(idat[3]);
    ASSERT_EQ(idat.size(), length + 12);
    // One row: the filter byte "none", then the pixels.
    std::vector<uint8_t> rows(7);
    uLongf rowsSize = rows.size();
    ASSERT_EQ(uncompress(rows.data(), &rowsSize, reinterpret_cast<const Bytef*>(idat.data() + 8), length), Z_OK);
    EXPECT_EQ(rows, (std::vector<uint8_t>{0, 255, 0, 0, 0, 255, 0}));

    // Pixels that do not match the size are refused.
    EXPECT_EQ(EncodePng(2, 2, std::vector<uint8_t>(11)), "");
    EXPECT_EQ(EncodePng(0, 1, std::vector<uint8_t>()), "");
}

} // namespace
