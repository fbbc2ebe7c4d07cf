#include "audio/SoundManager.h"

#include "core/DebugLog.h"
#include "platform/SoundBuffer.h"

namespace {

constexpr float kStartVolume = 0.7F;
constexpr int kSoundVolumeStep = -30;  // hundredths of a decibel for each hundredth below full

// Sounds of the first entries of the powerup table; the later powerups are collected silently.
constexpr std::array<const char*, 6> kPickupResources = {
    "PS_SINGLE_LASER", "PS_ENGINE_UPGRADE",   "PS_INC_BULLETS",
    "PS_DOUBLE_LASER", "PS_MISSILE_DUMBFIRE", "PS_MISSILE_FAST",
};

SoundManager* theManager = nullptr;

}  // namespace

SoundManager* SoundManager::Instance() {
    if (theManager == nullptr) {
        theManager = new SoundManager;
    }
    return theManager;
}

void SoundManager::DestroyInstance() {
    delete theManager;
    theManager = nullptr;
}

SoundManager::~SoundManager() {
    Shutdown();
}

void SoundManager::Init() {
    enabled = !LoadSounds();
    if (!enabled) {
        Log("WARNING: DirectSound failed to initialise - sounds are turned off\n");
        return;
    }
    Log("DirectSound found and being used :o)\n");
    SetVolume(kStartVolume);
}

bool SoundManager::LoadSounds() {
    if (!deviceOpen) {
        deviceOpen = !platform::OpenSoundDevice();
    }
    if (!deviceOpen) {
        return true;
    }
    fire = Sound::Create("FIRE", kCopies);
    quadShot = Sound::Create("QUAD_SHOT", kCopies);
    cannon = Sound::Create("CANNON_SOUND", kCopies);
    missileExplosion = Sound::Create("MIS_EXPL", kCopies);
    playerExplosion = Sound::Create("EXPLOSION3", kCopies);
    explosion = Sound::Create("EXPLOSION1", kCopies);
    hit = Sound::Create("HIT", kCopies);
    suck = Sound::Create("3SUCK", kCopies);
    for (size_t i = 0; i < kPickupResources.size(); ++i) {
        pickupSounds[i] = Sound::Create(kPickupResources[i], kCopies);
    }
    return false;
}

// Also with the effects switched off: what was loaded is released either way.
void SoundManager::Shutdown() {
    if (!deviceOpen) {
        return;
    }
    for (std::unique_ptr<Sound>* sound : {&fire, &quadShot, &cannon, &explosion, &missileExplosion,
                                          &hit, &playerExplosion, &suck}) {
        sound->reset();
    }
    for (std::unique_ptr<Sound>& sound : pickupSounds) {
        sound.reset();
    }
    platform::CloseSoundDevice();
    deviceOpen = false;
}

void SoundManager::SetVolume(float level) {
    if (!enabled) {
        return;
    }
    // In double precision 0.7F times 100 stays just below 70, so that the start level is 69
    // hundredths.
    const int hundredths = static_cast<int>(static_cast<double>(level) * 100.0);
    const int volume = (100 - hundredths) * kSoundVolumeStep;
    for (const std::unique_ptr<Sound>* sound : {&fire, &playerExplosion, &explosion, &hit}) {
        if (*sound) {
            (*sound)->SetVolume(volume);
        }
    }
}

void SoundManager::PlayWeaponSound(int weapon) {
    switch (weapon) {
        case 1:
        case 2:
        case 3:
            PlayIfEnabled(fire);
            break;
        case 4:
            PlayIfEnabled(quadShot);
            break;
        case 5:
            PlayIfEnabled(cannon);
            break;
        default:
            break;
    }
}

void SoundManager::PlayExplosion() {
    PlayIfEnabled(explosion);
}
void SoundManager::PlayMissileExplosion() {
    PlayIfEnabled(missileExplosion);
}
void SoundManager::PlayPlayerExplosion() {
    PlayIfEnabled(playerExplosion);
}
void SoundManager::PlayHit() {
    PlayIfEnabled(hit);
}
void SoundManager::PlaySuck() {
    PlayIfEnabled(suck);
}

void SoundManager::PlayPickupSound(int entry) {
    if (entry >= 0 && entry < kPickupEntries && pickupSounds[entry]) {
        pickupSounds[entry]->Play();
    }
}

void SoundManager::PlayIfEnabled(const std::unique_ptr<Sound>& sound) const {
    if (enabled && sound) {
        sound->Play();
    }
}
