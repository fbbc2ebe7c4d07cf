#pragma once

// Model and picture files made to measure.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/Geometry.h"

struct TestTexture {
    std::string name;
    std::string kind;  // "C", "R" or "D"
};

struct TestMaterial {
    std::string name = "steel";
    std::string reflection = "0";
    std::vector<TestTexture> textures = {};
};

struct TestModel {
    // Each face is the unit square at this height, its number.
    int faces = 1;
    std::vector<TestMaterial> materials = {};
    std::vector<std::pair<int, int>> separators = {};  // place in the stream, material

    std::string Bytes() const;
};

// One face per material, each behind its switch.
TestModel OneFaceEach(std::vector<TestMaterial> materials);

std::string TgaBytes(int width, int height, int bits, uint8_t fill = 200);
