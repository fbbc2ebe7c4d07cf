#include "game/LevelManager.h"

#include <cstdio>

#include "core/DebugLog.h"
#include "core/Registry.h"
#include "game/Menu.h"
#include "game/StatusDisplay.h"
#include "game/TitleScreen.h"
#include "graphics/GLWindow.h"
#include "graphics/ObjectManager.h"
#include "platform/VirtualKeys.h"
#include "player/PlayerShip.h"
#include "player/PowerupManager.h"
#include "player/WeaponManager.h"
#include "scores/HiscoreTable.h"
#include "scores/OnlineHiscores.h"
#include "world/ExplosionManager.h"
#include "world/SceneryManager.h"

namespace {

constexpr float kIntroFadeStep = 0.005F;  // of a frame: the intro takes 200 frames

}  // namespace

LevelManager::LevelManager(PlayerShip* player) : player(player) {}

LevelManager::~LevelManager() {
    FreeLevel();
}

bool LevelManager::Init() {
    Log("\n--- Initialising Level Manager ---\n");
    state = GameState::Title;
    title = std::make_unique<TitleScreen>();
    gameOverDelay = 0;
    if (PlayerShip::LoadMods()) {
        Log("ERROR: Failed to load all the players mods\n");
    }
    playerWeapons = std::make_unique<WeaponManager>(true);
    enemyWeapons = std::make_unique<WeaponManager>(false);
    if (playerWeapons->Init() || enemyWeapons->Init()) {
        Log("ERROR: Failed To initialise the weapon manager\n");
        return true;
    }
    explosions = std::make_unique<ExplosionManager>();
    explosions->Init();
    powerups = std::make_unique<PowerupManager>();
    if (powerups->Init()) {
        Log("ERROR: Failed To initialise the powerup manager\n");
        return true;
    }
    scenery = std::make_unique<SceneryManager>();

    EnemyShip::SetManagers(playerWeapons.get(), enemyWeapons.get(), explosions.get(),
                           powerups.get());
    player->SetManagers(playerWeapons.get(), explosions.get());
    WeaponManager::SetLinks(this, explosions.get());
    SceneryManager::SetManagers(playerWeapons.get(), explosions.get());

    level = 0;
    levelsCompleted = 0;
    menu = std::make_unique<Menu>();
    menu->Init();
    return false;
}

AttackWave* LevelManager::GetCurrentWave() {
    return currentWave < static_cast<int32_t>(waves.size()) ? waves[currentWave].get() : nullptr;
}

EnemyShip* LevelManager::PickTarget() {
    AttackWave* wave = GetCurrentWave();
    return wave != nullptr ? wave->PickRandomShip() : nullptr;
}

// --- One frame of the game ---

bool LevelManager::Update() {
    GameState next = state;
    switch (state) {
        case GameState::Title:
            next = StartGame();
            break;
        case GameState::MainMenu:
        case GameState::Paused:
            menu->Update(next);
            break;
        case GameState::Playing:
            if (UpdatePlaying(next)) {
                return true;
            }
            break;
        case GameState::Shop:
            if (UpdateShop(next)) {
                return true;
            }
            break;
        case GameState::GameOver:
            next = GameOverStep();
            break;
        case GameState::NameEntry:
            next = CheckHiscore();
            break;
        default:
            Log("ERROR: OOps, states are fecked\n");
            break;
    }
    HandleKeys(next);
    if (next != GameState::NoChange) {
        state = next;
    }
    return false;
}

void LevelManager::HandleKeys(GameState& next) {
    using platform::VK_ESCAPE;
    using platform::VK_RETURN;
    using platform::VK_SPACE;
    if (keyDown[VK_ESCAPE] != 0) {
        keyDown[VK_ESCAPE] = 0;
        if (state == GameState::Playing) {
            next = GameState::Paused;
            menu->Open(Menu::kPauseMenu);
        }
        return;
    }
    const bool keysBelongToState =
        state == GameState::NameEntry || state == GameState::Playing || state == GameState::Shop;
    if ((keyDown[VK_SPACE] != 0 || keyDown[VK_RETURN] != 0) && !keysBelongToState) {
        // The next frame sees Escape: any of the three leaves the title.
        keyDown[VK_ESCAPE] = 1;
        keyDown[VK_RETURN] = 0;
        keyDown[VK_SPACE] = 0;
    }
}

bool LevelManager::UpdatePlaying(GameState& next) {
    if (player->Update()) {
        next = GameOverStep();
    }
    playerWeapons->UpdateAll();
    enemyWeapons->UpdateAll();
    if (!player->IsProtected()) {
        enemyWeapons->CollideWith(*player);
    }
    if (UpdateWaves() && levelEndDelay-- == 0 && CompleteLevel(next)) {
        return true;
    }
    explosions->Update();
    powerups->UpdateAll(player.get());
    powerups->Collect(*player);
    scenery->Update(!glWindow->IsViewBlending());
    return false;
}

bool LevelManager::CompleteLevel(GameState& next) {
    if ((levelsCompleted + 1) % kShopInterval == 0 && EnterShop()) {
        next = GameState::Shop;
        return false;
    }
    return NextLevel();
}

// The shop opens only when something is affordable; the camera then looks from above at once.
bool LevelManager::EnterShop() {
    if (!powerups->OpenShop(money)) {
        return false;
    }
    glWindow->SetView(1);
    return true;
}

bool LevelManager::OpenShopNow() {
    if (EnterShop()) {
        state = GameState::Shop;
    }
    return state == GameState::Shop;
}

