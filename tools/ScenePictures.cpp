// Pictures of the game being played, drawn by its own renderer.
//
//     scene-pictures OUT_FOLDER                    nine scenes of play and every other screen
//     scene-pictures OUT_FOLDER --strip A-B        film strips of levels A to B, a picture every
//                                                  five seconds
//     scene-pictures OUT_FOLDER --strip A-B --every SECONDS
//     scene-pictures OUT_FOLDER --width W --height H   in another size than 800 x 600
//     scene-pictures OUT_FOLDER --only NAME        the scenes of play whose name starts like this
//     scene-pictures OUT_FOLDER --seed S           with other chances than a scene's own
//
// Run it in the assets folder or the one above, on a display (xvfb-run will do).

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "AutopilotGame.h"
#include "AutopilotPilot.h"
#include "GameStage.h"
#include "PngFile.h"
#include "core/KeyMap.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "game/Menu.h"
#include "game/TitleScreen.h"
#include "graphics/GLWindow.h"
#include "platform/Random.h"
#include "platform/VirtualKeys.h"
#include "player/PlayerShip.h"
#include "player/PowerupManager.h"
#include "world/EnemyTypes.h"
#include "world/SceneryManager.h"

namespace {

struct Scene {
    const char* name;
    int32_t level;
    int frames;       // of play before the picture is taken; with kBoss, after the boss has come
    int fireFrames;   // before it in which the player fires; kBoss clears the way to the boss first
    int driftFrames;  // of scenery drifting in before the level starts
    uint32_t seed;    // chosen for what drifts in
    int32_t weapon;   // what the player has by then
    int32_t engine;
    int32_t missiles;
};

// At least two for each view; both bosses among them.
constexpr int kBoss = -1;
constexpr int kBossFireFrames = 62;  // fire at the boss before the picture
constexpr int kBossLimit = 20000;
constexpr std::array<Scene, 9> kScenes = {{
    {"play-top", 7, 900, 60, 700, 5, 3, 1, 1},
    {"play-top-warden", 6, 330, kBoss, 600, 37, 3, 3, 2},
    {"play-top-queen", 12, 330, kBoss, 600, 35, 4, 3, 4},
    {"play-left", 8, 1000, 80, 700, 21, 3, 1, 0},
    {"play-left-late", 20, 1000, 70, 600, 21, 4, 3, 2},
    {"play-right", 5, 900, 80, 700, 11, 2, 2, 0},
    {"play-right-late", 26, 1000, 70, 600, 4, 4, 3, 2},
    {"play-behind", 10, 900, 70, 300, 22, 3, 2, 2},
    {"play-behind-late", 28, 1000, 70, 300, 22, 4, 4, 4},
}};

constexpr int kIntroFrames = 300;  // of drawing, until the level's title has faded
constexpr int kSecond = 60;        // frames
constexpr int kStripColumns = 6;
constexpr int kStripScale = 3;  // a strip's pictures are so much smaller
constexpr int kStripLimit = 60 * 60 * 5;

struct Options {
    std::string folder;
    std::string only;   // start of the names of the scenes to draw; empty draws every picture
    uint32_t seed = 0;  // 0 keeps each scene's own
    int16_t width = 800;
    int16_t height = 600;
    int32_t firstStrip = 0;
    int32_t lastStrip = -1;
    float every = 5.0F;  // seconds between two pictures of a strip
};

std::vector<uint8_t> ReadPixels() {
    const int width = glWindow->GetWidth();
    const int height = glWindow->GetHeight();
    std::vector<uint8_t> pixels(size_t{3} * width * height);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    return pixels;
}

// Draws what nobody looks at. The camera's blend and the level's intro move while drawing, but an
// empty scissor box spares the renderer its pixels.
void DrawUnseen() {
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 0, 0);
    GameStage::Draw();
    glDisable(GL_SCISSOR_TEST);
}

void RunFrame() {
    DrawUnseen();
    GameStage::Update();
}

void RunFrames(int frames) {
    for (int i = 0; i < frames; ++i) {
        RunFrame();
    }
}

// Draws the game as it stands without the frame rate: a game that is not paced by its clock has
// none.
void DrawStill() {
    glWindow->BeginScene();
    levelManager->Draw();
    glPopMatrix();
}

void TakePicture(const Options& options, const std::string& name) {
    DrawStill();
    const std::string path = options.folder + "/" + name + ".png";
    if (WritePng(path, glWindow->GetWidth(), glWindow->GetHeight(), ReadPixels())) {
        std::fprintf(stderr, "%s cannot be written\n", path.c_str());
        std::exit(1);
    }
    std::printf("%s\n", path.c_str());
    GameStage::Swap();
}

void Arm(const Scene& scene) {
    playerShip->SetWeapon(scene.weapon);
    playerShip->SetAutofire(true);
    for (int i = 0; i < scene.engine; ++i) {
        playerShip->UpgradeEngine();
    }
    for (int i = 0; i < scene.missiles; ++i) {
        playerShip->AddMissileCapacity();
        playerShip->AddHomingMissile();
        playerShip->AddDumbfireMissile();
    }
    for (int i = 0; i < 20; ++i) {
        playerShip->AddBulletCapacity();
        playerShip->AddBullet();
    }
}

