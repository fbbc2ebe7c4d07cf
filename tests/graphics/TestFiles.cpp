#include "TestFiles.h"

namespace {

void AppendFloats(std::string& bytes, std::initializer_list<float> values) {
    for (const float value : values) {
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
}

std::string MaterialText(const TestMaterial& material) {
    std::string text = "Material: ";
    text += material.name;
    text += "\nColour: 0.5 0.25 -1.5 0.8\nDiffuse: .5 2.5e-1 3e-1 1\nSpecular: 1 1 1 1\n";
    text += "Shininess: 0.5\nTransparency: 0.75\nLuminosity: 2\nReflection: ";
    text += material.reflection;
    text += "\nNumTextures: ";
    text += std::to_string(material.textures.size());
    text += "\n";
    for (const auto& [name, kind] : material.textures) {
        text.append("#  Texture: ").append(name).append("\n#  Kind is:   ").append(kind);
        text.append("\n#S: 1 0 0 0.5\n#T: 0 0 -1 2\n");
    }
    return text + std::string(275, '#') + "\n";
}

}  // namespace

std::string TestModel::Bytes() const {
    std::string bytes = "# a model\nVertices: 8\nFaces: " + std::to_string(faces) +
                        "\nMaterials: " + std::to_string(materials.size()) +
                        "\n# its switches\nSeparators: " + std::to_string(separators.size());
    for (const auto& [place, material] : separators) {
        bytes += " " + std::to_string(place);
    }
    bytes += "\nSepIndex: ";
    for (const auto& [place, material] : separators) {
        bytes += std::to_string(material) + " ";
    }
    bytes += "\nvertices:\n";
    for (int f = 0; f < faces; ++f) {
        const auto height = static_cast<float>(f);
        AppendFloats(bytes, {0, 1, 0, 0, height, 0, 0, 1, 0, 0, height, 1});
        AppendFloats(bytes, {0, 1, 0, 1, height, 1, 0, 1, 0, 1, height, 0});
    }
    bytes += "\n#MatDefs:\n";
    for (const TestMaterial& material : materials) {
        bytes += MaterialText(material);
    }
    return bytes;
}

TestModel OneFaceEach(std::vector<TestMaterial> materials) {
    TestModel model;
    model.faces = static_cast<int>(materials.size());
    model.materials = std::move(materials);
    for (int m = 0; m < model.faces; ++m) {
        model.separators.emplace_back(2 * m, m);
    }
    return model;
}

std::string TgaBytes(int width, int height, int bits, uint8_t fill) {
    std::string bytes(18, '\0');
    bytes[2] = 2;
    bytes[12] = static_cast<char>(width & 0xFF);
    bytes[13] = static_cast<char>(width >> 8);
    bytes[14] = static_cast<char>(height & 0xFF);
    bytes[15] = static_cast<char>(height >> 8);
    bytes[16] = static_cast<char>(bits);
    bytes.append(static_cast<size_t>(width) * height * bits / 8, static_cast<char>(fill));
    return bytes;
}
