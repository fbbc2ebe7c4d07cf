// What a frame draws around the game: camera, text, frame rate and the driver's screen.

#include <GL/gl.h>

#include <cmath>

#include "core/Joystick.h"
#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "platform/VirtualKeys.h"
#include "platform/null/NullGl.h"
#include "platform/null/NullMedia.h"
#include "platform/null/NullPlatform.h"
#include "support/GameFixture.h"

namespace null = platform::null;

namespace {

constexpr int64_t kMillisecond = 1000000;

class SceneFrameTest : public RoomFixture {
protected:
    void SetUp() override {
        null::Reset();
        null::ResetMedia();
        RoomFixture::SetUp();
        platform::Message stale;
        while (platform::PeekMessage(stale)) {
        }
        null::ClearGlRecord();
    }

    struct Turn {
        float aboutX = 0.0F;
        float aboutY = 0.0F;
    };
    // Degrees by which the camera of the next frame turns the world.
    static Turn NextFrame() {
        null::ClearGlRecord();
        glWindow->BeginScene();
        Turn turn;
        for (size_t i = 0; i < null::RecordedGlCalls(); ++i) {
            const null::GlCall& call = null::RecordedGlCall(i);
            if (std::string(call.name) == "glRotatef") {
                turn.aboutX += static_cast<float>(call.arguments[0] * call.arguments[1]);
                turn.aboutY += static_cast<float>(call.arguments[0] * call.arguments[2]);
            }
        }
        glWindow->EndScene();
        return turn;
    }
    static std::string LastText() {
        return null::DrawnTexts() == 0 ? "" : null::DrawnTextAt(null::DrawnTexts() - 1).text;
    }
};

TEST_F(SceneFrameTest, TheCameraTurnsForEachView) {
    const std::vector<std::pair<float, float>> turns = {{90, 0}, {0, 90}, {0, -90}, {0, 0}};
    for (int view = 1; view <= 4; ++view) {
        glWindow->SetView(view);
        const Turn turn = NextFrame();
        EXPECT_EQ(turn.aboutX, turns[view - 1].first) << view;
        EXPECT_EQ(turn.aboutY, turns[view - 1].second) << view;
    }
    glWindow->BeginScene();
    EXPECT_EQ(null::ModelView()[14], -50.0F);
    glWindow->EndScene();
    EXPECT_EQ(null::ModelViewDepth(), 0);
}

TEST_F(SceneFrameTest, AChangeOfViewBlendsOver150Frames) {
    glWindow->SetCameraView(1, 2);
    for (int frame = 0; frame <= 150; ++frame) {
        EXPECT_EQ(glWindow->IsViewBlending(), frame < 150) << frame;
        const Turn turn = NextFrame();
        const float blended = 90.0F * static_cast<float>(frame) / 150.0F;
        EXPECT_NEAR(turn.aboutX, 90.0F - blended, 1e-4F) << frame;
        EXPECT_NEAR(turn.aboutY, blended, 1e-4F) << frame;
    }
    glWindow->SetCameraView(2, 3);
    glWindow->SetView(1);
    EXPECT_FALSE(glWindow->IsViewBlending()) << "at once";
    EXPECT_EQ(glWindow->GetView(), 1);
}

TEST_F(SceneFrameTest, TextStandsAtItsPixelInItsColour) {
    glEnable(GL_TEXTURE_2D);
    PrintText(glWindow, -5, 40, 0.25F, 0.5F, 0.75F, "%d\t%s\x80", 42, "ships");
    ASSERT_EQ(null::DrawnTexts(), 1U);
    const null::DrawnText& text = null::DrawnTextAt(0);
    EXPECT_STREQ(text.text, "42 ships ") << "without a glyph a character is a blank";
    EXPECT_EQ(text.rasterX, 0.0F) << "off the left edge nothing would be drawn";
    EXPECT_EQ(text.rasterY, 40.0F);
    EXPECT_EQ(text.colour[0], 0.25F);
    EXPECT_EQ(text.colour[3], 1.0F);
    EXPECT_EQ(text.listBase, glWindow->GetFontBase() - 32);
    EXPECT_EQ(null::LastGlCall("glMaterialfv").arguments[1], GL_EMISSION);
    EXPECT_TRUE(null::IsEnabled(GL_LIGHTING));
    for (uint32_t unit = 0; unit < 8; ++unit) {
        EXPECT_FALSE(null::IsEnabled(GL_TEXTURE_2D, unit)) << unit;
    }
    EXPECT_EQ(null::ModelViewDepth() + null::ProjectionDepth() + null::AttributeDepth(), 0);
    EXPECT_NEAR(null::Projection()[5], 1.0 / std::tan(std::acos(-1.0) / 6.0), 1e-5)
        << "the perspective is back";

    PrintText(glWindow, 0, 0, 1, 1, 1, nullptr);
    EXPECT_EQ(null::DrawnTexts(), 1U);
    PrintText(glWindow, 0, 0, 1, 1, 1, "%s", std::string(1000, 'x').c_str());
    EXPECT_EQ(null::LastGlCall("glCallLists").arguments[0], 255) << "a line is cut";
}

TEST_F(SceneFrameTest, TheFrameRateIsTheAverageOf64Frames) {
    for (int frame = 0; frame < 3 * 64; ++frame) {
        null::AdvanceClock(25 * kMillisecond);
        glWindow->DrawFps();
    }
    EXPECT_EQ(LastText(), "FPS: 40.00") << "64 frames in 1.6 seconds";
    for (int frame = 0; frame < 64; ++frame) {
        glWindow->DrawFps();
    }
    const std::string before = LastText();
    for (int frame = 0; frame < 64; ++frame) {
        glWindow->DrawFps();
    }
    EXPECT_EQ(LastText(), before) << "no time has passed: the value stays";
    EXPECT_EQ(null::DrawnTextAt(0).rasterY, 600.0F / 2 - 10);
}

TEST_F(SceneFrameTest, TheDriverScreenWaitsForAKeyOrFiveSeconds) {
    int32_t start = platform::Milliseconds();
    glWindow->ShowGLInfo();
    EXPECT_NEAR(platform::Milliseconds() - start, 5100, 20);
    ASSERT_EQ(null::DrawnTexts(), 3U);
    EXPECT_EQ(null::DrawnTextAt(1).rasterY, 600.0F / 2 - 40);
    EXPECT_EQ(null::TheWindow().swaps, 1);

    null::PressKey(platform::VK_SPACE);
    start = platform::Milliseconds();
    glWindow->ShowGLInfo();
    EXPECT_LT(platform::Milliseconds() - start, 200);

    null::Media().controllerAttached = true;
    null::Media().controller.buttons[1] = true;
    joystick = new Joystick;
    bool found = false;
    joystick->Init(found);
    start = platform::Milliseconds();
    glWindow->ShowGLInfo();
    EXPECT_LT(platform::Milliseconds() - start, 200) << "a button ends it too";
    delete joystick;
    joystick = nullptr;
}

TEST_F(SceneFrameTest, TheDriverScreenLosesNoMessage) {
    static std::vector<platform::MessageKind> heard;
    heard.clear();
    platform::SetWindowProcedure([](const platform::Message& m) { heard.push_back(m.kind); });
    null::ReleaseKey(platform::VK_RETURN);
    platform::PostMessage({.kind = platform::MessageKind::Close, .window = hWnd});
    glWindow->ShowGLInfo();
    ASSERT_EQ(heard.size(), 1U);
    EXPECT_EQ(heard[0], platform::MessageKind::KeyUp) << "or the key would seem to be held";
    platform::Message waiting;
    ASSERT_TRUE(platform::PeekMessage(waiting)) << "the request to close waits until it is over";
    EXPECT_EQ(waiting.kind, platform::MessageKind::Close);
    platform::SetWindowProcedure(nullptr);
}

}  // namespace
