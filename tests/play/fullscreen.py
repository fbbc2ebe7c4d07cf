"""Full screen and back: the picture stays, the display's mode is given back, a mode that the display
does not have is no trap, and nothing is lost however often the window is made anew."""

import signal

import gamefiles
from driver import MAIN_MENU, PAUSE_MENU, QUESTION, WINDOW_READY, Display, game, main, wait_until
from menus import options_page
from playing import same_but_frame_rate

DESKTOP = (1600, 1200)
REFUSED = "Nebulorix"  # caption of the question after a refused mode


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


def is_fullscreen(running):
    return (running.display.mode() == (640, 480) and
            running.display.geometry(running.window()) == (0, 0, 640, 480))


def the_picture_is_the_same_before_and_after():
    display = small_modes()
    try:
        with game(display) as running:
            running.start()
            running.start_playing()
            running.press_until("Escape", lambda: running.chosen_line(PAUSE_MENU) is not None, "pause")
            before = running.picture()
            stars = before.bright_in(0, 0, 640, 60)
            assert stars > 0 and before.bright_in(290, 290, 350, 350) > 100, "stars and the ship"

            for keys in (("alt+Return",), ("ctrl+Return",)):
                toggle(running, *keys)
                wait_until(lambda: is_fullscreen(running), f"full screen by {keys}")
                running.wait_for_picture(lambda shown: same_but_frame_rate(before, shown),
                                         "the same picture in full screen")
                toggle(running, *keys)
                wait_until(lambda: display.mode() == DESKTOP, "the desktop's mode")
                running.wait_for_picture(lambda shown: same_but_frame_rate(before, shown),
                                         "the same picture in a window")

            # The menu's own line; no key is left held by the change.
            running.open_page(PAUSE_MENU, "Options", options_page())
            running.choose(options_page(), "Flip Fullscreen", lambda: is_fullscreen(running),
                           "full screen")
            running.wait_for_frames()
            running.highlight(options_page(), "Go Back to Main Menu")
            running.open_page(options_page(), "Go Back to Main Menu", PAUSE_MENU)
            assert running.close() == 0
            wait_until(lambda: display.mode() == DESKTOP, "the desktop's mode after the end")
    finally:
        display.close()


def the_enter_of_ctrl_enter_chooses_nothing():
    display = small_modes()
    try:
        with game(display) as running:
            running.start()
            running.start_playing()
            running.press_until("Escape", lambda: running.chosen_line(PAUSE_MENU) is not None, "pause")
            # Held until the new window is there, as by a slow hand.
            for _ in range(3):
                created = running.log().count(WINDOW_READY)
                with running.holding("Control_L", "Return"):
                    wait_until(lambda: running.log().count(WINDOW_READY) > created, "a new window")
                    running.wait_for_frames()
                    running.key("Shift_L", hold=0.2)
                assert running.chosen_line(PAUSE_MENU) == 0, "the game goes on"
            assert running.close() == 0
    finally:
        display.close()


def the_mode_is_given_back_at_every_end():
    display = small_modes()
    try:
        for end in (signal.SIGTERM, signal.SIGSEGV, signal.SIGABRT):
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
    main(the_picture_is_the_same_before_and_after, the_enter_of_ctrl_enter_chooses_nothing,
         the_mode_is_given_back_at_every_end, a_refused_mode_is_a_question)
