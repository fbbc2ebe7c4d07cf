#include "game/StatusDisplay.h"

#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "player/PlayerShip.h"
#include "scores/HiscoreTable.h"

void DrawStatus() {
    playerShip->DrawLives();
    const auto width = static_cast<float>(glWindow->GetWidth());
    const int y = static_cast<int>(static_cast<float>(glWindow->GetHeight()) * 0.92F);
    PrintText(glWindow, static_cast<int>(width * 0.6F), y, 0.2F, 0.8F, 0.2F, "%d", score);
    PrintText(glWindow, static_cast<int>(width * 0.8F), y, 0.2F, 0.8F, 0.2F, "$%d", money);
    // The best score is the table's: it does not follow the score being played while that is
    // higher.
    PrintText(glWindow, static_cast<int>(width * 0.01F), y, 0.8F, 0.2F, 0.2F, "%d",
              hiscoreTable->TopScore());
}
