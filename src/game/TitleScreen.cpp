#include "game/TitleScreen.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "core/DebugLog.h"
#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "graphics/ObjectManager.h"
#include "platform/VirtualKeys.h"
#include "scores/HiscoreTable.h"
#include "scores/OnlineHiscores.h"
#include "scores/UserPrefs.h"

namespace {

constexpr float kClockStep = 2.0F;
// Each logo spins through 730 degrees, comes to rest at 10 and stays there until its time is over.
constexpr float kSpinTime = 730.0F;
constexpr float kLogoTime = 900.0F;
constexpr float kRestAngle = 10.0F;

constexpr std::array<const char*, 12> kMonths = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                 "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};

const char* HeaderFor(int windowWidth) {
    switch (windowWidth) {
        case 640:
            return "NAME                 SCORE     HR  LVL VER  ";
        case 800:
            return "NAME                 SCORE     HR  LVL VER   DATE   ";
        case 1024:
            return "NAME                 SCORE     HR  LVL VER   DATE    TIME    ";
        default:
            return "NAME                 SCORE     HRATIO  LVL VER   DATE    TIME    ";
    }
}

template <typename... Arguments>
void Append(std::string& text, const char* format, Arguments... arguments) {
    char piece[64];
    std::snprintf(piece, sizeof piece, format, arguments...);
    text += piece;
}

void PrintRow(const std::string& text, int offset, const Colour& colour) {
    const int x = (glWindow->GetWidth() - static_cast<int>(text.size()) * kCharacterWidth) / 2;
    PrintText(glWindow, x, glWindow->GetHeight() - offset, colour.red, colour.green, colour.blue,
              "%s", text.c_str());
}

}  // namespace

std::string HiscoreLine(const HiscoreEntry& entry, int windowWidth) {
    std::string line = entry.name;
    if (windowWidth < 1280) {
        // What fits three digits and a little; a hostile file may hold any number.
        const int ratio = static_cast<int>(std::clamp(entry.hitRatio, -99999.0F, 99999.0F));
        Append(line, " %.9d %.3d", entry.score, ratio);
    } else {
        Append(line, " %.9d %7g", entry.score, static_cast<double>(entry.hitRatio));
    }
    Append(line, " %.3d ", entry.level);
    Append(line, "%d.%d.%d", entry.version[0], entry.version[1], entry.version[2]);
    const auto seconds = static_cast<std::time_t>(entry.time);
    std::tm time = {};
    localtime_r(&seconds, &time);
    if (windowWidth > 640) {
        Append(line, " %.2d%s%.2d", time.tm_mday, kMonths[time.tm_mon], time.tm_year - 100);
    }
    if (windowWidth > 800) {
        Append(line, " %.2d:%.2d:%.2d", time.tm_hour, time.tm_min, time.tm_sec);
    }
    return line;
}

TitleScreen::TitleScreen() {
    studioLogo = ObjectManager::Instance()->Load("objects\\logo.aob");
    if (studioLogo == 0) {
        Log("WARNING: Cant load VEXO logo\n");
    }
    programLogo = ObjectManager::Instance()->Load("objects\\Nebulorix.aob");
    if (programLogo == 0) {
        Log("WARNING: Cant load Nebulorix logo\n");
    }
}

bool TitleScreen::Update() {
    if (keyDown[platform::VK_ESCAPE] != 0) {
        keyDown[platform::VK_ESCAPE] = 0;
        clock = 0.0F;
        page = Page::Logo;
        return true;
    }
    clock += kClockStep;
    return false;
}

void TitleScreen::Draw() {
    glWindow->SetView(1);
    glLoadIdentity();
    glTranslatef(0.0F, -1.0F, -20.0F);
    for (uint32_t light = GL_LIGHT1; light < glWindow->GetLightLimit(); ++light) {
        glDisable(light);  // the shots of the last game may have left some on
    }
    if (page == Page::Logo) {
        DrawLogoPage();
    } else {
        DrawHiscorePage();
    }
}

void TitleScreen::DrawLogoPage() {
    if (userPrefs->GetTransparency()) {
        constexpr double kBelowFloor[] = {0.0, -1.0, 0.0, 0.0};
        glEnable(GL_CLIP_PLANE0);
        glClipPlane(GL_CLIP_PLANE0, kBelowFloor);
        glPushMatrix();
        glScalef(1.0F, -1.0F, 1.0F);
        glFrontFace(GL_CW);
        DrawLogo();
        glFrontFace(GL_CCW);
        glPopMatrix();
        glDisable(GL_CLIP_PLANE0);
        // The floor wears the picture of the logo's last material: dark tiles.
        glDisable(GL_LIGHTING);
        glColor4f(1.0F, 1.0F, 1.0F, 0.5F);
        DrawFloor();
        glEnable(GL_LIGHTING);
    }
    DrawLogo();
}

