#pragma once

// Looks at a level as somebody does who watches it being played, and counts what is not worth
// watching.

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

class EnemyShip;

class Spectator {
public:
    void NoteFrame();

    // The longest time without an enemy in the picture while the level goes on, in frames.
    int32_t LongestEmpty() const { return longestEmpty; }
    // Frames in which two ships were inside one another and had been so for a while, for each pair.
    int32_t Piled() const { return piled; }
    // Frames with a boss in the picture, and those of them in which it had no escort there.
    int32_t WithBoss() const { return withBoss; }
    int32_t BossAlone() const { return bossAlone; }

private:
    void NotePiles(const std::vector<EnemyShip*>& ships);

    int32_t empty = 0;  // frames up to now
    int32_t longestEmpty = 0;
    int32_t piled = 0;
    int32_t withBoss = 0;
    int32_t bossAlone = 0;
    // How long those have been inside one another that are so now.
    std::map<std::pair<EnemyShip*, EnemyShip*>, int32_t> together;
};
