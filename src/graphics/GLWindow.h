#pragma once

// The application's window with its OpenGL context: full screen or not, camera views, the scene
// frame and text. The parts of the game that keep GL objects of their own are its tenants: they
// register at start-up, and the window walks its list whenever a context comes or goes, so it needs
// to know none of them.

#include <array>
#include <cstdint>
#include <vector>

#include "graphics/Text.h"
#include "platform/Font.h"
#include "platform/Window.h"

// Called with the context current. Any may be null.
struct GLTenant {
    void (*created)() = nullptr;         // a window and context have been created
    void (*destroying)() = nullptr;      // they are about to go
    void (*dropForRebuild)() = nullptr;  // rebuild, before the models are compiled anew
    void (*rebuild)() = nullptr;         // rebuild, after it
};

class GLWindow {
public:
    static constexpr int kViewBlendFrames = 150;

    GLWindow();  // size, depth and antialiasing from the preferences

    // Tenants are called in the order in which they were added.
    void AddTenant(const GLTenant& tenant);

    // Asks "Would You Like To Run In Fullscreen Mode?" and creates the window. True = failure.
    bool AskFullscreen();
    // True = failure; the player has then been told why, and no window exists.
    bool CreateGLWindow(const char* title, int16_t width, int16_t height, uint8_t bits);
    void DestroyGLWindow();
    // Destroys the window, flips full screen and creates it again. True = failure. The caller then
    // runs RebuildGLResources.
    bool ToggleFullscreen();
    // After a re-creation: every list and texture under its old identifier.
    void RebuildGLResources();
    bool IsFullscreen() const { return fullscreen; }
    // For the next creation; who asks the player uses AskFullscreen.
    void SetFullscreen(bool on) { fullscreen = on; }
    // Whether a context is current. GL objects that outlive it went with it: who releases them at
    // shut-down asks first and makes no GL call without one.
    static bool HasContext() { return hasContext; }

    // Viewport and perspective for a client area of this size in pixels; resets the model-view.
    void ResizeView(int width, int height);
    void ToggleMultisample();

    // The polygon mode of the options menu, and its return after somebody drew otherwise.
    void SetPolygonMode(uint32_t face, uint32_t mode);
    void RestorePolygonMode() const;

    // Camera views 1 to 4: 1 from above, 2 and 3 from the sides, 4 from behind the player's ship.
    void SetCameraView(int32_t fromView, int32_t toView);  // blends over kViewBlendFrames frames
    void SetView(int32_t view);                            // at once
    bool IsViewBlending() const { return viewTransition != 0; }
    int32_t GetView() const { return view; }

    int GetWidth() const { return width; }
    int GetHeight() const { return height; }
    uint8_t GetBits() const { return bits; }
    uint32_t GetFontBase() const { return fontBase; }
    // GL_LIGHT0 + the driver's number of lights: one past the last usable light.
    uint32_t GetLightLimit() const { return lightLimit; }

    // A frame's drawing stands between these two. EndScene prints the frame rate.
    void BeginScene();
    void EndScene();
    void DrawFps();
    // Builds the 96 glyph lists of the text font at a new font base.
    void MakeFontLists();
    // Shows the driver's vendor, renderer and version until a key or controller button is pressed,
    // five seconds at most. The game stands still meanwhile.
    void ShowGLInfo();

private:
    bool EnterFullscreenMode();
    bool CreateWindowAndContext(const char* title);
    bool FailCreation(const char* boxText, const char* logLine);
    bool SetupPixelFormat(int& samples) const;
    bool FindMultisampling();
    void SetupGLState();
    static void SetupFog();
    static void SetupBlending();
    void DropContext();

    static bool hasContext;
    std::vector<GLTenant> tenants;
    bool tenantsCreated = false;        // their `created` has run for the present context
    bool multisampleAvailable = false;  // a multisample format has been found and is in use
    bool multisampleEnabled;            // starts as the antialiasing preference
    int16_t width;                      // client size in pixels
    int16_t height;
    uint8_t bits;  // colour depth of full screen
    bool fullscreen = true;
    uint32_t polygonMode;  // last set through SetPolygonMode
    uint32_t polygonFace;
    uint32_t lightLimit = 0;
    int32_t view = 1;
    int32_t viewTransition = 0;  // frames left of the blend from previousView to view
    int32_t previousView = 1;
    uint32_t fontBase = 0;
    std::array<platform::Glyph, platform::kGlyphCount> glyphs;  // of the text font
    bool glyphsMade = false;
    platform::ContextHandle context = nullptr;
};
