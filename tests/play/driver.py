"""Starts the real game on a display of its own, presses real keys and looks at its picture.

Every test works in a temporary folder that has links to the assets, levels and a Data folder of its
own. Tests wait for what they want to see, never for a time.
"""

import contextlib
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import gamefiles
import pictures
from display import Display, wait_until

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = pathlib.Path(os.environ.get("NEBULORIX", ROOT / "build/release/nebulorix")).resolve()
ASSET_FOLDERS = ("Objects", "images")
TITLE = "Nebulorix v1.0.0"
QUESTION = "Start FullScreen?"
WINDOW_READY = "Window Created without any problems"
# The long form repeats what the usual run does a few times.
LONG = os.environ.get("NEBULORIX_LONG") == "1"
PICTURES = pathlib.Path(os.environ.get("PLAY_PICTURES", tempfile.gettempdir()))

# The first line of the menus is this far below the upper edge, each next one so much lower.
FIRST_LINE, LINE_HEIGHT = 160, 20
MAIN_MENU = ("Start New Game", "Options", "Quit Game")
PAUSE_MENU = ("Resume Game", "Options", "Quit Game")


class Game:
    """The running program."""

    def __init__(self, display, links=ASSET_FOLDERS, prepare=None, environment=None, **prefs):
        self.display = display
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="nebulorix-play-"))
        for name in links:
            (self.folder / name).symlink_to(ROOT / "assets" / name)
        (self.folder / "Data").mkdir()
        gamefiles.write_prefs(self.folder, **prefs)
        gamefiles.write_level(self.folder, 1, gamefiles.empty_level())
        if prepare is not None:
            prepare(self.folder)
        self.environment = dict(display.environment, **(environment or {}))
        self.process = None
        self.place = None  # where the window was when it was last looked for
        self.hold = 0.06  # seconds for which a key is held to move a highlight by one line

    # --- The program ---

    def launch(self):
        """Starts the program; its first question stands open then."""
        self.process = subprocess.Popen([str(PROGRAM)], cwd=self.folder, env=self.environment)
        return self

    def start(self, fullscreen=False):
        """Starts the program and answers its first question."""
        self.launch()
        self.answer(QUESTION, "y" if fullscreen else "n")
        self.wait_for_log(WINDOW_READY, "\n--- Initialising Level Manager ---")
        self.wait_for_frames()
        return self

    def is_running(self):
        return self.process.poll() is None

    def close(self):
        """Closes the window with Alt+F4 and returns the exit code."""
        self.take_focus()
        self.display.tap("alt+F4")
        return self.wait_for_end()

    def wait_for_end(self, seconds=20.0):
        wait_until(lambda: not self.is_running(), "the program to end", seconds)
        return self.process.returncode

    def signal(self, number):
        self.process.send_signal(number)

    def kill(self):
        if self.process is not None and self.is_running():
            self.process.send_signal(signal.SIGKILL)
            self.process.wait()

    def remove(self):
        self.kill()
        shutil.rmtree(self.folder, ignore_errors=True)

    def resident_kilobytes(self):
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        return int(re.search(r"VmRSS:\s+(\d+)", status)[1])

    # --- Its windows ---

    def answer(self, title, key):
        """Presses a letter of a message box."""
        window = self.display.wait_for_window(title)
        self.display.focus(window)

        # A box that has just come up may miss the first press.
        def gone():
            if self.display.window(title) != window:
                return True
            self.display.tap(f"alt+{key}")
            return False
        wait_until(gone, f"{title!r} to close")

    def window(self):
        return self.display.wait_for_window(TITLE)

    def take_focus(self):
        """Gives the game the keyboard. Its window may be made anew meanwhile."""
        def has_it():
            window = self.display.window(TITLE)
            return window is not None and self.display.try_focus(window)
        wait_until(has_it, "the game to take the keyboard")

    def picture(self):
        """What the window shows now; None while there is none."""
        if self.place is not None:
            shown = self.display.picture(*self.place)
            if shown.has_frame_counter():
                return shown
        # Perhaps the window is another one by now, or the window manager has moved it.
        window = self.display.window(TITLE)
        self.place = self.display.geometry(window) if window else None
        return self.display.picture(*self.place) if self.place else None

    def wait_for_picture(self, condition, what, seconds=30.0):
        """Waits until the picture is as it must be and returns that one."""
        def check():
            shown = self.picture()
            return shown if shown is not None and condition(shown) else None
        return wait_until(check, what, seconds)

    def wait_for_frames(self):
        """Waits for the first frame, which has the frame counter, and for the keyboard."""
        self.wait_for_picture(pictures.Picture.has_frame_counter, "a frame")
        self.take_focus()

    def wait_for_new_frames(self):
        """Waits until two further frames have been drawn, which the frame counter shows unless it
        stands still: then for as long as they take."""
        end = time.monotonic() + 0.2 + 4 / max(self.picture().frames_per_second(), 1)
        for _ in range(2):
            before = self.picture().counter_pixels()
            while time.monotonic() < end and (self.picture().counter_pixels() == before).all():
                time.sleep(0.004)

    # --- Its keys ---

    @contextlib.contextmanager
    def holding(self, *names):
        for name in names:
            self.display.press(name)
        try:
            yield
        finally:
            for name in names:
                self.display.release(name)

    def press_until(self, name, condition, what, seconds=30.0):
        """Holds a key until its effect is seen. The game looks at its keys once a frame, and how
        long a frame takes nobody knows."""
        with self.holding(name):
            return wait_until(condition, f"{what} while {name} is held", seconds)

    def key(self, name, hold=0.1, pause=0.1):
        """Holds a key for several frames where its effect cannot be seen."""
        with self.holding(name):
            time.sleep(hold)
        time.sleep(pause)

    # --- Its log ---

    def log(self):
        """The log so far."""
        path = self.folder / gamefiles.LOG
        return path.read_text(errors="replace") if path.exists() else ""

    def wait_for_log(self, *texts, since=0, seconds=30.0):
        """Waits until the log, from that character on, holds all texts."""
        for text in texts:
            wait_until(lambda: text in self.log()[since:], f"{text!r} in the log", seconds)

    # --- Its menus ---

    def chosen_line(self, lines, shown=None):
        """Index of the highlighted line of a page that shows these lines; None when it does not."""
        shown = shown or self.picture()
        if shown is None:
            return None
        colours = [shown.colour_of(line, shown.centred_x(len(line)),
                                   shown.height - FIRST_LINE - LINE_HEIGHT * i)
                   for i, line in enumerate(lines)]
        chosen = [i for i, colour in enumerate(colours) if colour == pictures.MENU_CHOSEN]
        complete = all(colour in (pictures.MENU_CHOSEN, pictures.MENU_LINE) for colour in colours)
        return chosen[0] if complete and len(chosen) == 1 else None

    def wait_for_page(self, lines):
        """Waits until a menu page shows these lines and returns the index of the highlighted."""
        def index():
            line = self.chosen_line(lines)
            return None if line is None else (line,)
        return wait_until(index, f"the page of {lines[0]!r}")[0]

    def highlight(self, lines, wanted):
        """Moves the highlight of a page to that line."""
        target = lines.index(wanted)
        for _ in range(30):
            at = self.wait_for_page(lines)
            if at == target:
                return
            # A held key goes on line after line and is looked at again as soon as the next line is
            # drawn, so it is let go one line early: in the pause that the menu makes after each.
            with self.holding("Down" if at < target else "Up"):
                if abs(target - at) > 1:
                    wait_until(lambda: self.is_near(lines, target), f"the highlight near {wanted!r}")
                time.sleep(self.hold)
            before, at = at, self.moved_line(lines, target)
            if at == target:
                # The frame that shows it may have seen the key still held, and the next moves on.
                self.wait_for_new_frames()
                at = self.wait_for_page(lines)
            # How long a press is right depends on the machine: a short one falls between two frames,
            # a long one counts twice.
            if at == before:
                self.hold = min(self.hold * 1.3, 0.5)
            elif at != target:
                self.hold = max(self.hold / 1.3, 0.02)
        raise AssertionError(f"the highlight does not stay on {wanted!r}")

    def is_near(self, lines, target):
        line = self.chosen_line(lines)
        return line is not None and abs(target - line) <= 1

    def moved_line(self, lines, target):
        """The highlighted line once it is the wanted one, or has not become it for a while."""
        end = time.monotonic() + 0.6
        line = None
        while time.monotonic() < end and line != target:
            time.sleep(0.01)
            line = self.wait_for_page(lines)
        return line

    def choose(self, lines, wanted, effect, what="its effect"):
        """Chooses a line of a page and holds the key until `effect()` is seen."""
        self.highlight(lines, wanted)
        return self.press_until("Return", effect, f"{wanted!r}: {what}")

    def open_page(self, lines, wanted, next_lines):
        """Chooses a line that leads to another page."""
        self.choose(lines, wanted, lambda: self.chosen_line(next_lines) is not None,
                    f"the page of {next_lines[0]!r}")

    def open_main_menu(self):
        self.press_until("Escape", lambda: self.chosen_line(MAIN_MENU) is not None, "the main menu")

    def start_playing(self):
        """From the title into a new game."""
        self.open_main_menu()
        self.choose(MAIN_MENU, "Start New Game", self.is_playing, "the game")

    def is_playing(self):
        """Whether the status line with score and money is shown, and no menu."""
        shown = self.picture()
        return (shown is not None and self.status_text(shown, 0.8).startswith("$") and
                not shown.has_centred("-= Nebulorix v1.0.0 =-", 80))

    @staticmethod
    def status_text(shown, place, colour=pictures.STATUS):
        """A number of the status line, which begins at that share of the width."""
        return shown.read(int(shown.width * place), int(shown.height * 0.92), 9, colour)

    def score(self, shown=None):
        """The score on the status line, or None while it is not shown."""
        shown = shown or self.picture()
        text = self.status_text(shown, 0.6) if shown is not None else ""
        return int(text) if text.isdigit() else None


_display = None


def shared_display():
    """The display that the tests of a file use one after another."""
    global _display
    if _display is None:
        _display = Display()
    return _display


@contextlib.contextmanager
def game(display=None, **arguments):
    """A game that is gone afterwards, whatever happened. A failed test leaves its picture."""
    display = display or shared_display()
    running = Game(display, **arguments)
    try:
        yield running
    except BaseException:
        path = PICTURES / f"failed-{pathlib.Path(sys.argv[0]).stem}.png"
        with contextlib.suppress(Exception):
            display.picture().save(path)
            print("the display when it failed:", path)
        print(running.log()[-3000:])
        raise
    finally:
        running.remove()


def main(*tests):
    """Runs the tests named on the command line, or all of them."""
    wanted = sys.argv[1:]
    try:
        for test in tests:
            if not wanted or test.__name__ in wanted:
                start = time.monotonic()
                test()
                print(f"{test.__name__}: ok ({time.monotonic() - start:.1f} s)", flush=True)
    finally:
        if _display is not None:
            _display.close()
