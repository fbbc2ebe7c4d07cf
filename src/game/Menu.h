#pragma once

// The one menu: shows a page at a time as centred lines under a heading, moves a highlight with the
// keyboard or a controller, and carries out the chosen line.

#include <cstdint>
#include <string>

enum class GameState : int32_t;

class Menu {
public:
    // Page numbers: page + line is the code of an action.
    enum Page : int32_t {
        kMainPage = 50,
        kPausePage = 100,
        kOptionsPage = 200,
        kKeyConfigPage = 206,
        kResolutionPage = 300,
        kPolygonPage = 400,
        kOnlinePage = 500,
        kServersPage = 6000,
    };
    enum Kind : int {
        kMainMenu = 1,
        kPauseMenu = 2
    };

    virtual ~Menu() = default;

    void Init();
    void Open(int kind);
    void Draw();
    // One frame; may set the game's next state.
    void Update(GameState& next);

    int32_t GetPage() const { return page; }
    int32_t GetSelected() const { return selected; }
    // Lines of the current page.
    int32_t LineCount() const;
    std::string LineText(int32_t line) const;  // counted from 1

private:
    struct Input {
        bool left = false;
        bool right = false;
        bool up = false;
        bool down = false;
        bool select = false;
        bool back = false;
        bool Any() const { return left || right || up || down || select || back; }
    };
    static Input ReadInput();

    void Reset();
    void ShowPage(Page newPage);
    void Action(GameState& next);
    bool OptionsAction(int32_t code);
    static bool PolygonAction(int32_t code);
    void ServerAction(int32_t server);
    void ScanKeyConfig();
    static void DrawKeyPrompt();

    int32_t selected = 1;  // highlighted line, counted from 1
    int32_t page = kPausePage;
    bool closeRequested = false;  // set by "Resume Game"
};