void TitleScreen::SetupFog() const {
    constexpr float kBlack[] = {0.0F, 0.0F, 0.0F, 1.0F};
    // The first logo turns close to the eye, the second far away; each in its own depth of fog.
    const bool first = clock < kLogoTime;
    glPushAttrib(GL_FOG_BIT);
    glFogf(GL_FOG_START, first ? 2.0F : 15.0F);
    glFogf(GL_FOG_END, first ? 10.0F : 25.0F);
    glFogi(GL_FOG_MODE, GL_LINEAR);
    glFogfv(GL_FOG_COLOR, kBlack);
    glFogf(GL_FOG_DENSITY, 0.85F);
    if (userPrefs->GetFog()) {
        glEnable(GL_FOG);
    }
}

void TitleScreen::DrawLogo() {
    if (clock >= 2 * kLogoTime) {
        pageTimer = kHiscoreFrames;
        page = Page::LocalHiscores;
        return;
    }
    glRotatef(90.0F, 1.0F, 0.0F, 0.0F);
    SetupFog();
    glPushMatrix();
    if (clock < kLogoTime) {
        glTranslatef(0.0F, 15.0F, -1.0F);
        glRotatef(-10.0F, 1.0F, 0.0F, 0.0F);
        glRotatef(clock < kSpinTime ? clock : kRestAngle, 0.0F, 0.0F, 1.0F);
        glCallList(programLogo);
    } else {
        const float time = clock - kLogoTime;
        glTranslatef(0.0F, 0.0F, -5.0F);
        glRotatef(-90.0F, 1.0F, 0.0F, 0.0F);
        glRotatef(time < kSpinTime ? time : kRestAngle, 0.0F, 1.0F, 0.0F);
        glCallList(studioLogo);
    }
    glPopMatrix();
    glFlush();
    glPopAttrib();
}

void TitleScreen::DrawFloor() const {
    constexpr float kHalf = 20.0F;
    glPushMatrix();
    glRotatef(180.0F, 1.0F, 0.0F, 0.0F);
    SetupFog();
    glBegin(GL_QUADS);
    glNormal3f(0.0F, 1.0F, 0.0F);
    glTexCoord2f(0.0F, 1.0F);
    glVertex3f(-kHalf, 0.0F, kHalf);
    glTexCoord2f(0.0F, 0.0F);
    glVertex3f(-kHalf, 0.0F, -kHalf);
    glTexCoord2f(1.0F, 0.0F);
    glVertex3f(kHalf, 0.0F, -kHalf);
    glTexCoord2f(1.0F, 1.0F);
    glVertex3f(kHalf, 0.0F, kHalf);
    glEnd();
    glPopMatrix();
    glPopAttrib();
}

void TitleScreen::BuildHiscorePage() {
    const bool online = page == Page::OnlineHiscores;
    const int width = glWindow->GetWidth();
    heading = online ? "NEBULORIX ONLINE HISCORES" : "NEBULORIX HISCORE TABLE";
    header = HeaderFor(width);
    if (online) {
        Log("Getting online scores\n");
        hiscoreClient->Restart();
    }
    if (online && !userPrefs->GetOnlineHiscores()) {
        lines.fill("Online Hiscores Disabled. Enable in Options");
        return;
    }
    hiscoreClient->Lock();
    for (int i = 0; i < kHiscoreEntries; ++i) {
        lines[i] = HiscoreLine(online ? hiscoreClient->Entry(i) : hiscoreTable->Entry(i), width);
    }
    hiscoreClient->Unlock();
}

void TitleScreen::DrawHiscorePage() {
    glDisable(GL_TEXTURE_2D);
    if (pageTimer == kHiscoreFrames) {
        BuildHiscorePage();
    }
    // The colour pulses as the page runs down.
    const float wave = std::sin(static_cast<float>(pageTimer) / 10.0F);
    const Colour colour = {wave, 1.0F - wave, std::cos(wave)};
    for (int i = 0; i < kHiscoreEntries; ++i) {
        PrintRow(lines[i], (i + 7) * 20, colour);
    }
    PrintRow(heading, 80, colour);
    PrintRow(header, 120, colour);
    if (--pageTimer == 0) {
        NextPage();
    }
}

void TitleScreen::NextPage() {
    page = page == Page::LocalHiscores ? Page::OnlineHiscores : Page::Logo;
    pageTimer = kHiscoreFrames;
    clock = 0.0F;
}
