// The matrix stacks and the OpenGL functions that work on them.

#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>
#include <initializer_list>
#include <numbers>

#include "platform/null/NullGlState.h"

namespace platform::null {

namespace {

void Reset(MatrixStack& stack) {
    stack.depth = 0;
    stack.Top() = Identity();
}

}  // namespace

Matrix Identity() {
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
}

Matrix Rotation(float degrees, float x, float y, float z) {
    const float length = std::sqrt(x * x + y * y + z * z);
    if (length == 0.0F) {
        return Identity();
    }
    x /= length;
    y /= length;
    z /= length;
    const double radians = degrees * std::numbers::pi / 180.0;
    const auto c = static_cast<float>(std::cos(radians));
    const auto s = static_cast<float>(std::sin(radians));
    const float k = 1.0F - c;
    return {x * x * k + c,
            y * x * k + z * s,
            z * x * k - y * s,
            0,
            x * y * k - z * s,
            y * y * k + c,
            z * y * k + x * s,
            0,
            x * z * k + y * s,
            y * z * k - x * s,
            z * z * k + c,
            0,
            0,
            0,
            0,
            1};
}

MatrixStack& CurrentStack() {
    switch (Gl().matrixMode) {
        case GL_PROJECTION:
            return Gl().projection;
        case GL_TEXTURE:
            return Gl().texture;
        default:
            return Gl().modelView;
    }
}

void PushMatrix() {
    MatrixStack& stack = CurrentStack();
    if (stack.depth + 1 == MatrixStack::kDepth) {
        Misuse();
        return;
    }
    const Matrix top = stack.Top();
    ++stack.depth;
    stack.Top() = top;
}

void PopMatrix() {
    MatrixStack& stack = CurrentStack();
    if (stack.depth == 0) {
        Misuse();
        return;
    }
    --stack.depth;
}

void Multiply(const Matrix& matrix) {
    const Matrix top = CurrentStack().Top();
    Matrix& product = CurrentStack().Top();
    for (size_t column = 0; column < 4; ++column) {
        for (size_t row = 0; row < 4; ++row) {
            float sum = 0.0F;
            for (size_t k = 0; k < 4; ++k) {
                sum += top[k * 4 + row] * matrix[column * 4 + k];
            }
            product[column * 4 + row] = sum;
        }
    }
}

void ResetMatrices() {
    Gl().matrixMode = GL_MODELVIEW;
    Reset(Gl().modelView);
    Reset(Gl().projection);
    Reset(Gl().texture);
}

const float* ModelView() {
    return Gl().modelView.Top().data();
}

const float* Projection() {
    return Gl().projection.Top().data();
}

int ModelViewDepth() {
    return Gl().modelView.depth;
}

int ProjectionDepth() {
    return Gl().projection.depth;
}

}  // namespace platform::null

using namespace platform::null;

namespace {

// Multiplies the current matrix, unless a list is only being compiled.
void Apply(const Matrix& matrix) {
    if (Executing()) {
        Multiply(matrix);
    }
}

struct MatrixElement {
    size_t index;
    double value;
};

// A matrix that is zero but for these elements.
Matrix Sparse(std::initializer_list<MatrixElement> elements) {
    Matrix matrix = {};
    for (const MatrixElement& element : elements) {
        matrix[element.index] = static_cast<float>(element.value);
    }
    return matrix;
}

}  // namespace

extern "C" {

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

void GLAPIENTRY glTranslatef(GLfloat x, GLfloat y, GLfloat z) {
    NOTE(x, y, z);
    Apply({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1});
}

void GLAPIENTRY glScalef(GLfloat x, GLfloat y, GLfloat z) {
    NOTE(x, y, z);
    Apply({x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1});
}

void GLAPIENTRY glRotatef(GLfloat degrees, GLfloat x, GLfloat y, GLfloat z) {
    NOTE(degrees, x, y, z);
    Apply(Rotation(degrees, x, y, z));
}

void GLAPIENTRY glOrtho(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top,
                        GLdouble nearPlane, GLdouble farPlane) {
    NOTE(left, right, bottom, top, nearPlane, farPlane);
    const double depth = farPlane - nearPlane;
    Apply(Sparse({{0, 2.0 / (right - left)},
                  {5, 2.0 / (top - bottom)},
                  {10, -2.0 / depth},
                  {12, -(right + left) / (right - left)},
                  {13, -(top + bottom) / (top - bottom)},
                  {14, -(farPlane + nearPlane) / depth},
                  {15, 1.0}}));
}

void GLAPIENTRY glFrustum(GLdouble left, GLdouble right, GLdouble bottom, GLdouble top,
                          GLdouble nearPlane, GLdouble farPlane) {
    NOTE(left, right, bottom, top, nearPlane, farPlane);
    const double depth = farPlane - nearPlane;
    Apply(Sparse({{0, 2.0 * nearPlane / (right - left)},
                  {5, 2.0 * nearPlane / (top - bottom)},
                  {8, (right + left) / (right - left)},
                  {9, (top + bottom) / (top - bottom)},
                  {10, -(farPlane + nearPlane) / depth},
                  {11, -1.0},
                  {14, -2.0 * farPlane * nearPlane / depth}}));
}

void GLAPIENTRY gluPerspective(GLdouble fieldOfView, GLdouble aspect, GLdouble nearPlane,
                               GLdouble farPlane) {
    NOTE(fieldOfView, aspect, nearPlane, farPlane);
    const double f = 1.0 / std::tan(fieldOfView * std::numbers::pi / 360.0);
    const double depth = nearPlane - farPlane;
    Apply(Sparse({{0, f / aspect},
                  {5, f},
                  {10, (farPlane + nearPlane) / depth},
                  {11, -1.0},
                  {14, 2.0 * farPlane * nearPlane / depth}}));
}

}  // extern "C"
