// The model cache and what it compiles, told by the recorded OpenGL calls.

#include "graphics/ObjectManager.h"

#include <GL/gl.h>

#include "TestFiles.h"
#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "platform/null/NullGl.h"
#include "platform/null/NullPlatform.h"
#include "support/GameFixture.h"

namespace null = platform::null;

namespace {

constexpr const char* kWithoutMultitexture = "GL_ARB_multitexture GL_ARB_multisample";

class ObjectManagerTest : public RoomFixture {
protected:
    void SetUp() override {
        null::Reset();
        RoomFixture::SetUp();
        WriteFile("images\\Reflect.tga", TgaBytes(2, 2, 24));
        WriteFile("images\\Reflect2.tga", TgaBytes(2, 2, 24));
        WriteFile("images\\hull.tga", TgaBytes(8, 8, 24));
    }
    void TearDown() override {
        RoomFixture::TearDown();
        null::SetGlExtensions(nullptr);
        EXPECT_EQ(null::GlMisuses(), 0);
    }

    uint32_t Load(const std::string& name, const TestModel& model) {
        WriteFile("Objects\\" + name, model.Bytes());
        ObjectManager* const manager = ObjectManager::Instance();
        null::ClearGlRecord();
        return manager->Load(("Objects\\" + name).c_str(), bounds);
    }
    // The names of the calls compiled into the list, with the first argument of those asked for.
    static std::vector<std::string> Compiled(uint32_t list, const std::vector<std::string>& names) {
        std::vector<std::string> calls;
        for (size_t i = 0; i < null::RecordedGlCalls(); ++i) {
            const null::GlCall& call = null::RecordedGlCall(i);
            if (call.compiledInto == list &&
                std::find(names.begin(), names.end(), call.name) != names.end()) {
                const auto argument = static_cast<int64_t>(call.arguments[0]);
                calls.push_back(call.name + (":" + std::to_string(argument)));
            }
        }
        return calls;
    }
    static size_t Vertices(uint32_t list) { return Compiled(list, {"glVertex3f"}).size(); }
    // How often the binder lists of the reflection maps are called from the model's list; these
    // are the first lists that the manager makes.
    std::pair<int, int> Reflections(const std::string& reflection,
                                    std::vector<TestTexture> textures = {}) {
        const std::string name = "r" + std::to_string(++models) + ".aob";
        const uint32_t list = Load(name, OneFaceEach({{"m", reflection, std::move(textures)}}));
        std::pair<int, int> called = {0, 0};
        const uint32_t first = glWindow->GetFontBase() + platform::kGlyphCount;
        for (const std::string& call : Compiled(list, {"glCallList"})) {
            called.first += call == "glCallList:" + std::to_string(first) ? 1 : 0;
            called.second += call == "glCallList:" + std::to_string(first + 1) ? 1 : 0;
        }
        return called;
    }

