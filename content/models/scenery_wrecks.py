"""Made things among the scenery: the torn freighter, the satellite and
the space station.

The freighter tells its end: a cargo ship cut in two, its frames bare and
still glowing, one container clamped on, one burst open.
"""
import os
import sys

import numpy as np

sys.path.insert(0, os.path.join(os.path.dirname(__file__), '..', 'lib'))
import globe  # noqa: E402
import noise  # noqa: E402
import paint  # noqa: E402
import tga  # noqa: E402
from aob import Material, Texture  # noqa: E402
from mesh import (Mesh, block, box, drop_hidden, lathe, loft,  # noqa: E402
                  ring_at, section_box, slab, tube)


def picture_planes(name, s, t):
    """An R texture whose S and T run along x, y or z: (axis, low, high)."""
    out = []
    for axis, low, high in (s, t):
        plane = [0.0, 0.0, 0.0, -low / float(high - low)]
        plane['xyz'.index(axis)] = 1.0 / (high - low)
        out.append(tuple(plane))
    return Texture(name, 'R', out[0], out[1])


# --- freighter -------------------------------------------------------------

def freighter_side():
    """Hull side: bow on the left, the torn end on the right."""
    n = 256
    y, x = np.mgrid[0:n, 0:n] / float(n)
    lines = [(0, 0, .3, .36), (.3, 0, .62, .36), (.62, 0, 1, .36),
             (0, .36, .44, .66), (.44, .36, .8, .66), (.8, .36, 1, .66),
             (0, .66, .25, 1), (.25, .66, .58, 1), (.58, .66, 1, 1)]
    tone, seams = paint.panels(n, n, lines, 0.010, 1.0, 3, 0.09)
    picture = paint.blank(n, n, '#c2c6cc') * tone[..., None]
    picture *= paint.wear(n, n, 4, 5, 0.16)[..., None]
    band = paint.Mask(n, n).rect(0, .40, 1, .62).array()
    picture = paint.paste(picture, np.array(paint.colour('#e0701c')), band)
    edge = paint.Mask(n, n).rect(0, .385, 1, .40).rect(0, .62, 1, .635)
    picture = paint.paste(picture, '#f0f0f0', edge.array())
    sign = paint.Mask(n, n)
    paint.write(sign, 'XVX', 0.09, 0.445, 0.135, 0.2, 0.36, 0.9)
    picture = paint.paste(picture, '#ffffff', sign.array())
    ports = paint.Mask(n, n)
    for k in range(5):
        ports.rounded(.08 + k * .085, .20, .13 + k * .085, .26, .02)
    picture = paint.paste(picture, '#ffd890', ports.array())
    grime = noise.fbm(np.stack([x * 9, y * 1.4], -1), 4, 6)
    picture *= (1 - 0.3 * paint.smooth(0.0, 0.5, grime)
                * paint.smooth(0.3, 1, y))[..., None]
    picture *= (1 - 0.6 * seams)[..., None]
    return scorch(picture, x, y, 5)


def scorch(picture, x, y, seed):
    """Soot and a glowing edge towards the right."""
    p = np.stack([x * 4, y * 4], -1)
    reach = x + noise.fbm(p, 5, seed) * 0.28
    picture = picture * (1 - 0.88 * paint.smooth(0.56, 0.86, reach))[..., None]
    ember = paint.smooth(0.86, 1.0, reach) * \
        paint.smooth(0.35, 0.6, noise.ridged(p * 2, 4, seed + 1))
    return np.clip(picture + ember[..., None]
                   * np.array([1.0, 0.40, 0.08]), 0, 1)


