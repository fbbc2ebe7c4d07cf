// Reads everything that the game reads, with the game's own readers, and tells what is wrong.
//
//     asset-check ASSETS_FOLDER
//
// Prints a table of the models and a line with file and reason for everything refused; the exit
// status is 1 when there was any.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "LevelCheck.h"
#include "ModelCheck.h"
#include "ModelSizes.h"
#include "audio/WaveFile.h"
#include "core/DebugLog.h"
#include "graphics/ModelData.h"
#include "graphics/ObjectManager.h"
#include "graphics/TgaImage.h"
#include "platform/Files.h"

namespace {

constexpr size_t kReasonsShown = 5;        // of one file
constexpr size_t kFileLimit = 64U << 20U;  // bytes
constexpr const char* kReflectionMaps[] = {"Reflect.tga", "Reflect2.tga"};

class AssetCheck {
public:
    // Returns the number of files refused.
    int Run();

private:
    void CheckModels();
    void CheckModel(const ExpectedModel& expected);
    void NoteTextures(const ModelData& model, std::vector<std::string>& faults);
    void CheckPictures();
    std::string PictureFault(const std::string& name);
    void CheckUnusedModels();
    void CheckWaves();
    void CheckLevels();
    void Report(const std::string& file, const std::vector<std::string>& faults);
    std::string NewLogText();

