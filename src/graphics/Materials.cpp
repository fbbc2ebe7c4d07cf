// The part of the ObjectManager that turns materials, textures and reflections into OpenGL state
// while a model is compiled. Pictures that replace the colour go to texture unit 0, as does the
// reflection map; the projected ones go to the unit behind their position in the material.

#include <GL/gl.h>
#include <GL/glu.h>

#include "core/DebugLog.h"
#include "core/Registry.h"
#include "graphics/GLExtensions.h"
#include "graphics/ObjectManager.h"
#include "graphics/TgaImage.h"

namespace {

constexpr float kStrongReflection = 0.7F;  // from here on the second map
constexpr float kShininessScale = 128.0F;  // the exponent of a material's shininess 1
constexpr const char* kReflectionPictures[2] = {"images\\Reflect.tga", "images\\Reflect2.tga"};

int UnitOf(TextureKind kind, int position) {
    return kind == TextureKind::C ? 0 : position + 1;
}

char LetterOf(TextureKind kind) {
    switch (kind) {
        case TextureKind::C:
            return 'C';
        case TextureKind::D:
            return 'D';
        default:
            return 'R';
    }
}

void SetWrap(GLint wrap) {
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrap);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrap);
}

void SetFilters(GLint minification) {
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, minification);
}

void UploadAsItIs(const TgaImage& image) {
    glTexImage2D(GL_TEXTURE_2D, 0, image.bitsPerPixel / 8, image.width, image.height, 0,
                 image.format, GL_UNSIGNED_BYTE, image.pixels.data());
}

void GenerateCoordinates(GLint mode) {
    glTexGeni(GL_S, GL_TEXTURE_GEN_MODE, mode);
    glTexGeni(GL_T, GL_TEXTURE_GEN_MODE, mode);
}

void EnableGeneration() {
    glEnable(GL_TEXTURE_GEN_S);
    glEnable(GL_TEXTURE_GEN_T);
}

}  // namespace

void ObjectManager::SelectUnit(int unit) const {
    if (multitexture) {
        glExtensions->ActiveTexture(GL_TEXTURE0 + unit);
    }
}

bool ObjectManager::LoadTexture(const std::string& name, TextureKind kind, uint32_t textureId) {
    TgaImage image;
    if (!LoadTga("images\\" + name, image)) {
        return true;
    }
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);  // rows of a picture follow one another without gaps
    glBindTexture(GL_TEXTURE_2D, textureId);
    if (kind == TextureKind::R) {
        SetWrap(GL_REPEAT);
    } else if (kind == TextureKind::D) {
        SetWrap(GL_CLAMP);
    }
    if (kind == TextureKind::D) {
        // Not scaled down: its transparent frame has to stay at the border.
        SetFilters(GL_NEAREST);
        UploadAsItIs(image);
        return false;
    }
    SetFilters(GL_NEAREST_MIPMAP_LINEAR);
    return gluBuild2DMipmaps(GL_TEXTURE_2D, image.bitsPerPixel / 8, image.width, image.height,
                             image.format, GL_UNSIGNED_BYTE, image.pixels.data()) != 0;
}

// A texture that cannot be loaded ends the loading for this model, which is drawn without them.
void ObjectManager::CacheTextures() {
    bool failed = false;
    for (const Material& material : model.materials) {
        for (size_t t = 0; t < material.textures.size() && !failed; ++t) {
            CacheTexture(material.textures[t], static_cast<int>(t), failed);
        }
    }
}

void ObjectManager::CacheTexture(const MaterialTexture& texture, int position, bool& failed) {
    const auto& [name, kind, sPlane, tPlane] = texture;
    if (FindTexture(name, kind) != 0) {
        Log("%s:%c already cached\n", name.c_str(), LetterOf(kind));
        return;
    }
    const bool full = textureCache.size() >= kMaxTexturesCached;
    const uint32_t textureId = full ? 0 : NewTexture();
    if (full || LoadTexture(name, kind, textureId)) {
        Log("WARNING: Failed to load Texture: %s\n", name.c_str());
        failed = true;
        return;
    }
    const uint32_t list = NewList();
    glNewList(list, GL_COMPILE);
    SelectUnit(UnitOf(kind, position));
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, textureId);
    glEndList();
    textureCache.push_back({.fileName = name, .kind = kind, .listId = list});
}

