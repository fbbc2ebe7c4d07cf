// The OpenGL and GLU functions that the game calls, but for those of the matrices
// (NullGlMatrix.cpp). Each notes its call; those with state that somebody may ask for keep it,
// unless a list is only being compiled. A function that the game begins to call does not link until
// it has a place here.

#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/glu.h>

#include <algorithm>
#include <cstring>

#include "platform/Window.h"
#include "platform/null/NullGlState.h"

using namespace platform::null;

// A function without state: `parameters` in brackets, then the arguments to note.
#define STUB(name, parameters, ...)   \
    void GLAPIENTRY name parameters { \
        NOTE(__VA_ARGS__);            \
    }

namespace {

constexpr const char* kDefaultExtensions =
    "GL_ARB_multitexture GL_EXT_texture_env_combine GL_ARB_multisample GL_EXT_bgra";
const char* extensionString = kDefaultExtensions;

void SetColour(float red, float green, float blue, float alpha) {
    if (Executing()) {
        float* colour = Gl().attributes.colour;
        colour[0] = red;
        colour[1] = green;
        colour[2] = blue;
        colour[3] = alpha;
    }
}

// A quadric is only an identity. GLU hands out pointers to a type of its own, which is opaque.
std::array<char, 256> quadrics = {};  // 1: handed out

}  // namespace

extern "C" {

STUB(glBlendFunc, (GLenum source, GLenum destination), source, destination)
STUB(glClear, (GLbitfield mask), mask)
STUB(glClearColor, (GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha), red, green, blue,
     alpha)
STUB(glClearDepth, (GLclampd depth), depth)
STUB(glColorMaterial, (GLenum face, GLenum mode), face, mode)
STUB(glCullFace, (GLenum face), face)
STUB(glDepthFunc, (GLenum function), function)
STUB(glFinish, ())
STUB(glFlush, ())
STUB(glFogf, (GLenum parameter, GLfloat value), parameter, value)
STUB(glFogi, (GLenum parameter, GLint value), parameter, value)
STUB(glFrontFace, (GLenum mode), mode)
STUB(glHint, (GLenum target, GLenum mode), target, mode)
STUB(glLightf, (GLenum light, GLenum parameter, GLfloat value), light, parameter, value)
STUB(glLineWidth, (GLfloat width), width)
STUB(glMaterialf, (GLenum face, GLenum parameter, GLfloat value), face, parameter, value)
STUB(glNormal3f, (GLfloat x, GLfloat y, GLfloat z), x, y, z)
STUB(glPixelStorei, (GLenum parameter, GLint value), parameter, value)
STUB(glPointSize, (GLfloat size), size)
STUB(glPolygonMode, (GLenum face, GLenum mode), face, mode)
STUB(glRectf, (GLfloat x1, GLfloat y1, GLfloat x2, GLfloat y2), x1, y1, x2, y2)
STUB(glScissor, (GLint x, GLint y, GLsizei width, GLsizei height), x, y, width, height)
STUB(glShadeModel, (GLenum mode), mode)
STUB(glTexCoord2f, (GLfloat s, GLfloat t), s, t)
STUB(glTexEnvi, (GLenum target, GLenum parameter, GLint value), target, parameter, value)
STUB(glTexGeni, (GLenum coordinate, GLenum parameter, GLint value), coordinate, parameter, value)
STUB(glTexParameteri, (GLenum target, GLenum parameter, GLint value), target, parameter, value)
STUB(glVertex3f, (GLfloat x, GLfloat y, GLfloat z), x, y, z)
STUB(glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), x, y, width, height)
// Every vector that the game sets has four elements.
STUB(glFogfv, (GLenum parameter, const GLfloat* values), parameter, values[0], values[1], values[2],
     values[3])
STUB(glLightfv, (GLenum light, GLenum parameter, const GLfloat* values), light, parameter,
     values[0], values[1], values[2], values[3])
STUB(glMaterialfv, (GLenum face, GLenum parameter, const GLfloat* values), face, parameter,
     values[0], values[1], values[2], values[3])
STUB(glTexGenfv, (GLenum coordinate, GLenum parameter, const GLfloat* values), coordinate,
     parameter, values[0], values[1], values[2], values[3])
