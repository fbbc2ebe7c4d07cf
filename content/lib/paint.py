"""Painting of textures: flat pictures of floats, H x W x 3, values 0..1."""
import numpy as np
from PIL import Image, ImageDraw

import noise


def colour(text):
    """'#rrggbb' as three floats."""
    text = text.lstrip('#')
    return tuple(int(text[i:i + 2], 16) / 255.0 for i in (0, 2, 4))


def smooth(low, high, value):
    """0 below low, 1 above high, smooth between."""
    t = np.clip((np.asarray(value, np.float64) - low) / (high - low), 0, 1)
    return t * t * (3 - 2 * t)


def mix(a, b, t):
    """Blend two colours or pictures by t (a picture of one channel)."""
    t = np.asarray(t, np.float64)
    a = np.asarray(a, np.float64)
    b = np.asarray(b, np.float64)
    if t.ndim and (a.ndim > t.ndim or b.ndim > t.ndim
                   or a.shape == (3,) or b.shape == (3,)):
        t = t[..., None]
    return a * (1 - t) + b * t


def ramp(value, stops):
    """Colours along a ramp; stops are (position, colour)."""
    value = np.asarray(value, np.float64)
    positions = [s[0] for s in stops]
    colours = np.array([colour(s[1]) if isinstance(s[1], str) else s[1]
                        for s in stops])
    return np.stack([np.interp(value, positions, colours[:, k])
                     for k in range(colours.shape[1])], -1)


def blank(height, width, fill=(0, 0, 0)):
    if isinstance(fill, str):
        fill = colour(fill)
    return np.tile(np.asarray(fill, np.float64), (height, width, 1))


def blur(picture, radius, wrap=False):
    """Gaussian blur of one channel or a picture."""
    picture = np.asarray(picture, np.float64)
    reach = max(1, int(radius * 3))
    x = np.arange(-reach, reach + 1)
    kernel = np.exp(-0.5 * (x / float(radius)) ** 2)
    kernel /= kernel.sum()
    for axis in (0, 1):
        pad = [(0, 0)] * picture.ndim
        pad[axis] = (reach, reach)
        padded = np.pad(picture, pad, mode='wrap' if wrap else 'edge')
        out = np.zeros_like(picture)
        n = picture.shape[axis]
        for k, weight in enumerate(kernel):
            out += weight * (padded[k:k + n] if axis == 0
                             else padded[:, k:k + n])
        picture = out
    return picture


class Mask:
    """One-channel picture drawn four times too large and shrunk.

    Coordinates run from 0 to 1 over the width and over the height.
    """

    def __init__(self, height, width, over=4):
        self.height, self.width, self.over = height, width, over
        self.image = Image.new('L', (width * over, height * over), 0)
        self.draw = ImageDraw.Draw(self.image)

    def _p(self, points):
        w, h = self.image.size
        return [(x * w, y * h) for x, y in points]

    def rect(self, x0, y0, x1, y1, value=1.0):
        (a, b), (c, d) = self._p([(x0, y0), (x1, y1)])
        self.draw.rectangle([a, b, c - 1, d - 1], fill=int(value * 255))
        return self

    def rounded(self, x0, y0, x1, y1, radius, value=1.0):
        (a, b), (c, d) = self._p([(x0, y0), (x1, y1)])
        self.draw.rounded_rectangle([a, b, c - 1, d - 1],
                                    radius * self.image.size[0],
                                    fill=int(value * 255))
        return self

    def polygon(self, points, value=1.0):
        self.draw.polygon(self._p(points), fill=int(value * 255))
        return self

    def disc(self, x, y, radius, value=1.0, radius_y=None):
        w, h = self.image.size
        rx = radius * w
        ry = (radius_y * h) if radius_y else rx
        self.draw.ellipse([x * w - rx, y * h - ry, x * w + rx, y * h + ry],
                          fill=int(value * 255))
        return self

    def line(self, points, width, value=1.0):
        self.draw.line(self._p(points), fill=int(value * 255),
                       width=max(1, int(width * self.image.size[0])),
                       joint='curve')
        return self

    def array(self):
        small = self.image.resize((self.width, self.height), Image.BOX)
        return np.asarray(small, np.float64) / 255.0


def paste(picture, fill, mask):
    """Lay a colour or picture over a picture where the mask is set."""
    if isinstance(fill, str):
        fill = colour(fill)
    return mix(picture, np.asarray(fill, np.float64), mask)


