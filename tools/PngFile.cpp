#include "PngFile.h"

#include <png.h>

bool WritePng(const std::string& path, int width, int height, const std::vector<uint8_t>& pixels) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGB;
    const int rowBytes = -width * 3;  // negative: the first row is the bottom one
    return png_image_write_to_file(&image, path.c_str(), 0, pixels.data(), rowBytes, nullptr) == 0;
}
