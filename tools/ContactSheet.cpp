// Pictures of the models for those who make them, drawn by the game's own renderer.
//
//     contact-sheet OUT_FOLDER [MODEL...]
//
// Run it in the assets folder or the one above, on a display (xvfb-run will do). A MODEL is a file
// name without ".aob"; several joined by "+" are drawn into one another, as the player's ship is:
// PlayerBase+TwinBigEngines+QuadLasers. Without one, every model is drawn. Each row shows a model
// large, then at the size that it has in play, seen in the four camera views from left to right.
// Enemies stand as they do in formation, turned towards the player.

#include <GL/gl.h>
#include <GL/glu.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "PngFile.h"
#include "core/DebugLog.h"
#include "core/Registry.h"
#include "graphics/GLExtensions.h"
#include "graphics/GLWindow.h"
#include "graphics/ObjectManager.h"
#include "platform/Files.h"
#include "platform/Window.h"
#include "scores/UserPrefs.h"
#include "world/EnemyTypes.h"
#include "world/SceneryModels.h"

namespace {

// All in pixels. A sheet fits the display that xvfb-run makes.
constexpr int kSheetWidth = 1280;
constexpr int kRowHeight = 204;
constexpr int kRows = 5;
constexpr int kSheetHeight = kRows * kRowHeight;
constexpr int kLargeCell = 180;
constexpr int kGameCell = 140;
constexpr int kGap = 2;
constexpr int kViews = 4;
constexpr float kEyeDistance = 50.0F;
const double kHalfPicture = std::tan(30.0 * 3.14159265358979 / 180.0);  // at distance 1

struct Sheet {
    std::string name;
    std::vector<uint32_t> lists;
    std::string size;
    float reach = 0.0F;  // half the edge of the cube about the origin that holds the model
    bool inFog = true;   // scenery is drawn without fog
    bool isEnemy = false;
};

float ReachOf(const Bounds& b) {
    return std::max({-b.minX, b.maxX, -b.minY, b.maxY, -b.minZ, b.maxZ});
}

bool IsScenery(const std::string& file) {
    return std::any_of(kSceneryModels.begin(), kSceneryModels.end(),
                       [&file](const SceneryModel& row) { return file == row.model; });
}

bool IsEnemy(const std::string& file) {
    const auto isFile = [&file](const char* model) {
        const std::string_view known = model;
        return known.substr(known.find('\\')) == file.substr(file.find('\\'));
    };
    for (const int32_t first : {0, kFirstBossType}) {
        for (int32_t type = first; const EnemyType* const row = FindEnemyType(type); ++type) {
            if (isFile(row->model)) {
                return true;
            }
        }
    }
    return false;
}

// True = failure.
bool LoadSheet(const std::string& name, Sheet& sheet) {
    sheet.name = name;
    for (size_t start = 0; start <= name.size();) {
        const size_t end = std::min(name.find('+', start), name.size());
        const std::string file = "Objects\\" + name.substr(start, end - start) + ".aob";
        Bounds bounds;
        const uint32_t list = ObjectManager::Instance()->Load(file.c_str(), bounds);
        if (list == 0) {
            return true;
        }
        sheet.lists.push_back(list);
        sheet.reach = std::max(sheet.reach, ReachOf(bounds));
        sheet.inFog = sheet.inFog && !IsScenery(file);
        sheet.isEnemy = IsEnemy(file);
        char size[64];
        std::snprintf(size, sizeof size, "%.1f x %.1f x %.1f", bounds.maxX - bounds.minX,
                      bounds.maxY - bounds.minY, bounds.maxZ - bounds.minZ);
        sheet.size = sheet.size.empty() ? size : sheet.size;
        start = end + 1;
    }
    return false;
}

// Draws the model in one cell, seen from `distance`, with half the cell's height spanning
// `halfAngle` at distance 1.
void DrawCell(const Sheet& sheet, int x, int y, int size, int view, float distance,
              double halfHeight) {
    glViewport(x, y, size, size);
    glScissor(x, y, size, size);
    glEnable(GL_SCISSOR_TEST);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    const double nearPlane = 0.1;
    const double edge = halfHeight * nearPlane;
    glFrustum(-edge, edge, -edge, edge, nearPlane, distance + 2.0 * sheet.reach + 1.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(0.0F, 0.0F, kEyeDistance - distance);  // the scene itself stands at kEyeDistance
    if (!sheet.inFog || distance > kEyeDistance) {
        glDisable(GL_FOG);
    }
    glWindow->SetView(view);
    glWindow->BeginScene();
    if (sheet.isEnemy) {
        glRotatef(180.0F, 0.0F, 1.0F, 0.0F);
    }
    for (const uint32_t list : sheet.lists) {
        glCallList(list);
    }
    glPopMatrix();
    glEnable(GL_FOG);
    glDisable(GL_SCISSOR_TEST);
}

// The scale of a display of some height, or as large as fits.
double GameScale(const Sheet& sheet, float distance, std::string& label) {
    for (const int displayHeight : {1200, 600, 480}) {
        const double half = kHalfPicture * kGameCell / displayHeight;
        if (sheet.reach < half * distance) {
            label = "at " + std::to_string(displayHeight * 4 / 3) + " x " +
                    std::to_string(displayHeight);
            return half;
        }
    }
    label = "not to scale";
    return sheet.reach * 1.05 / (distance - sheet.reach);
}

void DrawRow(const Sheet& sheet, int row) {
    const int y = kSheetHeight - (row + 1) * kRowHeight;
    const float distance = std::max(kEyeDistance, sheet.reach * 3.0F);
    const double large = sheet.reach * 1.02 / (distance - sheet.reach * 0.5);
    std::string label;
    const double game = GameScale(sheet, distance, label);
    for (int view = 1; view <= kViews; ++view) {
        const int left = (view - 1) * kLargeCell;
        DrawCell(sheet, left, y, kLargeCell - kGap, view, distance, large);
        const int right = kViews * kLargeCell + (view - 1) * kGameCell;
        DrawCell(sheet, right, y, kGameCell - kGap, view, distance, game);
    }
    glWindow->ResizeView(kSheetWidth, kSheetHeight);
    const int textY = y + kLargeCell + 4;
    PrintText(glWindow, 4, textY, 1.0F, 1.0F, 1.0F, "%s", sheet.name.c_str());
    PrintText(glWindow, kViews * kLargeCell + 4, textY, 0.6F, 0.9F, 0.6F, "%s, %s",
              sheet.size.c_str(), label.c_str());
}

// True = failure.
bool SavePicture(const std::string& path) {
    std::vector<uint8_t> pixels(size_t{3} * kSheetWidth * kSheetHeight);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, kSheetWidth, kSheetHeight, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    platform::SwapBuffers(hDC);
    return WritePng(path, kSheetWidth, kSheetHeight, pixels);
}

void ClearSheet() {
    glClearColor(0.25F, 0.25F, 0.25F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glClearColor(0.0F, 0.0F, 0.1F, 0.5F);
}

std::vector<std::string> AllModels() {
    constexpr const char* kExtension = ".aob";
    std::vector<std::string> names;
    for (const std::string& file : platform::ListFolder("Objects")) {
        if (file.ends_with(kExtension)) {
            names.push_back(file.substr(0, file.size() - std::strlen(kExtension)));
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

// True = failure.
bool OpenRenderer() {
    if (platform::OpenDisplay()) {
        return true;
    }
    userPrefs = new UserPrefs;
    glExtensions = new GLExtensions;
    glWindow = new GLWindow;
    glWindow->SetFullscreen(false);
    return glWindow->CreateGLWindow("Contact sheet", kSheetWidth, kSheetHeight, 32);
}

void CloseRenderer() {
    glWindow->DestroyGLWindow();
    ObjectManager::Destroy();
    delete glWindow;
    delete glExtensions;
    delete userPrefs;
    platform::CloseDisplay();
}

// Returns the number of what failed.
int DrawSheets(const std::string& folder, const std::vector<std::string>& names,
               const std::string& log) {
    int failures = 0;
    int sheets = 0;
    int row = 0;
    const auto save = [&] {
        const std::string path = folder + "/sheet-" + std::to_string(++sheets) + ".png";
        failures += SavePicture(path) ? 1 : 0;
        std::printf("%s\n", path.c_str());
        row = 0;
    };
    for (const std::string& name : names) {
        const size_t logged = log.size();
        Sheet sheet;
        if (LoadSheet(name, sheet)) {
            std::printf("%s cannot be loaded\n%s", name.c_str(), log.substr(logged).c_str());
            ++failures;
            continue;
        }
        if (row == 0) {
            ClearSheet();
        }
        DrawRow(sheet, row);
        if (++row == kRows) {
            save();
        }
    }
    if (row > 0) {
        save();
    }
    return failures;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: contact-sheet OUT_FOLDER [MODEL...]\n");
        return 2;
    }
    const std::filesystem::path folder = std::filesystem::absolute(argv[1]);
    std::filesystem::create_directories(folder);
    if (!std::filesystem::exists("Objects") && std::filesystem::exists("assets/Objects")) {
        std::filesystem::current_path("assets");
    }
    std::string log;
    CaptureLog(&log);
    if (OpenRenderer()) {
        std::fprintf(stderr, "no window to draw in\n%s", log.c_str());
        return 1;
    }
    const std::vector<std::string> wanted(argv + 2, argv + argc);
    const int failures = DrawSheets(folder.string(), wanted.empty() ? AllModels() : wanted, log);
    CloseRenderer();
    CaptureLog(nullptr);
    return failures == 0 ? 0 : 1;
}
