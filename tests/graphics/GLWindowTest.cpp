// Creating, destroying and re-creating the window, with a system that refuses one thing or other.

#include "graphics/GLWindow.h"

#include <GL/gl.h>

#include <cmath>
#include <functional>

#include "core/Registry.h"
#include "graphics/ObjectManager.h"
#include "platform/Messages.h"
#include "platform/null/NullGl.h"
#include "platform/null/NullMedia.h"
#include "platform/null/NullPlatform.h"
#include "scores/UserPrefs.h"
#include "support/GameFixture.h"

namespace null = platform::null;

namespace {

std::string calls;  // of the tenants

class GLWindowTest : public RoomFixture {
protected:
    void SetUp() override {
        null::Reset();
        null::ResetMedia();
        RoomFixture::SetUp();
        glWindow->DestroyGLWindow();
        log.clear();
        calls.clear();
    }
    void TearDown() override {
        null::TheSystem() = {};
        glWindow->DestroyGLWindow();
        EXPECT_FALSE(GLWindow::HasContext());
        EXPECT_EQ(null::GlCallsWithoutContext(), 0);
        RoomFixture::TearDown();
        null::SetGlExtensions(nullptr);
        null::ResetMedia();
    }
    static bool Create() { return glWindow->CreateGLWindow("Nebulorix v1.0.0", 640, 480, 32); }
    // Preferences take effect at once and need a context for that.
    void Toggle(void (UserPrefs::*preference)()) {
        ASSERT_FALSE(Create());
        (userPrefs->*preference)();
        glWindow->DestroyGLWindow();
        log.clear();
    }
    static bool BoxShown(const std::string& text, const std::string& caption) {
        for (const null::ShownBox& box : null::Media().boxes) {
            if (box.text == text && box.caption == caption) {
                return true;
            }
        }
        return false;
    }
};

TEST_F(GLWindowTest, ThePlayerChoosesBetweenWindowAndFullScreen) {
    null::Media().boxAnswers = {true};
    ASSERT_FALSE(glWindow->AskFullscreen());
    EXPECT_TRUE(BoxShown("Would You Like To Run In Fullscreen Mode?", "Start FullScreen?"));
    EXPECT_TRUE(null::TheWindow().options.fullscreen && null::TheWindow().modeChanged);
    EXPECT_EQ(null::TheWindow().modeBits, 32);
    EXPECT_FALSE(null::TheWindow().cursorVisible);
    glWindow->DestroyGLWindow();
    EXPECT_FALSE(null::TheWindow().modeChanged);
    EXPECT_TRUE(null::TheWindow().cursorVisible);

    null::Media().boxAnswers = {false};
    ASSERT_FALSE(glWindow->AskFullscreen());
    EXPECT_FALSE(null::TheWindow().options.fullscreen || null::TheWindow().modeChanged);
    EXPECT_EQ(null::TheWindow().title, "Nebulorix v1.0.0");
    EXPECT_EQ(null::TheWindow().options.width, 800);
    EXPECT_TRUE(null::TheWindow().visible && null::TheWindow().contextCurrent);
    EXPECT_TRUE(GLWindow::HasContext());
    EXPECT_TRUE(Logged("Window Created without any problems :o)\n\n"));
    EXPECT_EQ(glWindow->GetLightLimit(), static_cast<uint32_t>(GL_LIGHT0 + 8));
}

TEST_F(GLWindowTest, EachFailingStepHasItsBoxAndItsLine) {
    struct Step {
        bool null::System::*fails;
        const char* box;
        const char* line;
    };
    const Step steps[] = {
        {&null::System::displayMissing, "Failed To Register The Window Class.",
         "ERROR: Failed To Register The Window Class\n"},
        {&null::System::windowFails, "Window Creation Error.", "ERROR: Window Creation error\n"},
        {&null::System::surfaceFails, "Can't Create A GL Device Context.",
         "ERROR: GL Device context creation error\n"},
        {&null::System::contextFails, "Can't Create A GL Rendering Context.",
         "ERROR: GL render context creation error\n"},
        {&null::System::makeCurrentFails, "Can't Activate The GL Rendering Context.",
         "ERROR: Failed to activate GL rendering context\n"}};
    for (const Step& step : steps) {
        null::TheSystem() = {};
        null::TheSystem().*step.fails = true;
        log.clear();
        EXPECT_TRUE(Create()) << step.box;
        EXPECT_TRUE(BoxShown(step.box, "ERROR")) << step.box;
        EXPECT_TRUE(Logged(step.line)) << log;
        EXPECT_FALSE(null::TheWindow().exists || null::TheWindow().hasContext) << step.box;
        EXPECT_FALSE(null::TheWindow().modeChanged) << step.box;
        EXPECT_EQ(hWnd, nullptr);
        EXPECT_FALSE(GLWindow::HasContext()) << step.box;
    }
    const int64_t before = null::GlCallTotal();
    glWindow->RebuildGLResources();
    EXPECT_EQ(null::GlCallTotal(), before) << "nothing to rebuild without a context";
}

TEST_F(GLWindowTest, ShutDownTellsWhatFailedAndGoesOn) {
    ASSERT_FALSE(Create());
    null::TheSystem().releaseCurrentFails = true;
    null::TheSystem().deleteContextFails = true;
    null::TheSystem().releaseSurfaceFails = true;
    null::TheSystem().destroyWindowFails = true;
    glWindow->DestroyGLWindow();
    for (const char* text : {"Release Of DC And RC Failed.", "Release Rendering Context Failed.",
                             "Release Device Context Failed.", "Could Not Release hWnd."}) {
        EXPECT_TRUE(BoxShown(text, "SHUTDOWN ERROR")) << text;
    }
    EXPECT_EQ(hWnd, nullptr);
}

TEST_F(GLWindowTest, AntialiasingMakesTheFirstWindowTwice) {
    Toggle(&UserPrefs::ToggleAntialiasing);
    const int before = null::TheWindow().windowsCreated;
    ASSERT_FALSE(Create());
    EXPECT_EQ(null::TheWindow().windowsCreated, before + 2);
    EXPECT_EQ(null::TheWindow().options.samples, 4);
    EXPECT_TRUE(
        Logged("ARB Multisample supported with 4 samples\n"
               "Multisampling supported - Attempting to create a new window\n"));
    EXPECT_TRUE(Logged("Setting Multisample Pixel Format\nUsing ARB multisampling :o)\n\n"));
    glWindow->DestroyGLWindow();
    log.clear();
    ASSERT_FALSE(Create());
    EXPECT_EQ(null::TheWindow().windowsCreated, before + 3) << "the format is known now";
    userPrefs->ToggleAntialiasing();
    EXPECT_FALSE(null::IsEnabled(GL_MULTISAMPLE_ARB));
    glWindow->DestroyGLWindow();
    log.clear();
    ASSERT_FALSE(Create());
    EXPECT_EQ(null::TheWindow().options.samples, 0);
    EXPECT_TRUE(Logged("Not using multisample pixel fromat\nFSAA turned off in prefs\n")) << log;
}

TEST_F(GLWindowTest, AntialiasingTakesWhatTheDisplayOffers) {
    Toggle(&UserPrefs::ToggleAntialiasing);
    null::TheSystem().largestSampleCount = 0;
    ASSERT_FALSE(Create());
    EXPECT_TRUE(
        Logged("ARB Multisample supported with 1 sample\n"
               "FSAA turned off in prefs - did not initialise multisampling\n"));
    glWindow->DestroyGLWindow();
    null::SetGlExtensions("GL_ARB_multisample_not GL_ARB");
    ASSERT_FALSE(Create());
    EXPECT_TRUE(Logged("ARB multisample not supported\n")) << "names count as whole words";
    null::SetGlExtensions(nullptr);
    glWindow->DestroyGLWindow();
    null::TheSystem().largestSampleCount = 2;
    ASSERT_FALSE(Create());
    EXPECT_EQ(null::TheWindow().options.samples, 2);
    EXPECT_TRUE(Logged("ARB Multisample supported with 2 samples\n"));
}

TEST_F(GLWindowTest, TheGameRunsWithoutSwapControlOrFont) {
    delete glWindow;
    glWindow = new GLWindow;
    null::TheSystem().swapIntervalRefused = true;
    null::TheSystem().fontMissing = true;
    ASSERT_FALSE(Create());
    EXPECT_TRUE(Logged("WARNING: wgl vsync functions not supported\n"));
    EXPECT_TRUE(Logged("ERROR: Font not found\n"));
    glWindow->EndScene();
}

TEST_F(GLWindowTest, TheStateOfTheSceneFollowsThePreferences) {
    ASSERT_FALSE(Create());
    EXPECT_TRUE(null::IsEnabled(GL_FOG) && null::IsEnabled(GL_BLEND));
    EXPECT_TRUE(null::IsEnabled(GL_LIGHTING) && null::IsEnabled(GL_CULL_FACE));
    glWindow->DestroyGLWindow();
    Toggle(&UserPrefs::ToggleFog);
    ASSERT_FALSE(Create());
    EXPECT_FALSE(null::IsEnabled(GL_FOG));
    glWindow->ResizeView(640, 0);
    EXPECT_TRUE(std::isfinite(null::Projection()[0])) << "a minimised window has no height";
}

TEST_F(GLWindowTest, TenantsAreServedInTheirOrder) {
    glWindow->AddTenant({.created = [] { calls += "a+"; },
                         .destroying = [] { calls += GLWindow::HasContext() ? "a-" : "?"; }});
    glWindow->AddTenant({.created = [] { calls += "b+"; },
                         .destroying = [] { calls += "b-"; },
                         .dropForRebuild = [] { calls += "b!"; },
                         .rebuild = [] { calls += "b="; }});
    ASSERT_FALSE(Create());
    EXPECT_EQ(calls, "a+b+");
    const bool was = glWindow->IsFullscreen();
    ASSERT_FALSE(glWindow->ToggleFullscreen());
    EXPECT_NE(glWindow->IsFullscreen(), was);
    glWindow->RebuildGLResources();
    EXPECT_EQ(calls, "a+b+a-b-a+b+b!b=");
    glWindow->DestroyGLWindow();
    glWindow->DestroyGLWindow();
    EXPECT_EQ(calls, "a+b+a-b-a+b+b!b=a-b-") << "nobody is told twice";
}

}  // namespace
