// Plays the game by itself, without a display and faster than a clock runs, and writes down how
// each level went.
//
//     autopilot [--levels A-B] [--seeds N] [--first-seed S] [--csv FILE]
//               [--pilot beginner|expert] [--game] [--assets FOLDER]
//
// Without --game each level is played on its own with the arms that are typical for it; with --game
// whole games from level A, shop visits included, until the last ship is lost or level B is done.
// The same seed gives the same rows. The exit status is 1 when the log names an error.

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "AutopilotGame.h"
#include "AutopilotPilot.h"
#include "AutopilotReport.h"
#include "AutopilotShopper.h"
#include "core/Registry.h"
#include "game/LevelManager.h"

namespace {

constexpr int32_t kLongestLevel = 10 * 60 * 60;  // frames: a level that takes longer has no end

struct Options {
    int32_t firstLevel = 1;
    int32_t lastLevel = LevelManager::kLevels;
    uint32_t firstSeed = 1;
    uint32_t seeds = 10;
    std::string csv;
    std::string assets = ".";
    const PilotSkill* skill = &kExpert;
    bool wholeGame = false;
};

// True = not understood.
bool ReadOption(Options& options, const std::string& name, const char* value) {
    if (name == "--levels") {
        return std::sscanf(value, "%d-%d", &options.firstLevel, &options.lastLevel) != 2 ||
               options.firstLevel < 1 || options.lastLevel > LevelManager::kLevels;
    }
    if (name == "--seeds" || name == "--first-seed") {
        (name == "--seeds" ? options.seeds : options.firstSeed) =
            static_cast<uint32_t>(std::strtoul(value, nullptr, 10));
    } else if (name == "--csv") {
        options.csv = std::filesystem::absolute(value).string();
    } else if (name == "--assets") {
        options.assets = value;
    } else if (name == "--pilot") {
        options.skill = std::strcmp(value, kBeginner.name) == 0 ? &kBeginner : &kExpert;
        return std::strcmp(value, options.skill->name) != 0;
    } else {
        return true;
    }
    return false;
}

bool ReadOptions(Options& options, int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--game") == 0) {
            options.wholeGame = true;
        } else if (i + 1 == argc || ReadOption(options, argv[i], argv[i + 1])) {
            return true;
        } else {
            ++i;
        }
    }
    return false;
}

// Plays on from the level just started to the end of level `lastLevel` or of the ships.
void Play(const Options& options, uint32_t seed, int32_t lastLevel, std::FILE* file) {
    Pilot pilot(*options.skill, seed);
    Shopper shopper(options.skill->plansShopping);
    LevelRecorder recorder;
    recorder.Begin(seed);
    while (true) {
        const int32_t completed = levelManager->GetLevelsCompleted();
        const bool shopping = levelManager->GetState() == GameState::Shop;
        if (shopping) {
            shopper.PressKeys();
        } else {
            pilot.PressKeys();
        }
        AutopilotGame::PlayFrame();
        const GameState state = levelManager->GetState();
        if (!shopping) {
            recorder.NoteFrame();
        }
        const bool lost = state != GameState::Playing && state != GameState::Shop;
        if (lost || recorder.Frames() > kLongestLevel) {
            WriteRow(file, recorder.End(false));
            return;
        }
        const bool next = levelManager->GetLevelsCompleted() != completed;
        const bool toShop = state == GameState::Shop && !shopping;
        if (toShop || (next && !shopping)) {
            WriteRow(file, recorder.End(true));  // with the money as it was before the shop
        }
        if ((next || state == GameState::Shop) && recorder.Level() == lastLevel) {
            return;
        }
        if (next) {
            recorder.Begin(seed);
        }
    }
}

void PlaySeed(const Options& options, uint32_t seed, std::FILE* file) {
    if (options.wholeGame) {
        AutopilotGame::StartAt(options.firstLevel, seed);
        Play(options, seed, options.lastLevel, file);
        return;
    }
    for (int32_t level = options.firstLevel; level <= options.lastLevel; ++level) {
        AutopilotGame::StartAt(level, seed);
        AutopilotGame::TakeArms(TypicalArms(level));
        Play(options, seed, level, file);
    }
}

// In a process of its own, so that nothing is left over from the seed before. True = failure.
bool PlaySeedApart(const AutopilotGame& game, const Options& options, uint32_t seed,
                   std::FILE* file) {
    std::fflush(file);
    const pid_t child = fork();
    if (child == 0) {
        PlaySeed(options, seed, file);
        const std::string faults = game.Faults();
        std::fputs(faults.c_str(), stderr);
        std::fflush(file);
        _exit(faults.empty() ? 0 : 1);
    }
    int status = 0;
    return child < 0 || waitpid(child, &status, 0) < 0 || status != 0;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    std::error_code noFolder;
    if (ReadOptions(options, argc, argv)) {
        std::fprintf(stderr,
                     "usage: autopilot [--levels A-B] [--seeds N] [--first-seed S] [--csv FILE]\n"
                     "                 [--pilot beginner|expert] [--game] [--assets FOLDER]\n");
        return 2;
    }
    std::filesystem::current_path(options.assets, noFolder);
    std::FILE* file = options.csv.empty() ? stdout : std::fopen(options.csv.c_str(), "w");
    if (noFolder || file == nullptr) {
        std::fprintf(stderr, "autopilot: cannot use the folder or write the file\n");
        return 2;
    }
    WriteHeading(file);
    const AutopilotGame game;
    bool failed = !game.Faults().empty();
    std::fputs(game.Faults().c_str(), stderr);
    for (uint32_t i = 0; i < options.seeds && !failed; ++i) {
        failed = PlaySeedApart(game, options, options.firstSeed + i, file);
    }
    if (file != stdout) {
        std::fclose(file);
    }
    return failed ? 1 : 0;
}
