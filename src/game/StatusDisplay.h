#pragma once

// The line over the game: best score, score, money and spare ships.
void DrawStatus();
