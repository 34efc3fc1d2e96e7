#pragma once
// Texture pictures (PNG, TGA, JPEG and the other kinds stb_image reads) as 8-bit RGB.

#include <cstdint>
#include <string>
#include <vector>

struct RgbImage {
    int Width = 0;
    int Height = 0;
    // Three bytes per pixel, row by row from the top.
    std::vector<uint8_t> Rgb;
};

// False with the reason in error when the file cannot be read or decoded.
bool DecodeImageFile(const std::string& nativePath, RgbImage& image, std::string& error);
// At most maxSide pixels on the longer side, by averaging boxes of pixels.
RgbImage ShrinkImage(const RgbImage& image, int maxSide);