bool LevelManager::UpdateShop(GameState& next) {
    scenery->Update(false);
    if (powerups->UpdateShop()) {
        next = GameState::Playing;
        return NextLevel();  // a level that cannot be loaded leaves the shop open
    }
    return false;
}

GameState LevelManager::StartGame() {
    currentView = 0;
    if (!title->Update()) {
        return GameState::Title;
    }
    menu->Open(Menu::kMainMenu);
    PrepareGame(1);
    return GameState::MainMenu;
}

void LevelManager::PrepareGame(int32_t firstLevel) {
    player->ResetPlayer();
    level = firstLevel;
    levelsCompleted = firstLevel - 1;
    gameOverDelay = kGameOverDelay;
    LoadLevel();
    explosions->Reset();
    enemyWeapons->Clear();
    playerWeapons->Clear();
    powerups->Clear();
    scenery->Populate(true, true, true);
}

void LevelManager::StartAt(int32_t firstLevel) {
    currentView = 0;
    levelEndDelay = kLevelEndDelay;
    PrepareGame(firstLevel);
    state = GameState::Playing;
}

bool LevelManager::NextLevel() {
    levelEndDelay = kLevelEndDelay;
    ++levelsCompleted;
    if (++level > kLevels) {
        level = 1;
    }
    return LoadLevel();
}

bool LevelManager::UpdateWaves() {
    while (AttackWave* wave = GetCurrentWave()) {
        if (!wave->Update()) {
            return false;
        }
        ++currentWave;  // the next wave gets its first frame at once
    }
    return true;
}

GameState LevelManager::GameOverStep() {
    if (gameOverDelay == 0) {
        return CheckHiscore();
    }
    --gameOverDelay;
    playerWeapons->UpdateAll();
    enemyWeapons->UpdateAll();
    explosions->Update();
    powerups->UpdateAll(nullptr);
    scenery->Update(false);
    UpdateWaves();
    return GameState::GameOver;
}

GameState LevelManager::CheckHiscore() {
    if (score <= hiscoreTable->LowestScore() && score <= hiscoreClient->GetThreshold()) {
        return GameState::Title;
    }
    const bool stored = nameEntry.Step(levelsCompleted + 1, *playerWeapons);
    return stored ? GameState::Title : GameState::NameEntry;
}

// --- Levels ---

void LevelManager::FreeLevel() {
    // Missiles still in flight must not chase enemies that are gone.
    if (playerWeapons != nullptr) {
        playerWeapons->ForgetTargets();
    }
    waves.clear();
    paths.clear();
}

bool LevelManager::LoadLevel() {
    FreeLevel();
    char fileName[64];
    std::snprintf(fileName, sizeof fileName, "levels\\Level%d.lvl", level);
    if (ReadLevel(fileName)) {
        FreeLevel();
        return true;
    }
    currentWave = 0;
    introFade = 1.0F;
    if (levelView != currentView) {
        SwitchView();
    }
    return false;
}

void LevelManager::SwitchView() {
    if (currentView != 0) {
        glWindow->SetCameraView(currentView, levelView);
        player->StartRecentre();
    } else {
        glWindow->SetView(levelView);
        player->ResetPosition();
    }
    currentView = levelView;
    scenery->SetViewMode(levelView);
    powerups->SetView(levelView);
}

// --- Drawing ---

void LevelManager::Draw() {
    ObjectManager::Instance()->DisableTextures();
    switch (state) {
        case GameState::Title:
            title->Draw();
            break;
        case GameState::MainMenu:
            menu->Draw();
            break;
        case GameState::Paused:
        case GameState::Playing:
        case GameState::Shop:
        case GameState::GameOver:
            DrawWorld();
            break;
        case GameState::NameEntry:
            nameEntry.Draw(*playerWeapons);
            break;
        default:
            Log("ERROR: OOps, states are fecked\n");
            break;
    }
}

void LevelManager::DrawWorld() {
    if (introFade > 0.0F && state != GameState::Paused) {
        DrawIntro();
        introFade -= kIntroFadeStep;
    }
    scenery->Draw();
    if (state != GameState::Shop) {
        powerups->DrawAll();
        if (AttackWave* wave = GetCurrentWave()) {
            wave->Draw();
        }
        if (state != GameState::GameOver) {
            player->Draw();
        }
        ObjectManager::Instance()->DisableTextures();
        WeaponManager::ResetLights();
        playerWeapons->DrawAll();
        enemyWeapons->DrawAll();
        explosions->Draw();
        player->DrawTarget();
    }
    if (state == GameState::Paused) {
        menu->Draw();
    } else if (state == GameState::Shop) {
        powerups->DrawShop();
    }
    DrawStatus();
}

// Three lines slide from the left edge across and out of the picture while their colour turns from
// violet to orange-red.
void LevelManager::DrawIntro() {
    const int width = glWindow->GetWidth();
    const int middle = glWindow->GetHeight() / 2;
    const float a = introFade;
    const int slide = static_cast<int>(static_cast<double>(width) * (1.0 - a) * 1.1);
    const auto centred = [slide](size_t characters) {
        return slide - static_cast<int>(characters) * kWideCharacterWidth / 2;
    };
    constexpr size_t kByLineExtra = 4;  // of "(by )"; its last bracket is left out of the centring
    PrintText(glWindow, slide - 52, middle, 1.0F, 0.3F, a, "Level %d:", level);
    PrintText(glWindow, centred(levelTitle.size()), middle - 40, 1.0F, 0.3F, a, "%s",
              levelTitle.c_str());
    PrintText(glWindow, centred(levelAuthor.size() + kByLineExtra), middle - 80, 1.0F, 0.3F, a,
              "(by %s)", levelAuthor.c_str());
}