def freighter_top():
    """Deck from above: the torn end at the bottom of the picture."""
    n = 256
    y, x = np.mgrid[0:n, 0:n] / float(n)
    lines = [(0, 0, .5, .3), (.5, 0, 1, .3), (0, .3, .34, .7),
             (.34, .3, .66, .7), (.66, .3, 1, .7), (0, .7, 1, 1)]
    tone, seams = paint.panels(n, n, lines, 0.010, 1.0, 13, 0.09)
    picture = paint.blank(n, n, '#b8bcc4') * tone[..., None]
    picture *= paint.wear(n, n, 14, 5, 0.15)[..., None]
    hatch = paint.Mask(n, n).rounded(.28, .34, .72, .66, .03).array()
    picture = paint.paste(picture, '#5c6470', hatch)
    marks = paint.Mask(n, n)
    for k in range(-2, 9):
        marks.polygon([(k * .1, .10), (k * .1 + .05, .10),
                       (k * .1 + .13, .20), (k * .1 + .08, .20)])
    area = paint.Mask(n, n).rect(.1, .10, .9, .20).array()
    picture = paint.paste(picture, '#e6a020', area)
    picture = paint.paste(picture, '#20242c', marks.array() * area)
    picture *= (1 - 0.6 * seams)[..., None]
    return scorch(picture, y, x, 25)


def freighter_inside():
    """Burnt decks and cables, brighter towards the right (the tear)."""
    n = 128
    y, x = np.mgrid[0:n, 0:n] / float(n)
    picture = paint.blank(n, n, '#3a3430')
    decks = paint.Mask(n, n)
    for k in range(4):
        decks.rect(0, .12 + k * .25, 1, .17 + k * .25)
    picture = paint.paste(picture, '#8a7058', decks.array())
    ribs = paint.Mask(n, n)
    for k in range(6):
        ribs.rect(.05 + k * .17, 0, .085 + k * .17, 1)
    picture = paint.paste(picture, '#6a5a4c', ribs.array())
    p = np.stack([x * 4, y * 4], -1)
    heat = paint.smooth(0.25, 0.8, noise.ridged(p, 4, 31)) * (0.3 + 0.7 * x)
    picture = picture * paint.wear(n, n, 32, 6, 0.4)[..., None]
    return np.clip(picture + heat[..., None] * np.array([1.2, .42, .06]),
                   0, 1)


def container_picture():
    n = 64
    picture = paint.blank(n, n, '#ffffff')
    x = np.mgrid[0:n, 0:n][1] / float(n)
    picture *= (0.80 + 0.22 * np.cos(x * 2 * np.pi * 8))[..., None]
    mask = paint.Mask(n, n).rect(0, 0, 1, .07).rect(0, .93, 1, 1)
    mask.rect(0, 0, .04, 1).rect(.96, 0, 1, 1)
    picture = paint.paste(picture, '#707070', mask.array())
    sign = paint.Mask(n, n).rect(.36, .3, .64, .7).array()
    picture = paint.paste(picture, '#f4f0e0', sign * 0.9)
    return picture * paint.wear(n, n, 41, 4, 0.12)[..., None]


