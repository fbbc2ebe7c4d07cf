// The part of the GLWindow that begins and ends a frame: camera, frame rate, and the screen that
// tells about the driver.

#include <GL/gl.h>

#include <array>
#include <cstring>

#include "core/Joystick.h"
#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "platform/Clock.h"
#include "platform/Messages.h"

using platform::Message;
using platform::MessageKind;

namespace {

constexpr float kEyeDistance = 50.0F;  // from the world's origin
constexpr uint32_t kFramesPerMeasure = 64;

struct FrameRate {
    uint32_t framesCounted = 0;   // since the last measurement
    int32_t lastMeasureTime = 0;  // milliseconds
    float fps = 60.0F;            // as shown
};
FrameRate frameRate;

void Measure() {
    const int32_t measureTime = platform::Milliseconds();
    // Two measurements within a millisecond tell nothing.
    if (measureTime != frameRate.lastMeasureTime) {
        frameRate.fps = static_cast<float>(frameRate.framesCounted /
                                           ((measureTime - frameRate.lastMeasureTime) / 1000.0));
    }
    frameRate.framesCounted = 0;
    frameRate.lastMeasureTime = platform::Milliseconds();
}

// Turns the world about the axis of a camera view.
void RotateForView(int32_t view, float angle) {
    switch (view) {
        case 1:
            glRotatef(angle, 1.0F, 0.0F, 0.0F);
            break;
        case 2:
            glRotatef(angle, 0.0F, 1.0F, 0.0F);
            break;
        case 3:
            glRotatef(angle, 0.0F, -1.0F, 0.0F);
            break;
        default:
            break;  // from behind the ship nothing is turned
    }
}

constexpr int kInfoRounds = 500;
constexpr int kInfoPause = 10;       // milliseconds of each round
constexpr int kInfoLastPause = 100;  // milliseconds
constexpr int kInfoLine = 40;        // pixels from line to line

// Takes one waiting message. True when it ends the information screen: a key press, which is used
// up by that, or what the window procedure must not hear about in the middle of an update and gets
// as soon as this one is over.
bool MessageEndsInfo() {
    Message message;
    if (!platform::PeekMessage(message)) {
        return false;
    }
    switch (message.kind) {
        case MessageKind::KeyDown:
            return true;
        case MessageKind::SysKeyDown:
        case MessageKind::Close:
        case MessageKind::Command:
            platform::PostMessage(message);
            return true;
        default:
            platform::DispatchMessage(message);
            return false;
    }
}

bool ButtonPressed() {
    const platform::ControllerState* const state = joystick ? joystick->GetState() : nullptr;
    return state != nullptr && (state->buttons[0] || state->buttons[1]);
}

}  // namespace

void GLWindow::BeginScene() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glPushMatrix();
    glTranslatef(0.0F, 0.0F, -kEyeDistance);
    float f = 1.0F;
    if (viewTransition > 0) {
        f = static_cast<float>(kViewBlendFrames - viewTransition) / kViewBlendFrames;
        --viewTransition;
        RotateForView(previousView, (1.0F - f) * 90.0F);
    }
    RotateForView(view, 90.0F * f);
}

void GLWindow::EndScene() {
    glPopMatrix();
    DrawFps();
    glFlush();
}

void GLWindow::DrawFps() {
    if (frameRate.framesCounted % kFramesPerMeasure == 0) {
        Measure();
    }
    ++frameRate.framesCounted;
    PrintText(this, 10, height / 2 - 10, 1.0F, 1.0F, 1.0F, "FPS: %.2f", frameRate.fps);
}

void GLWindow::ShowGLInfo() {
    int y = height / 2;
    for (const GLenum name : std::array<GLenum, 3>{GL_VENDOR, GL_RENDERER, GL_VERSION}) {
        const auto* const text = reinterpret_cast<const char*>(glGetString(name));
        if (text != nullptr) {
            const int x = CentredX(width, static_cast<int>(std::strlen(text)), kWideCharacterWidth);
            PrintText(this, x, y, 1.0F, 1.0F, 1.0F, "%s", text);
        }
        y -= kInfoLine;
    }
    platform::SwapBuffers(hDC);
    for (int round = 0; round < kInfoRounds && !MessageEndsInfo() && !ButtonPressed(); ++round) {
        platform::Pause(kInfoPause);
    }
    platform::Pause(kInfoLastPause);
}
