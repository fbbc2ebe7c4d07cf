"""The two logos: the program's name and the studio's.

Letters are strokes of one width with mitred corners, bevelled on both
faces, from an alphabet of this file's own. The game turns both logos once
round, so their backs are as good as their fronts.
"""
import os
import sys

import numpy as np

sys.path.insert(0, os.path.join(os.path.dirname(__file__), '..', 'lib'))
import noise  # noqa: E402
import paint  # noqa: E402
import tga  # noqa: E402
from aob import Material, Texture  # noqa: E402
from mesh import Mesh, lathe, loft  # noqa: E402

FLAT = (1.0, 0.0)       # a stroke ends in a level cut
UPRIGHT = (0.0, 1.0)    # or in an upright one


def _normal(d):
    return np.array([-d[1], d[0]])


def outline(points, half, inset, closed, cuts):
    """Left and right edges of a stroke, drawn in by inset."""
    p = np.asarray(points, np.float64)
    n = len(p)
    wide = half - inset
    left, right = [], []
    for i in range(n):
        before = p[i] - p[i - 1] if (i or closed) else None
        after = p[(i + 1) % n] - p[i] if (i < n - 1 or closed) else None
        if before is not None and after is not None:
            a = _normal(before / np.linalg.norm(before))
            b = _normal(after / np.linalg.norm(after))
            m = (a + b) / (1 + a @ b)
            left.append(p[i] + m * wide)
            right.append(p[i] - m * wide)
            continue
        along = after if before is None else before
        along = along / np.linalg.norm(along)
        nn = _normal(along)
        cut = cuts[0] if before is None else cuts[1]
        cut = nn if cut is None else np.array(cut)
        if cut @ nn < 0:
            cut = -cut
        sine = abs(along[0] * cut[1] - along[1] * cut[0])
        into = along if before is None else -along
        at = p[i] + into * inset / sine
        left.append(at + cut * wide / (cut @ nn))
        right.append(at - cut * wide / (cut @ nn))
    return np.array(left), np.array(right)


def stroke(points, width, depth, bevel, closed=False, cuts=(None, None)):
    """A solid bevelled stroke in the X-Y plane, its middle at z = 0."""
    half, h = width / 2.0, depth / 2.0
    lf, rf = outline(points, half, 0, closed, cuts)
    li, ri = outline(points, half, bevel, closed, cuts)

    def at(p, z):
        return np.concatenate([p, np.full((len(p), 1), z)], 1)
    if closed:
        sections = [at(rf, -h + bevel), at(rf, h - bevel), at(ri, h),
                    at(li, h), at(lf, h - bevel), at(lf, -h + bevel),
                    at(li, -h), at(ri, -h)]
        rings = [np.array([s[i] for s in sections])
                 for i in range(len(points))]
        return loft(rings, None, closed=True, crease=8)
    rings = []
    for left, right, z in ((li, ri, -h), (lf, rf, -h + bevel),
                           (lf, rf, h - bevel), (li, ri, h)):
        rings.append(at(np.concatenate([left, right[::-1]]), z))
    return loft(rings, None, crease=8)


