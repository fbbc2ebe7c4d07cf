#pragma once

// The state behind NullGl.h, shared by its three files: NullGlState.cpp keeps the record and the
// objects, NullGlMatrix.cpp the matrices, NullGl.cpp has all other OpenGL functions.

#include <GL/gl.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "platform/null/NullState.h"

namespace platform::null {

using Matrix = std::array<float, 16>;

struct MatrixStack {
    static constexpr int kDepth = 32;
    std::array<Matrix, kDepth> entries = {};
    int depth = 0;
    Matrix& Top() { return entries[static_cast<size_t>(depth)]; }
};

constexpr int kTextureUnits = 8;
constexpr int kLights = 8;
constexpr uint32_t kMaxObjects = 65536;  // list and texture identifiers stay below this
constexpr size_t kMaxCapabilities = 96;
constexpr size_t kMaxAttributeDepth = 16;

struct Capability {
    GLenum name = 0;
    uint32_t unit = 0;  // of the texture capabilities, which each texture unit has of its own
    bool enabled = false;
};

// What glPushAttrib can save.
struct Attributes {
    std::array<Capability, kMaxCapabilities> capabilities = {};
    size_t capabilityCount = 0;
    GLuint listBase = 0;
    float colour[4] = {1.0F, 1.0F, 1.0F, 1.0F};
};

struct GlState {
    Attributes attributes;
    struct Saved {
        Attributes attributes;
        GLbitfield mask = 0;
    };
    std::array<Saved, kMaxAttributeDepth> saved;
    size_t savedCount = 0;

    GLenum matrixMode = GL_MODELVIEW;
    MatrixStack modelView;
    MatrixStack projection;
    MatrixStack texture;

    std::array<bool, kMaxObjects> lists = {};
    uint32_t highestList = 0;
    int liveLists = 0;
    std::array<bool, kMaxObjects> textures = {};
    uint32_t highestTexture = 0;
    int liveTextures = 0;
    std::array<GLuint, kTextureUnits> boundTexture = {};
    uint32_t activeUnit = 0;

    GLuint compiling = 0;  // the list being compiled; 0 for none
    GLenum compileMode = GL_COMPILE;
    bool insidePrimitive = false;
    float raster[3] = {};  // in eye coordinates
};

GlState& Gl();
void Misuse();
// Whether commands take effect now: they do not while a list is only compiled.
bool Executing();

// Counts one function's calls; each function has its own, which joins the list at its first call.
struct CallCounter {
    const char* name = nullptr;
    int64_t count = 0;
    GlCall last = {};
    CallCounter* next = nullptr;
    bool listed = false;
    void Add(std::initializer_list<double> arguments);
    template <typename... Numbers>
    void Note(Numbers... numbers) {
        Add({static_cast<double>(numbers)...});
    }
};

// Notes a call of the function it stands in, with the arguments that are numbers.
#define NOTE(...)                                       \
    do {                                                \
        static constinit CallCounter counter{__func__}; \
        counter.Note(__VA_ARGS__);                      \
    } while (false)

void RecordDrawnList(GLuint list);
void RecordDrawnText(const char* characters, size_t length);

void SetCapability(GLenum name, bool enabled);
void PushAttributes(GLbitfield mask);
void PopAttributes();

void CreateList(GLuint list);
void DeleteList(GLuint list);
void CreateTexture(GLuint texture);
void DeleteTexture(GLuint texture);

MatrixStack& CurrentStack();
void PushMatrix();
void PopMatrix();
void Multiply(const Matrix& matrix);
Matrix Identity();
Matrix Rotation(float degrees, float x, float y, float z);
void ResetMatrices();

}  // namespace platform::null
