#pragma once

// The one sound device. Effects and music share it: it is opened for the first user and closed
// after the last. Main thread only.

namespace platform {

// True = failure: no device.
bool AcquireAudioDevice();
void ReleaseAudioDevice();

// The mixer's volume, 0 to 128, for hundredths of a decibel below full.
int MixerVolume(int hundredthsOfDecibel);

}  // namespace platform
