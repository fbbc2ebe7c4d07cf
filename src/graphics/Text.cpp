#include "graphics/Text.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>

#include "core/DebugLog.h"
#include "graphics/GLWindow.h"
#include "graphics/ObjectManager.h"
#include "platform/Font.h"

namespace {

constexpr int kLineBytes = 256;
constexpr int kFontPixels = 24;  // em of the face, at which a character advances kCharacterWidth
constexpr const char* kFontFamily = "Courier New";
// Off the pixel grid's edges, so that no rounding puts a glyph beside its place.
constexpr double kOrthoEdge = -0.375;

// Characters without a glyph print as blanks. Returns the length.
int ReplaceUnprintable(char* line) {
    int length = 0;
    for (; line[length] != '\0'; ++length) {
        const auto code = static_cast<unsigned char>(line[length]);
        if (code < platform::kFirstGlyph || code >= platform::kFirstGlyph + platform::kGlyphCount) {
            line[length] = ' ';
        }
    }
    return length;
}

// Model-view and projection for drawing in pixels from the lower left corner.
void BeginPixels(const GLWindow& window) {
    glPushMatrix();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(kOrthoEdge, window.GetWidth(), kOrthoEdge, window.GetHeight(), -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void EndPixels(GLWindow& window) {
    window.ResizeView(window.GetWidth(), window.GetHeight());
    glPopMatrix();
}

void CallGlyphs(const GLWindow& window, const char* line, int length) {
    glPushAttrib(GL_LIST_BIT);
    glListBase(window.GetFontBase() - platform::kFirstGlyph);
    glCallLists(length, GL_UNSIGNED_BYTE, line);
    glPopAttrib();
}

}  // namespace

void PrintText(GLWindow* window, int x, int y, float red, float green, float blue,
               const char* format, ...) {
    if (format == nullptr) {
        return;
    }
    char line[kLineBytes] = "";
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    const int length = ReplaceUnprintable(line);

    ObjectManager::Instance()->DisableTextures();
    glDisable(GL_LIGHTING);
    BeginPixels(*window);
    const float colour[4] = {red, green, blue, 1.0F};
    glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, colour);
    glColor4fv(colour);
    // A raster position off the left edge would drop the whole line.
    glRasterPos2i(std::max(x, 0), y);
    CallGlyphs(*window, line, length);
    glEnable(GL_LIGHTING);
    EndPixels(*window);
}

void GLWindow::MakeFontLists() {
    fontBase = glGenLists(platform::kGlyphCount);
    Log("Fonts will start at %d\n", static_cast<int>(fontBase));
    if (!glyphsMade && platform::MakeGlyphs(kFontFamily, kFontPixels, glyphs)) {
        Log("ERROR: Font not found\n");
        return;  // the lists stay empty: text draws nothing
    }
    glyphsMade = true;
    if (fontBase == 0) {
        Log("ERROR: wgl Font functions not supported\n");
        return;
    }
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    for (int i = 0; i < platform::kGlyphCount; ++i) {
        const platform::Glyph& glyph = glyphs[i];
        // Without any data the driver drops the command from the list, and with it the advance.
        static constexpr GLubyte kNoBits = 0;
        glNewList(fontBase + i, GL_COMPILE);
        glBitmap(glyph.width, glyph.height, static_cast<float>(glyph.originX),
                 static_cast<float>(glyph.originY), static_cast<float>(glyph.advance), 0.0F,
                 glyph.bits.empty() ? &kNoBits : glyph.bits.data());
        glEndList();
    }
}
