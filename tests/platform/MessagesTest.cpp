#include <sys/resource.h>

#include <csignal>
#include <set>

#include "platform/DisplayTest.h"
#include "platform/MessageQueue.h"
#include "platform/VirtualKeys.h"
#include "platform/desktop/HeldKeys.h"
#include "platform/desktop/VirtualKeyMap.h"

using namespace platform;

namespace {

using Messages = DisplayTest;

Message Key(int code) {
    return {MessageKind::KeyDown, nullptr, code, 0, 0};
}

// Processor time that this program has used, in seconds.
double ProcessorTime() {
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

int32_t wakeAt = 0;
void WakeUp() {
    if (Milliseconds() >= wakeAt) {
        PostMessage({MessageKind::Command, nullptr, 77, 0, 0});
    }
}

}  // namespace

TEST(MessageQueue, DeliversInOrderHoweverManyWaitAndEndsWithWhatCameBeforeTheQuit) {
    MessageQueue queue;
    Message message;
    int posted = 0;
    int expected = 0;
    for (int round = 0; round < 3; ++round) {  // the ring starts at another place each time
        for (int i = 0; i < 500; ++i) {
            queue.Post(Key(posted++));
        }
        for (int i = 0; i < 495; ++i) {
            ASSERT_TRUE(queue.Take(message));
            ASSERT_EQ(message.code, expected++);
        }
    }
    queue.RequestQuit(3);
    queue.Post(Key(-1));
    EXPECT_FALSE(queue.QuitDue());
    int taken = 0;
    while (queue.Take(message)) {
        ++taken;
        EXPECT_NE(message.code, -1) << "posted after the quit";
    }
    EXPECT_EQ(taken, posted - expected);
    EXPECT_TRUE(queue.QuitDue());
    EXPECT_EQ(queue.ExitCode(), 3);
}

TEST(HeldKeys, AKeyIsReleasedAsWhatItWasPressedAsAndSharedMeaningsWithTheLastOne) {
    HeldKeys held;
    EXPECT_EQ(held.Press(10, VK_NUMPAD0), VK_NUMPAD0);
    EXPECT_EQ(held.Press(10, VK_INSERT), VK_NUMPAD0) << "Num Lock changed while it repeats";
    EXPECT_EQ(held.Release(10), VK_NUMPAD0);
    held.Press(1, VK_SHIFT);
    held.Press(2, VK_SHIFT);
    EXPECT_EQ(held.Release(1), 0) << "the other Shift is still down";
    EXPECT_EQ(held.Release(2), VK_SHIFT);
    EXPECT_EQ(held.Release(2), 0) << "reported already";
    held.Press(1, VK_SHIFT);
    held.Press(2, VK_SHIFT);
    EXPECT_EQ(held.TakeAny(), VK_SHIFT);
    EXPECT_EQ(held.TakeAny(), 0);
}

TEST(VirtualKeys, FollowTheMeaningOfAKeyAndItsPlaceWhereTheMeaningIsForeign) {
    constexpr int kPlaceOfQ = 20;  // the key right of Tab
    EXPECT_EQ(VirtualKeyOf('a', kPlaceOfQ, false), 'A') << "a French keyboard";
    EXPECT_EQ(VirtualKeyOf(0x439, kPlaceOfQ, false), 'Q') << "a Russian one";
    EXPECT_EQ(VirtualKeyOf('&', 30, false), '1') << "the digits of a French one";
    constexpr int kKeypadOne = 0x40000059;
    EXPECT_EQ(VirtualKeyOf(kKeypadOne, 89, true), VK_NUMPAD0 + 1);
    EXPECT_EQ(VirtualKeyOf(kKeypadOne, 89, false), VK_END);
    EXPECT_EQ(VirtualKeyOf(0x40000102, 258, false), 0) << "a key that the game does not know";
}

TEST_F(Messages, KeysArriveAsVirtualKeys) {
    Create(320, 200);
    Collect(300);
    Run("xdotool keydown i keydown Shift_R keydown semicolon keydown Prior keydown F5");
    const auto down = Collect(200);
    for (const int key : {int{'I'}, VK_SHIFT, VK_OEM_1, VK_PRIOR, VK_F1 + 4}) {
        EXPECT_GE(Count(down, MessageKind::KeyDown, key), 1) << "key " << key;
        EXPECT_EQ(Count(down, MessageKind::KeyUp, key), 0) << "key " << key;
    }
    EXPECT_GE(Count(Collect(1000), MessageKind::KeyDown, VK_F1 + 4), 3) << "a held key repeats";
    Run("xdotool keyup i keyup Shift_R keyup semicolon keyup Prior keyup F5");
    const auto up = Collect(200);
    for (const int key : {int{'I'}, VK_SHIFT, VK_OEM_1, VK_PRIOR, VK_F1 + 4}) {
        EXPECT_EQ(Count(up, MessageKind::KeyUp, key), 1) << "key " << key;
    }
    Run("xdotool mousemove 30 30 mousemove 40 40");
    EXPECT_GE(Count(Collect(200), MessageKind::MouseMove), 1);
}

TEST_F(Messages, HeldKeysAreReleasedWhenTheKeyboardGoesElsewhere) {
    Create(320, 200);
    Collect(300);
    Run("xdotool keydown j keydown Control_L");
    EXPECT_EQ(Count(Collect(150), MessageKind::KeyDown, 'J'), 1);
    // The root window gets the keyboard.
    Run("xdotool windowfocus $(xwininfo -root | sed -n 's/.*Window id: "
        "\\(0x[0-9a-f]*\\).*/\\1/p')");
    const auto away = Collect(300);
    EXPECT_EQ(Count(away, MessageKind::KeyUp, 'J'), 1);
    EXPECT_EQ(Count(away, MessageKind::KeyUp, VK_CONTROL), 1);
    Run("xdotool keyup j keyup Control_L");

    ShowGameWindow(window);
    Collect(300);
    Run("xdotool keydown k");
    EXPECT_EQ(Count(Collect(150), MessageKind::KeyDown, 'K'), 1);
    SetWindowVisible(window, false);
    EXPECT_EQ(Count(Collect(50), MessageKind::KeyUp, 'K'), 1) << "hidden for a dialog";
    Run("xdotool keyup k");
}

TEST_F(Messages, PaintsComeSixtyTimesASecondAndTheQueueSleepsBetween) {
    Create(320, 200);
    EXPECT_TRUE(SetSwapInterval(1)) << "the virtual display has no swap control";
    Collect(300);
    const double processorTime = ProcessorTime();
    const int64_t start = PerformanceCounter();
    int paints = 0;
    Message message;
    while (paints < 120 && GetMessage(message)) {
        paints += message.kind == MessageKind::Paint ? 1 : 0;
    }
    const double seconds = static_cast<double>(PerformanceCounter() - start) /
                           static_cast<double>(PerformanceFrequency());
    EXPECT_NEAR(seconds, 2.0, 0.1);
    EXPECT_LT(ProcessorTime() - processorTime, 0.4) << "busy waiting";
}

TEST_F(Messages, AFloodOfInputNeverStopsThePaints) {
    Create(320, 200);
    Collect(300);
    SetIdlePump([] { PostMessage(Key('A')); });  // something new in every round
    int paints = 0;
    int keys = 0;
    Message message;
    const int32_t end = Milliseconds() + 1000;
    while (Milliseconds() < end && GetMessage(message)) {
        paints += message.kind == MessageKind::Paint ? 1 : 0;
        keys += message.kind == MessageKind::KeyDown ? 1 : 0;
    }
    EXPECT_NEAR(paints, 60, 5);
    EXPECT_GT(keys, 60);
}

TEST_F(Messages, AHiddenWindowIsNotPaintedAndStillAnswers) {
    Create(320, 200);
    Collect(200);
    SetWindowVisible(window, false);
    Collect(200);
    wakeAt = Milliseconds() + 500;
    SetIdlePump(WakeUp);
    const double processorTime = ProcessorTime();
    Message message;
    ASSERT_TRUE(GetMessage(message));
    EXPECT_EQ(message.kind, MessageKind::Command);
    EXPECT_GE(Milliseconds(), wakeAt);
    EXPECT_LT(ProcessorTime() - processorTime, 0.15) << "busy waiting";

    SetIdlePump(nullptr);
    PostQuit(5);
    while (GetMessage(message)) {
        EXPECT_NE(message.kind, MessageKind::Paint);
    }
    EXPECT_EQ(ExitCode(), 5);
}
