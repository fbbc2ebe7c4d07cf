// The least memory that a program holds here which draws one lit, textured triangle in a window as
// large as the game's: what the renderer and the libraries take before there is a game. Prints, in
// kilobytes, what is resident and what of it is the program's own.

#include <GL/gl.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

#include "platform/Clock.h"
#include "platform/Window.h"

namespace {

constexpr int kSide = 256;    // pixels of the texture, as most of the game's
constexpr int kFrames = 120;  // after which the driver takes no more

void PrepareDrawing() {
    static const std::array<uint8_t, size_t{3}* kSide* kSide> pixels = {};
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, kSide, kSide, 0, GL_RGB, GL_UNSIGNED_BYTE,
                 pixels.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    for (const GLenum capability :
         {GL_TEXTURE_2D, GL_LIGHTING, GL_LIGHT0, GL_FOG, GL_DEPTH_TEST, GL_BLEND}) {
        glEnable(capability);
    }
}

void DrawTriangle() {
    constexpr std::array<std::array<float, 2>, 3> kCorners = {{{0, 0}, {1, 0}, {0, 1}}};
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glNormal3f(0.0F, 0.0F, 1.0F);
    glBegin(GL_TRIANGLES);
    for (const auto& [x, y] : kCorners) {
        glTexCoord2f(x, y);
        glVertex2f(x, y);
    }
    glEnd();
}

void PrintMemory() {
    std::ifstream file("/proc/self/smaps_rollup");
    for (std::string word; file >> word;) {
        if (word == "Rss:" || word == "Anonymous:") {
            file >> word;
            std::printf("%s\n", word.c_str());
        }
    }
}

}  // namespace

int main() {
    using namespace platform;
    WindowHandle window = nullptr;
    if (!OpenDisplay()) {
        window = CreateGameWindow({.title = "Bare window", .width = 800, .height = 600});
    }
    ContextHandle context = window != nullptr ? CreateContext(window) : nullptr;
    SurfaceHandle surface = window != nullptr ? GetSurface(window) : nullptr;
    if (context == nullptr || MakeCurrent(surface, context)) {
        std::fputs("There is no window to draw in\n", stderr);
        return 1;
    }
    ShowGameWindow(window);
    PrepareDrawing();
    for (int frame = 0; frame < kFrames; ++frame) {
        DrawTriangle();
        SwapBuffers(surface);
        Sleep(1);
    }
    PrintMemory();
    MakeCurrent(surface, nullptr);
    DeleteContext(context);
    ReleaseSurface(window, surface);
    DestroyGameWindow(window);
    CloseDisplay();
    return 0;
}