def letter(name, w, h, t, c):
    """Strokes of a letter: (points, closed, cuts); t is the stroke's width,
    c the size of the cut corners. Centre lines, 0,0 at the lower left."""
    a = t / 2.0
    l, r, b, u, m = a, w - a, a, h - a, h / 2.0
    if name == 'N':
        lean = t * 0.62
        return [([(l, 0), (l, h)], False, (None, None)),
                ([(r, h), (r, 0)], False, (None, None)),
                ([(lean, h), (w - lean, 0)], False, (FLAT, FLAT))]
    if name == 'E':
        return [([(w, u), (l + c, u), (l, u - c), (l, b + c), (l + c, b),
                  (w, b)], False, (None, None)),
                ([(l, m), (w * 0.86, m)], False, (None, None))]
    if name == 'B':
        k = c * 0.8
        return [([(l, u), (r - k, u), (r, u - k), (r, m + k * .8),
                  (r - k * .8, m), (r, m - k * .8), (r, b + k), (r - k, b),
                  (l, b)], True, None),
                ([(l, m), (r - k * .8, m)], False, (None, None))]
    if name == 'U':
        return [([(l, h), (l, b + c), (l + c, b), (r - c, b), (r, b + c),
                  (r, h)], False, (None, None))]
    if name == 'L':
        return [([(l, h), (l, b + c), (l + c, b), (w, b)], False,
                 (None, None))]
    if name == 'O':
        return [([(l + c, u), (r - c, u), (r, u - c), (r, b + c), (r - c, b),
                  (l + c, b), (l, b + c), (l, u - c)], True, None)]
    if name == 'R':
        k = c * 0.8
        q = m - t * 0.25
        return [([(l, 0), (l, h)], False, (None, None)),
                ([(l, u), (r - k, u), (r, u - k), (r, q + k), (r - k, q),
                  (l, q)], False, (None, None)),
                ([(w * 0.42, q), (w - t * .62, 0)], False, (FLAT, FLAT))]
    if name == 'I':
        return [([(l, 0), (l, h)], False, (None, None))]
    if name == 'X':
        e = t * 0.66
        return [([(e, h), (w - e, 0)], False, (FLAT, FLAT)),
                ([(w - e, h), (e, 0)], False, (FLAT, FLAT))]
    if name == 'V':
        e, tip = t * 0.56, 0.0
        for _ in range(20):     # the point of the mitre stands on the line
            tip = a * np.hypot(w / 2 - e, h - tip) / (w / 2 - e)
        return [([(e, h), (w / 2, tip), (w - e, h)], False, (FLAT, FLAT))]
    raise KeyError(name)


def word(text, widths, height, width, depth, bevel, cut, gap):
    """Mesh of a word in the X-Y plane, centred; and the places of letters."""
    total = sum(widths) + gap * (len(text) - 1)
    x = -total / 2
    model, places = Mesh(), []
    for name, w in zip(text, widths):
        for points, closed, cuts in letter(name, w, height, width, cut):
            part = stroke(points, width, depth, bevel, closed, cuts)
            model = model + part.move(x, -height / 2, 0)
        places.append((x, x + w))
        x += w + gap
    return model, places


def colours(model, face, bevel, side):
    """Materials by the lie of the facets (the word faces +Z and -Z)."""
    return model.paint(lambda c, n, m: face if abs(n[2]) > .95 else
                       bevel if abs(n[2]) > .2 else side)


def blade(x0, x1, y, thick, depth, tail):
    """A bar that runs out into a point at both ends."""
    xs = [x0, x0 + tail, x1 - tail * .4, x1]
    hs = [.12, 1.0, 1.0, .12]
    rings = []
    for x, k in zip(xs, hs):
        t, d = thick * k / 2, depth / 2 * (.35 + .65 * k)
        rings.append(np.array([(x, y - t, d * .4), (x, y - t, -d * .4),
                               (x, y - t * .3, -d), (x, y + t * .3, -d),
                               (x, y + t, -d * .4), (x, y + t, d * .4),
                               (x, y + t * .3, d), (x, y - t * .3, d)]))
    return loft(rings, None, crease=8)


def planes_xz(x0, x1, z0, z1):
    """S along x, T along -z (towards the top of the picture)."""
    return ((1.0 / (x1 - x0), 0, 0, -x0 / (x1 - x0)),
            (0, 0, -1.0 / (z1 - z0), z1 / (z1 - z0)))


def floor_mark(where, size=0.02):
    """A speck inside a letter that carries the floor's picture.

    The title draws the logo, then its floor with whatever picture was used
    last; this speck comes last in the file and is never seen itself.
    """
    tiles = Material('floor tiles', (1, 1, 1), textures=[Texture(
        'floor.tga', 'R', (0.25, 0, 0, 0.5), (0, 0, 0.25, 0.5))])
    x, y, z = where
    quad = np.array([[(x - size, y - size, z), (x + size, y - size, z),
                      (x + size, y + size, z), (x - size, y + size, z)]])
    return Mesh(quad, tiles)