uint32_t ObjectManager::FindTexture(const std::string& name, TextureKind kind) const {
    for (const CachedTexture& cached : textureCache) {
        if (cached.kind == kind && cached.fileName == name) {
            return cached.listId;
        }
    }
    return 0;
}

// The colour also sets ambient and diffuse of front faces, which track it.
void ObjectManager::ApplyMaterial(const Material& material) {
    const auto& colour = material.colour;
    glColor4fv(colour.data());
    glMaterialfv(GL_FRONT, GL_SPECULAR, material.specular.data());
    glMaterialfv(GL_FRONT, GL_DIFFUSE, material.diffuse.data());
    glMaterialf(GL_FRONT, GL_SHININESS, material.shininess * kShininessScale);
    const float emission[4] = {colour[0] * material.luminosity, colour[1] * material.luminosity,
                               colour[2] * material.luminosity, 1.0F};
    glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, emission);
}

void ObjectManager::ApplyTexture(const MaterialTexture& texture, int position, bool& unitZeroUsed) {
    const uint32_t list = FindTexture(texture.name, texture.kind);
    bool used = !multitexture;
    if (multitexture) {
        const bool isPicture = texture.kind == TextureKind::C;
        if (position + 1 > textureUnits || (!isPicture && position + 1 == textureUnits)) {
            return;  // no such unit
        }
        SelectUnit(UnitOf(texture.kind, position));
        used = isPicture;
    }
    if (list == 0) {
        glDisable(GL_TEXTURE_2D);
        return;
    }
    glEnable(GL_TEXTURE_2D);
    SetTexGen(texture);
    glCallList(list);
    unitZeroUsed = unitZeroUsed || used;
}

void ObjectManager::SetTexGen(const MaterialTexture& texture) {
    switch (texture.kind) {
        case TextureKind::C:
            glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
            glDisable(GL_TEXTURE_GEN_S);
            glDisable(GL_TEXTURE_GEN_T);
            break;
        case TextureKind::R:
            GenerateCoordinates(GL_OBJECT_LINEAR);
            glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
            glTexGenfv(GL_T, GL_OBJECT_PLANE, texture.tPlane.data());
            glTexGenfv(GL_S, GL_OBJECT_PLANE, texture.sPlane.data());
            EnableGeneration();
            break;
        case TextureKind::D:
            GenerateCoordinates(GL_EYE_LINEAR);
            glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
            glTexGenfv(GL_T, GL_EYE_PLANE, texture.tPlane.data());
            glTexGenfv(GL_S, GL_EYE_PLANE, texture.sPlane.data());
            EnableGeneration();
            break;
    }
}

void ObjectManager::ApplyReflection(float reflection) {
    const uint32_t list = reflectionLists[reflection < kStrongReflection ? 0 : 1];
    if (list == 0) {
        return;  // its map was not built
    }
    SelectUnit(0);
    glEnable(GL_TEXTURE_2D);
    glCallList(list);
}

void ObjectManager::LoadReflectionMaps() {
    reflectionLists[0] = 0;
    reflectionLists[1] = 0;
    for (int i = 0; i < 2; ++i) {
        const uint32_t list = NewList();
        const uint32_t textureId = NewTexture();
        TgaImage image;
        if (!LoadTga(kReflectionPictures[i], image)) {
            Log("Error loading relection file %d\n", i);
            return;
        }
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glBindTexture(GL_TEXTURE_2D, textureId);
        SetWrap(GL_REPEAT);
        SetFilters(GL_LINEAR);
        UploadAsItIs(image);

        glNewList(list, GL_COMPILE);
        SelectUnit(0);
        glEnable(GL_TEXTURE_2D);
        glBindTexture(GL_TEXTURE_2D, textureId);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        GenerateCoordinates(GL_SPHERE_MAP);
        EnableGeneration();
        glEndList();
        reflectionLists[i] = list;
    }
}
