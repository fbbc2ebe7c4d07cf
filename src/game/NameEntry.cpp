#include "game/NameEntry.h"

#include <cstdarg>
#include <cstdio>

#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "platform/VirtualKeys.h"
#include "player/WeaponManager.h"
#include "scores/HiscoreTable.h"
#include "scores/OnlineHiscores.h"

namespace {

constexpr const char* kHiscoreFile = "Data\\NXHS.bin";
constexpr char kReturn = 13;
constexpr char kBackspace = 8;

// Shots that hit in percent of shots fired; 0 when none was fired.
float HitRatio(const WeaponManager& weapons) {
    if (weapons.ShotsFired() == 0) {
        return 0.0F;
    }
    return static_cast<float>(weapons.ShotsHit() * 100.0 / weapons.ShotsFired());
}

// One centred line `offset` pixels below the upper edge.
[[gnu::format(printf, 3, 4)]] void PrintCentred(int offset, const Colour& colour,
                                                const char* format, ...) {
    char text[256];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    PrintText(glWindow, CentredX(glWindow->GetWidth(), length), glWindow->GetHeight() - offset,
              colour.red, colour.green, colour.blue, "%s", text);
}

}  // namespace

void NameEntry::Type(char character) {
    if (character == kBackspace) {
        if (cursor > 0) {
            name[--cursor] = '.';
        }
    } else if (cursor < kNameLength) {
        name[cursor++] = character;
    }
}

bool NameEntry::Step(int32_t level, const WeaponManager& weapons) {
    if (typing) {
        if (fresh) {
            lastChar = 0;
            cursor = 0;
            fresh = false;
            name.assign(kNameLength, '.');
        }
        if (lastChar == kReturn) {
            cursor = 0;
            typing = false;
            fresh = true;
            keyDown[platform::VK_RETURN] = 0;
        } else if (lastChar != 0) {
            Type(lastChar);
            lastChar = 0;
        }
        return false;
    }
    const float ratio = HitRatio(weapons);
    if (score > hiscoreTable->LowestScore()) {
        hiscoreTable->Insert(score, name.c_str(), level, ratio);
        hiscoreTable->Save(kHiscoreFile);
    }
    hiscoreClient->SubmitScore(name.c_str(), score, level, ratio);
    typing = true;
    return true;
}

void NameEntry::Draw(const WeaponManager& weapons) const {
    constexpr Colour kPink = {1.0F, 0.8F, 1.0F};
    constexpr Colour kYellow = {0.8F, 0.8F, 0.0F};
    constexpr Colour kBlue = {0.4F, 0.8F, 1.0F};
    PrintCentred(80, kPink, "Please Enter Your Name");
    PrintCentred(200, kPink, "%s", name.c_str());
    PrintCentred(260, kYellow, "Final Score: %d", score);
    PrintCentred(300, kBlue, "Total shots Fired: %d", weapons.ShotsFired());
    PrintCentred(320, kBlue, "Total Shots Hit: %d", weapons.ShotsHit());
    PrintCentred(340, kBlue, "Ratio: %f", static_cast<double>(HitRatio(weapons)));
}
