#pragma once
// PNG images for the pictures the exporter draws for the user to look at (the lightmap atlas):
// 8-bit RGB, unfiltered scanlines, deflated by zlib.

#include <cstdint>
#include <span>
#include <string>

// The file's bytes for an image of width x height pixels, rgb holding three bytes per pixel row
// by row from the top. Empty when the sizes are not positive, rgb is not that long, or zlib
// fails.
std::string EncodePng(int width, int height, std::span<const uint8_t> rgb);
