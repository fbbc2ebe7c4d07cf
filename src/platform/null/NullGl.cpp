// The OpenGL and GLU functions themselves. Each notes its call; those with state that somebody may
// ask for keep it, unless a list is only being compiled.

#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/glu.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <numbers>

#include "platform/Window.h"
#include "platform/null/NullGlState.h"

using namespace platform::null;

// Notes a call of the function it stands in, with the arguments that are numbers.
#define NOTE(...)                                       \
    do {                                                \
        static constinit CallCounter counter{__func__}; \
        counter.Note(__VA_ARGS__);                      \
    } while (false)

// A function without state: `parameters` in brackets, then the arguments to note.
#define STUB(name, parameters, ...)   \
    void GLAPIENTRY name parameters { \
        NOTE(__VA_ARGS__);            \
    }

namespace {

constexpr const char* kDefaultExtensions =
    "GL_ARB_multitexture GL_EXT_texture_env_combine GL_ARB_multisample GL_EXT_bgra";
const char* extensionString = kDefaultExtensions;

// Number of elements behind the pointer of a glSomethingfv call.
int ElementsOf(GLenum parameter) {
    switch (parameter) {
        case GL_AMBIENT:
        case GL_DIFFUSE:
        case GL_SPECULAR:
        case GL_EMISSION:
        case GL_AMBIENT_AND_DIFFUSE:
        case GL_POSITION:
        case GL_FOG_COLOR:
        case GL_LIGHT_MODEL_AMBIENT:
        case GL_TEXTURE_ENV_COLOR:
        case GL_TEXTURE_BORDER_COLOR:
        case GL_OBJECT_PLANE:
        case GL_EYE_PLANE:
            return 4;
        case GL_SPOT_DIRECTION:
        case GL_COLOR_INDEXES:
            return 3;
        default:
            return 1;
    }
}

// The element of a vector, 0 past its end.
template <typename Number>
double Element(const Number* values, GLenum parameter, int index) {
    return index < ElementsOf(parameter) ? static_cast<double>(values[index]) : 0.0;
}

void SetColour(float red, float green, float blue, float alpha) {
    if (Executing()) {
        float* colour = Gl().attributes.colour;
        colour[0] = red;
        colour[1] = green;
        colour[2] = blue;
        colour[3] = alpha;
    }
}

void SetRaster(float x, float y, float z) {
    if (Executing()) {
        const float* m = ModelView();
        for (int row = 0; row < 3; ++row) {
            Gl().raster[row] = m[row] * x + m[4 + row] * y + m[8 + row] * z + m[12 + row];
        }
    }
}

// Multiplies the current matrix, unless a list is only being compiled.
void Apply(const Matrix& matrix) {
    if (Executing()) {
        Multiply(matrix);
    }
}

Matrix FromDoubles(const double* values) {
    Matrix matrix;
    std::transform(values, values + 16, matrix.begin(),
                   [](double value) { return static_cast<float>(value); });
    return matrix;
}

Matrix FromFloats(const float* values) {
    Matrix matrix;
    std::copy_n(values, 16, matrix.begin());
    return matrix;
}

Matrix Orthographic(double left, double right, double bottom, double top, double near, double far) {
    const double values[16] = {2.0 / (right - left),
                               0,
                               0,
                               0,
                               0,
                               2.0 / (top - bottom),
                               0,
                               0,
                               0,
                               0,
                               -2.0 / (far - near),
                               0,
                               -(right + left) / (right - left),
                               -(top + bottom) / (top - bottom),
                               -(far + near) / (far - near),
                               1};
    return FromDoubles(values);
}

// Values of a query; the number of them.
template <typename Number>
int Query(GLenum parameter, Number* values) {
    const auto put = [&](const auto* from, int count) {
        std::transform(from, from + count, values,
                       [](auto value) { return static_cast<Number>(value); });
        return count;
    };
    const auto one = [&](auto value) { return put(&value, 1); };
    GlState& gl = Gl();
    switch (parameter) {
        case GL_MODELVIEW_MATRIX:
            return put(gl.modelView.Top().data(), 16);
        case GL_PROJECTION_MATRIX:
            return put(gl.projection.Top().data(), 16);
        case GL_TEXTURE_MATRIX:
            return put(gl.texture.Top().data(), 16);
        case GL_CURRENT_COLOR:
            return put(gl.attributes.colour, 4);
        case GL_VIEWPORT:
            return put(gl.attributes.viewport, 4);
        case GL_MODELVIEW_STACK_DEPTH:
            return one(gl.modelView.depth + 1);
        case GL_PROJECTION_STACK_DEPTH:
            return one(gl.projection.depth + 1);
        case GL_MATRIX_MODE:
            return one(gl.matrixMode);
        case GL_POLYGON_MODE: {
            const GLint both[2] = {gl.attributes.polygonMode, gl.attributes.polygonMode};
            return put(both, 2);
        }
        case GL_SHADE_MODEL:
            return one(gl.attributes.shadeModel);
        case GL_LIST_BASE:
            return one(gl.attributes.listBase);
        case GL_LIST_INDEX:
            return one(gl.compiling);
        case GL_TEXTURE_BINDING_2D:
            return one(gl.boundTexture[gl.activeUnit]);
        case GL_ACTIVE_TEXTURE:
            return one(GL_TEXTURE0 + gl.activeUnit);
        case GL_MAX_LIGHTS:
            return one(kLights);
        case GL_MAX_TEXTURE_UNITS:
            return one(kTextureUnits);
        case GL_MAX_TEXTURE_SIZE:
            return one(4096);
        case GL_MAX_CLIP_PLANES:
            return one(6);
        default:
            return one(IsEnabled(parameter, gl.activeUnit) ? 1 : 0);
    }
}

// A quadric is only an identity. GLU hands out pointers to a type of its own, which is opaque.
std::array<char, 256> quadrics = {};  // 1: handed out

}  // namespace

