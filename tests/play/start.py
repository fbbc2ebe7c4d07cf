"""The program starts, asks its question, keeps its log and its preferences, and ends in good order
however it is asked to."""

import os
import shutil
import signal
import subprocess

import gamefiles
from driver import MAIN_MENU, PROGRAM, QUESTION, ROOT, game, main


def close_box(running):
    x, y, width, _ = running.display.geometry(running.window())
    running.display.click(x + width - 10, y - 10)


def quit_game(running):
    running.highlight(MAIN_MENU, "Quit Game")
    with running.holding("Return"):
        running.wait_for_end()


def terminate(running):
    running.signal(signal.SIGTERM)


def ends_in_order(running, way):
    """However it is asked to, the program saves its preferences and reports no fault."""
    (running.folder / gamefiles.PREFS).unlink(missing_ok=True)
    way(running)
    assert running.wait_for_end() == 0, way.__name__
    assert gamefiles.read_prefs(running.folder)["width"], way.__name__


def no_data_folder(folder):
    shutil.rmtree(folder / "Data")


def a_first_start_in_a_window():
    with game(prepare=no_data_folder) as running:
        running.start(fullscreen=False)
        x, y, width, height = running.display.geometry(running.window())
        assert (width, height) == (800, 600), (width, height)
        assert x < 20 and y < 60, "the window opens in the corner of the screen"
        running.wait_for_picture(lambda shown: shown.share_of_bright() > 0.02, "the logo")

        ends_in_order(running, close_box)
        log = running.log()
        assert log.startswith("File opened\n"), log[:80]
        in_order = ["--- CreateGLWindow called ---", "Fonts will start at",
                    "Maximum number of lights supported: 8", "Window Created without any problems",
                    "--- Initialising Level Manager ---", "WARNING: Cant load hiscores from file",
                    "Screensize changed to 800x600\n"]
        places = [log.find(text) for text in in_order]
        assert places == sorted(places) and places[0] > 0, list(zip(in_order, places))
        assert "ERROR" not in log, log
        assert log.endswith("\n"), "the log is whole to its last line"
        prefs = gamefiles.read_prefs(running.folder)
        assert (prefs["width"], prefs["height"], prefs["bits"]) == (800, 600, 32), prefs
        assert prefs["keys"] == b"IKJL B" and prefs["online"] == 1, prefs
        assert sorted(os.listdir(running.folder / "Data")) == ["UserPrefs.bin", "debug.out"], (
            "nothing else is left in the folder")


def a_second_start_reads_the_preferences():
    with game(width=1024, height=768, transparency=0, fog=0, keys=b"WSAD B") as running:
        running.start()
        assert running.display.geometry(running.window())[2:] == (1024, 768)
        running.open_main_menu()
        # The highlight moves with the key that the file binds, not with the built-in one.
        running.key("k")
        assert running.wait_for_page(MAIN_MENU) == 0
        running.press_until("s", lambda: running.chosen_line(MAIN_MENU) == 1, "the second line")
        ends_in_order(running, quit_game)
        prefs = gamefiles.read_prefs(running.folder)
        assert (prefs["width"], prefs["transparency"], prefs["fog"]) == (1024, 0, 0), prefs


def the_question_is_answered_yes():
    with game(width=1600, height=1200) as running:
        running.start(fullscreen=True)
        assert running.display.geometry(running.window()) == (0, 0, 1600, 1200)
        ends_in_order(running, terminate)


def a_close_while_the_question_is_open():
    with game() as running:
        running.launch()
        running.display.wait_for_window(QUESTION)
        running.signal(signal.SIGTERM)
        running.wait_for_end()


def without_a_display_one_line_says_so():
    environment = {name: value for name, value in os.environ.items()
                   if name not in ("DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER")}
    for command in ([str(PROGRAM)], [str(ROOT / "play")]):
        for display in ({}, {"DISPLAY": ":987"}):
            if display and command[0].endswith("play"):
                continue  # builds the game first
            result = subprocess.run(command, env={**environment, **display}, text=True, timeout=60,
                                    capture_output=True, cwd="/tmp")
            said = result.stdout + result.stderr
            assert result.returncode == 1, (command, display, result.returncode, said)
            assert said.count("\n") == 1 and "display" in said, (command, display, said)


if __name__ == "__main__":
    main(a_first_start_in_a_window, a_second_start_reads_the_preferences,
         the_question_is_answered_yes, a_close_while_the_question_is_open,
         without_a_display_one_line_says_so)
