"""The four nebulae far below the field, each one picture on one quad.

The game looks at them straight down from 75 units, so the quad lies in the
X-Z plane. Each is painted in three layers, laid over one another here: a
software renderer pays for every pixel of every quad, and layers a unit and
a half apart look no deeper from there than one.
"""
import os
import sys

import numpy as np

sys.path.insert(0, os.path.join(os.path.dirname(__file__), '..', 'lib'))
import noise  # noqa: E402
import paint  # noqa: E402
import tga  # noqa: E402
from aob import Material, Texture, write_aob  # noqa: E402

SIZE = 256
STRENGTH = (0.64, 0.58, 0.72)   # a background must not outshine the ships


def _grid():
    y, x = np.mgrid[0:SIZE, 0:SIZE].astype(np.float64)
    return (x + 0.5) / SIZE * 2 - 1, (y + 0.5) / SIZE * 2 - 1


def _points(x, y, z, scale):
    return np.stack([x * scale, y * scale, np.full_like(x, z)], -1)


def _warp(x, y, seed, scale, amount):
    dx = noise.fbm(_points(x, y, 0.3, scale), 4, seed)
    dy = noise.fbm(_points(x, y, 0.7, scale), 4, seed + 7)
    return x + dx * amount, y + dy * amount


def _window(x, y):
    """1 inside, 0 towards the border of the picture."""
    edge = np.maximum(np.abs(x), np.abs(y))
    r = np.sqrt(x * x + y * y)
    return paint.smooth(0.985, 0.70, r) * paint.smooth(0.985, 0.9, edge)


def _layer(colours, density, x, y, strength=1.0):
    alpha = np.clip(density * strength, 0, 0.94) * _window(x, y)
    return np.concatenate([np.clip(colours, 0, 1), alpha[..., None]], -1)


def _sparks(x, y, seed, number, spread=0.6, size=0.02):
    """Soft young stars inside the gas."""
    light = np.zeros_like(x)
    r = np.random.RandomState(seed).random_sample((number, 4))
    for a, b, c, d in r:
        px, py = (a - 0.5) * 2 * spread, (b - 0.5) * 2 * spread
        s = size * (0.6 + c)
        q = ((x - px) ** 2 + (y - py) ** 2) / (s * s)
        light += (0.4 + 0.6 * d) * (np.exp(-q) + 0.30 * np.exp(-q / 12))
    return light


def cloud(seed, stops, hot):
    """A billowing cloud with dark lanes across its bright heart."""
    x, y = _grid()
    wx, wy = _warp(x, y, seed, 1.4, 0.55)
    body = noise.fbm(_points(wx, wy, 0.1, 1.7), 6, seed + 1, gain=0.55)
    r = np.sqrt((wx * 0.95) ** 2 + (wy * 1.35) ** 2)
    mass = np.clip(body * 1.5 + 1.12 - 1.25 * r, 0, 1.3)
    lanes = noise.ridged(_points(wx, wy, 0.9, 2.1), 5, seed + 2)
    low = _layer(paint.ramp(mass * 0.8, stops), mass * 0.66, x, y)

    fil = noise.ridged(_points(wx * 0.9, wy * 0.9, 0.5, 2.6), 6, seed + 3)
    mid_d = np.clip(mass - 0.25, 0, 1) * fil ** 1.5 * 2.2
    mid = _layer(paint.ramp(np.clip(mid_d + mass * 0.45, 0, 1.2), stops),
                 mid_d * 0.85, x, y)

    core = np.exp(-((wx + 0.05) ** 2 * 9 + (wy - 0.02) ** 2 * 14)) \
        * (0.35 + 0.65 * fil)
    dark = paint.smooth(0.42, 0.72, lanes) * paint.smooth(0.2, 0.7, mass)
    spark = _sparks(x, y, seed + 9, 18, 0.6, 0.015)
    lit = paint.mix(paint.ramp(0.7 + core * 0.4, stops),
                    paint.blank(SIZE, SIZE, hot), np.clip(spark * 1.5, 0, 1))
    glow = core * 0.6 + spark
    top_c = paint.mix(paint.blank(SIZE, SIZE, '#090512'), lit,
                      np.clip(glow * 2.2, 0, 1))
    top = _layer(top_c, np.maximum(dark * 0.6 * (1 - core), glow * 0.85),
                 x, y)
    return low, mid, top