STUB(glClipPlane, (GLenum plane, const GLdouble* equation), plane, equation[0], equation[1],
     equation[2], equation[3])
STUB(glBitmap,
     (GLsizei width, GLsizei height, GLfloat originX, GLfloat originY, GLfloat moveX, GLfloat moveY,
      const GLubyte* /*bits*/),
     width, height, originX, originY, moveX, moveY)
STUB(glReadPixels,
     (GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type,
      GLvoid* /*pixels*/),
     x, y, width, height, format, type)
STUB(glTexImage2D,
     (GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height, GLint border,
      GLenum format, GLenum type, const GLvoid* /*pixels*/),
     target, level, internalFormat, width, height, border, format, type)
STUB(gluSphere, (GLUquadric* /*quadric*/, GLdouble radius, GLint slices, GLint stacks), radius,
     slices, stacks)
STUB(gluDisk, (GLUquadric* /*quadric*/, GLdouble inner, GLdouble outer, GLint slices, GLint loops),
     inner, outer, slices, loops)

void GLAPIENTRY glColor3f(GLfloat red, GLfloat green, GLfloat blue) {
    NOTE(red, green, blue);
    SetColour(red, green, blue, 1.0F);
}

void GLAPIENTRY glColor4f(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha) {
    NOTE(red, green, blue, alpha);
    SetColour(red, green, blue, alpha);
}

void GLAPIENTRY glColor4fv(const GLfloat* v) {
    NOTE(v[0], v[1], v[2], v[3]);
    SetColour(v[0], v[1], v[2], v[3]);
}

void GLAPIENTRY glRasterPos2i(GLint x, GLint y) {
    NOTE(x, y);
    if (Executing()) {
        const float* m = ModelView();
        for (int row = 0; row < 3; ++row) {
            Gl().raster[row] =
                m[row] * static_cast<float>(x) + m[4 + row] * static_cast<float>(y) + m[12 + row];
        }
    }
}

void GLAPIENTRY glBegin(GLenum mode) {
    NOTE(mode);
    if (Gl().insidePrimitive) {
        Misuse();
    }
    Gl().insidePrimitive = true;
}

void GLAPIENTRY glEnd() {
    NOTE();
    if (!Gl().insidePrimitive) {
        Misuse();
    }
    Gl().insidePrimitive = false;
}

void GLAPIENTRY glEnable(GLenum capability) {
    NOTE(capability);
    if (Executing()) {
        SetCapability(capability, true);
    }
}

void GLAPIENTRY glDisable(GLenum capability) {
    NOTE(capability);
    if (Executing()) {
        SetCapability(capability, false);
    }
}

void GLAPIENTRY glPushAttrib(GLbitfield mask) {
    NOTE(mask);
    if (Executing()) {
        PushAttributes(mask);
    }
}

void GLAPIENTRY glPopAttrib() {
    NOTE();
    if (Executing()) {
        PopAttributes();
    }
}

GLuint GLAPIENTRY glGenLists(GLsizei count) {
    NOTE(count);
    const GLuint first = Gl().highestList + 1;
    for (GLsizei i = 0; i < count; ++i) {
        CreateList(first + static_cast<GLuint>(i));
    }
    return count > 0 ? first : 0;
}

void GLAPIENTRY glNewList(GLuint list, GLenum mode) {
    NOTE(list, mode);
    if (Gl().compiling != 0 || list == 0) {
        Misuse();
        return;
    }
    CreateList(list);
    Gl().compiling = list;
    Gl().compileMode = mode;
}

void GLAPIENTRY glEndList() {
    NOTE();
    if (Gl().compiling == 0) {
        Misuse();
    }
    Gl().compiling = 0;
}

void GLAPIENTRY glDeleteLists(GLuint first, GLsizei count) {
    NOTE(first, count);
    for (GLsizei i = 0; i < count; ++i) {
        DeleteList(first + static_cast<GLuint>(i));
    }
}

void GLAPIENTRY glCallList(GLuint list) {
    NOTE(list);
    if (Executing()) {
        RecordDrawnList(list);
    }
}

void GLAPIENTRY glListBase(GLuint base) {
    NOTE(base);
    if (Executing()) {
        Gl().attributes.listBase = base;
    }
}

