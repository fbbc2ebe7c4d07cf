#pragma once

// What runs while nobody plays: the program's logo and the studio's spin into place in fog over a
// mirroring floor, then come the local and the online hiscores.

#include <array>
#include <cstdint>
#include <string>

#include "scores/HiscoreEntry.h"

class TitleScreen {
public:
    enum class Page : int32_t {
        LocalHiscores = 0,
        OnlineHiscores = 1,
        Logo = 2
    };
    static constexpr int32_t kHiscoreFrames = 500;  // that each hiscore page stays

    TitleScreen();  // loads the logo models
    virtual ~TitleScreen() = default;

    bool Update();  // one frame; true when the title is to be left
    void Draw();

    Page GetPage() const { return page; }
    const std::string& GetLine(int line) const { return lines[line]; }
    const std::string& GetHeader() const { return header; }

private:
    void DrawLogoPage();
    void DrawLogo();
    void SetupFog() const;
    void DrawFloor() const;
    void DrawHiscorePage();
    void BuildHiscorePage();
    void NextPage();

    float clock = 0.0F;  // animation time of the logo page; 2 per frame
    uint32_t studioLogo = 0;
    uint32_t programLogo = 0;
    int32_t pageTimer = kHiscoreFrames;  // frames left on the hiscore page
    Page page = Page::Logo;
    // A hiscore page as it stood in its first frame.
    std::array<std::string, kHiscoreEntries> lines;
    std::string header;
    const char* heading = "";
};

// One line of a hiscore page for a window of this width in pixels; narrow windows leave out date
// and time.
std::string HiscoreLine(const HiscoreEntry& entry, int windowWidth);
