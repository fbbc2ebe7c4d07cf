#pragma once

// Named data inside the executable: the sound effects ("WAVE"), the icon and the menu picture
// ("PICTURE", PNG).

#include <cstddef>
#include <cstdint>

namespace platform {

struct Resource {
    const uint8_t* data = nullptr;  // lives as long as the program; null when not found
    size_t size = 0;
};

Resource FindResource(const char* name, const char* type);

}  // namespace platform
