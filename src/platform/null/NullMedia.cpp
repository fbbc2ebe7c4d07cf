#include "platform/null/NullMedia.h"

namespace platform::null {

NullMedia& Media() {
    static auto* media = new NullMedia;  // outlives every object that a test leaves behind
    return *media;
}

void ResetMedia() {
    Media() = NullMedia{};
    SetMusic(true);
}

}  // namespace platform::null
