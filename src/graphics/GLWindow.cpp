#include "graphics/GLWindow.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <algorithm>

#include "core/DebugLog.h"
#include "core/Registry.h"
#include "core/Version.h"
#include "graphics/GLExtensions.h"
#include "graphics/ObjectManager.h"
#include "platform/MessageBox.h"
#include "platform/Messages.h"
#include "scores/UserPrefs.h"

using platform::BoxButtons;
using platform::BoxIcon;

namespace {

constexpr double kFieldOfView = 60.0;  // degrees, vertical
constexpr double kNearPlane = 0.1F;    // the single-precision value
constexpr double kFarPlane = 100.0;
constexpr float kFogStart = 25.0F;  // units from the eye, which stands 50 from the play field
constexpr float kFogEnd = 125.0F;
constexpr float kSpace[4] = {0.0F, 0.0F, 0.1F, 0.5F};  // the colour of empty space and of the fog
// From the upper left over the viewer's shoulder, the same in every view.
constexpr float kLightDirection[4] = {-5.0F, 5.0F, 10.0F, 0.0F};
constexpr float kLightColour[4] = {0.85F, 0.85F, 0.85F, 1.0F};
constexpr GLenum kMultisampleFilterHint = 0x8534;  // GL_MULTISAMPLE_FILTER_HINT_NV

void ShowShutdownError(const char* text) {
    platform::MessageBox(text, "SHUTDOWN ERROR", BoxButtons::Ok, BoxIcon::Information);
}

const char* GLString(GLenum name) {
    const GLubyte* const text = glGetString(name);
    return text != nullptr ? reinterpret_cast<const char*>(text) : "";
}

void Call(void (*hook)()) {
    if (hook != nullptr) {
        hook();
    }
}

void Switch(GLenum capability, bool on) {
    if (on) {
        glEnable(capability);
    } else {
        glDisable(capability);
    }
}

}  // namespace

bool GLWindow::hasContext = false;

GLWindow::GLWindow()
    : multisampleEnabled(userPrefs->GetAntialiasing()),
      width(userPrefs->GetScreenWidth()),
      height(userPrefs->GetScreenHeight()),
      bits(userPrefs->GetColourBits()),
      polygonMode(GL_FILL),
      polygonFace(GL_FRONT) {}

void GLWindow::AddTenant(const GLTenant& tenant) {
    tenants.push_back(tenant);
}

bool GLWindow::AskFullscreen() {
    if (!platform::MessageBox("Would You Like To Run In Fullscreen Mode?", "Start FullScreen?",
                              BoxButtons::YesNo, BoxIcon::Question)) {
        fullscreen = false;
    }
    if (CreateGLWindow(kWindowTitle, width, height, bits)) {
        // The shut-down that this starts frees this object.
        platform::SendMessage({.kind = platform::MessageKind::Close, .window = hWnd});
        return true;
    }
    return false;
}

bool GLWindow::FailCreation(const char* boxText, const char* logLine) {
    DestroyGLWindow();
    platform::MessageBox(boxText, "ERROR", BoxButtons::Ok, BoxIcon::Exclamation);
    Log("ERROR: %s\n", logLine);
    return true;
}

bool GLWindow::EnterFullscreenMode() {
    if (!platform::ChangeDisplayMode(width, height, bits)) {
        return false;
    }
    if (platform::MessageBox("The Requested Fullscreen Mode Is Not Supported By\n"
                             "Your Video Card. Use Windowed Mode Instead?",
                             "Nebulorix", BoxButtons::YesNo, BoxIcon::Exclamation)) {
        fullscreen = false;
        return false;
    }
    platform::MessageBox("Program Will Now Close.", "ERROR", BoxButtons::Ok, BoxIcon::Stop);
    Log("ERROR: User chose not to run in windowed mode, when fullscreen wasnt available\n");
    return true;
}