def freighter(out_dir):
    images = os.path.join(out_dir, 'images')
    tga.write_tga(os.path.join(images, 'freighter_side.tga'),
                  freighter_side())
    tga.write_tga(os.path.join(images, 'freighter_top.tga'), freighter_top())
    tga.write_tga(os.path.join(images, 'freighter_in.tga'),
                  freighter_inside())
    tga.write_tga(os.path.join(images, 'container.tga'), container_picture())

    side = Material('hull side', (1, 1, 1), specular=(.25, .25, .25),
                    shininess=.2, luminosity=.12, textures=[picture_planes(
                        'freighter_side.tga', ('z', -2.5, 2.3),
                        ('y', -1.25, 1.25))])
    top = Material('hull top', (1, 1, 1), specular=(.25, .25, .25),
                   shininess=.2, luminosity=.12, textures=[picture_planes(
                       'freighter_top.tga', ('x', -1.3, 1.3),
                       ('z', 2.3, -2.5))])
    bow = Material('bow', (.56, .58, .62), specular=(.3, .3, .3),
                   shininess=.2, luminosity=.08)
    inside = Material('burnt inside', (1, 1, 1), luminosity=.55,
                      textures=[picture_planes(
                          'freighter_in.tga', ('z', -1.4, 2.2),
                          ('y', -1.2, 1.2))])
    steel = Material('bare frame', (.42, .40, .40),
                     specular=(.4, .4, .4), shininess=.25, luminosity=.1)
    hot = Material('hot metal', (1, .45, .10), luminosity=.9)
    crate = [Material('container %d' % k, c, specular=(.2, .2, .2),
                      luminosity=.16, textures=[picture_planes(
                          'container.tga', ('z', -.75, .75),
                          ('y', -.45, .45))])
             for k, c in ((1, (.16, .50, .86)), (2, (.80, .22, .16)))]

    random = np.random.RandomState(47)
    shape = section_box(2.5, 2.2, 0.55)
    # a denser section, so that the tear can be ragged
    dense = []
    for k in range(8):
        a, b = shape[k], shape[(k + 1) % 8]
        dense += [a, (a + b) / 2]
    dense = np.array(dense)
    n = len(dense)
    tear = 1.25 + np.cumsum(random.uniform(-.5, .5, n)) * .25
    tear += random.uniform(-.35, .55, n)
    tear = np.clip(tear, .35, 2.2)
    rings = [ring_at(dense * .30, -2.5), ring_at(dense * .62, -2.38),
             ring_at(dense * .90, -1.9), ring_at(dense, -1.3),
             ring_at(dense, -.3)]
    torn = ring_at(dense, 0.0)
    torn[:, 2] = tear
    torn[:, :2] *= (1 + random.uniform(-.10, .10, n))[:, None]
    rings.append(torn)
    shell = loft(rings, side, caps=(True, False), crease=30)

    def pick(c, nrm, m):
        if c[2] < -1.9:
            return bow
        return top if abs(nrm[1]) > abs(nrm[0]) else side
    shell.paint(pick)
    inner_rings = [ring_at(dense * .25, -1.2), ring_at(dense * .84, -1.0),
                   ring_at(dense * .88, -.3)]
    inner = torn.copy()
    inner[:, :2] *= .94
    inner_rings.append(inner)
    hollow = loft(inner_rings, inside, caps=(True, False), crease=40).flip()
    lip = []
    for k in range(n):
        j = (k + 1) % n
        lip.append([torn[k], torn[j], inner[j], inner[k]])
    rim = Mesh(np.array(lip), hot, crease=20)
    if rim.face_normals()[:, 2].mean() < 0:
        rim.flip()
    model = shell + hollow + rim
    # bare frames that outlasted the plates
    for z, start, stop in ((1.75, -40, 130), (2.3, 190, 300)):
        path = []
        for a in np.radians(np.linspace(start, stop, 7)):
            q = np.array([np.cos(a), np.sin(a)])
            q = q / (np.abs(q / (1.14, 1.0)) ** 4).sum() ** .25
            path.append((q[0] * 1.08, q[1] * 1.0, z + .08 * np.sin(a * 3)))
        model = model + tube(path, .075, 6, steel)
    for x, y, l, m in ((.72, .62, 2.5, steel), (-.8, -.55, 2.35, steel),
                       (-.35, .78, 2.1, steel), (.2, -.62, 2.6, hot)):
        bent = [(x, y, -.5), (x, y, 1.2), (x * 1.05 + .05, y * .95, 1.8),
                (x * .9 - .1, y * 1.15, l)]
        model = model + tube(bent, [.07, .07, .06, .04], 6, m)
    # a deck still in place, and the cargo
    model = model + slab((2.1, .08, 1.9), (0, -.05, .35), steel)
    model = model + box((.9, .8, 1.45), (0, 1.42, -.45), crate[0], .05)
    model = model + slab((.10, .5, .16), (0, 1.1, -1.25), steel)
    burst = box((.9, .8, 1.45), (0, 0, 0), crate[1], .05)
    for q in burst.P:
        q[:, 1] += np.where(q[:, 2] > .3, q[:, 1] * .28, 0)
        q[:, 0] += np.where(q[:, 2] > .3, q[:, 0] * .22, 0)
    burst.rotate('x', -24).rotate('z', 20).move(-.35, -1.25, .75)
    model = model + burst
    ember = lathe([(-.05, .05), (0, .22), (.06, .05)], 8, hot)
    model = model + ember.rotate('x', -24).move(-.42, -1.0, 1.43)
    model.P = globe.unfold(model.P)
    drop_hidden(model, down=-1).save(
        os.path.join(out_dir, 'Objects', 'FreighterDebris.aob'))