// The autopilot's expert at play, with shields and ships without end.
class Flight {
public:
    explicit Flight(uint32_t seed) : pilot(kExpert, seed) {}

    void PlayFrame(bool mayFire = true) {
        if (playerShip->GetShields() == 0) {
            playerShip->AddShield();
        }
        playerShip->AddLife();
        pilot.PressKeys();
        if (!mayFire) {
            HoldFire(false);
        }
        if (frame++ < kIntroFrames || glWindow->IsViewBlending()) {
            DrawUnseen();
        }
        GameStage::Update();
    }

private:
    Pilot pilot;
    int frame = 0;
};

bool IsBoss(EnemyGroup& group) {
    return group.GetOrders().type >= kFirstBossType;
}

bool BossHasCome() {
    AttackWave* wave = levelManager->GetCurrentWave();
    for (int i = 0; wave != nullptr && i < wave->GroupCount(); ++i) {
        EnemyGroup& group = wave->GetGroup(i);
        if (IsBoss(group) && group.GetShip(0).active) {
            return true;
        }
    }
    return false;
}

// Plays on until the boss is there; whatever comes before it falls at once.
void ClearTheWayToTheBoss(Flight& flight) {
    constexpr int kMoreThanAnyHull = 1000;
    for (int frame = 0; frame < kBossLimit && !BossHasCome(); ++frame) {
        AttackWave* wave = levelManager->GetCurrentWave();
        for (int i = 0; wave != nullptr && i < wave->GroupCount(); ++i) {
            EnemyGroup& group = wave->GetGroup(i);
            for (int k = 0; k < group.ShipCount() && !IsBoss(group); ++k) {
                if (group.GetShip(k).active) {
                    group.GetShip(k).TakeDamage(kMoreThanAnyHull);
                }
            }
        }
        flight.PlayFrame(false);
    }
}

void DrawScenes(const Options& options) {
    for (const Scene& scene : kScenes) {
        if (std::string(scene.name).rfind(options.only, 0) != 0) {
            continue;
        }
        const uint32_t seed = options.seed != 0 ? options.seed : scene.seed;
        AutopilotGame::StartAt(scene.level, seed);
        for (int i = 0; i < scene.driftFrames; ++i) {
            levelManager->GetScenery().Update(false);
        }
        Arm(scene);
        Flight flight(seed);
        if (scene.fireFrames == kBoss) {
            ClearTheWayToTheBoss(flight);
        }
        const int fireFrames = scene.fireFrames == kBoss ? kBossFireFrames : scene.fireFrames;
        for (int i = 0; i < scene.frames; ++i) {
            flight.PlayFrame(i >= scene.frames - fireFrames);
        }
        TakePicture(options, scene.name);
    }
}

void Press(int virtualKey) {
    keyDown[virtualKey] = 1;
    RunFrame();
    keyDown[virtualKey] = 0;
}

void DrawScreens(const Options& options) {
    using platform::VK_ESCAPE;
    using platform::VK_RETURN;
    RunFrames(60);
    TakePicture(options, "title");
    RunFrames(340);
    TakePicture(options, "title-at-rest");
    RunFrames(430);
    TakePicture(options, "title-studio");
    RunFrames(80);
    TakePicture(options, "title-hiscores");
    RunFrames(520);
    TakePicture(options, "title-online");
    Press(VK_ESCAPE);
    RunFrames(1);
    TakePicture(options, "menu-main");
    Press(platform::VK_DOWN);
    Press(VK_RETURN);
    TakePicture(options, "menu-options");
    levelManager->StartAt(1);
    RunFrames(60);
    TakePicture(options, "play-intro");
    RunFrames(500);
    Press(VK_ESCAPE);
    RunFrames(1);
    TakePicture(options, "menu-pause");

    levelManager->StartAt(1);
    RunFrames(210);  // until the level's intro has passed
    Arm(kScenes[1]);
    money = 1500;
    if (levelManager->OpenShopNow()) {
        RunFrames(116);
        TakePicture(options, "shop");
        Press(keyMap->Get(Action::Right));
        RunFrames(25);
        TakePicture(options, "shop-turned");
    }
    levelManager->StartAt(1);
    score = 12345;
    while (levelManager->GetState() != GameState::NameEntry) {
        playerShip->SetInvulnerable(0);
        playerShip->TakeDamage(100);
        RunFrames(1);
    }
    for (const char character : std::string("Ann Lee")) {
        lastChar = character;
        RunFrames(1);
    }
    TakePicture(options, "name-entry");
}

// --- Film strips ---

class Strip {
public:
    Strip(int pictureWidth, int pictureHeight) : width(pictureWidth), height(pictureHeight) {}