# --- pictures --------------------------------------------------------------

def nebula_face():
    """Ice above, a burning nebula below, with young stars."""
    h, w = 128, 512
    y, x = np.mgrid[0:h, 0:w].astype(float)
    u, v = x / h, y / h
    p = np.stack([u * 2.1, v * 2.1, u * 0], -1)
    warp = np.stack([noise.fbm(p + k * 9.1, 4, 20 + k) for k in range(3)], -1)
    gas = noise.fbm(p + warp * .8, 6, 24, gain=.55)
    fil = noise.ridged(p * 1.2 + warp * .9, 5, 25)
    t = np.clip(v + gas * .34, 0, 1)
    picture = paint.ramp(t, [(0.05, '#e8fbff'), (0.26, '#7fd4ff'),
                             (0.44, '#3a7cf4'), (0.60, '#5a3ce0'),
                             (0.76, '#c03cc8'), (0.90, '#ff6a5c'),
                             (1.0, '#ffc058')])
    picture *= (0.86 + .30 * fil)[..., None]
    picture += (paint.smooth(.55, .95, fil) * .30)[..., None]
    for a, b, s in np.random.RandomState(3).random_sample((70, 3)):
        q = ((x - a * w) ** 2 + (y - b * h) ** 2) / (1.0 + 1.6 * s) ** 2
        picture += (np.exp(-q) * (.3 + .7 * s))[..., None]
    return np.clip(picture, 0, 1)


def steel_face():
    """Brushed steel, light above, cool below, one orange line."""
    h, w = 128, 512
    y, x = np.mgrid[0:h, 0:w].astype(float)
    v = y / h
    brushed = noise.fbm(np.stack([x / 160., y / 1.6, x * 0], -1), 4, 30)
    picture = paint.ramp(v, [(0, '#ffffff'), (0.40, '#dfe8f4'),
                             (0.495, '#9fb2cc'), (0.505, '#5c7296'),
                             (0.72, '#93a9c8'), (1.0, '#e4eefb')])
    picture *= (1 + .10 * brushed)[..., None]
    return np.clip(picture, 0, 1)


def floor_picture():
    """Dark glass tiles with lit joints; the game lays it half over the
    mirror image, so it is kept dark."""
    n = 256
    y, x = np.mgrid[0:n, 0:n] / float(n)
    a, b = (x * 4) % 1, (y * 4) % 1
    edge = np.minimum(np.minimum(a, 1 - a), np.minimum(b, 1 - b))
    tile = noise.white(4, 4, 9)[(y * 4).astype(int), (x * 4).astype(int)]
    cloud = noise.fbm(np.stack([x * 4, y * 4], -1), 4, 10, period=4)
    picture = paint.blank(n, n, '#0a1436') * \
        (0.8 + .5 * tile + .5 * cloud)[..., None]
    picture += (paint.smooth(.10, .0, edge) * .12)[..., None] * \
        np.array([.4, .7, 1.6])
    picture += (paint.smooth(.022, .008, edge))[..., None] * \
        np.array([.20, .45, .80])
    corner = np.hypot(np.minimum(a, 1 - a), np.minimum(b, 1 - b))
    picture += paint.smooth(.12, .02, corner)[..., None] * \
        np.array([.5, .30, .10])
    return np.clip(picture, 0, 1)


# --- the two models --------------------------------------------------------