# --- satellite -------------------------------------------------------------

def cells_picture():
    """Solar cells, four by eight."""
    n = 256
    y, x = np.mgrid[0:n, 0:n] / float(n)
    picture = paint.ramp(0.5 + 0.5 * np.sin(x * 5 + y * 7),
                         [(0, '#0c2a86'), (0.5, '#1f4cc4'), (1, '#3a78f0')])
    fine = np.maximum(np.cos(x * 2 * np.pi * 32) > .82,
                      np.cos(y * 2 * np.pi * 16) > .92)
    picture *= (1 - 0.35 * fine)[..., None]
    grid = paint.Mask(n, n)
    for k in range(9):
        grid.rect(k / 8. - .010, 0, k / 8. + .010, 1)
    for k in range(5):
        grid.rect(0, k / 4. - .012, 1, k / 4. + .012)
    return paint.paste(picture, '#d4dae6', grid.array())


def foil_picture():
    """Crinkled gold foil."""
    n = 128
    p = noise.plane(n, n, 6)
    a, b = noise.worley(p, 51, period=6)
    fold = noise.fbm(p * 1.0, 4, 52, period=6)
    tone = np.clip(0.45 + (b - a) * 0.5 + fold * 0.5, 0, 1)
    return paint.ramp(tone, [(0, '#7a4408'), (0.4, '#d89420'),
                             (0.7, '#ffd060'), (1, '#fff8d0')])