extern "C" {

STUB(glAlphaFunc, (GLenum function, GLclampf reference), function, reference)
STUB(glArrayElement, (GLint index), index)
STUB(glBlendFunc, (GLenum source, GLenum destination), source, destination)
STUB(glClear, (GLbitfield mask), mask)
STUB(glClearColor, (GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha), red, green, blue,
     alpha)
STUB(glClearDepth, (GLclampd depth), depth)
STUB(glColorMask, (GLboolean red, GLboolean green, GLboolean blue, GLboolean alpha), red, green,
     blue, alpha)
STUB(glColorMaterial, (GLenum face, GLenum mode), face, mode)
STUB(glCullFace, (GLenum face), face)
STUB(glDepthFunc, (GLenum function), function)
STUB(glDepthMask, (GLboolean flag), flag)
STUB(glDepthRange, (GLclampd nearValue, GLclampd farValue), nearValue, farValue)
STUB(glDisableClientState, (GLenum array), array)
STUB(glDrawArrays, (GLenum mode, GLint first, GLsizei count), mode, first, count)
STUB(glDrawBuffer, (GLenum buffer), buffer)
STUB(glEnableClientState, (GLenum array), array)
STUB(glFinish, ())
STUB(glFlush, ())
STUB(glFogf, (GLenum parameter, GLfloat value), parameter, value)
STUB(glFogi, (GLenum parameter, GLint value), parameter, value)
STUB(glFrontFace, (GLenum mode), mode)
STUB(glHint, (GLenum target, GLenum mode), target, mode)
STUB(glLightf, (GLenum light, GLenum parameter, GLfloat value), light, parameter, value)
STUB(glLighti, (GLenum light, GLenum parameter, GLint value), light, parameter, value)
STUB(glLightModelf, (GLenum parameter, GLfloat value), parameter, value)
STUB(glLightModeli, (GLenum parameter, GLint value), parameter, value)
STUB(glLineWidth, (GLfloat width), width)
STUB(glLineStipple, (GLint factor, GLushort pattern), factor, pattern)
STUB(glMaterialf, (GLenum face, GLenum parameter, GLfloat value), face, parameter, value)
STUB(glMateriali, (GLenum face, GLenum parameter, GLint value), face, parameter, value)
STUB(glNormal3d, (GLdouble x, GLdouble y, GLdouble z), x, y, z)
STUB(glNormal3f, (GLfloat x, GLfloat y, GLfloat z), x, y, z)
STUB(glNormal3i, (GLint x, GLint y, GLint z), x, y, z)
STUB(glPixelStoref, (GLenum parameter, GLfloat value), parameter, value)
STUB(glPixelStorei, (GLenum parameter, GLint value), parameter, value)
STUB(glPixelTransferf, (GLenum parameter, GLfloat value), parameter, value)
STUB(glPixelTransferi, (GLenum parameter, GLint value), parameter, value)
STUB(glPixelZoom, (GLfloat x, GLfloat y), x, y)
STUB(glPointSize, (GLfloat size), size)
STUB(glPolygonOffset, (GLfloat factor, GLfloat units), factor, units)
STUB(glReadBuffer, (GLenum buffer), buffer)
STUB(glRectf, (GLfloat x1, GLfloat y1, GLfloat x2, GLfloat y2), x1, y1, x2, y2)
STUB(glRecti, (GLint x1, GLint y1, GLint x2, GLint y2), x1, y1, x2, y2)
STUB(glScissor, (GLint x, GLint y, GLsizei width, GLsizei height), x, y, width, height)
STUB(glStencilFunc, (GLenum function, GLint reference, GLuint mask), function, reference, mask)
STUB(glStencilMask, (GLuint mask), mask)
STUB(glStencilOp, (GLenum fail, GLenum depthFail, GLenum pass), fail, depthFail, pass)
STUB(glTexCoord1f, (GLfloat s), s)
STUB(glTexCoord2d, (GLdouble s, GLdouble t), s, t)
STUB(glTexCoord2f, (GLfloat s, GLfloat t), s, t)
STUB(glTexCoord2i, (GLint s, GLint t), s, t)
STUB(glTexCoord3f, (GLfloat s, GLfloat t, GLfloat r), s, t, r)
STUB(glTexCoord4f, (GLfloat s, GLfloat t, GLfloat r, GLfloat q), s, t, r, q)
STUB(glTexEnvf, (GLenum target, GLenum parameter, GLfloat value), target, parameter, value)
STUB(glTexEnvi, (GLenum target, GLenum parameter, GLint value), target, parameter, value)
STUB(glTexGenf, (GLenum coordinate, GLenum parameter, GLfloat value), coordinate, parameter, value)
STUB(glTexGeni, (GLenum coordinate, GLenum parameter, GLint value), coordinate, parameter, value)
STUB(glTexParameterf, (GLenum target, GLenum parameter, GLfloat value), target, parameter, value)
STUB(glTexParameteri, (GLenum target, GLenum parameter, GLint value), target, parameter, value)
STUB(glVertex2d, (GLdouble x, GLdouble y), x, y)
STUB(glVertex2f, (GLfloat x, GLfloat y), x, y)
STUB(glVertex2i, (GLint x, GLint y), x, y)
STUB(glVertex3d, (GLdouble x, GLdouble y, GLdouble z), x, y, z)
STUB(glVertex3f, (GLfloat x, GLfloat y, GLfloat z), x, y, z)
STUB(glVertex3i, (GLint x, GLint y, GLint z), x, y, z)
STUB(glVertex4f, (GLfloat x, GLfloat y, GLfloat z, GLfloat w), x, y, z, w)
STUB(glMultiTexCoord1fARB, (GLenum unit, GLfloat s), unit, s)
STUB(glMultiTexCoord2fARB, (GLenum unit, GLfloat s, GLfloat t), unit, s, t)
STUB(glMultiTexCoord3fARB, (GLenum unit, GLfloat s, GLfloat t, GLfloat r), unit, s, t, r)
STUB(glMultiTexCoord4fARB, (GLenum unit, GLfloat s, GLfloat t, GLfloat r, GLfloat q), unit, s, t, r,
     q)
STUB(glMultiTexCoord2f, (GLenum unit, GLfloat s, GLfloat t), unit, s, t)
STUB(glClientActiveTextureARB, (GLenum unit), unit)
STUB(glClientActiveTexture, (GLenum unit), unit)
STUB(glVertex3fv, (const GLfloat* v), v[0], v[1], v[2])
STUB(glVertex3dv, (const GLdouble* v), v[0], v[1], v[2])
STUB(glVertex2fv, (const GLfloat* v), v[0], v[1])
STUB(glNormal3fv, (const GLfloat* v), v[0], v[1], v[2])
STUB(glNormal3dv, (const GLdouble* v), v[0], v[1], v[2])
STUB(glTexCoord2fv, (const GLfloat* v), v[0], v[1])
STUB(glTexCoord2dv, (const GLdouble* v), v[0], v[1])
STUB(glTexCoord3fv, (const GLfloat* v), v[0], v[1], v[2])
STUB(glFogfv, (GLenum parameter, const GLfloat* values), parameter, Element(values, parameter, 0),
     Element(values, parameter, 1), Element(values, parameter, 2), Element(values, parameter, 3))
STUB(glFogiv, (GLenum parameter, const GLint* values), parameter, Element(values, parameter, 0),
     Element(values, parameter, 1), Element(values, parameter, 2), Element(values, parameter, 3))
STUB(glLightfv, (GLenum light, GLenum parameter, const GLfloat* values), light, parameter,
     Element(values, parameter, 0), Element(values, parameter, 1), Element(values, parameter, 2),
     Element(values, parameter, 3))
STUB(glLightiv, (GLenum light, GLenum parameter, const GLint* values), light, parameter,
     Element(values, parameter, 0), Element(values, parameter, 1), Element(values, parameter, 2),
     Element(values, parameter, 3))
STUB(glLightModelfv, (GLenum parameter, const GLfloat* values), parameter,
     Element(values, parameter, 0), Element(values, parameter, 1), Element(values, parameter, 2),
     Element(values, parameter, 3))
STUB(glLightModeliv, (GLenum parameter, const GLint* values), parameter,
     Element(values, parameter, 0), Element(values, parameter, 1), Element(values, parameter, 2),
     Element(values, parameter, 3))
STUB(glMaterialfv, (GLenum face, GLenum parameter, const GLfloat* values), face, parameter,
     Element(values, parameter, 0), Element(values, parameter, 1), Element(values, parameter, 2),
     Element(values, parameter, 3))
STUB(glMaterialiv, (GLenum face, GLenum parameter, const GLint* values), face, parameter,
     Element(values, parameter, 0), Element(values, parameter, 1), Element(values, parameter, 2),
     Element(values, parameter, 3))
STUB(glTexEnvfv, (GLenum target, GLenum parameter, const GLfloat* values), target, parameter,
     Element(values, parameter, 0), Element(values, parameter, 1), Element(values, parameter, 2),
     Element(values, parameter, 3))
STUB(glTexEnviv, (GLenum target, GLenum parameter, const GLint* values), target, parameter,
     Element(values, parameter, 0), Element(values, parameter, 1), Element(values, parameter, 2),
     Element(values, parameter, 3))
STUB(glTexGenfv, (GLenum coordinate, GLenum parameter, const GLfloat* values), coordinate,
     parameter, Element(values, parameter, 0), Element(values, parameter, 1),
     Element(values, parameter, 2), Element(values, parameter, 3))
STUB(glTexGeniv, (GLenum coordinate, GLenum parameter, const GLint* values), coordinate, parameter,
     Element(values, parameter, 0), Element(values, parameter, 1), Element(values, parameter, 2),
     Element(values, parameter, 3))
STUB(glTexParameterfv, (GLenum target, GLenum parameter, const GLfloat* values), target, parameter,
     Element(values, parameter, 0), Element(values, parameter, 1), Element(values, parameter, 2),
     Element(values, parameter, 3))
STUB(glTexParameteriv, (GLenum target, GLenum parameter, const GLint* values), target, parameter,
     Element(values, parameter, 0), Element(values, parameter, 1), Element(values, parameter, 2),
     Element(values, parameter, 3))
STUB(glTexGendv, (GLenum coordinate, GLenum parameter, const GLdouble* values), coordinate,
     parameter, Element(values, parameter, 0), Element(values, parameter, 1),
     Element(values, parameter, 2), Element(values, parameter, 3))
STUB(glClipPlane, (GLenum plane, const GLdouble* equation), plane, equation[0], equation[1],
     equation[2], equation[3])
STUB(glBitmap,
     (GLsizei width, GLsizei height, GLfloat originX, GLfloat originY, GLfloat moveX, GLfloat moveY,
      const GLubyte* /*bits*/),
     width, height, originX, originY, moveX, moveY)
STUB(glDrawPixels,
     (GLsizei width, GLsizei height, GLenum format, GLenum type, const GLvoid* /*pixels*/), width,
     height, format, type)
STUB(glReadPixels,
     (GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type,
      GLvoid* /*pixels*/),
     x, y, width, height, format, type)
STUB(glTexImage1D,
     (GLenum target, GLint level, GLint internalFormat, GLsizei width, GLint border, GLenum format,
      GLenum type, const GLvoid* /*pixels*/),
     target, level, internalFormat, width, border, format, type)
STUB(glTexImage2D,
     (GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height, GLint border,
      GLenum format, GLenum type, const GLvoid* /*pixels*/),
     target, level, internalFormat, width, height, border, format, type)
STUB(glTexSubImage2D,
     (GLenum target, GLint level, GLint x, GLint y, GLsizei width, GLsizei height, GLenum format,
      GLenum type, const GLvoid* /*pixels*/),
     target, level, x, y, width, height, format, type)
STUB(glCopyTexImage2D,
     (GLenum target, GLint level, GLenum internalFormat, GLint x, GLint y, GLsizei width,
      GLsizei height, GLint border),
     target, level, internalFormat, x, y, width, height, border)
STUB(glVertexPointer, (GLint size, GLenum type, GLsizei stride, const GLvoid* /*data*/), size, type,
     stride)
STUB(glNormalPointer, (GLenum type, GLsizei stride, const GLvoid* /*data*/), type, stride)
STUB(glTexCoordPointer, (GLint size, GLenum type, GLsizei stride, const GLvoid* /*data*/), size,
     type, stride)
STUB(glColorPointer, (GLint size, GLenum type, GLsizei stride, const GLvoid* /*data*/), size, type,
     stride)
STUB(glDrawElements, (GLenum mode, GLsizei count, GLenum type, const GLvoid* /*indices*/), mode,
     count, type)
STUB(gluQuadricDrawStyle, (GLUquadric* /*quadric*/, GLenum style), style)
STUB(gluQuadricNormals, (GLUquadric* /*quadric*/, GLenum normals), normals)
STUB(gluQuadricOrientation, (GLUquadric* /*quadric*/, GLenum orientation), orientation)
STUB(gluQuadricTexture, (GLUquadric* /*quadric*/, GLboolean texture), texture)
STUB(gluSphere, (GLUquadric* /*quadric*/, GLdouble radius, GLint slices, GLint stacks), radius,
     slices, stacks)
STUB(gluDisk, (GLUquadric* /*quadric*/, GLdouble inner, GLdouble outer, GLint slices, GLint loops),
     inner, outer, slices, loops)
STUB(gluPartialDisk,
     (GLUquadric* /*quadric*/, GLdouble inner, GLdouble outer, GLint slices, GLint loops,
      GLdouble start, GLdouble sweep),
     inner, outer, slices, loops, start, sweep)
STUB(gluCylinder,
     (GLUquadric* /*quadric*/, GLdouble base, GLdouble top, GLdouble height, GLint slices,
      GLint stacks),
     base, top, height, slices, stacks)

void GLAPIENTRY glColor3f(GLfloat red, GLfloat green, GLfloat blue) {
    NOTE(red, green, blue);
    SetColour(red, green, blue, 1.0F);
}

void GLAPIENTRY glColor4f(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha) {
    NOTE(red, green, blue, alpha);
    SetColour(red, green, blue, alpha);
}

void GLAPIENTRY glColor3d(GLdouble red, GLdouble green, GLdouble blue) {
    NOTE(red, green, blue);
    SetColour(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue), 1.0F);
}