void GLAPIENTRY glCallLists(GLsizei count, GLenum type, const GLvoid* lists) {
    NOTE(count, type);
    if (!Executing() || count <= 0) {
        return;
    }
    const GLuint base = Gl().attributes.listBase;
    if (type == GL_UNSIGNED_BYTE || type == GL_BYTE) {
        RecordDrawnText(static_cast<const char*>(lists), static_cast<size_t>(count));
    } else if (type == GL_UNSIGNED_INT || type == GL_INT) {
        for (GLsizei i = 0; i < count; ++i) {
            RecordDrawnList(base + static_cast<const GLuint*>(lists)[i]);
        }
    } else {
        Misuse();  // the game draws lists by characters or whole numbers only
    }
}

void GLAPIENTRY glGenTextures(GLsizei count, GLuint* textures) {
    NOTE(count);
    for (GLsizei i = 0; i < count; ++i) {
        textures[i] = Gl().highestTexture + 1;
        CreateTexture(textures[i]);
    }
}

void GLAPIENTRY glDeleteTextures(GLsizei count, const GLuint* textures) {
    NOTE(count);
    for (GLsizei i = 0; i < count; ++i) {
        DeleteTexture(textures[i]);
    }
}

void GLAPIENTRY glBindTexture(GLenum target, GLuint texture) {
    NOTE(target, texture);
    if (Executing()) {
        CreateTexture(texture);
        Gl().boundTexture[Gl().activeUnit] = texture;
    }
}

void GLAPIENTRY glActiveTextureARB(GLenum unit) {
    NOTE(unit);
    if (unit < GL_TEXTURE0 || unit >= GL_TEXTURE0 + kTextureUnits) {
        Misuse();
    } else if (Executing()) {
        Gl().activeUnit = unit - GL_TEXTURE0;
    }
}

GLint GLAPIENTRY gluBuild2DMipmaps(GLenum target, GLint components, GLsizei width, GLsizei height,
                                   GLenum format, GLenum type, const void* /*pixels*/) {
    NOTE(target, components, width, height, format, type);
    return 0;
}

GLUquadric* GLAPIENTRY gluNewQuadric() {
    NOTE();
    auto* const free = std::find(quadrics.begin(), quadrics.end(), 0);
    if (free == quadrics.end()) {
        Misuse();
        return nullptr;
    }
    *free = 1;
    return reinterpret_cast<GLUquadric*>(free);
}

void GLAPIENTRY gluDeleteQuadric(GLUquadric* quadric) {
    NOTE();
    auto* const slot = reinterpret_cast<char*>(quadric);
    if (slot < quadrics.begin() || slot >= quadrics.end() || *slot == 0) {
        Misuse();
        return;
    }
    *slot = 0;
}

void GLAPIENTRY glGetIntegerv(GLenum parameter, GLint* values) {
    NOTE(parameter);
    switch (parameter) {
        case GL_MAX_LIGHTS:
            *values = kLights;
            break;
        case GL_MAX_TEXTURE_UNITS:
            *values = kTextureUnits;
            break;
        default:
            Misuse();  // the game asks for nothing else
    }
}

const GLubyte* GLAPIENTRY glGetString(GLenum name) {
    NOTE(name);
    const char* text = nullptr;
    switch (name) {
        case GL_VENDOR:
            text = "Nobody";
            break;
        case GL_RENDERER:
            text = "Draws nothing";
            break;
        case GL_VERSION:
            text = "2.1";
            break;
        case GL_EXTENSIONS:
            text = extensionString;
            break;
        default:
            break;
    }
    return reinterpret_cast<const GLubyte*>(text);
}

}  // extern "C"

namespace platform {

void* GetProcAddress(const char* name) {
    const bool known = std::strcmp(name, "glActiveTextureARB") == 0 &&
                       std::strstr(extensionString, "GL_ARB_multitexture") != nullptr;
    return known ? reinterpret_cast<void*>(glActiveTextureARB) : nullptr;
}

namespace null {

void SetGlExtensions(const char* extensions) {
    extensionString = extensions != nullptr ? extensions : kDefaultExtensions;
}

int LiveQuadrics() {
    return static_cast<int>(std::count(quadrics.begin(), quadrics.end(), char{1}));
}

}  // namespace null

}  // namespace platform