def satellite(out_dir):
    images = os.path.join(out_dir, 'images')
    tga.write_tga(os.path.join(images, 'cells.tga'), cells_picture())
    tga.write_tga(os.path.join(images, 'foil.tga'), foil_picture())
    cell = Material('solar cells', (1, 1, 1), specular=(.7, .7, .8),
                    shininess=.3, luminosity=.12, textures=[picture_planes(
                        'cells.tga', ('x', 1.5, 5.5), ('z', 1.0, -1.0))])
    foil = [Material('foil %s' % axes, (1, 1, 1), specular=(.6, .5, .3),
                     shininess=.35, luminosity=.12,
                     textures=[picture_planes('foil.tga', (axes[0], 0, 1.4),
                                              (axes[1], 0, 1.4))])
            for axes in ('xz', 'zy', 'xy')]
    white = Material('white metal', (.86, .88, .92), specular=(.4, .4, .4),
                     shininess=.3, luminosity=.06)
    grey = Material('dark metal', (.30, .32, .38), specular=(.4, .4, .4),
                    shininess=.3, luminosity=.04)
    dish_in = Material('dish', (.95, .96, 1), specular=(.5, .5, .5),
                       shininess=.2, luminosity=.10)
    red = Material('lamp red', (1, .15, .1), luminosity=.9)
    green = Material('lamp green', (.2, 1, .35), luminosity=.9)

    body = box((1.7, 1.7, 2.3), (0, 0, 0), foil[0], .16)
    body.by_direction(top=foil[0], side=foil[1], front=foil[2], bias=1.01)
    model = body
    model = model + block((1.84, 1.84, .22), (0, 0, .62), white, .17)
    model = model + block((1.84, 1.84, .22), (0, 0, -.62), white, .17)
    arm = tube([(.8, 0, 0), (1.55, 0, 0)], .10, 6, grey,
               caps=(False, False))
    panel = slab((3.9, .09, 1.9), (3.5, 0, 0), cell)
    frame = slab((.12, .2, 2.1), (1.5, 0, 0), white)
    frame = frame + slab((4.0, .14, .10), (3.5, 0, 0), white)
    tip = slab((.10, .16, 2.0), (5.45, 0, 0), white)
    wing = arm + panel + frame + tip
    model = model + wing.mirrored('x')
    # dish on the front, looking along -Z and a little up
    outer = lathe([(-.95, 1.34), (-.60, 1.05), (-.28, .60), (-.14, .12)],
                  16, white, caps=(False, True))
    inner = lathe([(-.93, 1.26), (-.66, 1.0), (-.38, .58), (-.26, .08)],
                  16, dish_in, caps=(False, True)).flip()
    t = (np.arange(17) + .5) * 2 * np.pi / 16
    rim = np.array([[(1.34 * np.cos(a), 1.34 * np.sin(a), -.95),
                     (1.26 * np.cos(a), 1.26 * np.sin(a), -.93),
                     (1.26 * np.cos(b), 1.26 * np.sin(b), -.93),
                     (1.34 * np.cos(b), 1.34 * np.sin(b), -.95)]
                    for a, b in zip(t, t[1:])])
    rim = Mesh(rim, white)
    if rim.face_normals()[:, 2].mean() > 0:
        rim.flip()
    dish = outer + inner + rim
    dish = dish + lathe([(-1.25, .05), (-1.2, .12), (-1.05, .14),
                         (-.95, .06)], 8, grey)
    for k in range(3):
        a = np.radians(90 + 120 * k)
        dish = dish + tube([(1.0 * np.cos(a), 1.0 * np.sin(a), -.66),
                            (.06 * np.cos(a), .06 * np.sin(a), -1.12)],
                           .035, 4, grey, caps=(False, False))
    dish.rotate('x', 28).move(0, .15, -1.25)
    model = model + dish
    # engine bell, mast and lamps
    model = model + lathe([(1.1, .30), (1.25, .22), (1.7, .52)], 12, grey,
                          caps=(True, False))
    model = model + lathe([(1.26, .08), (1.68, .46)], 12, red,
                          caps=(False, False)).flip()
    model = model + tube([(.5, .8, .6), (.5, 1.9, .6)], [.06, .03], 6, white)
    model = model + lathe([(1.9, .04), (1.98, .10), (2.06, .04)], 6, red,
                          axis='y').move(.5, 0, .6)
    model = model + box((.5, .4, .5), (-.35, .95, -.1), grey, .08)
    for x, m in ((5.45, green), (-5.45, red)):
        model = model + lathe([(-.1, .04), (0, .11), (.1, .04)], 6, m,
                              axis='y').move(x, .1, -.95)
    drop_hidden(model, down=-1).save(
        os.path.join(out_dir, 'Objects', 'satellite.aob'))


# --- station ---------------------------------------------------------------

def windows_picture():
    """A tile of hull with rows of lit windows, white where they shine."""
    n = 256
    tone, seams = paint.panels(
        n, n, [(0, 0, .5, .5), (.5, 0, 1, .5), (0, .5, .25, 1),
               (.25, .5, .75, 1), (.75, .5, 1, 1)], 0.010, 1.0, 61, 0.06)
    picture = paint.blank(n, n, '#7e8898') * tone[..., None]
    picture *= paint.wear(n, n, 62, 6, 0.10)[..., None]
    picture *= (1 - 0.55 * seams)[..., None]
    random = np.random.RandomState(63)
    lit = {'warm': paint.Mask(n, n), 'cool': paint.Mask(n, n),
           'dark': paint.Mask(n, n)}
    for row in range(3):
        y = .12 + row * .31
        for k in range(10):
            if row == 1 and k in (4, 5):
                continue
            x = .03 + k * .1
            kind = random.choice(['warm', 'warm', 'warm', 'cool', 'dark'])
            lit[kind].rounded(x, y, x + .058, y + .11, .008)
    lit['cool'].rounded(.43, .40, .57, .60, .01)
    picture = paint.paste(picture, '#2a3040', lit['dark'].array())
    picture = paint.paste(picture, '#ffd27a', lit['warm'].array())
    picture = paint.paste(picture, '#a8e4ff', lit['cool'].array())
    picture = paint.glow(picture, '#ffb040', lit['warm'].array(), 4, .35)
    stripe = paint.Mask(n, n).rect(0, .30, 1, .335).array()
    return np.clip(paint.paste(picture, '#f08020', stripe), 0, 1)


