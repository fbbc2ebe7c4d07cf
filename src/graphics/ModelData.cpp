#include "graphics/ModelData.h"

#include <cmath>
#include <cstring>

#include "core/DebugLog.h"
#include "graphics/AobText.h"
#include "platform/Files.h"

namespace {

constexpr size_t kModelLimit = 64U << 20U;  // bytes
constexpr size_t kFaceBytes = 96;           // 4 corners of 6 floats
constexpr int64_t kMaterialBytes = 275;     // the least that one material definition takes
constexpr size_t kMaxName = 64;             // characters of a material or texture name
constexpr size_t kAfterKeyword = 2;         // characters between a table's keyword and its content
constexpr size_t kAfterTextureName = 15;    // between a texture's name and its kind
constexpr size_t kAfterKind = 5;            // between the kind and the S plane
constexpr size_t kBetweenPlanes = 4;

// A little-endian float.
float FloatAt(std::string_view bytes, size_t position) {
    uint32_t bits = 0;
    for (size_t i = 0; i < 4; ++i) {
        bits |= static_cast<uint32_t>(static_cast<uint8_t>(bytes[position + i])) << (8 * i);
    }
    float value = 0.0F;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

Vec3 VectorAt(std::string_view bytes, size_t position) {
    return {FloatAt(bytes, position), FloatAt(bytes, position + 4), FloatAt(bytes, position + 8)};
}

bool IsFinite(Vec3 v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool IsFinite(const std::array<float, 4>& numbers) {
    for (const float number : numbers) {
        if (!std::isfinite(number)) {
            return false;
        }
    }
    return true;
}

bool IsFinite(const Material& m) {
    return IsFinite(m.colour) && IsFinite(m.diffuse) && IsFinite(m.specular) &&
           std::isfinite(m.shininess) && std::isfinite(m.transparency) &&
           std::isfinite(m.luminosity) && std::isfinite(m.reflection);
}

// "Keyword: value": the keyword and the blank after it.
bool FindValue(AobText& text, std::string_view keyword) {
    if (!text.Find(keyword)) {
        return false;
    }
    text.Skip(1);
    return !text.Failed();
}

// A single number. What follows is searched from the number on, so its end does not matter.
bool ReadSingle(AobText& text, std::string_view keyword, float& value) {
    if (!FindValue(text, keyword)) {
        return false;
    }
    value = text.Number();
    return !text.Failed();
}

bool ReadFour(AobText& text, std::string_view keyword, std::array<float, 4>& values) {
    if (!FindValue(text, keyword)) {
        return false;
    }
    values = text.FourNumbers();
    return !text.Failed();
}

bool ToKind(char letter, TextureKind& kind) {
    switch (letter) {
        case 'C':
            kind = TextureKind::C;
            return true;
        case 'R':
            kind = TextureKind::R;
            return true;
        case 'D':
            kind = TextureKind::D;
            return true;
        default:
            return false;
    }
}

}  // namespace

void ModelData::FreeModel() {
    vertexCount = 0;
    faces = {};
    materials = {};
    separators = {};
}

bool ModelData::Reject(const std::string& reason) const {
    Log("ERROR: Model %s: %s\n", fileName.c_str(), reason.c_str());
    return true;
}

bool ModelData::ReadAobFile() {
    FreeModel();
    std::vector<uint8_t> file;
    if (platform::ReadWholeFile(fileName, file, kModelLimit) || file.empty()) {
        return true;
    }
    file.push_back(0);  // so that the last number too has the character that follows every number
    if (ReadAll({reinterpret_cast<const char*>(file.data()), file.size()})) {
        FreeModel();
        return true;
    }
    return false;
}

// The header's keywords are searched each from the start of the one before; the tables' keywords
// from the start of the file, so only their first occurrence counts.
bool ModelData::ReadAll(std::string_view bytes) {
    AobText text(bytes);
    std::array<int32_t, 3> counts = {};
    constexpr std::array<std::string_view, 3> kKeywords = {"Vertices: ", "Faces: ", "Materials: "};
    for (size_t i = 0; i < counts.size(); ++i) {
        if (!text.FindStart(kKeywords[i])) {
            return true;
        }
        const size_t match = text.Position();
        text.Skip(kKeywords[i].size());
        counts[i] = text.Unsigned();
        text.MoveTo(match);
    }
    const auto [vertices, faceCount, materialCount] = counts;
    vertexCount = vertices;
    if (ReadSeparators(text)) {
        return true;
    }

    text.MoveTo(0);
    if (!text.Find("vertices")) {
        return Reject("no vertices");
    }
    text.Skip(kAfterKeyword);
    const int64_t fileLength = static_cast<int64_t>(bytes.size()) - 1;
    const int64_t rest =
        fileLength - static_cast<int64_t>(text.Position()) - kMaterialBytes * materialCount;
    if (text.Failed() || rest < static_cast<int64_t>(kFaceBytes) * faceCount) {
        Log("ERROR: File %s does not have enough data for NumFaces\n", fileName.c_str());
        return true;
    }
    // From here on the counts fit the file, so memory can be taken for them.
    materials.resize(materialCount);
    return ReadFaces(text, bytes, faceCount) || ReadMaterials(text);
}

bool ModelData::ReadSeparators(AobText& text) {
    text.MoveTo(0);
    if (!text.Find("Separators")) {
        return Reject("no Separators");
    }
    text.Skip(kAfterKeyword);
    const int32_t count = text.Unsigned();
    text.Skip(1);
    for (int32_t i = 0; i < count && !text.Failed(); ++i) {
        separators.push_back({.streamIndex = text.Unsigned(), .material = 0});
        text.Skip(1);
    }
    if (text.Failed()) {
        return Reject("the file ends within Separators");
    }
    text.MoveTo(0);
    if (!text.Find("SepIndex")) {
        return Reject("no SepIndex");
    }
    text.Skip(kAfterKeyword);
    for (MaterialSwitch& separator : separators) {
        separator.material = text.Unsigned();
        text.Skip(1);
    }
    if (text.Failed()) {
        return Reject("the file ends within SepIndex");
    }
    return false;
}

bool ModelData::ReadFaces(AobText& text, std::string_view bytes, int32_t faceCount) {
    const int64_t streamLength = static_cast<int64_t>(faceCount) + separators.size();
    int64_t previous = -1;
    for (const MaterialSwitch& separator : separators) {
        if (separator.streamIndex <= previous || separator.streamIndex >= streamLength) {
            return Reject("material switch at " + std::to_string(separator.streamIndex) +
                          " is out of order or beyond the last face");
        }
        if (separator.material >= static_cast<int64_t>(materials.size())) {
            return Reject("material switch to the missing material " +
                          std::to_string(separator.material));
        }
        previous = separator.streamIndex;
    }

    faces.resize(faceCount);
    size_t position = text.Position();
    for (int32_t f = 0; f < faceCount; ++f) {
        for (FaceCorner& corner : faces[f]) {
            corner.normal = VectorAt(bytes, position);
            corner.position = VectorAt(bytes, position + 12);
            position += 24;
            if (!IsFinite(corner.normal) || !IsFinite(corner.position)) {
                return Reject("face " + std::to_string(f) + " has a corner that is no number");
            }
        }
    }
    text.MoveTo(position);
    return false;
}

bool ModelData::ReadMaterials(AobText& text) {
    if (!text.FindStart("#MatDefs:")) {
        return Reject("no #MatDefs:");
    }
    for (size_t m = 0; m < materials.size(); ++m) {
        if (ReadMaterial(text, materials[m])) {
            return true;
        }
        if (text.Failed()) {
            return Reject("material " + std::to_string(m) + " (" + materials[m].name +
                          ") is incomplete");
        }
    }
    return false;
}

// True when it has been rejected; what is missing only fails `text`.
bool ModelData::ReadMaterial(AobText& text, Material& material) {
    if (!FindValue(text, "Material:")) {
        return false;
    }
    const std::string_view name = text.Line();
    if (name.size() > kMaxName) {
        return Reject("material name longer than 64 characters");
    }
    material.name = name;
    if (!ReadFour(text, "Colour:", material.colour) ||
        !ReadFour(text, "Diffuse:", material.diffuse) ||
        !ReadFour(text, "Specular:", material.specular) ||
        !ReadSingle(text, "Shininess:", material.shininess) ||
        !ReadSingle(text, "Transparency:", material.transparency) ||
        !ReadSingle(text, "Luminosity:", material.luminosity) ||
        !ReadSingle(text, "Reflection:", material.reflection) || !FindValue(text, "NumTextures:")) {
        return false;
    }
    if (!IsFinite(material)) {
        return Reject("material " + material.name + " has a value that is no number");
    }
    material.colour[3] *= 1.0F - material.transparency;
    material.diffuse[3] = 0.0F;
    material.specular[3] = 0.0F;

    const int32_t textureCount = text.Unsigned();
    if (textureCount > kMaxTextures) {
        return Reject("material " + material.name + " has more than 7 textures");
    }
    material.textures.resize(textureCount);
    text.Skip(1);
    for (MaterialTexture& texture : material.textures) {
        if (ReadTexture(text, material, texture)) {
            return true;
        }
    }
    return false;
}

// The labels between name, kind and planes have fixed lengths and are not looked at.
bool ModelData::ReadTexture(AobText& text, const Material& material, MaterialTexture& texture) {
    if (!text.Expect("#  Texture: ")) {
        return Reject("material " + material.name + ": texture block expected");
    }
    const std::string_view name = text.Word();
    if (name.empty() || name.size() > kMaxName) {
        return Reject("material " + material.name +
                      ": texture name missing or longer than 64 characters");
    }
    texture.name = name;
    text.Skip(kAfterTextureName);
    const std::string_view kind = text.Word();
    if (kind.empty() || !ToKind(kind.front(), texture.kind)) {
        return Reject("texture " + texture.name + ": the kind is not C, R or D");
    }
    text.Skip(kAfterKind);
    texture.sPlane = text.FourNumbers();
    text.Skip(kBetweenPlanes);
    texture.tPlane = text.FourNumbers();
    if (!IsFinite(texture.sPlane) || !IsFinite(texture.tPlane)) {
        return Reject("texture " + texture.name + " has a plane that is no number");
    }
    return false;
}
