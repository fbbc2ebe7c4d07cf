#pragma once

// What a test sets and reads of the platform without a display and without a sound device: boxes
// and dialogs with their answers, the tray, the controller, sound buffers and music.

#include <deque>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/Controller.h"
#include "platform/Dialogs.h"
#include "platform/MessageBox.h"
#include "platform/SoundBuffer.h"
#include "platform/Tray.h"

namespace platform {

// Also what the handles of the game point to.
struct SoundBuffer {
    PcmFormat format;
    const uint8_t* samples = nullptr;  // as given to CreateSoundBuffer; duplicates share it
    size_t size = 0;
    bool duplicate = false;
    bool playing = false;  // set by PlayBuffer; a test clears it when the sound shall have ended
    int volume = 0;        // hundredths of a decibel
    int plays = 0;
    int stops = 0;  // of StopBuffer
};

namespace null {

struct ShownBox {
    std::string text;
    std::string caption;
    BoxButtons buttons;
    BoxIcon icon;
};

struct ShownMenuItem {
    TrayMenuItem::Kind kind;
    std::string text;
    int command;
};

// Belongs to the main thread, like the calls that it records.
struct NullMedia {
    // Message boxes. Each takes the next answer; without one a question gets No, any other box OK.
    std::deque<bool> boxAnswers;
    std::vector<ShownBox> boxes;

    // Dialogs. Each entry is what stands in the fields when OK is pressed; when the entries run out
    // the dialog is cancelled. What the dialogs showed at first is recorded.
    std::deque<ProxyFields> proxyInputs;
    std::vector<ProxyFields> proxyDialogs;
    std::deque<ServerFields> serverInputs;
    std::vector<ServerFields> serverDialogs;

    // Tray.
    bool trayAvailable = true;
    bool trayIconShown = false;
    int trayAdds = 0;
    int trayRemovals = 0;
    std::string trayIcon;
    std::string trayTip;
    std::vector<std::vector<ShownMenuItem>> trayMenus;

    // Controller.
    int controllerError = 0;  // what OpenController returns
    bool controllerAttached = false;
    bool controllerOpen = false;
    bool controllerForceFeedback = false;
    ControllerState controller;

    // Sound. The volume and play counts of every buffer are its history.
    bool soundDeviceWorks = true;
    bool soundDeviceOpen = false;
    std::vector<std::unique_ptr<SoundBuffer>> soundBuffers;  // those that are not yet released
};

NullMedia& Media();
// Back to the start, for the next test. Only while the game holds no sound buffer.
void ResetMedia();

// How often the effect of that wave resource has been played, all copies together.
int SoundPlays(const char* resource);
// The copies of the effect, in the order in which the game made them.
std::vector<SoundBuffer*> SoundCopies(const char* resource);

// Music, shared with the music thread.
struct NullMusic {
    std::vector<std::string> history;  // "Open Music\NAME", "Run", "Pause", "Stop", "Volume N"
    std::string openFile;              // empty when none
    bool running = false;
    int volume = 0;  // hundredths of a decibel, as last set
};
NullMusic Music();  // a copy of the present state
// Whether there is a device, and the game paths that are no music.
void SetMusic(bool deviceWorks, const std::set<std::string>& unplayable = {});
// The running track ends.
void EndMusicTrack();

}  // namespace null

}  // namespace platform