def glow(picture, fill, mask, radius, strength=1.0):
    """Add light of a colour around a mask."""
    if isinstance(fill, str):
        fill = colour(fill)
    return picture + (blur(mask, radius) * strength)[..., None] * \
        np.asarray(fill)


def occlusion(picture, height_map, radius=6, strength=1.0, wrap=False):
    """Darken what lies lower than its surroundings."""
    sunk = np.clip(blur(height_map, radius, wrap) - height_map, 0, 1)
    return picture * (1 - np.clip(sunk * strength, 0, 0.85))[..., None]


def relief(picture, height_map, strength=1.0, wrap=False):
    """Light a height map from the upper left and shade a picture by it."""
    if wrap:
        dx = np.roll(height_map, -1, 1) - np.roll(height_map, 1, 1)
        dy = np.roll(height_map, -1, 0) - np.roll(height_map, 1, 0)
    else:
        dy, dx = np.gradient(height_map)
    shade = (dx + dy) * strength
    return picture * np.clip(1 + shade, 0.3, 1.8)[..., None]


def panels(height, width, lines, seam=0.006, base=1.0, seed=0, spread=0.08):
    """Plates with dark seams: lines is a list of rectangles in 0..1.

    Returns the tone of every pixel (about 1) and the mask of the seams.
    """
    tone = np.full((height, width), base)
    seams = Mask(height, width)
    for k, (x0, y0, x1, y1) in enumerate(lines):
        a, b = int(round(x0 * width)), int(round(x1 * width))
        c, d = int(round(y0 * height)), int(round(y1 * height))
        r = noise.white(1, 1, seed * 977 + k)[0, 0]
        tone[c:d, a:b] = base + (r - 0.5) * 2 * spread
        seams.line([(x0, y0), (x1, y0), (x1, y1), (x0, y1), (x0, y0)], seam)
    return tone, seams.array()


def wear(height, width, seed=0, scale=6, amount=0.12, wrap=True):
    """Uneven tone of used metal, about 1."""
    n = noise.fbm(noise.plane(height, width, scale), 4, seed,
                  period=scale if wrap else None)
    return 1 + n * amount


def dilate(picture, known, steps=16):
    """Spread known pixels outwards into the unknown ones."""
    picture = np.array(picture, np.float64)
    known = np.array(known, bool)
    for _ in range(steps):
        if known.all():
            break
        total = np.zeros_like(picture)
        count = np.zeros(known.shape)
        for dy in (-1, 0, 1):
            for dx in (-1, 0, 1):
                p = np.roll(np.roll(picture, dy, 0), dx, 1)
                m = np.roll(np.roll(known, dy, 0), dx, 1).astype(float)
                total += p * (m[..., None] if picture.ndim == 3 else m)
                count += m
        fresh = ~known & (count > 0)
        if picture.ndim == 3:
            picture[fresh] = total[fresh] / count[fresh][..., None]
        else:
            picture[fresh] = total[fresh] / count[fresh]
        known |= fresh
    return picture


def tone_map(picture, exposure=1.0):
    """Bring bright light softly into 0..1."""
    return 1 - np.exp(-np.clip(picture, 0, None) * exposure)


def downscale(picture, height, width):
    """Average a picture down to a size that divides its own."""
    picture = np.asarray(picture, np.float64)
    fy, fx = picture.shape[0] // height, picture.shape[1] // width
    return picture.reshape((height, fy, width, fx) + picture.shape[2:]) \
        .mean((1, 3))


def to_image(picture):
    array = np.clip(np.rint(np.asarray(picture) * 255), 0, 255)
    return Image.fromarray(array.astype(np.uint8))


# --- Lettering -------------------------------------------------------------
# An alphabet of strokes on a grid 4 wide and 6 high, y downwards.