def shell(seed, stops, hot):
    """The torn ring of an old explosion."""
    x, y = _grid()
    wx, wy = _warp(x, y, seed, 2.2, 0.22)
    r = np.sqrt((wx * 1.08) ** 2 + wy ** 2)
    angle = np.arctan2(wy, wx)
    fil = noise.ridged(np.stack([np.cos(angle) * 1.6, np.sin(angle) * 1.6,
                                 r * 3.2], -1), 6, seed + 1)
    fine = noise.ridged(_points(wx, wy, 0.2, 4.2), 5, seed + 2)
    ragged = 0.60 + 0.10 * noise.fbm(
        np.stack([np.cos(angle), np.sin(angle), angle * 0], -1) * 1.3, 4,
        seed + 5)
    ring = np.exp(-((r - ragged) / 0.13) ** 2)
    inner = paint.smooth(0.62, 0.05, r)
    arc = 0.55 + 0.45 * np.cos(angle - 0.9)

    low_d = ring * 0.55 * (0.4 + fil) + inner * 0.34
    low = _layer(paint.ramp(low_d * 1.1, stops), low_d * 0.9, x, y)
    mid_d = np.exp(-((r - ragged + 0.02) / 0.085) ** 2) * fil ** 1.3 * 2.4 \
        + paint.smooth(0.66, 0.2, r) * fine ** 3 * 0.9
    mid = _layer(paint.ramp(mid_d * 0.8 + 0.15, stops), mid_d * 0.85, x, y)
    rim = np.exp(-((r - ragged - 0.045) / 0.03) ** 2) * arc * (0.3 + fine)
    star = np.exp(-(x * x + y * y) / 0.0012) \
        + 0.35 * np.exp(-(x * x + y * y) / 0.02)
    spark = _sparks(x, y, seed + 9, 12, 0.6, 0.014)
    glow = np.clip(star + spark, 0, 1.3)
    top_c = paint.mix(paint.ramp(rim + 0.55, stops),
                      paint.blank(SIZE, SIZE, hot), np.clip(glow * 2, 0, 1))
    top = _layer(top_c, np.clip(rim * 0.75 + glow, 0, 1), x, y)
    return low, mid, top


def whirl(seed, stops, hot):
    """A whirlpool of gas with two long arms."""
    x, y = _grid()
    wx, wy = _warp(x, y, seed, 2.0, 0.14)
    wy = wy * 1.35
    r = np.sqrt(wx * wx + wy * wy) + 1e-6
    angle = np.arctan2(wy, wx)
    phase = angle * 2 - 5.2 * np.log(r + 0.16)
    arms = (0.5 + 0.5 * np.cos(phase)) ** 2
    turned = angle - 2.6 * np.log(r + 0.16)
    q = np.stack([np.cos(turned) * r * 3, np.sin(turned) * r * 3, r * 2], -1)
    detail = noise.ridged(q, 6, seed + 1)
    puff = noise.fbm(q * 1.3, 5, seed + 2) * 0.5 + 0.5
    fall = paint.smooth(1.0, 0.1, r)

    low_d = fall * (0.25 + 0.55 * arms) * (0.55 + 0.6 * puff)
    low = _layer(paint.ramp(low_d * 1.15, stops), low_d * 0.75, x, y)
    mid_d = fall * arms ** 1.6 * detail ** 1.2 * 2.3
    mid = _layer(paint.ramp(mid_d * 0.75 + 0.2, stops), mid_d * 0.8, x, y)
    core = np.exp(-r * r / 0.02) + 0.55 * np.exp(-r * r / 0.09)
    lanes = paint.smooth(0.45, 0.8, detail) * (1 - arms) * fall
    spark = _sparks(x, y, seed + 9, 22, 0.6, 0.013)
    glow = np.clip(core + spark, 0, 1.3)
    top_c = paint.mix(paint.blank(SIZE, SIZE, '#03120f'),
                      paint.blank(SIZE, SIZE, hot), np.clip(glow * 1.7, 0, 1))
    top = _layer(top_c, np.maximum(glow * 0.85, lanes * 0.3), x, y)
    return low, mid, top


