"""Fifty times full screen and back in a row: nothing leaks, nothing is lost, no key stays down."""

from driver import PAUSE_MENU, WINDOW_READY, game, main, wait_until
from fullscreen import small_modes
from playing import is_ship_at, same_but_frame_rate, without_scenery

ROUNDS = 50
SETTLED = 10  # after so many rounds all memory that is kept for ever has been taken
ALLOWED_KILOBYTES = 6000


def fifty_new_windows():
    display = small_modes()
    try:
        with game(display, prepare=without_scenery) as running:
            running.start()
            running.start_playing()
            running.press_until("Escape", lambda: running.chosen_line(PAUSE_MENU) is not None, "pause")
            before = running.picture()
            created = running.log().count(WINDOW_READY)
            sizes = []
            for done in range(1, ROUNDS + 1):
                running.take_focus()
                running.display.tap("alt+Return")
                wait_until(lambda: running.log().count(WINDOW_READY) >= created + done,
                           f"window number {done}")
                running.wait_for_frames()
                sizes.append(running.resident_kilobytes())
            running.wait_for_picture(lambda shown: same_but_frame_rate(before, shown),
                                     "the picture of the start")
            grown = max(sizes[-5:]) - max(sizes[:SETTLED])
            print(f"resident memory in kB: {sizes[0]}, {sizes[SETTLED - 1]}, {sizes[-1]}")
            assert grown < ALLOWED_KILOBYTES, sizes

            # A key that were still held would move the ship out of its place.
            running.choose(PAUSE_MENU, "Resume Game", running.is_playing, "the game")
            running.key("Shift_L", hold=0.5)
            assert is_ship_at(running.picture(), 0, -10)
            assert running.close() == 0
    finally:
        display.close()


if __name__ == "__main__":
    main(fifty_new_windows)
