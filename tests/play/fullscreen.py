"""Full screen and back: the picture stays, the display's mode is given back, a mode that the display
does not have is no trap, and nothing is lost or grows however often the window is made anew."""

import signal
import time

import gamefiles
from display import PATIENCE
from driver import (LONG, MAIN_MENU, PAUSE_MENU, QUESTION, WINDOW_READY, Display, game, main,
                    wait_until)
from menus import options_page, pause_a_game
from playing import is_ship_at, same_but_frame_rate, without_scenery

DESKTOP = (1600, 1200)
REFUSED = "Nebulorix"  # caption of the question after a refused mode
# A sanitizer keeps the memory that is given back, so that nothing can be said of it.
IS_MEASURED = PATIENCE == 1
ROUNDS = 50 if LONG else 10 if IS_MEASURED else 2
SETTLED = ROUNDS // 5 or 1  # after so many rounds all memory that is kept for ever has been taken
ALLOWED_KILOBYTES = 6000


def small_modes():
    display = Display()
    display.add_mode(640, 480)
    return display


def toggle(running, *keys):
    """Presses keys that make a new window and waits for its first frame."""
    created = running.log().count(WINDOW_READY)
    running.take_focus()
    running.display.tap(*keys)
    wait_until(lambda: running.log().count(WINDOW_READY) > created, f"{keys} to have an effect")
    running.wait_for_frames()
    time.sleep(0.25)  # SDL waits so long before it takes the new window's keys for all that are held


def is_fullscreen(running):
    return (running.display.mode() == (640, 480) and
            running.display.geometry(running.window()) == (0, 0, 640, 480))


def the_picture_is_the_same_before_and_after():
    display = small_modes()
    try:
        with game(display, prepare=without_scenery) as running:
            running.start()
            pause_a_game(running)
            before = running.picture()
            stars = before.bright_in(0, 0, 640, 60)
            assert stars > 0 and before.bright_in(290, 290, 350, 350) > 100, "stars and the ship"

            def is_shown(where):
                running.wait_for_picture(lambda shown: same_but_frame_rate(before, shown),
                                         f"the same picture in {where}")
            toggle(running, "alt+Return")
            wait_until(lambda: is_fullscreen(running), "full screen")
            is_shown("full screen")
            toggle(running, "ctrl+Return")
            wait_until(lambda: display.mode() == DESKTOP, "the desktop's mode")
            is_shown("a window")
            hold_ctrl_enter(running)
            nothing_grows(running)
            is_shown("the window of the start")

            # A key that were still held would move the ship out of its place.
            running.choose(PAUSE_MENU, "Resume Game", running.is_playing, "the game")
            running.key("Shift_L", hold=0.3)
            assert is_ship_at(running.picture(), 0, -10)

            # The menu's own line.
            running.press_until("Escape", lambda: running.chosen_line(PAUSE_MENU) is not None, "pause")
            running.open_page(PAUSE_MENU, "Options", options_page())
            running.choose(options_page(), "Flip Fullscreen", lambda: is_fullscreen(running),
                           "full screen")
            running.wait_for_frames()
            running.open_page(options_page(), "Go Back to Main Menu", PAUSE_MENU)
            assert running.close() == 0
            wait_until(lambda: display.mode() == DESKTOP, "the desktop's mode after the end")
    finally:
        display.close()


def hold_ctrl_enter(running):
    """Held until the new window is there, as by a slow hand: the Enter of it chooses nothing."""
    for _ in range(2):
        created = running.log().count(WINDOW_READY)
        with running.holding("Control_L", "Return"):
            wait_until(lambda: running.log().count(WINDOW_READY) > created, "a new window")
            running.wait_for_frames()
            running.key("Shift_L", hold=0.2)
        assert running.chosen_line(PAUSE_MENU) == 0, "the game goes on"


def nothing_grows(running):
    """Full screen and back in a row."""
    sizes = []
    for _ in range(ROUNDS):
        toggle(running, "alt+Return")
        sizes.append(running.resident_kilobytes())
    grown = max(sizes[-3:]) - max(sizes[:SETTLED])
    assert not IS_MEASURED or grown < ALLOWED_KILOBYTES, sizes


def the_mode_is_given_back_at_every_end():
    display = small_modes()
    try:
        for end in (signal.SIGTERM, signal.SIGSEGV, *([signal.SIGABRT] if LONG else [])):
            with game(display) as running:
                running.start(fullscreen=True)
                wait_until(lambda: is_fullscreen(running), "full screen")
                running.signal(end)
                code = running.wait_for_end()
                # A fault is still reported as one; a sanitizer makes an exit code of it.
                assert (code == 0) == (end == signal.SIGTERM), (end, code)
                wait_until(lambda: display.mode() == DESKTOP, f"the desktop's mode after {end}")
    finally:
        display.close()


def a_refused_mode_is_a_question():
    with game() as running:  # 640 x 480 is no mode of this display
        running.launch()
        running.answer(QUESTION, "y")
        running.answer(REFUSED, "y")
        running.wait_for_frames()
        assert running.display.geometry(running.window())[2:] == (640, 480)
        running.open_main_menu()

        # And again on the way: the game goes on in its window.
        created = running.log().count(WINDOW_READY)
        running.display.tap("alt+Return")
        running.answer(REFUSED, "y")
        wait_until(lambda: running.log().count(WINDOW_READY) > created, "the window")
        running.wait_for_page(MAIN_MENU)

        running.take_focus()
        running.display.tap("alt+Return")
        running.answer(REFUSED, "n")
        close_last_box(running)
        assert running.wait_for_end() == 0
        assert "ERROR: User chose not to run in windowed mode" in running.log()
        assert gamefiles.read_prefs(running.folder)["width"] == 640

    with game() as running:
        running.launch()
        running.answer(QUESTION, "y")
        running.answer(REFUSED, "n")
        close_last_box(running)
        assert running.wait_for_end() == 0
        assert gamefiles.read_prefs(running.folder)["width"] == 640


def close_last_box(running):
    running.display.focus(running.display.wait_for_window("ERROR"))
    running.display.tap("Return")


if __name__ == "__main__":
    main(the_picture_is_the_same_before_and_after, the_mode_is_given_back_at_every_end,
         a_refused_mode_is_a_question)