    void Add(const std::vector<uint8_t>& pixels) {
        std::vector<uint8_t> small;
        for (int y = 0; y < height / kStripScale; ++y) {
            for (int x = 0; x < width / kStripScale; ++x) {
                for (int channel = 0; channel < 3; ++channel) {
                    small.push_back(Average(pixels, x, y, channel));
                }
            }
        }
        pictures.push_back(std::move(small));
    }

    bool Save(const std::string& path) const {
        const int w = width / kStripScale;
        const int h = height / kStripScale;
        const int rows = (static_cast<int>(pictures.size()) + kStripColumns - 1) / kStripColumns;
        std::vector<uint8_t> sheet(size_t{3} * w * kStripColumns * h * rows, 40);
        for (size_t i = 0; i < pictures.size(); ++i) {
            const int column = static_cast<int>(i) % kStripColumns;
            const int row = rows - 1 - static_cast<int>(i) / kStripColumns;
            for (int y = 0; y < h; ++y) {
                uint8_t* to = &sheet[size_t{3} * ((row * h + y) * w * kStripColumns + column * w)];
                std::memcpy(to, &pictures[i][size_t{3} * y * w], size_t{3} * (w - 1));
            }
        }
        return WritePng(path, w * kStripColumns, h * rows, sheet);
    }

private:
    uint8_t Average(const std::vector<uint8_t>& pixels, int x, int y, int channel) const {
        int sum = 0;
        for (int dy = 0; dy < kStripScale; ++dy) {
            for (int dx = 0; dx < kStripScale; ++dx) {
                const int at = (y * kStripScale + dy) * width + x * kStripScale + dx;
                sum += pixels[size_t{3} * at + channel];
            }
        }
        return static_cast<uint8_t>(sum / (kStripScale * kStripScale));
    }

    int width;
    int height;
    std::vector<std::vector<uint8_t>> pictures;
};

void DrawStrip(const Options& options, int32_t level) {
    const auto seed = static_cast<uint32_t>(level);
    const int interval = std::max(1, static_cast<int>(options.every * kSecond));
    AutopilotGame::StartAt(level, seed);
    AutopilotGame::TakeArms(TypicalArms(level));
    Flight flight(seed);
    Strip strip(glWindow->GetWidth(), glWindow->GetHeight());
    int frame = 0;
    for (; frame < kStripLimit && levelManager->GetLevel() == level &&
           levelManager->GetState() == GameState::Playing;
         ++frame) {
        if (frame % interval == interval * 2 / 5) {
            DrawStill();
            strip.Add(ReadPixels());
            GameStage::Swap();
        }
        flight.PlayFrame();
    }
    char name[32];
    std::snprintf(name, sizeof name, "/strip-%02d.png", level);
    const std::string path = options.folder + name;
    std::printf("%s%s: %s after %d seconds\n", path.c_str(),
                strip.Save(path) ? " (which cannot be written)" : "",
                frame == kStripLimit ? "not done" : "done", frame / kSecond);
}

int Usage() {
    std::fprintf(stderr,
                 "usage: scene-pictures OUT_FOLDER [--strip A-B [--every SECONDS]]\n"
                 "                      [--only NAME] [--seed S] [--width W --height H]\n");
    return 2;
}

bool ParseOptions(int argc, char** argv, Options& options) {
    if (argc < 2 || argc % 2 != 0) {
        return true;
    }
    options.folder = std::filesystem::absolute(argv[1]).string();
    for (int i = 2; i + 1 < argc; i += 2) {
        const std::string name = argv[i];
        if (name == "--strip") {
            if (std::sscanf(argv[i + 1], "%d-%d", &options.firstStrip, &options.lastStrip) == 1) {
                options.lastStrip = options.firstStrip;
            }
        } else if (name == "--only") {
            options.only = argv[i + 1];
        } else if (name == "--seed") {
            options.seed = static_cast<uint32_t>(std::atoi(argv[i + 1]));
        } else if (name == "--every") {
            options.every = std::strtof(argv[i + 1], nullptr);
        } else if (name == "--width") {
            options.width = static_cast<int16_t>(std::atoi(argv[i + 1]));
        } else if (name == "--height") {
            options.height = static_cast<int16_t>(std::atoi(argv[i + 1]));
        } else {
            return true;
        }
    }
    return options.width < 1 || options.height < 1;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (ParseOptions(argc, argv, options)) {
        return Usage();
    }
    std::filesystem::create_directories(options.folder);
    const char* assets = std::filesystem::exists("Objects") ? "." : "assets";
    const GameStage stage(assets, options.width, options.height);
    if (stage.HasFailed()) {
        std::fprintf(stderr, "The game cannot be set up:\n%s", stage.Log().c_str());
        return 1;
    }
    glWindow->ResizeView(options.width, options.height);
    if (options.lastStrip < options.firstStrip) {
        if (options.only.empty()) {
            DrawScreens(options);
        }
        DrawScenes(options);
    }
    for (int32_t level = options.firstStrip; level <= options.lastStrip; ++level) {
        DrawStrip(options, level);
    }
    return 0;
}
