#pragma once

// The real game for programs that draw or measure it themselves: everything in the registry, online
// hiscores and sound off, no message loop. Works in a folder of its own that has links to the
// assets, so it neither reads nor writes a player's files.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

class GameStage {
public:
    // `assets`: the folder with Objects, images and levels. Sizes in pixels.
    GameStage(const std::filesystem::path& assets, int16_t width, int16_t height);
    ~GameStage();
    GameStage(const GameStage&) = delete;
    GameStage& operator=(const GameStage&) = delete;

    // True = failure; Log() tells why.
    bool HasFailed() const { return failed; }
    const std::string& Log() const { return log; }

    // Puts a level file of the caller's in place of level 1.
    void WriteLevel1(const std::string& text);
    // The window again in another size. True = failure.
    bool Resize(int16_t width, int16_t height);

    // One frame as the program draws and updates it, without the swap.
    static void Draw();
    static void Update();
    // Swaps the buffers, so that the picture can be seen or the driver's queue emptied.
    static void Swap();

private:
    std::filesystem::path folder;
    std::filesystem::path previousFolder;
    std::string log;
    bool failed = true;
};

// The keys of the game's actions, held or not.
void HoldFire(bool held);
void HoldSideways(int direction);  // -1 left, 0 none, 1 right