void GLAPIENTRY glColor4d(GLdouble red, GLdouble green, GLdouble blue, GLdouble alpha) {
    NOTE(red, green, blue, alpha);
    SetColour(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue),
              static_cast<float>(alpha));
}

void GLAPIENTRY glColor3ub(GLubyte red, GLubyte green, GLubyte blue) {
    NOTE(red, green, blue);
    SetColour(red / 255.0F, green / 255.0F, blue / 255.0F, 1.0F);
}

void GLAPIENTRY glColor4ub(GLubyte red, GLubyte green, GLubyte blue, GLubyte alpha) {
    NOTE(red, green, blue, alpha);
    SetColour(red / 255.0F, green / 255.0F, blue / 255.0F, alpha / 255.0F);
}

void GLAPIENTRY glColor3fv(const GLfloat* v) {
    NOTE(v[0], v[1], v[2]);
    SetColour(v[0], v[1], v[2], 1.0F);
}

void GLAPIENTRY glColor4fv(const GLfloat* v) {
    NOTE(v[0], v[1], v[2], v[3]);
    SetColour(v[0], v[1], v[2], v[3]);
}

void GLAPIENTRY glRasterPos2i(GLint x, GLint y) {
    NOTE(x, y);
    SetRaster(static_cast<float>(x), static_cast<float>(y), 0.0F);
}

