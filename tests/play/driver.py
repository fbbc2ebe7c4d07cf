"""Starts the real game on a display of its own, presses real keys and looks at its picture.

Every test works in a temporary folder that has links to the assets and a Data folder of its own.
"""

import contextlib
import io
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

from PIL import Image

ROOT = pathlib.Path(__file__).resolve().parents[2]
ASSET_FOLDERS = ("Objects", "images", "levels", "Music")
TITLE = "Nebulorix v1.0.0"
# Sanitizer builds and busy machines are slower than players' machines.
PATIENCE = float(os.environ.get("PLAY_PATIENCE", "1"))


def wait_until(condition, what, seconds=20.0):
    """Polls until `condition()` is true and returns its value; fails with `what` after a while."""
    end = time.monotonic() + seconds * PATIENCE
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.05)
    raise AssertionError(f"waited in vain for {what}")


class Display:
    """A virtual display with a window manager."""

    def __init__(self, size="1600x1200"):
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", f"{size}x24", "-noreset",
             "-nolisten", "tcp"],
            pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            number = pipe.readline().strip()
        assert number, "Xvfb did not start"
        self.name = f":{number}"
        self.environment = dict(os.environ, DISPLAY=self.name, SDL_AUDIODRIVER="dummy",
                                GDK_BACKEND="x11", NO_AT_BRIDGE="1", LIBGL_ALWAYS_SOFTWARE="1")
        self.environment.pop("WAYLAND_DISPLAY", None)
        self.manager = subprocess.Popen(["openbox", "--sm-disable"], env=self.environment,
                                        stderr=subprocess.DEVNULL)

    def close(self):
        for process in (self.manager, self.server):
            process.terminate()
            process.wait()

    def run(self, *command, check=True):
        return subprocess.run(command, env=self.environment, check=check, text=True,
                              capture_output=True).stdout

    def screenshot(self):
        data = subprocess.run(["import", "-window", "root", "png:-"], env=self.environment,
                              check=True, capture_output=True).stdout
        return Image.open(io.BytesIO(data)).convert("RGB")

    def window(self, title):
        """Id of the visible window with that title, or None."""
        found = self.run("xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(title)}$", check=False)
        return found.split()[-1] if found.split() else None

    def wait_for_window(self, title, seconds=20.0):
        return wait_until(lambda: self.window(title), f"the window {title!r}", seconds)


class Game:
    """The running program."""

    def __init__(self, display, links=ASSET_FOLDERS, prepare=None, environment=None):
        self.display = display
        self.binary = pathlib.Path(os.environ["NEBULORIX"]).resolve()
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="nebulorix-play-"))
        for name in links:
            (self.folder / name).symlink_to(ROOT / "assets" / name)
        (self.folder / "Data").mkdir()
        if prepare is not None:
            prepare(self.folder)
        self.environment = dict(display.environment, **(environment or {}))
        self.process = None

    def start(self, fullscreen=False):
        """Starts the program and answers its first question."""
        self.process = subprocess.Popen([str(self.binary)], cwd=self.folder, env=self.environment)
        self.answer("Start FullScreen?", "y" if fullscreen else "n")
        self.display.wait_for_window(TITLE)
        wait_until(lambda: "Window Created without any problems" in self.log_now(), "the window")
        return self

    def answer(self, title, key):
        """Presses a letter of a message box."""
        window = self.display.wait_for_window(title)
        self.display.run("xdotool", "windowfocus", "--sync", window, check=False)
        time.sleep(0.2)
        self.display.run("xdotool", "key", f"alt+{key}")
        wait_until(lambda: self.display.window(title) is None, f"{title!r} to close")

    def key(self, name, hold=0.08, pause=0.15):
        """Holds a key for several frames: a shorter press could fall between two of them."""
        self.display.run("xdotool", "keydown", name)
        time.sleep(hold)
        self.display.run("xdotool", "keyup", name)
        time.sleep(pause)

    def keys(self, *names):
        for name in names:
            self.key(name)

    def log_now(self):
        """The log so far."""
        path = self.folder / "Data" / "debug.out"
        return path.read_text(errors="replace") if path.exists() else ""

    def is_running(self):
        return self.process.poll() is None

    def screenshot(self):
        return self.display.screenshot()

    def close(self):
        """Closes the window as a player does and returns the exit code."""
        window = self.display.window(TITLE)
        assert window, "the game has no window to close"
        self.display.run("xdotool", "windowfocus", window, check=False)
        self.display.run("xdotool", "key", "alt+F4")
        return self.wait_for_end()

    def wait_for_end(self, seconds=15.0):
        wait_until(lambda: not self.is_running(), "the program to end", seconds)
        return self.process.returncode

    def kill(self):
        if self.process is not None and self.is_running():
            self.process.send_signal(signal.SIGKILL)
            self.process.wait()

    def remove(self):
        self.kill()
        shutil.rmtree(self.folder, ignore_errors=True)


@contextlib.contextmanager
def game(**arguments):
    """A game on a fresh display; both are gone afterwards, whatever happened."""
    display = Display()
    running = Game(display, **arguments)
    try:
        yield running
    except AssertionError:
        keep = pathlib.Path(os.environ.get("PLAY_PICTURES", tempfile.gettempdir()))
        picture = keep / f"failed-{pathlib.Path(sys.argv[0]).stem}.png"
        with contextlib.suppress(Exception):
            display.screenshot().save(picture)
            print("the display when it failed:", picture)
        print(running.log_now()[-3000:])
        raise
    finally:
        running.remove()
        display.close()


def main(*tests):
    """Runs the tests named on the command line, or all of them."""
    wanted = sys.argv[1:]
    for test in tests:
        if not wanted or test.__name__ in wanted:
            start = time.monotonic()
            test()
            print(f"{test.__name__}: ok ({time.monotonic() - start:.1f} s)", flush=True)
