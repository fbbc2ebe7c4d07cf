#include "graphics/GLExtensions.h"

#include <GL/gl.h>

#include <string_view>

#include "core/DebugLog.h"
#include "platform/Window.h"

bool GLExtensions::IsGLExtensionSupported(const char* name) {
    const std::string_view wanted = name != nullptr ? name : "";
    const auto* const bytes = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
    if (wanted.empty() || wanted.find(' ') != wanted.npos || bytes == nullptr) {
        return false;
    }
    const std::string_view all = bytes;
    for (size_t at = all.find(wanted); at != all.npos; at = all.find(wanted, at + 1)) {
        const size_t end = at + wanted.size();
        if ((at == 0 || all[at - 1] == ' ') && (end == all.size() || all[end] == ' ')) {
            return true;
        }
    }
    return false;
}

bool GLExtensions::InitMultitexture() {
    if (IsGLExtensionSupported("GL_ARB_multitexture") &&
        IsGLExtensionSupported("GL_EXT_texture_env_combine")) {
        activeTexture =
            reinterpret_cast<ActiveTextureProc>(platform::GetProcAddress("glActiveTextureARB"));
        if (activeTexture != nullptr) {
            Log("Multitexturing supported and enabled\n");
            return false;
        }
    }
    Log("Multitexturing not supported - disabled\n");
    return true;
}

int32_t GLExtensions::GetTextureUnits() const {
    GLint units = 1;
    glGetIntegerv(GL_MAX_TEXTURE_UNITS_ARB, &units);
    Log("Number of texel units supported: %d\n", units);
    return units;
}

void GLExtensions::ActiveTexture(uint32_t unit) const {
    activeTexture(unit);
}

bool GLExtensions::InitMultisample() {
    if (!IsGLExtensionSupported("GL_ARB_multisample")) {
        Log("ARB multisample not supported\n");
        return false;
    }
    for (const int samples : {4, 2}) {
        if (platform::FindMultisampleFormat(samples)) {
            multisampleFormat = samples;
            Log("ARB Multisample supported with %d samples\n", samples);
            return true;
        }
    }
    Log("ARB Multisample supported with 1 sample\n");
    return false;
}