// Chooses the samples to a pixel that the window is to be made with.
bool GLWindow::SetupPixelFormat(int& samples) const {
    samples = 0;
    if (!multisampleAvailable || !userPrefs->GetAntialiasing()) {
        Log("Not using multisample pixel fromat\n");
        return false;
    }
    Log("Setting Multisample Pixel Format\n");
    samples = glExtensions->GetMultisampleFormat();
    if (samples == 0) {
        Log("ERROR: ChoosePixelFormat failed\n");
        return true;
    }
    return false;
}

// A window gets its pixel format when it is made and keeps it, so the samples are settled first.
bool GLWindow::CreateWindowAndContext(const char* title) {
    int samples = 0;
    if (SetupPixelFormat(samples)) {
        return true;
    }
    hWnd = platform::CreateGameWindow({.title = title,
                                       .width = width,
                                       .height = height,
                                       .fullscreen = fullscreen,
                                       .samples = samples});
    if (hWnd == nullptr) {
        return FailCreation("Window Creation Error.", "Window Creation error");
    }
    if (fullscreen) {
        platform::ShowCursor(false);
    }
    hDC = platform::GetSurface(hWnd);
    if (hDC == nullptr) {
        return FailCreation("Can't Create A GL Device Context.",
                            "GL Device context creation error");
    }
    context = platform::CreateContext(hWnd);
    if (context == nullptr) {
        return FailCreation("Can't Create A GL Rendering Context.",
                            "GL render context creation error");
    }
    if (platform::MakeCurrent(hDC, context)) {
        return FailCreation("Can't Activate The GL Rendering Context.",
                            "Failed to activate GL rendering context");
    }
    hasContext = true;
    return false;
}

// Only a context can tell whether the driver samples pixels more than once, but the window that
// the context belongs to can no longer change its format. So the first window of a run may have
// served only to ask. True when a better window is to be made in its place.
bool GLWindow::FindMultisampling() {
    const bool wanted = userPrefs->GetAntialiasing();
    if (multisampleAvailable) {
        Log(wanted ? "Using ARB multisampling :o)\n\n" : "FSAA turned off in prefs\n");
        return false;
    }
    if (wanted && glExtensions->InitMultisample()) {
        multisampleAvailable = true;
        Log("Multisampling supported - Attempting to create a new window\n");
        return true;
    }
    Log("FSAA turned off in prefs - did not initialise multisampling\n");
    return false;
}

bool GLWindow::CreateGLWindow(const char* title, int16_t newWidth, int16_t newHeight,
                              uint8_t newBits) {
    Log("\n--- CreateGLWindow called ---\n");
    width = newWidth;
    height = newHeight;
    bits = newBits;
    if (platform::OpenDisplay()) {
        return FailCreation("Failed To Register The Window Class.",
                            "Failed To Register The Window Class");
    }
    if ((fullscreen && EnterFullscreenMode()) || CreateWindowAndContext(title)) {
        return true;
    }
    if (FindMultisampling()) {
        DestroyGLWindow();
        return CreateGLWindow(title, width, height, bits);
    }
    platform::ShowGameWindow(hWnd);
    // A window's size message does the same, but only with the next turn of the queue.
    ResizeView(width, height);
    SetupGLState();
    tenantsCreated = true;
    for (const GLTenant& tenant : tenants) {
        Call(tenant.created);
    }
    Log("Window Created without any problems :o)\n\n");
    Log("%s\n", GLString(GL_VENDOR));
    Log("%s\n", GLString(GL_RENDERER));
    Log("%s\n\n", GLString(GL_VERSION));
    return false;
}

void GLWindow::DropContext() {
    if (context == nullptr) {
        return;
    }
    if (platform::MakeCurrent(hDC, nullptr)) {
        ShowShutdownError("Release Of DC And RC Failed.");
    }
    hasContext = false;
    if (platform::DeleteContext(context)) {
        ShowShutdownError("Release Rendering Context Failed.");
    }
    context = nullptr;
}

void GLWindow::DestroyGLWindow() {
    if (tenantsCreated) {
        tenantsCreated = false;
        for (const GLTenant& tenant : tenants) {
            Call(tenant.destroying);
        }
    }
    if (fullscreen) {
        platform::RestoreDisplayMode();
        platform::ShowCursor(true);
    }
    DropContext();
    if (hDC != nullptr && platform::ReleaseSurface(hWnd, hDC)) {
        ShowShutdownError("Release Device Context Failed.");
    }
    hDC = nullptr;
    if (hWnd != nullptr && platform::DestroyGameWindow(hWnd)) {
        ShowShutdownError("Could Not Release hWnd.");
    }
    hWnd = nullptr;
}