def program_logo(out_dir):
    widths = [.66, .56, .60, .62, .54, .72, .62, .17, .66]
    height, gap = .92, .095
    model, places = word('NEBULORIX', widths, height, .17, .30, .042, .15,
                         gap)
    half = places[-1][1]
    face = Material('nebula face', (1, 1, 1), specular=(.4, .4, .4),
                    shininess=.3, luminosity=.55, textures=[Texture(
                        'logo_face.tga', 'R',
                        *planes_xz(-half, half, -height / 2, height / 2))])
    bevel = Material('chrome edge', (.94, .97, 1), specular=(1, 1, 1),
                     shininess=.5, luminosity=.35, reflection=.8)
    side = Material('orange side', (1, .44, .08), specular=(.5, .4, .3),
                    shininess=.3, luminosity=.35)
    glow = Material('orange glow', (1, .55, .12), luminosity=.8)
    core = Material('star core', (1, .86, .55), luminosity=.9)
    colours(model, face, bevel, side)
    # the O is a world with a ring, the line below runs from end to end
    left, right = places[5]
    middle = (left + right) / 2
    ball = lathe([(-.13, .02), (-.11, .07), (-.06, .115), (0, .13),
                  (.06, .115), (.11, .07), (.13, .02)], 12, core, axis='z',
                 crease=60)
    t = np.arange(40) * 2 * np.pi / 40
    rings = []
    for a in t:
        r, e = .50, .020
        rings.append(np.array([((r + dr * e) * np.cos(a),
                                (r + dr * e) * np.sin(a), dz * e)
                               for dr, dz in ((-1, -1), (1, -1), (1, 1),
                                              (-1, 1))]))
    ring = loft(rings, glow, closed=True, crease=60)
    ring.rotate('x', -68).rotate('z', 24)
    model = model + (ball + ring).move(middle, 0, 0)
    line = blade(-half - .02, half + .02, -height / 2 - .17, .085, .16, 1.9)
    line = line + blade(-half * .55, half * .55, height / 2 + .14, .05, .10,
                        1.0)
    line.mat = [glow] * len(line)
    model = model + line
    last = places[7]
    model = model + floor_mark(((last[0] + last[1]) / 2, 0, 0))
    model.rotate('x', -90)
    model.save(os.path.join(out_dir, 'Objects', 'Nebulorix.aob'))


def studio_logo(out_dir):
    widths = [3.5, 2.9, 3.5, 3.1]
    height = 3.6
    model, places = word('VEXO', widths, height, .78, 1.3, .17, .62, .26)
    half = places[-1][1]
    face = Material('brushed steel', (1, 1, 1), specular=(.8, .8, .8),
                    shininess=.4, luminosity=.42, textures=[Texture(
                        'logo_steel.tga', 'R',
                        (.5 / half, 0, 0, .5), (0, 1 / height, 0, .5))])
    bevel = Material('chrome edge', (.96, .98, 1), specular=(1, 1, 1),
                     shininess=.5, luminosity=.40, reflection=.8)
    side = Material('blue side', (.10, .34, .92), specular=(.4, .5, .7),
                    shininess=.3, luminosity=.40)
    glow = Material('orange glow', (1, .52, .10), luminosity=.8)
    colours(model, face, bevel, side)
    middle = sum(places[3]) / 2
    gem = lathe([(-.62, .03), (-.05, .52), (.05, .52), (.62, .03)], 4, glow,
                axis='z', crease=5, turn=0)
    model = model + gem.move(middle, 0, 0)
    line = blade(-half, half, -height / 2 - .62, .30, .9, 2.6)
    line.mat = [glow] * len(line)
    model = model + line
    model = model + floor_mark((middle - widths[3] / 2 + .39, 0, 0), .05)
    model.save(os.path.join(out_dir, 'Objects', 'logo.aob'))


def build(out_dir, names):
    images = os.path.join(out_dir, 'images')
    tga.write_tga(os.path.join(images, 'floor.tga'), floor_picture())
    if 'Nebulorix' in names:
        tga.write_tga(os.path.join(images, 'logo_face.tga'), nebula_face())
        program_logo(out_dir)
    if 'logo' in names:
        tga.write_tga(os.path.join(images, 'logo_steel.tga'), steel_face())
        studio_logo(out_dir)
