"""Reads the game's picture: its text, its bright things and what lies where.

Text is drawn with one bitmap font at known places, so it is compared dot by dot with the glyphs of
the same font. Places are counted as in the game: pixels from the lower left corner.
"""

import functools
import subprocess

import numpy
from PIL import Image, ImageDraw, ImageFont

ADVANCE = 14  # pixels from character to character
ABOVE, BELOW = 16, 4  # rows of a line above and from its base line downwards, of 20 in all
FEET = 4  # rows at the top of a line that the letters of the line above may reach into
COLOUR_SLACK = 12  # of 255, for each of red, green and blue
CHARACTERS = [chr(code) for code in range(32, 127)]

MENU_LINE = (0, 255, 0)
MENU_CHOSEN = (255, 255, 0)
MENU_HEADING = (255, 0, 0)
STATUS = (51, 204, 51)
PROMPT = (153, 0, 255)
PINK = (255, 204, 255)
WHITE = (255, 255, 255)


@functools.cache
def font():
    path = subprocess.run(["fc-match", "-f", "%{file}", "Courier New:bold:spacing=mono"],
                          check=True, text=True, capture_output=True).stdout
    return ImageFont.truetype(path, 24, layout_engine=ImageFont.Layout.BASIC)


@functools.cache
def glyph(character):
    """The dots of a character as an array of bool."""
    cell = Image.new("1", (ADVANCE, ABOVE + BELOW))
    ImageDraw.Draw(cell).text((0, ABOVE), character, fill=1, font=font(), anchor="ls")
    return numpy.array(cell, dtype=bool)


@functools.cache
def mask(text):
    return numpy.hstack([glyph(character) for character in text])


@functools.cache
def all_glyphs():
    return numpy.array([glyph(character) for character in CHARACTERS])


class Picture:
    """What the game's window shows."""

    def __init__(self, pixels):
        self.pixels = pixels.astype(numpy.int16)
        self.height, self.width = self.pixels.shape[:2]

    def save(self, path):
        Image.fromarray(self.pixels.astype(numpy.uint8)).save(path)

    def area(self, x, y, length):
        """The pixels of so many characters from (x, y) on; None where they leave the picture."""
        x = max(x, 0)
        top = self.height - y - ABOVE
        right = x + length * ADVANCE
        if top < 0 or top + ABOVE + BELOW > self.height or right > self.width:
            return None
        return self.pixels[top:top + ABOVE + BELOW, x:right]

    def colour_of(self, text, x, y):
        """The colour in which that text stands at (x, y), or None when it does not."""
        pixels = self.area(x, y, len(text))
        dots = mask(text)
        if pixels is None or not dots.any():
            return None
        colour = numpy.median(pixels[dots], axis=0)
        lit = (abs(pixels - colour) <= COLOUR_SLACK).all(axis=2)
        # Each character has its dots and no others, so that a line that differs in one is another
        # line. Above and below there may be letters of the neighbouring lines.
        cells = (len(dots), -1, ADVANCE)
        missing = (dots & ~lit).reshape(cells)[:ABOVE].sum(axis=(0, 2))
        added = (lit & ~dots).reshape(cells)[FEET:ABOVE].sum(axis=(0, 2))
        if max(missing.max(), added.max()) <= 2:
            return tuple(int(part) for part in colour)
        return None

    def has_text(self, text, x, y, colour=None):
        found = self.colour_of(text, x, y)
        return found is not None and (
            colour is None or all(abs(a - b) <= COLOUR_SLACK for a, b in zip(found, colour)))

    def centred_x(self, length):
        """Where a centred line of so many characters begins."""
        return self.width // 2 - length * ADVANCE // 2

    def has_centred(self, text, from_top, colour=None):
        """Whether the centred text stands so many pixels below the upper edge."""
        return self.has_text(text, self.centred_x(len(text)), self.height - from_top, colour)

    def colour_of_centred(self, text, from_top):
        return self.colour_of(text, (self.width - len(text) * ADVANCE) // 2, self.height - from_top)

    def lit_row(self, y, colour):
        """Where the row of text on that base line has the colour; None stands for any value."""
        top = self.height - y - ABOVE
        row = self.pixels[top:top + ABOVE + BELOW]
        parts = [abs(row[:, :, i] - value) <= COLOUR_SLACK
                 for i, value in enumerate(colour) if value is not None]
        return numpy.logical_and.reduce(parts)

    def finds_text(self, text, y, colour):
        """Whether the text stands anywhere on that base line."""
        dots = mask(text)
        lit = self.lit_row(y, colour)
        if lit.shape[1] < dots.shape[1]:
            return False
        windows = numpy.lib.stride_tricks.sliding_window_view(lit, dots.shape)[0]
        return bool(((windows != dots).mean(axis=(1, 2)) < 0.02).any())

    def read_centred(self, from_top, colour):
        """The centred line of text in that colour, found by where its dots begin."""
        columns = self.lit_row(self.height - from_top, colour).any(axis=0).nonzero()[0]
        if not columns.size:
            return ""
        # A line of so many characters has only one place where it can begin.
        best = ""
        for length in range(1, self.width // ADVANCE + 1):
            x = self.centred_x(length)
            if x <= columns[0] and x + length * ADVANCE > columns[-1]:
                text = self.read(x, self.height - from_top, length, colour)
                if self.has_text(text.ljust(length), x, self.height - from_top, colour):
                    best = text
                    break
        return best

    def read(self, x, y, length, colour):
        """Up to so many characters from (x, y) on in that colour; blanks at the end are dropped."""
        pixels = self.area(x, y, min(length, (self.width - max(x, 0)) // ADVANCE))
        if pixels is None:
            return ""
        lit = (abs(pixels - numpy.array(colour)) <= COLOUR_SLACK).all(axis=2)
        cells = lit.reshape(lit.shape[0], -1, ADVANCE).swapaxes(0, 1)
        differences = (cells[:, None] != all_glyphs()[None]).sum(axis=(2, 3))
        return "".join(CHARACTERS[i] for i in differences.argmin(axis=1)).rstrip()

    def has_frame_counter(self):
        return self.has_text("FPS:", 10, self.height // 2 - 10, WHITE)

    def frames_per_second(self):
        """The number on the counter."""
        text = self.read(10, self.height // 2 - 10, 12, WHITE)
        return float(text.removeprefix("FPS: ").split(" ")[0])

    def counter_pixels(self):
        return self.area(10, self.height // 2 - 10, 12)

    def bright_in(self, left, top, right, bottom, threshold=60):
        """How many pixels of a rectangle, counted from the upper left corner, are brighter than
        empty space."""
        part = self.pixels[max(top, 0):max(bottom, 0), max(left, 0):max(right, 0)]
        return int((part > threshold).any(axis=2).sum())

    def share_of_bright(self):
        """How much of the picture is brighter than empty space, 0 to 1."""
        return self.bright_in(0, 0, self.width, self.height) / (self.width * self.height)


def on_screen(width, height, across, up, distance=50.0):
    """Where a point of the play field appears, in pixels from the upper left corner: `across` and
    `up` are world units from the middle of the picture, at that distance from the eye."""
    scale = height / 2 / (distance * 0.57735)
    return round(width / 2 + across * scale), round(height / 2 - up * scale)
