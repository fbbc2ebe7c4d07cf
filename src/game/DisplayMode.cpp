#include "game/DisplayMode.h"

#include "core/Registry.h"
#include "core/Version.h"
#include "graphics/GLWindow.h"
#include "platform/Messages.h"

namespace {

void FinishRecreation(bool failed) {
    if (failed) {
        platform::PostMessage({.kind = platform::MessageKind::Close});
        return;
    }
    glWindow->RebuildGLResources();
}

}  // namespace

void FlipFullscreen() {
    FinishRecreation(glWindow->ToggleFullscreen());
}

void RecreateWindow(int16_t width, int16_t height, uint8_t bits) {
    glWindow->DestroyGLWindow();
    FinishRecreation(glWindow->CreateGLWindow(kWindowTitle, width, height, bits));
}
