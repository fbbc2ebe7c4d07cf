#include "platform/desktop/WindowIcon.h"

#include <SDL.h>
#include <gdk-pixbuf/gdk-pixbuf.h>

#include <memory>

#include "platform/Resources.h"

namespace platform {

namespace {

struct ObjectRelease {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using Loader = std::unique_ptr<GdkPixbufLoader, ObjectRelease>;
using Picture = std::unique_ptr<GdkPixbuf, ObjectRelease>;
using SdlSurface = std::unique_ptr<SDL_Surface, decltype(&SDL_FreeSurface)>;

// Null when the data is no picture.
Picture Decode(const Resource& resource) {
    const Loader loader(gdk_pixbuf_loader_new());
    const bool written =
        gdk_pixbuf_loader_write(loader.get(), resource.data, resource.size, nullptr) != FALSE;
    const bool closed = gdk_pixbuf_loader_close(loader.get(), nullptr) != FALSE;
    GdkPixbuf* decoded = written && closed ? gdk_pixbuf_loader_get_pixbuf(loader.get()) : nullptr;
    return Picture(decoded != nullptr ? gdk_pixbuf_add_alpha(decoded, FALSE, 0, 0, 0) : nullptr);
}

}  // namespace

void SetIcon(SDL_Window* window) {
    const Resource resource = FindResource("Icon", "PICTURE");
    const Picture picture = resource.data != nullptr ? Decode(resource) : nullptr;
    if (!picture) {
        return;
    }
    const SdlSurface surface(
        SDL_CreateRGBSurfaceWithFormatFrom(
            gdk_pixbuf_get_pixels(picture.get()), gdk_pixbuf_get_width(picture.get()),
            gdk_pixbuf_get_height(picture.get()), 32, gdk_pixbuf_get_rowstride(picture.get()),
            SDL_PIXELFORMAT_RGBA32),
        &SDL_FreeSurface);
    if (surface) {
        SDL_SetWindowIcon(window, surface.get());
    }
}

}  // namespace platform