STROKES = {
    '0': [[(1, 0), (3, 0), (4, 1), (4, 5), (3, 6), (1, 6), (0, 5), (0, 1),
           (1, 0)]],
    '1': [[(1, 1), (2, 0), (2, 6)], [(1, 6), (3, 6)]],
    '2': [[(0, 1), (1, 0), (3, 0), (4, 1), (4, 2), (0, 6), (4, 6)]],
    '3': [[(0, 0), (4, 0), (2, 2.5), (3, 2.5), (4, 3.5), (4, 5), (3, 6),
           (1, 6), (0, 5)]],
    '4': [[(3, 6), (3, 0), (0, 4), (4, 4)]],
    '5': [[(4, 0), (0, 0), (0, 2.5), (3, 2.5), (4, 3.5), (4, 5), (3, 6),
           (0, 6)]],
    '6': [[(4, 0), (1, 0), (0, 1), (0, 5), (1, 6), (3, 6), (4, 5), (4, 4),
           (3, 3), (0, 3)]],
    '7': [[(0, 0), (4, 0), (1.5, 6)]],
    '8': [[(1, 0), (3, 0), (4, 1), (4, 2), (3, 3), (4, 4), (4, 5), (3, 6),
           (1, 6), (0, 5), (0, 4), (1, 3), (0, 2), (0, 1), (1, 0)],
          [(1, 3), (3, 3)]],
    '9': [[(4, 3), (1, 3), (0, 2), (0, 1), (1, 0), (3, 0), (4, 1), (4, 5),
           (3, 6), (0, 6)]],
    'A': [[(0, 6), (0, 1.5), (1.5, 0), (2.5, 0), (4, 1.5), (4, 6)],
          [(0, 3.5), (4, 3.5)]],
    'B': [[(0, 0), (3, 0), (4, 1), (4, 2), (3, 3), (4, 4), (4, 5), (3, 6),
           (0, 6), (0, 0)], [(0, 3), (3, 3)]],
    'E': [[(4, 0), (0, 0), (0, 6), (4, 6)], [(0, 3), (3, 3)]],
    'F': [[(4, 0), (0, 0), (0, 6)], [(0, 3), (3, 3)]],
    'H': [[(0, 0), (0, 6)], [(4, 0), (4, 6)], [(0, 3), (4, 3)]],
    'I': [[(2, 0), (2, 6)]],
    'K': [[(0, 0), (0, 6)], [(4, 0), (0, 3.5)], [(1.3, 2.4), (4, 6)]],
    'L': [[(0, 0), (0, 6), (4, 6)]],
    'N': [[(0, 6), (0, 0), (4, 6), (4, 0)]],
    'O': [[(1, 0), (3, 0), (4, 1), (4, 5), (3, 6), (1, 6), (0, 5), (0, 1),
           (1, 0)]],
    'P': [[(0, 6), (0, 0), (3, 0), (4, 1), (4, 2.5), (3, 3.5), (0, 3.5)]],
    'R': [[(0, 6), (0, 0), (3, 0), (4, 1), (4, 2.2), (3, 3.2), (0, 3.2)],
          [(2, 3.2), (4, 6)]],
    'S': [[(4, 0), (1, 0), (0, 1), (0, 2), (1, 3), (3, 3), (4, 4), (4, 5),
           (3, 6), (0, 6)]],
    'T': [[(0, 0), (4, 0)], [(2, 0), (2, 6)]],
    'U': [[(0, 0), (0, 5), (1, 6), (3, 6), (4, 5), (4, 0)]],
    'V': [[(0, 0), (2, 6), (4, 0)]],
    'X': [[(0, 0), (4, 6)], [(4, 0), (0, 6)]],
    'Y': [[(0, 0), (2, 3), (4, 0)], [(2, 3), (2, 6)]],
    '-': [[(0.5, 3), (3.5, 3)]],
    '+': [[(0, 3), (4, 3)], [(2, 1), (2, 5)]],
    ' ': [],
}


def write(mask, text, x, y, height, weight=0.16, spacing=0.35, aspect=None,
          centre=False):
    """Draw text into a Mask; x, y is the upper left corner, 0..1.

    Height is that of the letters, weight the width of a stroke as a share
    of the height.
    """
    w, h = mask.image.size
    unit_y = height / 6.0
    unit_x = unit_y * h / w * (aspect or 1.0)
    advance = unit_x * (4 + spacing * 6)
    if centre:
        x -= (advance * len(text) - unit_x * spacing * 6) / 2
    for letter in text:
        for stroke in STROKES[letter]:
            points = [(x + px * unit_x, y + py * unit_y) for px, py in stroke]
            mask.line(points, weight * height * h / w)
            r = weight * height * h / w / 2
            for px, py in points:
                mask.disc(px, py, r * 0.98)
        x += advance
    return mask


def unsharp(picture, radius=1.0, amount=0.6):
    return np.clip(picture + (picture - blur(picture, radius)) * amount, 0, 1)
