"""A virtual display with a window manager, real keys on it and its picture."""

import contextlib
import os
import pathlib
import struct
import subprocess
import tempfile
import time

import numpy
from Xlib import XK, X, display as xdisplay, error
from Xlib.ext import xtest

import pictures

# How many times longer than usual to wait before giving up: sanitizer builds are slow.
PATIENCE = float(os.environ.get("PLAY_PATIENCE", "1"))

MODIFIERS = {"alt": "Alt_L", "ctrl": "Control_L", "shift": "Shift_L"}


def wait_until(condition, what, seconds=30.0):
    """Polls until `condition()` is true and returns its value; fails with `what` after a while."""
    end = time.monotonic() + seconds * PATIENCE
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain for {what() if callable(what) else what}")
        time.sleep(0.02)


class Display:
    """Xvfb with openbox. Its memory is a file, in which every pixel can be looked up at once and
    without asking anybody. Windows are known by their ids."""

    def __init__(self, size="1600x1200"):
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
        name = f":{number}"
        self.environment = dict(os.environ, DISPLAY=name, SDL_AUDIODRIVER="dummy",
                                GDK_BACKEND="x11", NO_AT_BRIDGE="1", LIBGL_ALWAYS_SOFTWARE="1",
                                DBUS_SESSION_BUS_ADDRESS="disabled:")
        for variable in ("WAYLAND_DISPLAY", "XDG_SESSION_TYPE"):
            self.environment.pop(variable, None)
        self.connection = xdisplay.Display(name)
        self.connection.set_error_handler(lambda *_: None)  # a window may vanish at any time
        self.root = self.connection.screen().root
        # A key that a test holds while it waits must not type by itself.
        self.connection.change_keyboard_control(auto_repeat_mode=X.AutoRepeatModeOff)
        self.processes = []
        self.spawn("openbox", "--sm-disable")
        wait_until(lambda: self.property(self.root, "_NET_SUPPORTING_WM_CHECK") is not None,
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
        self.connection.close()
        for process in [*reversed(self.processes), self.server]:
            process.terminate()
            process.wait()
        self.memory.cleanup()

    def picture(self, x=0, y=0, width=None, height=None):
        """The screen or a part of it; what lies outside is black."""
        width = width or self.pixels.shape[1]
        height = height or self.pixels.shape[0]
        shown = numpy.zeros((height, width, 3), dtype=numpy.uint8)
        part = self.pixels[max(y, 0):max(y + height, 0), max(x, 0):max(x + width, 0), 2::-1]
        top, left = max(-y, 0), max(-x, 0)
        shown[top:top + part.shape[0], left:left + part.shape[1]] = part
        return pictures.Picture(shown)

    # --- Its windows and its mode ---

    def object(self, window):
        return self.connection.create_resource_object("window", window)

    def property(self, window, name):
        """A property of a window object as the X server has it; None when there is none."""
        with contextlib.suppress(error.XError):
            found = window.get_full_property(self.connection.intern_atom(name), X.AnyPropertyType)
            return found.value if found is not None else None
        return None

    def windows(self, title):
        """Ids of all visible windows with that title, managed or not."""
        found = []

        def search(window):
            with contextlib.suppress(error.XError):
                named = (self.property(window, "_NET_WM_NAME") or
                         self.property(window, "WM_NAME") or b"")
                if isinstance(named, str):
                    named = named.encode()
                if named == title.encode() and window.get_attributes().map_state == X.IsViewable:
                    found.append(window.id)
                for child in window.query_tree().children:
                    search(child)
        search(self.root)
        return found

    def window(self, title):
        """Id of the visible window with that title, or None."""
        for window in self.property(self.root, "_NET_CLIENT_LIST") or ():
            managed = self.object(window)
            with contextlib.suppress(error.XError):
                if (self.property(managed, "_NET_WM_NAME") == title.encode() and
                        managed.get_attributes().map_state == X.IsViewable):
                    return window
        return None

    def wait_for_window(self, title, seconds=30.0):
        return wait_until(lambda: self.window(title), f"the window {title!r}", seconds)

    def try_focus(self, window):
        """Gives a window the keyboard, as a click on it does; whether it has it already."""
        focus = self.connection.get_input_focus().focus
        if getattr(focus, "id", focus) == window:
            return True
        with contextlib.suppress(error.XError):
            self.object(window).set_input_focus(X.RevertToParent, X.CurrentTime)
            self.connection.sync()
        return False

    def focus(self, window):
        wait_until(lambda: self.try_focus(window), f"window {window} to take the keyboard")

    def geometry(self, window):
        """x, y, width and height of a window's inside on the screen; None when it is gone."""
        with contextlib.suppress(error.XError):
            size = self.object(window).get_geometry()
            place = self.root.translate_coords(self.object(window), 0, 0)
            return place.x, place.y, size.width, size.height
        return None

    def mode(self):
        """Width and height of the display's mode."""
        size = self.root.get_geometry()
        return size.width, size.height

    def add_mode(self, width, height):
        """Gives the display one more full-screen mode."""
        name = f"{width}x{height}"
        timing = [width, width + 16, width + 112, width + 160, height, height + 10, height + 12,
                  height + 45]
        rate = timing[3] * timing[7] * 60 / 1e6
        for command in (["--newmode", name, f"{rate:.2f}", *map(str, timing)],
                        ["--addmode", "screen", name]):
            subprocess.run(["xrandr", *command], env=self.environment, check=True)

    # --- Its keys and its pointer ---

    def press(self, name):
        self.fake(X.KeyPress, self.keycode(name)[0])

    def release(self, name):
        self.fake(X.KeyRelease, self.keycode(name)[0])

    def fake(self, event, detail=0, **arguments):
        xtest.fake_input(self.connection, event, detail, **arguments)
        self.connection.sync()

    def keycode(self, name):
        """Code of a key, and whether its name is that of what it types with Shift."""
        keysym = XK.string_to_keysym(name) or ord(name)
        code, level = min(self.connection.keysym_to_keycodes(keysym), key=lambda pair: pair[1])
        return code, level == 1

    def tap(self, *keys):
        """Presses keys of dialogs, which see every press however short, such as "ctrl+a". The game's
        own keys are polled once a frame: Game.key and Game.press_until are for those."""
        for key in keys:
            *modifiers, name = key.split("+") if len(key) > 1 else [key]
            if self.keycode(name)[1]:
                modifiers.append("shift")
            held = [MODIFIERS[modifier] for modifier in modifiers] + [name]
            for part in held:
                self.press(part)
            time.sleep(0.01)
            for part in reversed(held):
                self.release(part)
            time.sleep(0.01)

    def type(self, text):
        self.tap(*text)

    def click(self, x, y, button=1):
        self.fake(X.MotionNotify, x=x, y=y)
        time.sleep(0.2)  # a menu takes no click in the moment in which it opens or is entered
        self.fake(X.ButtonPress, button)
        time.sleep(0.08)  # as long as a finger stays
        self.fake(X.ButtonRelease, button)
