// What the real renderer puts on a real display: text at its pixels, and models that look the same
// after the window has been made anew.

#include <GL/gl.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "core/DebugLog.h"
#include "core/Registry.h"
#include "graphics/GLExtensions.h"
#include "graphics/GLWindow.h"
#include "graphics/ObjectManager.h"
#include "platform/DisplayTest.h"
#include "scores/UserPrefs.h"

namespace {

constexpr int kWidth = 800;
constexpr int kHeight = 600;
using Picture = std::vector<uint8_t>;  // three bytes a pixel, first row at the bottom

class RenderTest : public DisplayTest {
protected:
    void SetUp() override {
        DisplayTest::SetUp();
        folder = std::filesystem::current_path();
        std::filesystem::current_path(ASSETS_FOLDER);
        CaptureLog(&log);
        userPrefs = new UserPrefs;
        glExtensions = new GLExtensions;
        glWindow = new GLWindow;
        glWindow->SetFullscreen(false);
        ASSERT_FALSE(glWindow->CreateGLWindow("Render test", kWidth, kHeight, 32)) << log;
    }
    void TearDown() override {
        glWindow->DestroyGLWindow();
        ObjectManager::Destroy();
        delete glWindow;
        delete glExtensions;
        delete userPrefs;
        glWindow = nullptr;
        glExtensions = nullptr;
        userPrefs = nullptr;
        CaptureLog(nullptr);
        std::filesystem::current_path(folder);
        DisplayTest::TearDown();
    }

    static Picture Read() {
        Picture picture(size_t{3} * kWidth * kHeight);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(0, 0, kWidth, kHeight, GL_RGB, GL_UNSIGNED_BYTE, picture.data());
        return picture;
    }
    static Picture Text(int x, int y, const char* text) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        PrintText(glWindow, x, y, 1.0F, 0.0F, 0.0F, "%s", text);
        return Read();
    }
    static bool IsRed(const Picture& picture, int x, int y) {
        return picture[(size_t{3} * y * kWidth) + size_t{3} * x] > 200;
    }
    struct Box {
        int left = kWidth, right = -1, bottom = kHeight, top = -1, pixels = 0;
    };
    static Box RedBox(const Picture& picture) {
        Box box;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                if (IsRed(picture, x, y)) {
                    box = {std::min(box.left, x), std::max(box.right, x), std::min(box.bottom, y),
                           std::max(box.top, y), box.pixels + 1};
                }
            }
        }
        return box;
    }
    static Picture Models(const std::vector<uint32_t>& lists) {
        glWindow->BeginScene();
        float x = -30.0F;
        for (const uint32_t list : lists) {
            glPushMatrix();
            glTranslatef(x, 0.0F, 0.0F);
            glCallList(list);
            glPopMatrix();
            x += 12.0F;
        }
        glPopMatrix();
        PrintText(glWindow, 20, 20, 1.0F, 1.0F, 0.0F, "after all models");
        Picture picture = Read();
        platform::SwapBuffers(hDC);
        return picture;
    }
    // Gives the virtual display a mode of the window's size besides its own.
    static void OfferMode() {
        (void)!std::system(
            "output=$(xrandr | awk '/ connected/ {print $1; exit}');"
            "(xrandr --newmode test-800x600 38.25 800 832 912 1024 600 603 607 624;"
            " xrandr --addmode $output test-800x600) >/dev/null 2>&1");
    }

    std::filesystem::path folder;
    std::string log;
};

TEST_F(RenderTest, TextLightsThePixelsOfItsPlaceAndNoOthers) {
    const Picture one = Text(100, 200, "H");
    const Box box = RedBox(one);
    EXPECT_GT(box.pixels, 40) << "a bold letter";
    EXPECT_GE(box.left, 100);
    EXPECT_LT(box.right, 100 + kCharacterWidth);
    EXPECT_EQ(box.bottom, 200) << "it stands on its line";
    EXPECT_GT(box.top, 200 + 10);
    EXPECT_LT(box.top, 200 + 24);

    const Picture line = Text(100, 200, "H H");
    const int advance = 2 * kCharacterWidth;
    for (int y = box.bottom; y <= box.top; ++y) {
        for (int x = box.left; x <= box.right; ++x) {
            ASSERT_EQ(IsRed(line, x, y), IsRed(one, x, y)) << x << ", " << y;
            ASSERT_EQ(IsRed(line, x + advance, y), IsRed(one, x, y))
                << "the blank advances as well: " << x << ", " << y;
        }
    }
    EXPECT_EQ(RedBox(line).pixels, 2 * box.pixels);
    EXPECT_EQ(Text(-5, 200, "H"), Text(0, 200, "H")) << "nothing starts off the left edge";
    EXPECT_GT(RedBox(Text(-5, 200, "H")).pixels, 40);
}

TEST_F(RenderTest, ModelsAndTextLookTheSameAfterAChangeToFullScreenAndBack) {
    std::vector<uint32_t> lists;
    for (const char* name :
         {"PlayerBase", "Dravek", "Fryjahn", "Asteroid1", "PupSucker1", "boss1"}) {
        lists.push_back(
            ObjectManager::Instance()->Load((std::string("Objects\\") + name + ".aob").c_str()));
        ASSERT_NE(lists.back(), 0U) << name << "\n" << log;
    }
    const Picture empty = Models({});
    const Picture before = Models(lists);
    int lit = 0;
    for (size_t i = 0; i < before.size(); i += 3) {
        lit += std::equal(&before[i], &before[i] + 3, &empty[i]) ? 0 : 1;
    }
    EXPECT_GT(lit, 5000) << "six models cover a good part of the picture";

    OfferMode();
    if (platform::ChangeDisplayMode(kWidth, kHeight, 32)) {
        GTEST_SKIP() << "the display has no mode of this size";
    }
    for (const bool fullscreen : {true, false}) {
        ASSERT_FALSE(glWindow->ToggleFullscreen()) << log;
        glWindow->RebuildGLResources();
        EXPECT_EQ(glWindow->IsFullscreen(), fullscreen);
        EXPECT_EQ(Models(lists), before) << (fullscreen ? "full screen" : "back in a window");
    }
}

}  // namespace
