#pragma once

// The game: owns every manager of the game world, the current level's paths and waves, the menu and
// the title screen, and runs the game-state machine.

#include <memory>
#include <string>
#include <vector>

#include "game/NameEntry.h"
#include "game/Rehearsal.h"
#include "world/AttackWave.h"

class EnemyShip;
class ExplosionManager;
class Menu;
class PlayerShip;
class PowerupManager;
class SceneryManager;
class TitleScreen;
class WeaponManager;

enum class GameState : int32_t {
    Title = 0,     // logo animation and hiscore pages
    MainMenu = 1,  // before a game
    Paused = 2,    // the in-game menu over the frozen game
    Playing = 3,
    Shop = 4,       // between levels
    GameOver = 5,   // the world runs on for a while without the player
    NameEntry = 6,  // statistics and name entry
    NoChange = 7,   // never stored: the step that returns it leaves the state alone
};

class LevelManager {
public:
    static constexpr int32_t kLevels = 36;
    static constexpr int32_t kLevelEndDelay = 150;  // frames from the last wave to the next level
    static constexpr int32_t kGameOverDelay = 100;  // frames that the world runs on
    static constexpr int32_t kShopInterval = 5;     // levels from shop to shop

    explicit LevelManager(PlayerShip* player);  // takes ownership
    virtual ~LevelManager();
    LevelManager(const LevelManager&) = delete;
    LevelManager& operator=(const LevelManager&) = delete;

    bool Init();  // true = failure
    void Draw();
    bool Update();  // one frame; true = a level file could not be loaded
    // To be continued in each frame after Draw.
    Rehearsal& GetRehearsal() { return rehearsal; }

    // A random live enemy of the current wave for a homing missile; null when none is found.
    EnemyShip* PickTarget();

    // Loads the file of the current level number; true = missing or refused, and the play field is
    // then empty.
    bool LoadLevel();
    void FreeLevel();

    GameState GetState() const { return state; }
    int32_t GetLevel() const { return level; }
    int32_t GetLevelsCompleted() const { return levelsCompleted; }
    int32_t GetCurrentView() const { return currentView; }
    AttackWave* GetCurrentWave();  // null when the level has no wave left
    PlayerShip& GetPlayer() { return *player; }
    WeaponManager& GetPlayerWeapons() { return *playerWeapons; }
    WeaponManager& GetEnemyWeapons() { return *enemyWeapons; }
    PowerupManager& GetPowerups() { return *powerups; }
    SceneryManager& GetScenery() { return *scenery; }
    ExplosionManager& GetExplosions() { return *explosions; }
    Menu& GetMenu() { return *menu; }
    TitleScreen& GetTitle() { return *title; }
    // Starts a game at a level of choice, as if the title had been left and the game started: for
    // the autopilot, the benchmarks and the pictures.
    void StartAt(int32_t firstLevel);
    // Opens the shop at once, if there is something to afford: for the pictures. Returns whether it
    // is open.
    bool OpenShopNow();

private:
    GameState StartGame();
    void PrepareGame(int32_t firstLevel);
    bool UpdatePlaying(GameState& next);
    bool UpdateShop(GameState& next);
    void HandleKeys(GameState& next);
    bool NextLevel();
    bool CompleteLevel(GameState& next);
    bool EnterShop();
    bool UpdateWaves();
    GameState GameOverStep();
    GameState CheckHiscore();
    bool ReadLevel(const std::string& fileName);
    void SwitchView();
    void DrawWorld();
    void DrawIntro();

    std::unique_ptr<PlayerShip> player;
    std::unique_ptr<WeaponManager> playerWeapons;
    std::unique_ptr<WeaponManager> enemyWeapons;
    std::unique_ptr<ExplosionManager> explosions;
    std::unique_ptr<Menu> menu;
    std::unique_ptr<PowerupManager> powerups;
    std::unique_ptr<SceneryManager> scenery;
    std::unique_ptr<TitleScreen> title;

    NameEntry nameEntry;
    Rehearsal rehearsal;

    int32_t level = 0;            // number of the current level, 1 to 36
    int32_t levelsCompleted = 0;  // in this game
    std::string levelTitle;
    std::string levelAuthor;
    int32_t currentView = 0;  // camera view last set; 0 = none yet in this game
    int32_t levelView = 0;    // camera view that the level asks for
    PathTable paths;
    std::vector<std::unique_ptr<AttackWave>> waves;  // played first to last
    int32_t currentWave = 0;
    float introFade = 0.0F;  // 1 when a level has been loaded; its intro shows while above 0
    GameState state = GameState::Title;
    int32_t gameOverDelay = 0;               // frames left of the countdown
    int32_t levelEndDelay = kLevelEndDelay;  // frames left after the last wave
};
