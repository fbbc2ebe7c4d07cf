#pragma once

// OpenGL without a driver. Every function that the game calls exists, keeps the state that somebody
// may ask for (matrices, enabled capabilities, lists, textures, quadrics) and writes itself down,
// so that a test can ask what was drawn, where, and with which state. The record has fixed sizes
// and the oldest entries go first; no call allocates.

#include <cstddef>
#include <cstdint>

namespace platform::null {

constexpr int kMaxGlArguments = 10;

struct GlCall {
    const char* name = nullptr;
    int argumentCount = 0;
    // Scalars, identifiers and enumerations as they are; a vector's first four elements one after
    // another; pointers to data are left out.
    double arguments[kMaxGlArguments] = {};
    uint32_t compiledInto = 0;  // the display list being compiled; 0 when executed at once
};

// Calls by that name since the record was cleared, inside and outside of lists.
int64_t GlCallCount(const char* name);
// The last call by that name; its `name` is null when there was none.
GlCall LastGlCall(const char* name);
// All calls since the record was cleared.
int64_t GlCallTotal();
// Of the newest calls, oldest first: at most kRecordedCalls of them.
constexpr size_t kRecordedCalls = 16384;
size_t RecordedGlCalls();
const GlCall& RecordedGlCall(size_t index);

// A display list that was drawn: glCallList outside of any list.
struct DrawnList {
    uint32_t list = 0;
    float modelView[16] = {};  // column by column, as OpenGL keeps it
    float X() const { return modelView[12]; }
    float Y() const { return modelView[13]; }
    float Z() const { return modelView[14]; }
};
constexpr size_t kRecordedLists = 4096;
size_t DrawnLists();
const DrawnList& DrawnListAt(size_t index);

// A text that was drawn: glCallLists outside of any list, with the characters it stands for (the
// list base counts as that of character 0).
struct DrawnText {
    char text[128] = {};  // cut when longer
    float rasterX = 0.0F;
    float rasterY = 0.0F;
    float rasterZ = 0.0F;
    float colour[4] = {};
    uint32_t listBase = 0;
};
constexpr size_t kRecordedTexts = 1024;
size_t DrawnTexts();
const DrawnText& DrawnTextAt(size_t index);
// The number of texts since the record was cleared that read exactly so.
int DrawnTextCount(const char* text);

// Forgets all calls, lists and texts; state and objects stay.
void ClearGlRecord();
// Forgets everything, as with a new context.
void ResetGl();

// Objects that exist now.
int LiveLists();
int LiveTextures();
int LiveQuadrics();
// `unit` counts for the texture capabilities only.
bool IsEnabled(uint32_t capability, uint32_t unit = 0);
uint32_t BoundTexture(uint32_t unit = 0);
const float* ModelView();
const float* Projection();
// Depth of the model-view, projection and attribute stacks: 0 when every push has been popped.
int ModelViewDepth();
int ProjectionDepth();
int AttributeDepth();
// Pushes without room, pops without a push, ends without a begin, lists inside of lists.
int GlMisuses();
// Calls made without a current context, once there has been one.
int64_t GlCallsWithoutContext();

// What glGetString(GL_EXTENSIONS) gives; lives as long as the caller keeps it. Null for the
// default, which has multitexture, env_combine and multisample.
void SetGlExtensions(const char* extensions);

}  // namespace platform::null
