#include "platform/Window.h"

#include <GL/gl.h>
#include <malloc.h>
#include <sys/wait.h>

#include <array>
#include <csignal>
#include <filesystem>

#include "platform/DisplayTest.h"

using namespace platform;

namespace {

using GameWindow = DisplayTest;

std::string Output(const char* command) {
    std::string output;
    std::FILE* pipe = popen(command, "r");
    if (pipe == nullptr) {
        return output;
    }
    std::array<char, 256> part = {};
    while (std::fgets(part.data(), part.size(), pipe) != nullptr) {
        output += part.data();
    }
    pclose(pipe);
    return output;
}

// Name of the mode that the display is in, and size of the whole screen.
std::string ModeNow() {
    return Output(
        "xrandr | awk '/\\*/ {mode = $1} /current/ {screen = $8 \"x\" $10} "
        "END {gsub(\",\", \"\", screen); printf \"%s %s\", mode, screen}'");
}

constexpr const char* kOtherMode = "test-800x600 800x600";

// Gives the virtual display a mode besides its own, once.
void OfferMode() {
    (void)Output(
        "output=$(xrandr | awk '/ connected/ {print $1; exit}');"
        "xrandr --newmode test-800x600 38.25 800 832 912 1024 600 603 607 624 2>&1;"
        "xrandr --addmode $output test-800x600 2>&1");
}

std::array<uint8_t, 3> PixelAt(int x, int y) {
    std::array<uint8_t, 3> pixel = {};
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(x, y, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, pixel.data());
    return pixel;
}

// Bytes that the program has allocated. The memory that the system gave it for them says less: it
// grows with gaps that the allocator keeps.
size_t AllocatedMemory() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

long OpenFiles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

}  // namespace

TEST_F(GameWindow, HasItsExactSizeACompatibleContextAndTellsItsSizeOnce) {
    Create(640, 480);
    const auto messages = Collect(300);
    ASSERT_EQ(Count(messages, MessageKind::Size), 1);
    for (const Message& message : messages) {
        if (message.kind == MessageKind::Size) {
            EXPECT_EQ(message.width, 640);
            EXPECT_EQ(message.height, 480);
        }
    }
    const std::string extensions = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
    EXPECT_NE(extensions.find("GL_ARB_multitexture"), std::string::npos);
    EXPECT_NE(GetProcAddress("glActiveTextureARB"), nullptr);
    GLint depthBits = 0;
    glGetIntegerv(GL_DEPTH_BITS, &depthBits);
    EXPECT_GE(depthBits, 16);

    glClearColor(1.0F, 0.5F, 0.0F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT);
    const GLuint list = glGenLists(1);
    glNewList(list, GL_COMPILE);
    glColor3f(0.0F, 1.0F, 0.0F);
    glRectf(-0.5F, -0.5F, 0.5F, 0.5F);
    glEndList();
    glCallList(list);
    EXPECT_EQ(PixelAt(320, 240), (std::array<uint8_t, 3>{0, 255, 0}));
    EXPECT_EQ(PixelAt(10, 470)[0], 255);
    EXPECT_EQ(PixelAt(639, 479)[2], 0);
    SwapBuffers(surface);
    EXPECT_EQ(CreateGameWindow({}), nullptr) << "there is one window at a time";
}

TEST_F(GameWindow, FullScreenIsARealModeAndTheDesktopGetsItsOwnBack) {
    CloseDisplay();
    OfferMode();
    ASSERT_FALSE(OpenDisplay());
    const std::string before = ModeNow();
    ASSERT_FALSE(ChangeDisplayMode(800, 600, 32));
    EXPECT_EQ(ModeNow(), before) << "not before there is a window";
    Create(800, 600, true);
    const auto messages = Collect(400);
    EXPECT_EQ(ModeNow(), kOtherMode);
    EXPECT_EQ(Count(messages, MessageKind::Size), 1);
    SetWindowVisible(window, false);
    EXPECT_EQ(ModeNow(), before) << "a dialog is shown on the desktop";
    SetWindowVisible(window, true);
    Collect(300);
    EXPECT_EQ(ModeNow(), kOtherMode);
    DestroyAll();
    EXPECT_EQ(ModeNow(), before);
}

TEST_F(GameWindow, AHundredRecreationsDoNotGrow) {
    size_t memory = 0;
    long files = 0;
    for (int i = 0; i < 130; ++i) {
        if (i == 30) {
            memory = AllocatedMemory();
            files = OpenFiles();
        }
        Create(320 + i % 2, 240);
        glClear(GL_COLOR_BUFFER_BIT);
        SwapBuffers(surface);
        Collect(0);
        DestroyAll();
    }
    EXPECT_LT(AllocatedMemory(), memory + 200000) << "bytes after a hundred re-creations";
    EXPECT_LE(OpenFiles(), files);
}