def deck_picture():
    """The station from above, 14 units across."""
    n = 256
    y, x = np.mgrid[0:n, 0:n].astype(float)
    u = ((x + .5) / n * 2 - 1) * 7
    v = ((y + .5) / n * 2 - 1) * 7
    r = np.sqrt(u * u + v * v)
    angle = np.degrees(np.arctan2(v, u)) % 360
    picture = paint.blank(n, n, '#c8ced8')
    sector = np.floor(angle / 15)
    picture *= (1 + 0.10 * (noise.white(1, 24, 71)[0][sector.astype(int)]
                            - .5))[..., None]
    picture *= paint.wear(n, n, 72, 6, 0.10)[..., None]
    seam = np.minimum(angle % 15, 15 - angle % 15) * np.pi / 180 * r
    picture *= (1 - .55 * paint.smooth(.07, .02, seam))[..., None]
    for at, width, tint in ((6.25, .10, '#f08020'), (5.0, .06, '#4a5464'),
                            (1.65, .08, '#f08020')):
        picture = paint.paste(picture, tint,
                              paint.smooth(width, width * .6,
                                           np.abs(r - at)))
    lamps = paint.smooth(.16, .08, np.hypot(
        r - 5.62, (((angle + 3.75) % 7.5) - 3.75) * np.pi / 180 * r))
    glow = paint.smooth(.34, .05, np.hypot(
        r - 5.62, (((angle + 3.75) % 7.5) - 3.75) * np.pi / 180 * r))
    picture = paint.mix(picture, paint.colour('#ffc860'), glow * .35)
    picture = paint.mix(picture, paint.colour('#fff0c0'), lamps)
    return np.clip(picture, 0, 1)


