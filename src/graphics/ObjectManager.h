#pragma once

// The single owner of every model and texture. A caller names a model file and gets a display-list
// identifier with the model's bounding box; identifiers stay valid for the whole run, also when the
// window and its context are made anew.

#include <cstdint>
#include <string>
#include <vector>

#include "graphics/ModelData.h"

class ObjectManager {
public:
    static constexpr int kMaxModels = 100;
    static constexpr int kMaxTexturesCached = 100;

    // The one instance, made on the first call, which needs a current OpenGL context.
    static ObjectManager* Instance();
    // Forgets the instance. Its lists and textures went with the context.
    static void Destroy();

    // The display list of the model file, from the cache when the same spelling was loaded before.
    // 0 when it cannot be loaded; `bounds` is then left alone. The 101st model is refused.
    uint32_t Load(const char* fileName, Bounds& bounds);
    uint32_t Load(const char* fileName);

    // Deletes every list and texture that the manager made, and the font's lists.
    void DeleteAll();
    // Makes all of them anew under the same identifiers. A model whose file has gone draws nothing.
    void Recache();

    // Switches texturing and coordinate generation off on every unit. A model leaves its last
    // material's textures on; whoever draws text or bare geometry calls this first.
    void DisableTextures();

    // Draws one of the models loaded so far, 0 to ModelCount() - 1.
    void DrawModel(int index) const;
    // Models and textures loaded so far.
    int ModelCount() const { return static_cast<int>(modelCache.size()); }
    int TextureCount() const { return static_cast<int>(textureCache.size()); }

private:
    struct CachedModel {
        std::string fileName;  // as the caller spelled it
        uint32_t listId = 0;
        Bounds bounds;
    };
    struct CachedTexture {
        std::string fileName;
        TextureKind kind = TextureKind::R;
        uint32_t listId = 0;  // the list that binds it
    };
    // Identifiers made so far: what DeleteAll deletes. Empty while min > max.
    struct IdRange {
        uint32_t min = 32767;
        uint32_t max = 1;
        void Widen(uint32_t id);
    };

    ObjectManager();

    uint32_t NewList();
    uint32_t NewTexture();
    uint32_t Build(const char* fileName, Bounds& bounds);
    void Compile(uint32_t list);
    void EmitFace(const Face& face, bool pictureOnEachFace);
    void EmitMaterial(const Material& material);

    // Materials.cpp. What is emitted goes into the display list being compiled.
    void CacheTextures();
    void CacheTexture(const MaterialTexture& texture, int position, bool& failed);
    static bool LoadTexture(const std::string& name, TextureKind kind, uint32_t textureId);
    uint32_t FindTexture(const std::string& name, TextureKind kind) const;
    static void ApplyMaterial(const Material& material);
    void ApplyTexture(const MaterialTexture& texture, int position, bool& unitZeroUsed);
    static void SetTexGen(const MaterialTexture& texture);
    void ApplyReflection(float reflection);
    void LoadReflectionMaps();
    void SelectUnit(int unit) const;

    ModelData model;  // the model being loaded
    bool multitexture = false;
    int32_t textureUnits = 1;
    std::vector<CachedModel> modelCache;
    std::vector<CachedTexture> textureCache;
    IdRange lists;
    IdRange textures;
    uint32_t reflectionLists[2] = {};  // weak and strong reflection; 0 when its map was not built
};