void GLAPIENTRY glRasterPos2f(GLfloat x, GLfloat y) {
    NOTE(x, y);
    SetRaster(x, y, 0.0F);
}

void GLAPIENTRY glRasterPos3i(GLint x, GLint y, GLint z) {
    NOTE(x, y, z);
    SetRaster(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
}

void GLAPIENTRY glRasterPos3f(GLfloat x, GLfloat y, GLfloat z) {
    NOTE(x, y, z);
    SetRaster(x, y, z);
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

GLboolean GLAPIENTRY glIsEnabled(GLenum capability) {
    NOTE(capability);
    return IsEnabled(capability, Gl().activeUnit) ? GL_TRUE : GL_FALSE;
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

void GLAPIENTRY glPolygonMode(GLenum face, GLenum mode) {
    NOTE(face, mode);
    if (Executing()) {
        Gl().attributes.polygonMode = static_cast<GLint>(mode);
    }
}

void GLAPIENTRY glShadeModel(GLenum mode) {
    NOTE(mode);
    if (Executing()) {
        Gl().attributes.shadeModel = static_cast<GLint>(mode);
    }
}

void GLAPIENTRY glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    NOTE(x, y, width, height);
    if (Executing()) {
        const GLint values[4] = {x, y, width, height};
        std::copy_n(values, 4, Gl().attributes.viewport);
    }
}

void GLAPIENTRY glMatrixMode(GLenum mode) {
    NOTE(mode);
    if (Executing()) {
        Gl().matrixMode = mode;
    }
}

void GLAPIENTRY glPushMatrix() {
    NOTE();
    if (Executing()) {
        PushMatrix();
    }
}

void GLAPIENTRY glPopMatrix() {
    NOTE();
    if (Executing()) {
        PopMatrix();
    }
}

void GLAPIENTRY glLoadIdentity() {
    NOTE();
    if (Executing()) {
        CurrentStack().Top() = Identity();
    }
}

void GLAPIENTRY glLoadMatrixf(const GLfloat* values) {
    NOTE();
    if (Executing()) {
        CurrentStack().Top() = FromFloats(values);
    }
}

void GLAPIENTRY glLoadMatrixd(const GLdouble* values) {
    NOTE();
    if (Executing()) {
        CurrentStack().Top() = FromDoubles(values);
    }
}

void GLAPIENTRY glMultMatrixf(const GLfloat* values) {
    NOTE();
    Apply(FromFloats(values));
}

void GLAPIENTRY glMultMatrixd(const GLdouble* values) {
    NOTE();
    Apply(FromDoubles(values));
}

void GLAPIENTRY glTranslatef(GLfloat x, GLfloat y, GLfloat z) {
    NOTE(x, y, z);
    Apply({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1});
}

void GLAPIENTRY glTranslated(GLdouble x, GLdouble y, GLdouble z) {
    NOTE(x, y, z);
    Apply({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, static_cast<float>(x), static_cast<float>(y),
           static_cast<float>(z), 1});
}

void GLAPIENTRY glScalef(GLfloat x, GLfloat y, GLfloat z) {
    NOTE(x, y, z);
    Apply({x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1});
}

void GLAPIENTRY glScaled(GLdouble x, GLdouble y, GLdouble z) {
    NOTE(x, y, z);
    Apply({static_cast<float>(x), 0, 0, 0, 0, static_cast<float>(y), 0, 0, 0, 0,
           static_cast<float>(z), 0, 0, 0, 0, 1});
}

void GLAPIENTRY glRotatef(GLfloat degrees, GLfloat x, GLfloat y, GLfloat z) {
    NOTE(degrees, x, y, z);
    Apply(Rotation(degrees, x, y, z));
}

void GLAPIENTRY glRotated(GLdouble degrees, GLdouble x, GLdouble y, GLdouble z) {
    NOTE(degrees, x, y, z);
    Apply(Rotation(static_cast<float>(degrees), static_cast<float>(x), static_cast<float>(y),
                   static_cast<float>(z)));
}

void GLAPIENTRY glOrtho(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top,
                        GLdouble nearPlane, GLdouble farPlane) {
    NOTE(left, right, bottom, top, nearPlane, farPlane);
    Apply(Orthographic(left, right, bottom, top, nearPlane, farPlane));
}

void GLAPIENTRY glFrustum(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top,
                          GLdouble nearPlane, GLdouble farPlane) {
    NOTE(left, right, bottom, top, nearPlane, farPlane);
    const double depth = farPlane - nearPlane;
    const double values[16] = {2.0 * nearPlane / (right - left),
                               0,
                               0,
                               0,
                               0,
                               2.0 * nearPlane / (top - bottom),
                               0,
                               0,
                               (right + left) / (right - left),
                               (top + bottom) / (top - bottom),
                               -(farPlane + nearPlane) / depth,
                               -1,
                               0,
                               0,
                               -2.0 * farPlane * nearPlane / depth,
                               0};
    Apply(FromDoubles(values));
}

void GLAPIENTRY gluOrtho2D(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top) {
    NOTE(left, right, bottom, top);
    Apply(Orthographic(left, right, bottom, top, -1.0, 1.0));
}

void GLAPIENTRY gluPerspective(GLdouble fieldOfView, GLdouble aspect, GLdouble nearPlane,
                               GLdouble farPlane) {
    NOTE(fieldOfView, aspect, nearPlane, farPlane);
    const double f = 1.0 / std::tan(fieldOfView * std::numbers::pi / 360.0);
    const double depth = nearPlane - farPlane;
    const double values[16] = {f / aspect,
                               0,
                               0,
                               0,
                               0,
                               f,
                               0,
                               0,
                               0,
                               0,
                               (farPlane + nearPlane) / depth,
                               -1,
                               0,
                               0,
                               2.0 * farPlane * nearPlane / depth,
                               0};
    Apply(FromDoubles(values));
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

GLboolean GLAPIENTRY glIsList(GLuint list) {
    NOTE(list);
    return list < kMaxObjects && Gl().lists[list] ? GL_TRUE : GL_FALSE;
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

GLboolean GLAPIENTRY glIsTexture(GLuint texture) {
    NOTE(texture);
    return texture < kMaxObjects && Gl().textures[texture] ? GL_TRUE : GL_FALSE;
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

void GLAPIENTRY glActiveTexture(GLenum unit) {
    glActiveTextureARB(unit);
}

GLint GLAPIENTRY gluBuild2DMipmaps(GLenum target, GLint components, GLsizei width, GLsizei height,
                                   GLenum format, GLenum type, const void* /*pixels*/) {
    NOTE(target, components, width, height, format, type);
    return 0;
}

GLint GLAPIENTRY gluScaleImage(GLenum format, GLsizei widthIn, GLsizei heightIn, GLenum typeIn,
                               const void* /*dataIn*/, GLsizei widthOut, GLsizei heightOut,
                               GLenum typeOut, GLvoid* /*dataOut*/) {
    NOTE(format, widthIn, heightIn, typeIn, widthOut, heightOut, typeOut);
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
    Query(parameter, values);
}

void GLAPIENTRY glGetFloatv(GLenum parameter, GLfloat* values) {
    NOTE(parameter);
    Query(parameter, values);
}

void GLAPIENTRY glGetDoublev(GLenum parameter, GLdouble* values) {
    NOTE(parameter);
    Query(parameter, values);
}

void GLAPIENTRY glGetBooleanv(GLenum parameter, GLboolean* values) {
    NOTE(parameter);
    GLdouble numbers[16];
    const int count = Query(parameter, numbers);
    std::transform(numbers, numbers + count, values,
                   [](double number) -> GLboolean { return number != 0.0 ? GL_TRUE : GL_FALSE; });
}

GLenum GLAPIENTRY glGetError() {
    NOTE();
    return GL_NO_ERROR;
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

const GLubyte* GLAPIENTRY gluErrorString(GLenum error) {
    NOTE(error);
    return reinterpret_cast<const GLubyte*>("no error");
}

}  // extern "C"

namespace platform {

namespace {

struct EntryPoint {
    const char* name;
    void* function;
};

const EntryPoint kMultitexture[] = {
    {"glActiveTextureARB", reinterpret_cast<void*>(glActiveTextureARB)},
    {"glClientActiveTextureARB", reinterpret_cast<void*>(glClientActiveTextureARB)},
    {"glMultiTexCoord1fARB", reinterpret_cast<void*>(glMultiTexCoord1fARB)},
    {"glMultiTexCoord2fARB", reinterpret_cast<void*>(glMultiTexCoord2fARB)},
    {"glMultiTexCoord3fARB", reinterpret_cast<void*>(glMultiTexCoord3fARB)},
    {"glMultiTexCoord4fARB", reinterpret_cast<void*>(glMultiTexCoord4fARB)},
};

}  // namespace

void* GetProcAddress(const char* name) {
    if (std::strstr(extensionString, "GL_ARB_multitexture") == nullptr) {
        return nullptr;
    }
    const auto* found =
        std::find_if(std::begin(kMultitexture), std::end(kMultitexture),
                     [&](const EntryPoint& entry) { return std::strcmp(entry.name, name) == 0; });
    return found != std::end(kMultitexture) ? found->function : nullptr;
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