def station(out_dir):
    images = os.path.join(out_dir, 'images')
    tga.write_tga(os.path.join(images, 'windows.tga'), windows_picture())
    tga.write_tga(os.path.join(images, 'deck.tga'), deck_picture())

    def walls(name, first, height=1.3, shift=0.0):
        return Material(name, (1, 1, 1), specular=(.2, .2, .2),
                        shininess=.2, luminosity=.42,
                        textures=[picture_planes(
                            'windows.tga', (first, 0, 2.0),
                            ('y', -height / 2 + shift, height / 2 + shift))])
    wall_x, wall_z = walls('wall x', 'x'), walls('wall z', 'z')
    deck = Material('deck', (1, 1, 1), specular=(.2, .2, .2), shininess=.2,
                    luminosity=.16, textures=[picture_planes(
                        'deck.tga', ('x', -7, 7), ('z', 7, -7))])
    white = Material('white metal', (.84, .87, .92), specular=(.4, .4, .4),
                     shininess=.3, luminosity=.06)
    grey = Material('dark metal', (.34, .37, .44), specular=(.4, .4, .4),
                    shininess=.3, luminosity=.05)
    orange = Material('orange paint', (.95, .48, .10),
                      specular=(.3, .3, .3), luminosity=.15)
    cell = Material('solar cells', (1, 1, 1), specular=(.7, .7, .8),
                    shininess=.3, luminosity=.14, textures=[picture_planes(
                        'cells.tga', ('x', 0.9, 4.1), ('z', .8, -.8))])
    blue = Material('blue light', (.35, .75, 1), luminosity=.9)
    red = Material('lamp red', (1, .2, .1), luminosity=.9)
    dark = Material('dock', (.06, .08, .12), luminosity=.1)

    def pick(c, n, m):
        if abs(n[1]) > .6:
            return deck
        return wall_z if abs(n[0]) > abs(n[2]) else wall_x
    # the wheel: an eight-sided section swept round Y
    section = [(5.05, -.40), (5.25, -.65), (6.15, -.65), (6.45, -.40),
               (6.45, .40), (6.15, .65), (5.25, .65), (5.05, .40)]
    rings = []
    for a in np.arange(36) * 2 * np.pi / 36:
        rings.append(np.array([(r * np.cos(a), h, r * np.sin(a))
                               for r, h in section]))
    wheel = loft(rings, deck, closed=True, crease=28).paint(pick)
    model = wheel
    # spokes with a bright band
    spoke = block((4.3, .62, .72), (3.2, 0, 0), wall_x, .14, axis='x')
    spoke.paint(lambda c, n, m: deck if abs(n[1]) > .6 else wall_x)
    spoke = spoke + block((.5, .78, .9), (4.75, 0, 0), orange, .12, axis='x')
    for k in range(4):
        turned = spoke.copy().rotate('y', 45 + 90 * k)
        model = model + turned.paint(
            lambda c, n, m: m if m in (orange, deck) else
            (wall_z if abs(n[0]) > abs(n[2]) else wall_x))
    # hub, tower above, dock below
    hub = lathe([(-1.5, .9), (-1.25, 1.45), (-.75, 1.75), (.75, 1.75),
                 (1.2, 1.45), (1.4, .95)], 16, deck, axis='y', crease=30)
    model = model + hub.paint(pick)
    model = model + lathe([(1.3, .95), (2.0, .85), (2.15, .62), (2.9, .55),
                           (3.0, .40)], 12, white, axis='y', crease=30)
    model = model + lathe([(2.25, .68), (2.62, .66)], 12, blue, axis='y',
                          crease=30)
    model = model + tube([(0, 2.9, 0), (0, 4.3, 0)], [.12, .05], 5, grey,
                         caps=(False, False))
    model = model + lathe([(4.25, .05), (4.37, .15), (4.5, .05)], 6, red,
                          axis='y')
    model = model + lathe([(-2.6, 1.05), (-2.5, 1.15), (-1.9, 1.15),
                           (-1.4, .9)], 14, white, axis='y', crease=30)
    model = model + lathe([(-2.66, .78), (-2.58, .80)], 14, dark, axis='y')
    model = model + lathe([(-2.37, 1.19), (-2.13, 1.19)], 14, orange,
                          axis='y')
    # a pair of solar wings on the tower
    wing = slab((3.2, .08, 1.5), (2.5, 1.75, 0), cell)
    wing = wing + slab((3.45, .12, .12), (2.45, 1.75, 0), grey)
    model = model + wing.mirrored('x')
    # pods on the wheel, a lamp on each
    for k in range(4):
        a = 90 * k
        pod = box((1.0, 1.7, 1.5), (5.75, 0, 0), white, .22)
        pod = pod + slab((.2, 1.0, .9), (6.45, 0, 0), blue)
        pod = pod + lathe([(.85, .06), (.95, .16), (1.05, .06)], 6, red,
                          axis='y').move(5.75, 0, 0)
        model = model + pod.rotate('y', a)
    drop_hidden(model, down=-1).save(
        os.path.join(out_dir, 'Objects', 'SpaceStn1.aob'))


def build(out_dir, names):
    for name, make in (('FreighterDebris', freighter),
                       ('satellite', satellite), ('SpaceStn1', station)):
        if name in names:
            make(out_dir)
