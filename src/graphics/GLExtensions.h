#pragma once

// What the OpenGL driver offers beyond the basics.

#include <cstdint>

class GLExtensions {
public:
    GLExtensions() = default;
    virtual ~GLExtensions() = default;

    // Whole-word search in the driver's extension string; false for an empty name or one with a
    // blank in it, or without a context.
    static bool IsGLExtensionSupported(const char* name);

    // Fetches the multitexture entry points. True = failure: the driver lacks them.
    bool InitMultitexture();
    // Texture units that the driver reports.
    int32_t GetTextureUnits() const;
    // `unit`: GL_TEXTURE0 and up. Only after InitMultitexture has succeeded.
    void ActiveTexture(uint32_t unit) const;

    // Looks for a multisample format of 4, then of 2 samples. Returns true when one was FOUND.
    bool InitMultisample();
    // Samples to a pixel of the format found; 0 before.
    int32_t GetMultisampleFormat() const { return multisampleFormat; }

private:
    using ActiveTextureProc = void (*)(uint32_t);
    ActiveTextureProc activeTexture = nullptr;
    int32_t multisampleFormat = 0;
};