bool GLWindow::ToggleFullscreen() {
    DestroyGLWindow();
    fullscreen = !fullscreen;
    return CreateGLWindow(kWindowTitle, width, height, bits);
}

// The tenants' own objects go before the models are compiled: in a new context their identifiers
// may be those of models.
void GLWindow::RebuildGLResources() {
    if (!hasContext) {
        return;
    }
    ObjectManager* const models = ObjectManager::Instance();
    models->DeleteAll();
    for (const GLTenant& tenant : tenants) {
        Call(tenant.dropForRebuild);
    }
    models->Recache();
    for (const GLTenant& tenant : tenants) {
        Call(tenant.rebuild);
    }
}

void GLWindow::ResizeView(int newWidth, int newHeight) {
    glViewport(0, 0, newWidth, newHeight);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    const int visibleHeight = std::max(newHeight, 1);  // a minimised window has none
    gluPerspective(kFieldOfView, static_cast<double>(newWidth) / visibleHeight, kNearPlane,
                   kFarPlane);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void GLWindow::ToggleMultisample() {
    multisampleEnabled = !multisampleEnabled;
    Switch(GL_MULTISAMPLE_ARB, multisampleAvailable && multisampleEnabled);
}

void GLWindow::SetPolygonMode(uint32_t face, uint32_t mode) {
    polygonFace = face;
    polygonMode = mode;
    glPolygonMode(face, mode);
}

void GLWindow::RestorePolygonMode() const {
    glPolygonMode(polygonFace, polygonMode);
}

void GLWindow::SetCameraView(int32_t fromView, int32_t toView) {
    previousView = fromView;
    view = toView;
    viewTransition = kViewBlendFrames;
}

void GLWindow::SetView(int32_t newView) {
    view = newView;
    viewTransition = 0;
}

// The light's position is taken in the frame of the model-view matrix of now, which is the eye's.
void GLWindow::SetupGLState() {
    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
    glLightfv(GL_LIGHT0, GL_POSITION, kLightDirection);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, kLightColour);
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    glDepthFunc(GL_LEQUAL);
    glShadeModel(GL_SMOOTH);
    glEnable(GL_DEPTH_TEST);
    glClearColor(kSpace[0], kSpace[1], kSpace[2], kSpace[3]);
    glClearDepth(1.0);
    glFrontFace(GL_CCW);
    glEnable(GL_COLOR_MATERIAL);
    glColorMaterial(GL_FRONT, GL_AMBIENT_AND_DIFFUSE);
    SetupFog();
    MakeFontLists();
    glEnable(GL_LINE_SMOOTH);
    glPointSize(1.0F);
    glHint(kMultisampleFilterHint, GL_FASTEST);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_FASTEST);
    if (platform::SetSwapInterval(1)) {
        Log("WARNING: wgl vsync functions not supported\n");
    }
    SetupBlending();
    GLint lights = 0;
    glGetIntegerv(GL_MAX_LIGHTS, &lights);
    Log("Maximum number of lights supported: %d\n", lights);
    lightLimit = GL_LIGHT0 + lights;
}

void GLWindow::SetupFog() {
    glHint(GL_FOG_HINT, GL_DONT_CARE);
    glFogi(GL_FOG_MODE, GL_LINEAR);
    glFogfv(GL_FOG_COLOR, kSpace);
    glFogf(GL_FOG_START, kFogStart);
    glFogf(GL_FOG_END, kFogEnd);
    Switch(GL_FOG, userPrefs->GetFog());
}

// Without a preferences file the first start shows the game at its best.
void GLWindow::SetupBlending() {
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    if (userPrefs->GetDefaultsApplied()) {
        userPrefs->SetTransparency(true);
    }
    if (!userPrefs->GetTransparency()) {
        glDisable(GL_BLEND);
    }
}
