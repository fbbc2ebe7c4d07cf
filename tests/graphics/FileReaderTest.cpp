// The readers of model and picture files: what they take, what they refuse, and that no damage
// to a file makes them do anything else.

#include <GL/gl.h>

#include <random>

#include "TestFiles.h"
#include "graphics/AobText.h"
#include "graphics/ModelData.h"
#include "graphics/TgaImage.h"
#include "support/GameFixture.h"

namespace {

using Numbers = std::array<float, 4>;

class FileReaderTest : public RoomFixture {
protected:
    // True = refused.
    bool Read(const std::string& bytes) {
        WriteFile("Objects\\Test.aob", bytes);
        model.fileName = "Objects\\Test.aob";
        log.clear();
        return model.ReadAobFile();
    }
    bool ReadPicture(const std::string& bytes) {
        WriteFile("images\\Test.tga", bytes);
        return LoadTga("images\\test.TGA", image);
    }

    ModelData model;
    TgaImage image;
};

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    const size_t at = text.find(from);
    EXPECT_NE(at, text.npos) << from;
    return text.replace(at, from.size(), to);
}

const TestModel kTwoMaterials = {
    .faces = 3,
    .materials = {{"red hull", "0.4", {{"hull.tga", "R"}, {"mark.tga", "Decal"}}}, {"glass"}},
    .separators = {{1, 0}, {3, 1}}};

TEST_F(FileReaderTest, EveryFieldOfAModelArrivesAsWritten) {
    ASSERT_FALSE(Read(kTwoMaterials.Bytes())) << log;
    EXPECT_EQ(model.vertexCount, 8);
    ASSERT_EQ(model.faces.size(), 3U);
    EXPECT_EQ(model.faces[2][1].position, (Vec3{0, 2, 1}));
    EXPECT_EQ(model.faces[2][1].normal, (Vec3{0, 1, 0}));
    ASSERT_EQ(model.separators.size(), 2U);
    EXPECT_EQ(model.separators[1].streamIndex, 3);
    EXPECT_EQ(model.separators[1].material, 1);

    ASSERT_EQ(model.materials.size(), 2U);
    const Material& red = model.materials[0];
    EXPECT_EQ(red.name, "red hull") << "blanks belong to the name";
    EXPECT_EQ(red.colour, (Numbers{0.5F, 0.25F, -1.5F, 0.8F * 0.25F})) << "alpha is cut down";
    EXPECT_EQ(red.diffuse, (Numbers{0.5F, 0.25F, 0.3F, 0.0F})) << "alpha is 0";
    EXPECT_EQ(red.specular, (Numbers{1, 1, 1, 0}));
    EXPECT_EQ(red.shininess, 0.5F);
    EXPECT_EQ(red.luminosity, 2.0F);
    EXPECT_EQ(red.reflection, 0.4F);
    ASSERT_EQ(red.textures.size(), 2U);
    EXPECT_EQ(red.textures[0].name, "hull.tga");
    EXPECT_EQ(red.textures[0].kind, TextureKind::R);
    EXPECT_EQ(red.textures[1].kind, TextureKind::D) << "the first letter of the kind word decides";
    EXPECT_EQ(red.textures[1].sPlane, (Numbers{1, 0, 0, 0.5F}));
    EXPECT_EQ(red.textures[1].tPlane, (Numbers{0, 0, -1, 2}));
    EXPECT_EQ(model.materials[1].name, "glass");
    EXPECT_TRUE(log.empty()) << log;
}

TEST_F(FileReaderTest, NumbersReadAsWritten) {
    const std::vector<std::pair<std::string, float>> numbers = {{"-1.5", -1.5F},
                                                                {"-2.5e-1", -0.25F},
                                                                {"3e2", 300.0F},
                                                                {"7", 7.0F},
                                                                {".5", 0.5F},
                                                                {"", 0.0F},
                                                                {"0.123456789", 0.123456789F},
                                                                {"-.25E1", -2.5F},
                                                                {"5.", 5.0F},
                                                                {"0.1234567890123", 0.123456789F},
                                                                {"16777217", 16777217.0F},
                                                                {"1e-400", 0.0F}};
    for (const auto& [text, value] : numbers) {
        const std::string field = text + "|2 ";
        AobText file(field);
        EXPECT_EQ(file.Number(), value) << text;
        EXPECT_EQ(file.Number(), 2.0F) << "the next field after " << text;
    }
}

