#pragma once

// Test fixtures on the null platform: the registry filled as start-up does it, in a temporary
// folder of its own, with small models of known size in place of the real ones.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/Geometry.h"

// Preferences, window and sound, and the log of what happened: for tests of single classes.
class RoomFixture : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Writes a model of one face that spans `bounds`, which must contain the origin.
    static void WriteModel(const std::string& gamePath, const Bounds& bounds);
    static void WriteFile(const std::string& gamePath, const std::string& content);
    bool Logged(const std::string& text) const { return log.find(text) != std::string::npos; }

    std::filesystem::path folder;
    std::string log;  // everything logged since the test began

private:
    std::filesystem::path previousFolder;
};

// The whole game world with its managers, a player's ship of 6 x 2 x 6 units and enemies of
// 4 x 2 x 4, online hiscores off, no level loaded.
class GameFixture : public RoomFixture {
protected:
    void SetUp() override;
    void TearDown() override;

    // Runs frames of the game in its current state, drawing included.
    static void RunFrames(int frames);
    // Writes a level file whose waves are given; one straight path down the middle, view `view`.
    static void WriteLevel(int number, const std::string& waves, int view = 1);
    // A wave of one group of `ships` ships that neither fire nor dive.
    static std::string OneGroup(int type, int ships);
};
