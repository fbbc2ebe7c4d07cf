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
import struct
import subprocess
import sys
import tempfile
import time

import numpy

import gamefiles
import pictures

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = pathlib.Path(os.environ.get("NEBULORIX", ROOT / "build/release/nebulorix")).resolve()
ASSET_FOLDERS = ("Objects", "images")
TITLE = "Nebulorix v1.0.0"
QUESTION = "Start FullScreen?"
WINDOW_READY = "Window Created without any problems"
# How many times longer than usual to wait before giving up: sanitizer builds are slow.
PATIENCE = float(os.environ.get("PLAY_PATIENCE", "1"))
PICTURES = pathlib.Path(os.environ.get("PLAY_PICTURES", tempfile.gettempdir()))

# The first line of the menus is this far below the upper edge, each next one so much lower.
FIRST_LINE, LINE_HEIGHT = 160, 20
MAIN_MENU = ("Start New Game", "Options", "Quit Game")
PAUSE_MENU = ("Resume Game", "Options", "Quit Game")


def wait_until(condition, what, seconds=30.0):
    """Polls until `condition()` is true and returns its value; fails with `what` after a while."""
    end = time.monotonic() + seconds * PATIENCE
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain for {what() if callable(what) else what}")
        time.sleep(0.04)


class Display:
    """A virtual display with a window manager. Its memory is a file, in which every pixel can be
    looked up at once and without asking anybody."""

    def __init__(self, size="1600x1200", manager=True):
        self.memory = tempfile.TemporaryDirectory(prefix="nebulorix-display-")
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", f"{size}x24", "-noreset",
             "-nolisten", "tcp", "-fbdir", self.memory.name],
            pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            number = pipe.readline().strip()
        assert number, "Xvfb did not start"
        self.pixels = self.map_memory(pathlib.Path(self.memory.name) / "Xvfb_screen0")
        self.name = f":{number}"
        self.environment = dict(os.environ, DISPLAY=self.name, SDL_AUDIODRIVER="dummy",
                                GDK_BACKEND="x11", NO_AT_BRIDGE="1", LIBGL_ALWAYS_SOFTWARE="1",
                                DBUS_SESSION_BUS_ADDRESS="disabled:")
        for variable in ("WAYLAND_DISPLAY", "XDG_SESSION_TYPE"):
            self.environment.pop(variable, None)
        # A key that a test holds while it waits must not type by itself.
        self.run("xset", "r", "off")
        self.processes = []
        if manager:
            self.spawn("openbox", "--sm-disable")
            wait_until(lambda: "window id" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"),
                       "the window manager")

    @staticmethod
    def map_memory(file):
        """The file of an X window dump as an array of rows of blue, green, red and nothing."""
        with file.open("rb") as stream:
            header = struct.unpack(">25I", stream.read(100))
        size, height, row_bytes, colours = header[0], header[5], header[12], header[19]
        rows = numpy.memmap(file, mode="r", offset=size + 12 * colours, shape=(height, row_bytes))
        return rows.reshape(height, -1, 4)

    def spawn(self, *command):
        """Starts a program that lives as long as the display."""
        process = subprocess.Popen(command, env=self.environment, stderr=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL)
        self.processes.append(process)
        return process

    def close(self):
        for process in [*reversed(self.processes), self.server]:
            process.terminate()
            process.wait()
        self.memory.cleanup()

    def run(self, *command):
        """What a command prints, also when it fails: a window may vanish while it is asked for."""
        return subprocess.run(command, env=self.environment, check=False, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout

    def picture(self, x=0, y=0, width=None, height=None):
        """The screen or a part of it; what lies outside is black."""
        width = width or self.pixels.shape[1]
        height = height or self.pixels.shape[0]
        shown = numpy.zeros((height, width, 3), dtype=numpy.uint8)
        part = self.pixels[max(y, 0):max(y + height, 0), max(x, 0):max(x + width, 0), 2::-1]
        top, left = max(-y, 0), max(-x, 0)
        shown[top:top + part.shape[0], left:left + part.shape[1]] = part
        return pictures.Picture(shown)

    def window(self, title):
        """Id of the visible window with that title, or None."""
        found = self.run("xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(title)}$")
        return next(iter(found.split()), None)

    def wait_for_window(self, title, seconds=30.0):
        return wait_until(lambda: self.window(title), f"the window {title!r}", seconds)

    def focused(self):
        return self.run("xdotool", "getwindowfocus").strip()

    def focus(self, window):
        """Gives a window the keyboard, as a click on it does."""
        def has_it():
            if self.focused() == window:
                return True
            self.run("xdotool", "windowfocus", window)
            return False
        wait_until(has_it, f"window {window} to take the keyboard")

    def geometry(self, window):
        """x, y, width and height of a window's inside on the screen; None when it is gone."""
        text = self.run("xwininfo", "-id", window)
        values = [re.search(rf"{name}: +(-?\d+)", text) for name in
                  ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]
        return tuple(int(value[1]) for value in values) if all(values) else None

    def mode(self):
        """Width and height of the display's mode."""
        text = self.run("xrandr")
        return tuple(map(int, re.search(r"current (\d+) x (\d+)", text).groups()))

    def add_mode(self, width, height):
        """Gives the display one more full-screen mode."""
        name = f"{width}x{height}"
        timing = [width, width + 16, width + 112, width + 160, height, height + 10, height + 12,
                  height + 45]
        rate = timing[3] * timing[7] * 60 / 1e6
        self.run("xrandr", "--newmode", name, f"{rate:.2f}", *map(str, timing))
        self.run("xrandr", "--addmode", "screen", name)

    def type(self, text):
        self.run("xdotool", "type", "--delay", "20", text)

    def tap(self, *keys):
        """Presses keys of dialogs, which see every press however short. The game's own keys are
        polled once a frame: Game.key and Game.press_until are for those."""
        self.run("xdotool", "key", "--delay", "20", *keys)


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
            if window is not None and self.display.focused() == window:
                return True
            if window is not None:
                self.display.run("xdotool", "windowfocus", window)
            return False
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

    # --- Its keys ---

    @contextlib.contextmanager
    def holding(self, *names):
        self.display.run("xdotool", "keydown", *names)
        try:
            yield
        finally:
            self.display.run("xdotool", "keyup", *names)

    def press_until(self, name, condition, what, seconds=30.0):
        """Holds a key until its effect is seen. The game looks at its keys once a frame, and how
        long a frame takes nobody knows."""
        with self.holding(name):
            return wait_until(condition, f"{what} while {name} is held", seconds)

    def key(self, name, hold=0.1, pause=0.1):
        """Holds a key for several frames where its effect cannot be seen."""
        self.display.run("xdotool", "keydown", name, "sleep", str(hold), "keyup", name)
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
        at = self.wait_for_page(lines)
        for _ in range(60):
            if at == target:
                # A key that was held a little too long moves it once more after the menu's pause.
                time.sleep(0.3)
                at = self.wait_for_page(lines)
                if at == target:
                    return
            direction = "Down" if at < target else "Up"
            if abs(target - at) > 3:
                # A held key goes on line after line.
                def is_near():
                    line = self.chosen_line(lines)
                    return line is not None and abs(target - line) < 3
                self.press_until(direction, is_near, f"the highlight near {wanted!r}")
                at = self.wait_for_page(lines)
                continue
            # A short press falls between two frames, a long one counts twice: how long is right
            # depends on the machine.
            self.key(direction, self.hold, 0)
            before, at = at, self.moved_line(lines, at)
            if at == before:
                self.hold = min(self.hold * 1.3, 0.5)
            elif abs(at - before) > 1:
                self.hold = max(self.hold / 1.5, 0.02)
        raise AssertionError(f"the highlight does not stay on {wanted!r}")

    def moved_line(self, lines, before):
        """The highlighted line once it has moved, or has not moved for a while."""
        end = time.monotonic() + 0.6
        line = before
        while time.monotonic() < end and line == before:
            time.sleep(0.03)
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