TEST_F(FileReaderTest, WhatIsMalformedIsRefusedWithItsReason) {
    const std::string good = kTwoMaterials.Bytes();
    const std::string tooLong(65, 'x');
    const std::vector<std::array<std::string, 3>> damages = {
        {"Separators", "Separatrix", "no Separators"},
        {"SepIndex", "SepOrder", "no SepIndex"},
        {"vertices:", "corners--", "no vertices"},
        {"#MatDefs:", "#Material", "no #MatDefs:"},
        {"Shininess:", "Shine----:", "is incomplete"},
        {"Material: glass", "Mat: glass", "material 1 () is incomplete"},
        {"NumTextures: 2", "NumTextures: 8", "more than 7 textures"},
        {"NumTextures: 2", "NumTextures: 3", "texture block expected"},
        {"red hull", tooLong, "material name longer"},
        {"hull.tga", tooLong, "texture name missing or longer"},
        {"Kind is:   R", "Kind is:   X", "the kind is not C, R or D"},
        {"Separators: 2 1 3", "Separators: 2 3 3", "out of order"},
        {"Separators: 2 1 3", "Separators: 2 1 5", "beyond the last face"},
        {"Separators: 2", "Separators: 99999999999", "ends within Separators"},
        {"SepIndex: 0 1", "SepIndex: 0 2", "missing material 2"},
        {"Luminosity: 2", "Luminosity: 1e99", "is no number"},
        {"#S: 1 0", "#S: 1e39 0", "plane that is no number"}};
    for (const auto& [from, to, reason] : damages) {
        EXPECT_TRUE(Read(Replaced(good, from, to))) << to;
        EXPECT_TRUE(Logged("ERROR: Model Objects\\Test.aob: ")) << to << " gave " << log;
        EXPECT_TRUE(Logged(reason)) << to << " gave " << log;
        EXPECT_TRUE(model.faces.empty() && model.materials.empty()) << to;
    }
    std::string notFinite = good;
    notFinite.replace(notFinite.find("vertices:") + 10, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_TRUE(Read(notFinite));
    EXPECT_TRUE(Logged("face 0 has a corner that is no number")) << log;

    for (const char* keyword : {"Vertices: ", "Faces: ", "Materials: "}) {
        EXPECT_TRUE(Read(Replaced(good, keyword, "Nothing: "))) << keyword;
        EXPECT_TRUE(log.empty()) << "what is no model file is refused without a word: " << log;
    }
}

TEST_F(FileReaderTest, FacesMustLeaveTheMaterialsTheirRoom) {
    const std::string message =
        "ERROR: File Objects\\Test.aob does not have enough data for NumFaces\n";
    std::string file = TestModel{.faces = 2, .materials = {{"m"}}, .separators = {{0, 0}}}.Bytes();
    const size_t least = file.find("vertices:") + 10 + size_t{2} * 96 + 275;
    ASSERT_GT(file.size(), least);
    file.resize(least);
    EXPECT_FALSE(Read(file)) << log;
    file.resize(least - 1);
    EXPECT_TRUE(Read(file));
    EXPECT_EQ(log, message);
    EXPECT_TRUE(Read(Replaced(kTwoMaterials.Bytes(), "Faces: 3", "Faces: 4294967295")));
    EXPECT_EQ(log, message);
    EXPECT_TRUE(Read(Replaced(kTwoMaterials.Bytes(), "Materials: 2", "Materials: 2000000000")));
    EXPECT_EQ(log, message);
}

TEST_F(FileReaderTest, NoDamageDoesMoreThanToBeRefused) {
    const std::string good = kTwoMaterials.Bytes();
    std::mt19937 random(1);
    int refused = 0;
    for (int i = 0; i < 2000; ++i) {
        std::string bytes = good;
        for (unsigned n = random() % 4 + 1; n > 0; --n) {
            const size_t at = random() % bytes.size();
            switch (random() % 4) {
                case 0:
                    bytes.resize(at + 1);
                    break;
                case 1:
                    bytes.erase(at, random() % 30);
                    break;
                case 2:
                    bytes[at] = static_cast<char>(random());
                    break;
                default:
                    bytes[at] = "0123456789-.e \n"[random() % 15];
                    break;
            }
        }
        if (Read(bytes)) {
            ++refused;
            const bool isModel = bytes.find("Vertices: ") != bytes.npos &&
                                 bytes.find("Faces: ") != bytes.npos &&
                                 bytes.find("Materials: ") != bytes.npos;
            ASSERT_TRUE(Logged("ERROR: ") || !isModel) << "damage " << i << " was not reported";
            continue;
        }
        int32_t last = -1;
        for (const auto& [place, material] : model.separators) {
            ASSERT_GT(place, last) << i;
            ASSERT_LT(material, static_cast<int32_t>(model.materials.size())) << i;
            last = place;
        }
        ASSERT_LT(last, static_cast<int32_t>(model.faces.size() + model.separators.size())) << i;
    }
    EXPECT_GT(refused, 500);
    EXPECT_LT(refused, 1900);
}

TEST_F(FileReaderTest, PicturesOf32BitsGetATransparentFrame) {
    ASSERT_TRUE(ReadPicture(TgaBytes(4, 4, 32)));
    EXPECT_EQ(image.format, static_cast<uint32_t>(GL_BGRA));
    for (size_t pixel = 0; pixel < 16; ++pixel) {
        const size_t x = pixel % 4;
        const size_t y = pixel / 4;
        const bool inner = (x == 1 || x == 2) && (y == 1 || y == 2);
        EXPECT_EQ(image.pixels[pixel * 4 + 3], inner ? 200 : 0) << x << ", " << y;
        EXPECT_EQ(image.pixels[pixel * 4], 200);
    }
    ASSERT_TRUE(ReadPicture(TgaBytes(3, 2, 24)));
    EXPECT_EQ(image.format, static_cast<uint32_t>(GL_BGR));
    EXPECT_EQ(image.pixels, std::vector<uint8_t>(18, 200)) << "24 bits stay as they are";
}

TEST_F(FileReaderTest, OtherPicturesAreRefused) {
    const std::string good = TgaBytes(4, 4, 24);
    EXPECT_TRUE(ReadPicture(good + "a footer")) << "what follows the pixels does not matter";
    EXPECT_FALSE(ReadPicture(good.substr(0, good.size() - 1))) << "a pixel is missing";
    EXPECT_FALSE(ReadPicture(good.substr(0, 17))) << "the header is cut";
    EXPECT_FALSE(ReadPicture(TgaBytes(0, 4, 24)));
    EXPECT_FALSE(ReadPicture(TgaBytes(4, 4, 16)));
    std::string huge = TgaBytes(4, 4, 32);
    huge.replace(12, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_FALSE(ReadPicture(huge)) << "17 GB announced";
    EXPECT_FALSE(LoadTga("images\\none.tga", image));
    std::mt19937 random(2);
    for (int i = 0; i < 2000; ++i) {
        std::string bytes = TgaBytes(5, 3, 32);
        bytes[random() % 18] = static_cast<char>(random());
        bytes.resize(bytes.size() - random() % 3);
        if (ReadPicture(bytes)) {
            ASSERT_EQ(image.pixels.size(), static_cast<size_t>(image.width) * image.height *
                                               static_cast<size_t>(image.bitsPerPixel / 8))
                << i;
        } else {
            ASSERT_TRUE(image.pixels.empty()) << i;
        }
    }
}

}  // namespace
