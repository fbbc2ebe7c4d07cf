#include "platform/null/NullGlState.h"

#include <algorithm>
#include <cstring>

namespace platform::null {

namespace {

// The newest `capacity` entries of a record; the oldest go first.
template <typename Entry, size_t capacity>
struct Ring {
    std::array<Entry, capacity> entries = {};
    size_t written = 0;

    Entry& Add() { return entries[written++ % capacity]; }
    size_t Size() const { return std::min(written, capacity); }
    const Entry& At(size_t index) const { return entries[(written - Size() + index) % capacity]; }
};

struct GlRecord {
    Ring<GlCall, kRecordedCalls> calls;
    Ring<DrawnList, kRecordedLists> lists;
    Ring<DrawnText, kRecordedTexts> texts;
    CallCounter* counters = nullptr;
    int64_t total = 0;
    int misuses = 0;
    int64_t withoutContext = 0;
    bool contextKnown = false;  // a context has been made current since the reset
    bool contextCurrent = false;
};

GlRecord theRecord;
GlState theState;

bool IsTextureCapability(GLenum name) {
    return name == GL_TEXTURE_1D || name == GL_TEXTURE_2D ||
           (name >= GL_TEXTURE_GEN_S && name <= GL_TEXTURE_GEN_Q);
}

// The group of attributes that a capability is saved with, beside GL_ENABLE_BIT.
GLbitfield GroupOf(GLenum name) {
    if (IsTextureCapability(name)) {
        return GL_TEXTURE_BIT;
    }
    if (name >= GL_LIGHT0 && name < GL_LIGHT0 + kLights) {
        return GL_LIGHTING_BIT;
    }
    if (name >= GL_CLIP_PLANE0 && name <= GL_CLIP_PLANE5) {
        return GL_TRANSFORM_BIT;
    }
    switch (name) {
        case GL_FOG:
            return GL_FOG_BIT;
        case GL_LIGHTING:
        case GL_COLOR_MATERIAL:
            return GL_LIGHTING_BIT;
        case GL_BLEND:
        case GL_ALPHA_TEST:
            return GL_COLOR_BUFFER_BIT;
        case GL_DEPTH_TEST:
            return GL_DEPTH_BUFFER_BIT;
        case GL_CULL_FACE:
            return GL_POLYGON_BIT;
        case GL_LINE_SMOOTH:
            return GL_LINE_BIT;
        case GL_POINT_SMOOTH:
            return GL_POINT_BIT;
        default:
            return 0;
    }
}

Capability* FindCapability(GLenum name, uint32_t unit) {
    Attributes& attributes = theState.attributes;
    for (size_t i = 0; i < attributes.capabilityCount; ++i) {
        Capability& capability = attributes.capabilities[i];
        if (capability.name == name && capability.unit == unit) {
            return &capability;
        }
    }
    return nullptr;
}

void Put(GLenum name, uint32_t unit, bool enabled) {
    Attributes& attributes = theState.attributes;
    Capability* capability = FindCapability(name, unit);
    if (capability == nullptr) {
        if (attributes.capabilityCount == kMaxCapabilities) {
            Misuse();
            return;
        }
        capability = &attributes.capabilities[attributes.capabilityCount++];
        capability->name = name;
        capability->unit = unit;
    }
    capability->enabled = enabled;
}

bool WasEnabled(const Attributes& attributes, const Capability& wanted) {
    for (size_t i = 0; i < attributes.capabilityCount; ++i) {
        const Capability& capability = attributes.capabilities[i];
        if (capability.name == wanted.name && capability.unit == wanted.unit) {
            return capability.enabled;
        }
    }
    return false;
}

const bool kMatricesReady = [] {
    ResetMatrices();
    return true;
}();

}  // namespace

GlState& Gl() {
    return theState;
}

void Misuse() {
    ++theRecord.misuses;
}

bool Executing() {
    return theState.compiling == 0 || theState.compileMode == GL_COMPILE_AND_EXECUTE;
}

void CallCounter::Add(std::initializer_list<double> arguments) {
    if (!listed) {
        listed = true;
        next = theRecord.counters;
        theRecord.counters = this;
    }
    ++count;
    ++theRecord.total;
    theRecord.withoutContext += theRecord.contextKnown && !theRecord.contextCurrent ? 1 : 0;
    last.name = name;
    last.argumentCount = static_cast<int>(std::min<size_t>(arguments.size(), kMaxGlArguments));
    for (int i = 0; i < last.argumentCount; ++i) {
        last.arguments[i] = arguments.begin()[i];
    }
    last.compiledInto = theState.compiling;
    theRecord.calls.Add() = last;
}

void RecordDrawnList(GLuint list) {
    DrawnList& drawn = theRecord.lists.Add();
    drawn.list = list;
    std::copy_n(ModelView(), 16, drawn.modelView);
}

void RecordDrawnText(const char* characters, size_t length) {
    DrawnText& drawn = theRecord.texts.Add();
    drawn = DrawnText{};
    std::copy_n(characters, std::min(length, sizeof drawn.text - 1), drawn.text);
    drawn.rasterX = theState.raster[0];
    drawn.rasterY = theState.raster[1];
    drawn.rasterZ = theState.raster[2];
    std::copy_n(theState.attributes.colour, 4, drawn.colour);
    drawn.listBase = theState.attributes.listBase;
}

void SetCapability(GLenum name, bool enabled) {
    Put(name, IsTextureCapability(name) ? theState.activeUnit : 0, enabled);
}

void PushAttributes(GLbitfield mask) {
    if (theState.savedCount == kMaxAttributeDepth) {
        Misuse();
        return;
    }
    theState.saved[theState.savedCount++] = {theState.attributes, mask};
}

void PopAttributes() {
    if (theState.savedCount == 0) {
        Misuse();
        return;
    }
    const GlState::Saved& saved = theState.saved[--theState.savedCount];
    Attributes& now = theState.attributes;
    for (size_t i = 0; i < now.capabilityCount; ++i) {
        Capability& capability = now.capabilities[i];
        if ((saved.mask & (GroupOf(capability.name) | GL_ENABLE_BIT)) != 0) {
            capability.enabled = WasEnabled(saved.attributes, capability);
        }
    }
    if ((saved.mask & GL_LIST_BIT) != 0) {
        now.listBase = saved.attributes.listBase;
    }
    if ((saved.mask & GL_CURRENT_BIT) != 0) {
        std::copy_n(saved.attributes.colour, 4, now.colour);
    }
}

void CreateList(GLuint list) {
    if (list == 0 || list >= kMaxObjects) {
        Misuse();
        return;
    }
    theState.liveLists += theState.lists[list] ? 0 : 1;
    theState.lists[list] = true;
    theState.highestList = std::max(theState.highestList, list);
}

void DeleteList(GLuint list) {
    if (list < kMaxObjects && theState.lists[list]) {
        theState.lists[list] = false;
        --theState.liveLists;
    }
}

void CreateTexture(GLuint texture) {
    if (texture >= kMaxObjects) {
        Misuse();
        return;
    }
    if (texture != 0 && !theState.textures[texture]) {
        theState.textures[texture] = true;
        ++theState.liveTextures;
        theState.highestTexture = std::max(theState.highestTexture, texture);
    }
}

void DeleteTexture(GLuint texture) {
    if (texture < kMaxObjects && theState.textures[texture]) {
        theState.textures[texture] = false;
        --theState.liveTextures;
        std::replace(theState.boundTexture.begin(), theState.boundTexture.end(), texture,
                     GLuint{0});
    }
}

void ContextIsCurrent(bool current) {
    theRecord.contextKnown = theRecord.contextKnown || current;
    theRecord.contextCurrent = current;
}

void DropGlObjects() {
    theState.attributes = Attributes{};
    theState.savedCount = 0;
    theState.lists.fill(false);
    theState.highestList = 0;
    theState.liveLists = 0;
    theState.textures.fill(false);
    theState.highestTexture = 0;
    theState.liveTextures = 0;
    theState.boundTexture.fill(0);
    theState.activeUnit = 0;
    theState.compiling = 0;
    theState.insidePrimitive = false;
    ResetMatrices();
}

int64_t GlCallCount(const char* name) {
    for (const CallCounter* counter = theRecord.counters; counter != nullptr;
         counter = counter->next) {
        if (std::strcmp(counter->name, name) == 0) {
            return counter->count;
        }
    }
    return 0;
}

GlCall LastGlCall(const char* name) {
    for (const CallCounter* counter = theRecord.counters; counter != nullptr;
         counter = counter->next) {
        if (std::strcmp(counter->name, name) == 0) {
            return counter->last;
        }
    }
    return {};
}

int64_t GlCallTotal() {
    return theRecord.total;
}

size_t RecordedGlCalls() {
    return theRecord.calls.Size();
}

const GlCall& RecordedGlCall(size_t index) {
    return theRecord.calls.At(index);
}

size_t DrawnLists() {
    return theRecord.lists.Size();
}

const DrawnList& DrawnListAt(size_t index) {
    return theRecord.lists.At(index);
}

size_t DrawnTexts() {
    return theRecord.texts.Size();
}

const DrawnText& DrawnTextAt(size_t index) {
    return theRecord.texts.At(index);
}

int DrawnTextCount(const char* text) {
    int found = 0;
    for (size_t i = 0; i < DrawnTexts(); ++i) {
        found += std::strcmp(DrawnTextAt(i).text, text) == 0 ? 1 : 0;
    }
    return found;
}

void ClearGlRecord() {
    theRecord.calls.written = 0;
    theRecord.lists.written = 0;
    theRecord.texts.written = 0;
    theRecord.total = 0;
    theRecord.misuses = 0;
    theRecord.withoutContext = 0;
    for (CallCounter* counter = theRecord.counters; counter != nullptr; counter = counter->next) {
        counter->count = 0;
        counter->last = GlCall{};
    }
}

void ResetGl() {
    DropGlObjects();
    ClearGlRecord();
    theRecord.contextKnown = false;
    theRecord.contextCurrent = false;
    SetGlExtensions(nullptr);
}

int LiveLists() {
    return theState.liveLists;
}

int LiveTextures() {
    return theState.liveTextures;
}

bool IsEnabled(uint32_t capability, uint32_t unit) {
    const Capability* found =
        FindCapability(capability, IsTextureCapability(capability) ? unit : 0);
    return found != nullptr && found->enabled;
}

uint32_t BoundTexture(uint32_t unit) {
    return theState.boundTexture.at(unit);
}

int AttributeDepth() {
    return static_cast<int>(theState.savedCount);
}

int GlMisuses() {
    return theRecord.misuses;
}

int64_t GlCallsWithoutContext() {
    return theRecord.withoutContext;
}

}  // namespace platform::null
