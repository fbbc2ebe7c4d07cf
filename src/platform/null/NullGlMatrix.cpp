#include <cmath>
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