    std::string log;  // what the game's readers say
    size_t logSeen = 0;
    int files = 0;
    int refused = 0;
    std::set<std::string> modelPaths;             // on disk
    std::map<std::string, TextureKind> pictures;  // by name; D where any model projects it so
    // Each name and kind is bound to one unit for the whole run: that of its first place.
    std::map<std::pair<std::string, TextureKind>, size_t> places;
};

std::string AssetCheck::NewLogText() {
    std::string text = log.substr(logSeen);
    logSeen = log.size();
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    return text;
}

void AssetCheck::Report(const std::string& file, const std::vector<std::string>& faults) {
    ++files;
    if (faults.empty()) {
        return;
    }
    ++refused;
    for (size_t i = 0; i < faults.size() && i < kReasonsShown; ++i) {
        std::printf("REFUSED %s: %s\n", file.c_str(), faults[i].c_str());
    }
    if (faults.size() > kReasonsShown) {
        std::printf("REFUSED %s: and %zu more\n", file.c_str(), faults.size() - kReasonsShown);
    }
}

void AssetCheck::NoteTextures(const ModelData& model, std::vector<std::string>& faults) {
    for (const Material& material : model.materials) {
        for (size_t t = 0; t < material.textures.size(); ++t) {
            const MaterialTexture& texture = material.textures[t];
            TextureKind& kind = pictures.try_emplace(texture.name, texture.kind).first->second;
            if (texture.kind == TextureKind::D) {
                kind = TextureKind::D;
            }
            const size_t place = places.try_emplace({texture.name, texture.kind}, t).first->second;
            if (place != t && texture.kind != TextureKind::C) {
                faults.push_back("texture " + texture.name + " is number " + std::to_string(t + 1) +
                                 " of material " + material.name + " but number " +
                                 std::to_string(place + 1) + " elsewhere");
            }
        }
    }
}

void AssetCheck::CheckModel(const ExpectedModel& expected) {
    const std::string path = platform::ResolvePath(expected.path);
    modelPaths.insert(path);
    ModelData model;
    model.fileName = expected.path;
    if (model.ReadAobFile()) {
        const std::string reason = NewLogText();
        Report(path, {reason.empty() ? "missing, or no model file" : reason});
        return;
    }
    std::vector<std::string> faults = FindModelFaults(model, *expected.size);
    NoteTextures(model, faults);
    size_t textures = 0;
    for (const Material& material : model.materials) {
        textures += material.textures.size();
    }
    const Bounds b = BoundsOf(model);
    std::printf("%-40s %6zu %6zu %6zu   %5.2f x %5.2f x %5.2f\n", path.c_str(), model.faces.size(),
                model.materials.size(), textures, static_cast<double>(b.maxX - b.minX),
                static_cast<double>(b.maxY - b.minY), static_cast<double>(b.maxZ - b.minZ));
    Report(path, faults);
}

// A file that no table names is never drawn; most likely its name is wrong.
void AssetCheck::CheckUnusedModels() {
    for (const std::string& file : platform::ListFolder("Objects")) {
        const std::string path = platform::ResolvePath("Objects\\" + file);
        if (!modelPaths.contains(path)) {
            Report(path, {"the game asks for no such model"});
        }
    }
}

void AssetCheck::CheckModels() {
    std::printf("%-40s %6s %6s %6s   %s\n", "model", "quads", "mater.", "text.", "size");
    const std::vector<ExpectedModel> models = ExpectedModels();
    for (const ExpectedModel& expected : models) {
        CheckModel(expected);
    }
    CheckUnusedModels();
    if (models.size() > ObjectManager::kMaxModels) {
        Report("Objects", {std::to_string(models.size()) + " models, at most 100 fit"});
    }
    if (places.size() > ObjectManager::kMaxTexturesCached) {
        Report("images", {std::to_string(places.size()) + " textures, at most 100 fit"});
    }
}

bool IsPowerOfTwo(int n) {
    return (n & (n - 1)) == 0;
}

// Empty when the picture is fit for its use.
std::string AssetCheck::PictureFault(const std::string& name) {
    TgaImage image;
    if (!LoadTga("images\\" + name, image)) {
        return "missing, or no uncompressed 24- or 32-bit TGA picture";
    }
    const bool isReflection = std::find(std::begin(kReflectionMaps), std::end(kReflectionMaps),
                                        name) != std::end(kReflectionMaps);
    const auto used = pictures.find(name);
    if (!isReflection && used == pictures.end()) {
        return "no model uses it";
    }
    const bool uploadedAsItIs = isReflection || used->second == TextureKind::D;
    if (uploadedAsItIs && !(IsPowerOfTwo(image.width) && IsPowerOfTwo(image.height))) {
        return "width and height must be powers of two";
    }
    return {};
}

void AssetCheck::CheckPictures() {
    std::set<std::string> names(std::begin(kReflectionMaps), std::end(kReflectionMaps));
    for (const auto& [name, kind] : pictures) {
        names.insert(name);
    }
    for (const std::string& file : platform::ListFolder("images")) {
        if (file.ends_with(".tga")) {
            names.insert(file);
        }
    }
    for (const std::string& name : names) {
        const std::string fault = PictureFault(name);
        Report("images/" + name,
               fault.empty() ? std::vector<std::string>{} : std::vector<std::string>{fault});
    }
}

void AssetCheck::CheckWaves() {
    for (const std::string& file : platform::ListFolder("sounds")) {
        std::vector<uint8_t> bytes;
        WaveData wave;
        const bool unreadable = platform::ReadWholeFile("sounds\\" + file, bytes, kFileLimit) ||
                                ParseWave(bytes.data(), bytes.size(), wave);
        std::vector<std::string> faults;
        if (unreadable) {
            faults.emplace_back("no wave");
        } else if (wave.format.formatTag != 1 || wave.size == 0) {
            faults.emplace_back("not uncompressed, or empty");
        }
        Report("sounds/" + file, faults);
    }
}

void AssetCheck::CheckLevels() {
    for (const std::string& name : LevelFiles(".")) {
        Report("levels/" + name, LevelFaults("levels/" + name));
    }
}

int AssetCheck::Run() {
    CaptureLog(&log);
    CheckModels();
    CheckPictures();
    CheckWaves();
    CheckLevels();
    CaptureLog(nullptr);
    std::printf("%d files, %d refused\n", files, refused);
    return refused;
}

}  // namespace

int main(int argc, char** argv) {
    std::error_code noFolder;
    if (argc == 2) {
        std::filesystem::current_path(argv[1], noFolder);
    }
    if (argc != 2 || noFolder) {
        std::fprintf(stderr, "usage: asset-check ASSETS_FOLDER\n");
        return 2;
    }
    return AssetCheck().Run() == 0 ? 0 : 1;
}