    Bounds bounds;
    int models = 0;
};

TEST_F(ObjectManagerTest, AFileIsCompiledOncePerSpelling) {
    const TestModel model = {.faces = 3};
    const uint32_t list = Load("Ship.aob", model);
    ASSERT_NE(list, 0U);
    EXPECT_TRUE(Logged("Loading Object: Objects\\Ship.aob\nReturned new object - ID " +
                       std::to_string(list) + ".\n\n"))
        << log;
    EXPECT_EQ(bounds.maxY, 2.0F);
    EXPECT_EQ(bounds.minX, 0.0F) << "the box always contains the origin";
    EXPECT_EQ(Vertices(list), 12U);

    log.clear();
    Bounds again;
    EXPECT_EQ(ObjectManager::Instance()->Load("Objects\\Ship.aob", again), list);
    EXPECT_EQ(again.maxY, 2.0F);
    EXPECT_EQ(log, "Loading Object: Objects\\Ship.aob\nReturning cache copy.\n");

    const uint32_t other = ObjectManager::Instance()->Load("objects\\SHIP.aob", again);
    EXPECT_NE(other, 0U);
    EXPECT_NE(other, list) << "another spelling is another entry";

    log.clear();
    bounds.maxY = 9.0F;
    EXPECT_EQ(ObjectManager::Instance()->Load("Objects\\None.aob", bounds), 0U);
    EXPECT_EQ(bounds.maxY, 9.0F) << "a failure leaves the box alone";
    EXPECT_EQ(log, "Loading Object: Objects\\None.aob\nReturned new object - ID 0.\n\n");
    WriteFile("Objects\\None.aob", model.Bytes());
    EXPECT_NE(ObjectManager::Instance()->Load("Objects\\None.aob"), 0U) << "a failure is forgotten";
}

TEST_F(ObjectManagerTest, TheHundredAndFirstModelIsRefused) {
    for (int i = 0; i < ObjectManager::kMaxModels; ++i) {
        ASSERT_NE(Load("m" + std::to_string(i) + ".aob", {}), 0U) << i;
    }
    EXPECT_EQ(Load("last.aob", {}), 0U);
    EXPECT_EQ(ObjectManager::Instance()->ModelCount(), 100);
}

TEST_F(ObjectManagerTest, MaterialsSwitchWhereTheStreamSaysSo) {
    const TestModel model = {
        .faces = 3, .materials = {{"a"}, {"b"}}, .separators = {{1, 1}, {3, 0}}};
    const uint32_t list = Load("Ship.aob", model);
    std::string order;
    for (const std::string& call :
         Compiled(list, {"glBegin", "glEnd", "glColor4fv", "glVertex3f", "glDisable"})) {
        const std::string name = call.substr(0, call.find(':'));
        const char letter = name == "glVertex3f"   ? 'v'
                            : name == "glBegin"    ? '('
                            : name == "glEnd"      ? ')'
                            : name == "glColor4fv" ? 'm'
                                                   : '-';
        if (order.empty() || order.back() != letter) {
            order += letter;
        }
    }
    EXPECT_EQ(order, "(v)-m(v)-m(v)") << "face, switch, face, switch, face";
    EXPECT_EQ(Compiled(list, {"glTexCoord2f"}).size(), 0U);
    EXPECT_EQ(null::LastGlCall("glMaterialf").arguments[2], 64.0) << "shininess x 128";

    const uint32_t empty = Load("Empty.aob", {.faces = 0});
    EXPECT_NE(empty, 0U) << "a model without faces still gets a list";
    EXPECT_EQ(bounds.maxX, 0.0F);
}

TEST_F(ObjectManagerTest, TheFirstTextureDecidesAboutPictureCoordinates) {
    const TestTexture picture = {"hull.tga", "C"};
    const TestTexture planar = {"hull.tga", "R"};
    const uint32_t list = Load("a.aob", OneFaceEach({{"m", "0", {picture}}, {"n"}}));
    ASSERT_EQ(Compiled(list, {"glTexCoord2f"}).size(), 8U) << "of every face of the model";
    std::string coordinates;
    for (size_t i = 0, n = 0; i < null::RecordedGlCalls() && n < 4; ++i) {
        const null::GlCall& call = null::RecordedGlCall(i);
        if (std::string(call.name) == "glTexCoord2f") {
            ++n;
            coordinates += std::to_string(static_cast<int>(call.arguments[0])) +
                           std::to_string(static_cast<int>(call.arguments[1])) + " ";
        }
    }
    EXPECT_EQ(coordinates, "10 00 01 11 ");
    const uint32_t second = Load("b.aob", OneFaceEach({{"m"}, {"n", "0", {picture}}}));
    EXPECT_TRUE(Compiled(second, {"glTexCoord2f"}).empty());
    const uint32_t third = Load("c.aob", OneFaceEach({{"m", "0", {planar, picture}}}));
    EXPECT_TRUE(Compiled(third, {"glTexCoord2f"}).empty());
}

TEST_F(ObjectManagerTest, TexturesGoToTheUnitBehindTheirPosition) {
    WriteFile("images\\mark.tga", TgaBytes(4, 4, 32));
    const TestMaterial both = {"m", "0", {{"hull.tga", "R"}, {"mark.tga", "D"}}};
    const uint32_t list = Load("a.aob", OneFaceEach({both}));
    // All units off, then the two projections; units count from 0x84C0.
    const std::vector<std::string> units = Compiled(list, {"glActiveTextureARB"});
    ASSERT_EQ(units.size(), 10U) << "eight units to switch off, one for each texture";
    EXPECT_EQ(units[8], "glActiveTextureARB:" + std::to_string(GL_TEXTURE1));
    EXPECT_EQ(units[9], "glActiveTextureARB:" + std::to_string(GL_TEXTURE2));
    EXPECT_EQ(null::GlCallCount("gluBuild2DMipmaps"), 1) << "R has mip-maps";
    EXPECT_EQ(null::GlCallCount("glTexImage2D"), 1) << "D is uploaded as it is";
    EXPECT_EQ(null::LastGlCall("glTexGenfv").arguments[1], GL_EYE_PLANE);

    log.clear();
    const int textures = ObjectManager::Instance()->TextureCount();
    Load("b.aob", OneFaceEach({{"n", "0", {{"mark.tga", "D"}, {"mark.tga", "R"}}}}));
    EXPECT_TRUE(Logged("mark.tga:D already cached\n")) << log;
    EXPECT_EQ(ObjectManager::Instance()->TextureCount(), textures + 1)
        << "the key is name and kind";
}

TEST_F(ObjectManagerTest, AMissingTextureEndsTheLoadingAndIsSwitchedOff) {
    const uint32_t list = Load(
        "a.aob", OneFaceEach({{"m", "0", {{"none.tga", "R"}}}, {"n", "0", {{"hull.tga", "R"}}}}));
    EXPECT_NE(list, 0U) << "the model is drawn all the same";
    EXPECT_TRUE(Logged("WARNING: Failed to load Texture: none.tga\n"));
    EXPECT_EQ(ObjectManager::Instance()->TextureCount(), 0);
    EXPECT_TRUE(Compiled(list, {"glCallList"}).empty());
}

TEST_F(ObjectManagerTest, ReflectionsBeginAtTheirThresholds) {
    using Pair = std::pair<int, int>;
    EXPECT_EQ(Reflections("0.29"), Pair(0, 0));
    EXPECT_EQ(Reflections("0.3"), Pair(1, 0));
    EXPECT_EQ(Reflections("0.69"), Pair(1, 0));
    EXPECT_EQ(Reflections("0.7"), Pair(0, 1));
    EXPECT_EQ(Reflections("0.7", {{"hull.tga", "R"}}), Pair(0, 1)) << "unit 0 is free";
    EXPECT_EQ(Reflections("0.7", {{"hull.tga", "C"}}), Pair(0, 0)) << "unit 0 is taken";
}

TEST_F(ObjectManagerTest, WithoutMultitextureAnyTextureSuppressesTheReflection) {
    null::SetGlExtensions(kWithoutMultitexture);
    EXPECT_EQ(Reflections("0.7", {{"hull.tga", "R"}}), std::make_pair(0, 0));
    EXPECT_EQ(Reflections("0.7"), std::make_pair(0, 1));
    EXPECT_TRUE(Logged("Multitexturing not supported - disabled\n"));
    EXPECT_EQ(null::GlCallCount("glActiveTextureARB"), 0);
}

TEST_F(ObjectManagerTest, AReflectionMapThatIsMissingReflectsNothing) {
    std::filesystem::remove("images/Reflect2.tga");
    EXPECT_EQ(Reflections("0.7"), std::make_pair(0, 0));
    EXPECT_TRUE(Logged("Error loading relection file 1\n"));
    EXPECT_EQ(Reflections("0.5"), std::make_pair(1, 0));
}

TEST_F(ObjectManagerTest, IdentifiersSurviveARecreation) {
    std::vector<uint32_t> lists;
    for (int i = 0; i < 90; ++i) {
        WriteFile("images\\t" + std::to_string(i) + ".tga", TgaBytes(2, 2, 24));
        TestModel model = OneFaceEach({{"m", "0", {{"t" + std::to_string(i) + ".tga", "R"}}}});
        model.faces = i + 1;
        lists.push_back(Load("m" + std::to_string(i) + ".aob", model));
    }
    std::filesystem::remove("Objects/m5.aob");
    ASSERT_FALSE(glWindow->ToggleFullscreen());
    // Ahead of the rebuild the driver takes every identifier for free.
    const uint32_t early = Load("early.aob", {.faces = 100});
    for (int round = 0; round < 2; ++round) {
        log.clear();
        null::ClearGlRecord();
        glWindow->RebuildGLResources();
        EXPECT_TRUE(Logged("Deleting Lists ")) << log;
        EXPECT_TRUE(Logged("\nRecaching objects...\n\n"));
        for (int i = 80; i < 90; ++i) {  // the record holds the newest calls only
            EXPECT_EQ(Vertices(lists[i]), 4U * (i + 1)) << "model " << i;
        }
        EXPECT_EQ(Vertices(early), 400U);
        EXPECT_EQ(Vertices(lists[5]), 0U) << "a model whose file has gone draws nothing";
        EXPECT_EQ(null::LiveTextures(), 90 + 2 - 1);
        EXPECT_EQ(null::LiveLists(), 91 + 89 + 2 + platform::kGlyphCount)
            << "models, texture binders, reflections and font, each with a list of its own";
    }
    Bounds again;
    EXPECT_EQ(ObjectManager::Instance()->Load("Objects\\m7.aob", again), lists[7]);
    EXPECT_EQ(again.maxY, 7.0F);
}

}  // namespace
