#pragma once

// The sound effects, one play operation for each event of the game.

#include <array>
#include <memory>

#include "audio/Sound.h"

class SoundManager {
public:
    static constexpr int kPickupEntries = 27;  // one for each entry of the powerup table
    static constexpr uint32_t kCopies = 10;    // of one effect that can sound at once

    static SoundManager* Instance();
    static void DestroyInstance();
    virtual ~SoundManager();  // Shutdown, where that was not called

    // Opens the sound device and loads every effect; without a device the game runs silently.
    void Init();
    // Releases every effect and the device.
    void Shutdown();

    // 0 to 1; only for the shots and explosions that sound most often.
    void SetVolume(float level);
    void ToggleSound() { enabled = !enabled; }
    bool IsEnabled() const { return enabled; }

    void PlayWeaponSound(int weapon);  // weapon kind; kinds outside 1 to 5 play nothing
    void PlayExplosion();
    void PlayMissileExplosion();
    void PlayPlayerExplosion();
    void PlayHit();
    void PlaySuck();
    // `entry` of the powerup table; entries without a sound play nothing. Pickups sound even while
    // the effects are switched off.
    void PlayPickupSound(int entry);

private:
    SoundManager() = default;
    bool LoadSounds();
    void PlayIfEnabled(const std::unique_ptr<Sound>& sound) const;

    bool enabled = true;
    bool deviceOpen = false;
    std::unique_ptr<Sound> fire;
    std::unique_ptr<Sound> quadShot;
    std::unique_ptr<Sound> cannon;
    std::unique_ptr<Sound> explosion;
    std::unique_ptr<Sound> missileExplosion;
    std::unique_ptr<Sound> hit;
    std::unique_ptr<Sound> playerExplosion;
    std::unique_ptr<Sound> suck;
    std::array<std::unique_ptr<Sound>, kPickupEntries> pickupSounds;
};
