#pragma once

// One model between its file and its display list, and the reader that fills it.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/Geometry.h"

class AobText;

enum class TextureKind : int32_t {
    C = 1,  // replaces the lit colour; the whole picture on every face
    R = 2,  // planar projection in the model's frame, repeating, modulated with the lit colour
    D = 3,  // planar projection in the eye's frame, a decal, clamped
};

constexpr int kMaxTextures = 7;  // of one material

struct MaterialTexture {
    std::string name;  // file name within the images folder, at most 64 characters
    TextureKind kind = TextureKind::R;
    std::array<float, 4> sPlane = {};
    std::array<float, 4> tPlane = {};
};

struct Material {
    std::string name;                    // at most 64 characters
    std::array<float, 4> colour = {};    // RGBA; alpha already multiplied by 1 - transparency
    std::array<float, 4> specular = {};  // alpha 0
    std::array<float, 4> diffuse = {};   // alpha 0
    float shininess = 0.0F;              // 0 to 1
    float transparency = 0.0F;           // 0 opaque to 1
    float luminosity = 0.0F;             // emission = colour x luminosity
    float reflection = 0.0F;             // from 0.3 on a reflection map, from 0.7 on the strong one
    std::vector<MaterialTexture> textures;  // at most kMaxTextures
};

struct FaceCorner {
    Vec3 normal;    // used as given
    Vec3 position;  // model units
};
// Counter-clockwise seen from outside the model.
using Face = std::array<FaceCorner, 4>;

// Selects a material at a place in the combined stream of faces and switches.
struct MaterialSwitch {
    int32_t streamIndex = 0;  // strictly increasing
    int32_t material = 0;     // index into ModelData::materials
};

class ModelData {
public:
    std::string fileName;     // the game path being loaded, at most 259 characters
    int32_t vertexCount = 0;  // as the file states it; nothing depends on it
    std::vector<Face> faces;
    std::vector<Material> materials;
    std::vector<MaterialSwitch> separators;
    Bounds bounds;  // widened while the model is compiled; always contains the origin

    // Reads the whole file `fileName`. True = failure; the model is then empty. What is malformed
    // is named in the log with the file and the reason; a file that is missing, too large or no
    // model file at all fails without a word. Every count, index and name is checked, so a model
    // that loads can be drawn.
    bool ReadAobFile();

    // Gives the memory of faces, materials and switches back; name and bounds stay.
    void FreeModel();

private:
    bool ReadAll(std::string_view bytes);
    bool ReadSeparators(AobText& text);
    bool ReadFaces(AobText& text, std::string_view bytes, int32_t faceCount);
    bool ReadMaterials(AobText& text);
    bool ReadMaterial(AobText& text, Material& material);
    bool ReadTexture(AobText& text, const Material& material, MaterialTexture& texture);
    bool Reject(const std::string& reason) const;
};
