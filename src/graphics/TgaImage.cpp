#include "graphics/TgaImage.h"

#include <GL/gl.h>

#include <algorithm>
#include <array>

#include "platform/Files.h"

namespace {

constexpr size_t kPictureLimit = 64U << 20U;  // bytes
constexpr size_t kHeaderBytes = 18;
// No image ID, no colour map, uncompressed true colour, origin (0, 0).
constexpr std::array<uint8_t, 12> kHeader = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};

void ClearFrame(TgaImage& image) {
    const auto clearAlpha = [&image](int x, int y) {
        image.pixels[(static_cast<size_t>(y) * image.width + x) * 4 + 3] = 0;
    };
    for (int x = 0; x < image.width; ++x) {
        clearAlpha(x, 0);
        clearAlpha(x, image.height - 1);
    }
    for (int y = 0; y < image.height; ++y) {
        clearAlpha(0, y);
        clearAlpha(image.width - 1, y);
    }
}

}  // namespace

bool LoadTga(const std::string& gamePath, TgaImage& image) {
    image = {};
    std::vector<uint8_t> file;
    if (platform::ReadWholeFile(gamePath, file, kPictureLimit) || file.size() < kHeaderBytes ||
        !std::equal(kHeader.begin(), kHeader.end(), file.begin())) {
        return false;
    }
    const int width = file[12] | file[13] << 8;
    const int height = file[14] | file[15] << 8;
    const int bits = file[16];
    if (width < 1 || height < 1 || (bits != 24 && bits != 32)) {
        return false;
    }
    const size_t size = static_cast<size_t>(width) * height * (bits / 8);
    if (file.size() - kHeaderBytes < size) {
        return false;
    }
    image.width = width;
    image.height = height;
    image.bitsPerPixel = bits;
    image.format = bits == 32 ? GL_BGRA : GL_BGR;
    const auto pixels = file.begin() + kHeaderBytes;
    image.pixels.assign(pixels, pixels + static_cast<ptrdiff_t>(size));
    if (bits == 32) {
        ClearFrame(image);
    }
    return true;
}