def butterfly(seed, stops, hot):
    """Two wings blown out of a dying star."""
    x, y = _grid()
    c, s = np.cos(0.5), np.sin(0.5)
    rx, ry = x * c + y * s, -x * s + y * c
    wx, wy = _warp(rx, ry, seed, 1.9, 0.20)
    along = np.abs(wx)
    width = 0.09 + 0.62 * along ** 0.8 * paint.smooth(1.05, 0.45, along) \
        + 0.1 * along
    across = np.abs(wy) / width
    lobe = paint.smooth(1.15, 0.55, across) * paint.smooth(0.98, 0.55, along)
    wall = np.exp(-((across - 0.82) / 0.20) ** 2) \
        * paint.smooth(0.98, 0.6, along)
    q = np.stack([np.sign(wx) * along * 1.6, wy / (0.3 + along) * 1.7,
                  along * 0.8], -1)
    fil = noise.ridged(q * 1.6, 6, seed + 1)
    puff = noise.fbm(q * 1.9, 5, seed + 2) * 0.5 + 0.5

    low_d = lobe * (0.30 + 0.5 * puff) + wall * 0.3
    low = _layer(paint.ramp(low_d * 1.1, stops), low_d * 0.78, x, y)
    mid_d = (wall * 0.9 + lobe * 0.45) * fil ** 1.4 * 2.1
    mid = _layer(paint.ramp(mid_d * 0.8 + 0.18, stops), mid_d * 0.85, x, y)
    r2 = rx * rx + ry * ry
    core = np.exp(-r2 / 0.004) + 0.5 * np.exp(-r2 / 0.03)
    waist = np.exp(-(rx / 0.035) ** 2 - (ry / 0.28) ** 2) * 0.7
    spark = _sparks(x, y, seed + 9, 14, 0.55, 0.014)
    glow = np.clip(core + spark, 0, 1.3)
    top_c = paint.mix(paint.blank(SIZE, SIZE, '#120405'),
                      paint.blank(SIZE, SIZE, hot), np.clip(glow * 1.8, 0, 1))
    top = _layer(top_c, np.maximum(glow * 0.9, waist * (1 - core)), x, y)
    return low, mid, top


NEBULAE = [
    ('nebula1', cloud, 11,
     [(0, '#131a55'), (0.35, '#3b3fc4'), (0.7, '#8a4fe0'), (1.0, '#e08cf0'),
      (1.3, '#ffe0ff')], '#fff4ff', 62),
    ('nebula2', shell, 23,
     [(0, '#4a0c10'), (0.3, '#b3261a'), (0.6, '#f0702a'), (0.9, '#ffc070'),
      (1.2, '#fff0d0')], '#e8f6ff', 56),
    ('nebula3', whirl, 37,
     [(0, '#04302e'), (0.3, '#0c7a6c'), (0.6, '#2cc79a'), (0.9, '#a6f5c4'),
      (1.2, '#f4ffe8')], '#fbffe6', 64),
    ('nebula4', butterfly, 41,
     [(0, '#5a1038'), (0.3, '#c02c5c'), (0.6, '#f58a4e'), (0.9, '#ffd878'),
      (1.2, '#fff8d8')], '#f4fbff', 60),
]


def lay_over(layers):
    """The layers, lowest first, as the one picture that blending them makes."""
    light = np.zeros((SIZE, SIZE, 3))
    through = np.ones((SIZE, SIZE, 1))
    for layer, strength in zip(layers, STRENGTH):
        alpha = layer[..., 3:] * strength
        light = light * (1 - alpha) + layer[..., :3] * alpha
        through = through * (1 - alpha)
    alpha = 1 - through
    return np.concatenate([light / np.maximum(alpha, 1e-6), alpha], -1)


def picture(form, seed, stops, hot):
    return lay_over(form(seed, stops, hot))


def sheet(size):
    """One quad facing +Y whose corners take the whole picture."""
    half = size / 2.0
    corners = [(-half, half), (half, half), (half, -half), (-half, -half)]
    return np.array([(x, 0.0, z) for x, z in corners])


def build(out_dir, names):
    up = np.tile((0.0, 1.0, 0.0), (4, 1))
    for name, form, seed, stops, hot, size in NEBULAE:
        if name not in names:
            continue
        file = name + '.tga'
        tga.write_tga(os.path.join(out_dir, 'images', file),
                      picture(form, seed, stops, hot))
        gas = Material(name, colour=(1, 1, 1), luminosity=1.0,
                       textures=[Texture(file, 'C')])
        write_aob(os.path.join(out_dir, 'Objects', name + '.aob'),
                  [(gas, sheet(size), up)])


if __name__ == '__main__':
    rows = []
    for name, form, seed, stops, hot, size in NEBULAE:
        whole = picture(form, seed, stops, hot)
        alpha = whole[..., 3:]
        rows.append(np.concatenate(
            [whole[..., :3], np.repeat(alpha, 3, -1),
             np.array([0, 0, 0.1]) * (1 - alpha) + whole[..., :3] * alpha], 1))
    paint.to_image(np.concatenate(rows, 0)).save(sys.argv[1])
