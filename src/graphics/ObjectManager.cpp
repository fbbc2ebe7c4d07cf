#include "graphics/ObjectManager.h"

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <memory>

#include "core/DebugLog.h"
#include "core/Registry.h"
#include "graphics/GLExtensions.h"
#include "graphics/GLWindow.h"

namespace {

std::unique_ptr<ObjectManager> instance;

constexpr float kReflectionThreshold = 0.3F;  // of a material's reflection value

// The whole picture on a face, corner by corner.
constexpr std::array<std::array<float, 2>, 4> kPictureCorners = {{{1, 0}, {0, 0}, {0, 1}, {1, 1}}};

void Widen(Bounds& bounds, Vec3 p) {
    bounds.minX = std::min(bounds.minX, p.x);
    bounds.maxX = std::max(bounds.maxX, p.x);
    bounds.minY = std::min(bounds.minY, p.y);
    bounds.maxY = std::max(bounds.maxY, p.y);
    bounds.minZ = std::min(bounds.minZ, p.z);
    bounds.maxZ = std::max(bounds.maxZ, p.z);
}

}  // namespace

ObjectManager* ObjectManager::Instance() {
    if (!instance) {
        instance.reset(new ObjectManager);
    }
    return instance.get();
}

void ObjectManager::Destroy() {
    instance.reset();
}

void ObjectManager::IdRange::Widen(uint32_t id) {
    min = std::min(min, id);
    max = std::max(max, id);
}

ObjectManager::ObjectManager() {
    modelCache.reserve(kMaxModels);
    textureCache.reserve(kMaxTexturesCached);
    multitexture = glExtensions != nullptr && !glExtensions->InitMultitexture();
    if (multitexture) {
        textureUnits = glExtensions->GetTextureUnits();
    }
    LoadReflectionMaps();
}

// In a new context the driver counts from the start again and would hand out identifiers that
// callers still hold for models which are compiled anew a moment later. Those are passed over.
uint32_t ObjectManager::NewList() {
    const auto isHeld = [this](uint32_t id) {
        return std::any_of(modelCache.begin(), modelCache.end(),
                           [id](const CachedModel& cached) { return cached.listId == id; });
    };
    uint32_t id = glGenLists(1);
    while (id != 0 && isHeld(id)) {
        id = glGenLists(1);
    }
    lists.Widen(id);
    return id;
}

uint32_t ObjectManager::NewTexture() {
    GLuint id = 0;
    glGenTextures(1, &id);
    textures.Widen(id);
    return id;
}

uint32_t ObjectManager::Load(const char* fileName) {
    Bounds unused;
    return Load(fileName, unused);
}

uint32_t ObjectManager::Load(const char* fileName, Bounds& bounds) {
    Log("Loading Object: %s\n", fileName);
    for (const CachedModel& cached : modelCache) {
        if (cached.fileName == fileName) {
            bounds = cached.bounds;
            Log("Returning cache copy.\n");
            return cached.listId;
        }
    }
    const uint32_t list = Build(fileName, bounds);
    Log("Returned new object - ID %d.\n\n", static_cast<int>(list));
    return list;
}

uint32_t ObjectManager::Build(const char* fileName, Bounds& bounds) {
    if (modelCache.size() >= kMaxModels) {
        Log("ERROR: More than %d models; %s is refused\n", kMaxModels, fileName);
        return 0;
    }
    model.fileName = fileName;
    model.bounds = {};
    if (model.ReadAobFile()) {
        return 0;
    }
    const uint32_t list = NewList();
    Compile(list);
    model.FreeModel();
    bounds = model.bounds;
    modelCache.push_back({.fileName = fileName, .listId = list, .bounds = model.bounds});
    return list;
}

void ObjectManager::DrawModel(int index) const {
    glCallList(modelCache[static_cast<size_t>(index)].listId);
}

// Quads stay as they are between two material switches: the driver sorts them once, here.
void ObjectManager::Compile(uint32_t list) {
    CacheTextures();
    const bool pictureOnEachFace = !model.materials.empty() &&
                                   !model.materials.front().textures.empty() &&
                                   model.materials.front().textures.front().kind == TextureKind::C;
    glNewList(list, GL_COMPILE);
    lists.Widen(list);
    glBegin(GL_QUADS);
    size_t s = 0;
    const size_t streamLength = model.faces.size() + model.separators.size();
    for (size_t i = 0; i < streamLength; ++i) {
        const bool isSwitch = s < model.separators.size() &&
                              model.separators[s].streamIndex == static_cast<int32_t>(i);
        if (!isSwitch) {
            EmitFace(model.faces[i - s], pictureOnEachFace);
            continue;
        }
        glEnd();
        EmitMaterial(model.materials[model.separators[s].material]);
        glBegin(GL_QUADS);
        ++s;
    }
    glEnd();
    glEndList();
}

void ObjectManager::EmitFace(const Face& face, bool pictureOnEachFace) {
    for (size_t k = 0; k < face.size(); ++k) {
        const auto& [normal, position] = face[k];
        glNormal3f(normal.x, normal.y, normal.z);
        if (pictureOnEachFace) {
            glTexCoord2f(kPictureCorners[k][0], kPictureCorners[k][1]);
        }
        glVertex3f(position.x, position.y, position.z);
        Widen(model.bounds, position);
    }
}

void ObjectManager::EmitMaterial(const Material& material) {
    DisableTextures();
    ApplyMaterial(material);
    bool unitZeroUsed = false;
    for (size_t t = 0; t < material.textures.size(); ++t) {
        ApplyTexture(material.textures[t], static_cast<int>(t), unitZeroUsed);
    }
    if (material.reflection >= kReflectionThreshold && !unitZeroUsed) {
        ApplyReflection(material.reflection);
    }
}

void ObjectManager::DeleteAll() {
    if (glWindow != nullptr) {
        lists.Widen(glWindow->GetFontBase());
        lists.Widen(glWindow->GetFontBase() + platform::kGlyphCount);
    }
    if (lists.max >= lists.min) {
        glDeleteLists(lists.min, static_cast<GLsizei>(lists.max - lists.min + 1));
    }
    Log("Deleting Lists %d - %d\n", static_cast<int>(lists.min), static_cast<int>(lists.max));
    if (textures.max >= textures.min) {
        std::vector<GLuint> ids;
        for (GLuint id = textures.min; id <= textures.max; ++id) {
            ids.push_back(id);
        }
        glDeleteTextures(static_cast<GLsizei>(ids.size()), ids.data());
    }
    lists = {};
    textures = {};
}

void ObjectManager::Recache() {
    textureCache.clear();
    Log("\nRecaching objects...\n\n");
    LoadReflectionMaps();
    for (const CachedModel& cached : modelCache) {
        model.fileName = cached.fileName;
        if (model.ReadAobFile()) {
            // The identifier stays taken by a list that draws nothing.
            lists.Widen(cached.listId);
            glNewList(cached.listId, GL_COMPILE);
            glEndList();
            continue;
        }
        Compile(cached.listId);
        model.FreeModel();
    }
    if (glWindow != nullptr) {
        glWindow->MakeFontLists();
    }
}

void ObjectManager::DisableTextures() {
    if (multitexture) {
        for (int unit = 0; unit < textureUnits; ++unit) {
            SelectUnit(unit);
            glDisable(GL_TEXTURE_2D);
        }
    } else {
        glDisable(GL_TEXTURE_2D);
    }
    // Coordinates of the other units may stay generated: without a texture nobody reads them.
    glDisable(GL_TEXTURE_GEN_S);
    glDisable(GL_TEXTURE_GEN_T);
}
