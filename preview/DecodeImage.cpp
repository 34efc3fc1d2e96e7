#include "preview/DecodeImage.h"

#include <stb_image.h>

#include <algorithm>
#include <memory>

bool DecodeImageFile(const std::string& nativePath, RgbImage& image, std::string& error)
{
    int width = 0;
    int height = 0;
    int channels = 0;
    const std::unique_ptr<stbi_uc, void (*)(void*)> pixels(stbi_load(nativePath.c_str(), &width, &height, &channels, 3),
                                                           stbi_image_free);
    if (!pixels) {
        const char* reason = stbi_failure_reason();
        error = reason ? reason : "cannot be decoded";
        return false;
    }
    image.Width = width;
    image.Height = height;
    image.Rgb.assign(pixels.get(), pixels.get() + static_cast<size_t>(width) * static_cast<size_t>(height) * 3);
    return true;
}

RgbImage ShrinkImage(const RgbImage& image, int maxSide)
{
    const int step = std::max(1, (std::max(image.Width, image.Height) + maxSide - 1) / maxSide);
    RgbImage small;
    small.Width = std::max(1, image.Width / step);
    small.Height = std::max(1, image.Height / step);
    small.Rgb.resize(static_cast<size_t>(small.Width) * static_cast<size_t>(small.Height) * 3);
    for (int y = 0; y < small.Height; ++y) {
        for (int x = 0; x < small.Width; ++x) {
            int sum[3] = {0, 0, 0};
            int count = 0;
            for (int dy = 0; dy < step && y * step + dy < image.Height; ++dy) {
                for (int dx = 0; dx < step && x * step + dx < image.Width; ++dx) {
                    const size_t at = (static_cast<size_t>(y * step + dy) * static_cast<size_t>(image.Width) +
                                       static_cast<size_t>(x * step + dx)) * 3;
                    for (int c = 0; c < 3; ++c)
                        sum[c] += image.Rgb[at + static_cast<size_t>(c)];
                    ++count;
                }
            }
            const size_t to = (static_cast<size_t>(y) * static_cast<size_t>(small.Width) + static_cast<size_t>(x)) * 3;
            for (int c = 0; c < 3; ++c)
                small.Rgb[to + static_cast<size_t>(c)] = static_cast<uint8_t>(sum[c] / std::max(count, 1));
        }
    }
    return small;
}
