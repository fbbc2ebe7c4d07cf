#include "platform/FramePacer.h"

#include <gtest/gtest.h>

#include "platform/Random.h"

using platform::FramePacer;

namespace {

constexpr int64_t kSecond = 1000000000;
constexpr int64_t kHour = 3600 * kSecond;
constexpr int64_t kWork = 3000000;  // what a frame of the game takes

// A display and its driver, in a time of its own.
struct Display {
    int hertz = 60;
    bool swapWaits = false;
};

// Plays for so long and returns the number of frames. The sleeps of the system end a little late,
// by up to a tenth of a millisecond.
int Play(FramePacer& pacer, const Display& display, int64_t duration, int64_t start = 12345) {
    int frames = 0;
    int64_t now = start;
    while (now < start + duration) {
        if (const int64_t wait = pacer.TimeToNextFrame(now); wait > 0) {
            now += wait + int64_t{3} * platform::Random();
        }
        pacer.FrameBegins(now);
        ++frames;
        now += kWork;
        if (display.swapWaits) {
            const int64_t refreshes = now * display.hertz / kSecond + 1;
            now = (refreshes * kSecond + display.hertz - 1) / display.hertz;
        }
    }
    return frames;
}

}  // namespace

TEST(FramePacer, AnHourHasSixtyFramesASecondOnEveryDisplayThatDoesNotPaceByItself) {
    for (const int hertz : {50, 60, 75, 120, 144, 240}) {
        FramePacer unsynchronised;
        unsynchronised.Configure(false, hertz);
        EXPECT_NEAR(Play(unsynchronised, {hertz, false}, kHour), 60 * 3600, 3)
            << hertz << " Hz without swap control";
    }
    for (const int hertz : {120, 144, 240}) {
        FramePacer synchronised;
        synchronised.Configure(true, hertz);
        EXPECT_NEAR(Play(synchronised, {hertz, true}, kHour), 60 * 3600, 3)
            << hertz << " Hz with swap control";
    }
    FramePacer unknown;
    unknown.Configure(true, 0);
    EXPECT_NEAR(Play(unknown, {144, true}, kHour), 60 * 3600, 3) << "a display of unknown rate";
}

TEST(FramePacer, ADisplayNearSixtyHertzKeepsItsOwnRate) {
    for (const int hertz : {50, 60, 75}) {
        FramePacer pacer;
        pacer.Configure(true, hertz);
        EXPECT_NEAR(Play(pacer, {hertz, true}, kHour), hertz * 3600, 3) << hertz << " Hz";
    }
}

TEST(FramePacer, ADriverThatOnlyPretendsToWaitIsFoundOutWithinASecond) {
    for (const int hertz : {50, 60, 75}) {
        FramePacer pacer;
        pacer.Configure(true, hertz);
        const int first = Play(pacer, {hertz, false}, kSecond);
        EXPECT_LE(first, hertz * 5 / 4 + 61) << hertz << " Hz, first second";
        EXPECT_NEAR(Play(pacer, {hertz, false}, kHour, 2 * kSecond), 60 * 3600, 5)
            << hertz << " Hz, afterwards";
    }
}

TEST(FramePacer, NothingIsCaughtUpAfterALongPauseAndALateFrameIsMadeUpFor) {
    FramePacer pacer;
    pacer.Configure(false, 60);
    Play(pacer, {60, false}, kSecond);
    EXPECT_NEAR(Play(pacer, {60, false}, kSecond, 10 * kSecond), 60, 2)
        << "a burst of frames after a pause of nine seconds";

    pacer.Configure(false, 60);
    pacer.FrameBegins(kSecond);
    const int64_t late = kSecond + 2 * kSecond / 60 + 1000000;  // the second frame slips by one
    EXPECT_EQ(pacer.TimeToNextFrame(late), 0);
    pacer.FrameBegins(late);
    EXPECT_EQ(pacer.TimeToNextFrame(late), 0) << "the third is overdue already";
    pacer.FrameBegins(late);
    EXPECT_EQ(pacer.TimeToNextFrame(late), kSecond + 3 * kSecond / 60 - late);
}
