#pragma once

// Finds what would spoil a level although the game can read it: enemies that pop up inside the
// picture, stand outside it, never come before the player's guns, or never come at all.

#include <set>
#include <string>
#include <vector>

// The faults of one level file; none when it can be played. `path` is a path of the system.
std::vector<std::string> LevelFaults(const std::string& path);

// Names of the files in the levels folder and of those that the game wants there, so that a missing
// one is found.
std::set<std::string> LevelFiles(const std::string& assetsFolder);
