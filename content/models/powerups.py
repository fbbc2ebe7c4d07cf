"""The powerups: twenty-seven small bodies of about two units.

They turn about Z, or about X in the view from behind, and must be told
apart at twenty pixels. So each family carries two hoops of its own bright
colour round the Z axis, with the thing itself between them; coins, gems
and suckers have shapes of their own and do without.

    weapons red, missiles yellow, engines green, defence blue,
    capacity violet, magnets pink, the extra life white
"""
import os
import sys

import numpy as np

sys.path.insert(0, os.path.join(os.path.dirname(__file__), '..', 'lib'))
import noise  # noqa: E402
import paint  # noqa: E402
import tga  # noqa: E402
from aob import Material, Texture  # noqa: E402
from mesh import (Mesh, box, lathe, loft, drop_hidden, ring_at,  # noqa: E402
                  section_box, slab, tube, wing)

METAL = 'pup_metal.tga'

RED = (1.0, 0.20, 0.12)
YELLOW = (1.0, 0.84, 0.08)
GREEN = (0.20, 1.0, 0.36)
BLUE = (0.22, 0.48, 1.0)
VIOLET = (0.70, 0.32, 1.0)
PINK = (1.0, 0.34, 0.78)
WHITE = (1.0, 1.0, 1.0)
AMBER = (1.0, 0.62, 0.12)

# What the shots of the five weapons glow in.
BOLTS = {1: (1.0, 0.45, 0.15), 2: (0.1, 1.0, 0.4), 3: (0.25, 0.45, 1.0),
         4: (1.0, 0.35, 1.0), 5: (1.0, 0.75, 0.25)}


# --- materials -------------------------------------------------------------

def metal(name, colour, luminosity=0.10, scale=0.9, **more):
    """Brushed metal; the slanting planes let one picture serve all sides."""
    k = 1.0 / scale
    options = dict(specular=(0.7, 0.7, 0.7), shininess=0.35, reflection=0.4)
    options.update(more)
    return Material(name, colour, luminosity=luminosity, textures=[
        Texture(METAL, 'R', (0.7 * k, 0.7 * k, 0, 0.5),
                (0, 0.15 * k, k, 0.5))], **options)


def light(name, colour, luminosity=0.85):
    return Material(name, colour, luminosity=luminosity,
                    specular=(0.3, 0.3, 0.3), shininess=0.2)


def plain(name, colour, luminosity=0.12, **more):
    options = dict(specular=(0.8, 0.8, 0.8), shininess=0.4, reflection=0.35)
    options.update(more)
    return Material(name, colour, luminosity=luminosity, **options)


def steel():
    return metal('steel', (0.90, 0.93, 0.98), 0.26)


def gunmetal():
    return metal('gunmetal', (0.46, 0.50, 0.58), 0.18)


def brass():
    return plain('brass', (0.82, 0.50, 0.16), 0.34)


# --- pieces ----------------------------------------------------------------

def hoop(z, radius, material, width=0.09, thick=0.08, n=12):
    """A ring round Z with a ridge outside."""
    rings = []
    for a in (np.arange(n) + 0.5) * 2 * np.pi / n:
        c, s = np.cos(a), np.sin(a)
        rings.append(np.array([
            ((radius - thick) * c, (radius - thick) * s, z - width),
            ((radius + thick * 0.4) * c, (radius + thick * 0.4) * s, z),
            ((radius - thick) * c, (radius - thick) * s, z + width)]))
    return loft(rings, material, closed=True, crease=40)


GLOWS = {}      # of the hoops, by colour


def hoop_glow(colour):
    return GLOWS.setdefault(colour, light('hoop', colour, 0.75))


def hoops(colour, radius=0.86, z=0.78):
    glow = hoop_glow(colour)
    return hoop(-z, radius, glow) + hoop(z, radius, glow)


def plus(size, thick, depth, material):
    """A raised cross in the X-Y plane, its face towards +Z."""
    w, h = thick / 2, size / 2
    outline = [(w, -h), (w, -w), (h, -w), (h, w), (w, w), (w, h)]
    outline += [(-x, -y) for x, y in outline]
    top = [[(x0, y0, 0), (x1, y0, 0), (x1, y1, 0), (x0, y1, 0)]
           for x0, y0, x1, y1 in ((-w, -h, w, h), (w, -w, h, w),
                                  (-h, -w, -w, w))]
    sides = [[(ax, ay, -depth), (bx, by, -depth), (bx, by, 0), (ax, ay, 0)]
             for (ax, ay), (bx, by) in zip(outline,
                                           outline[1:] + outline[:1])]
    return Mesh(np.array(top + sides, float), material, crease=5)


def fins(count, material, root, tip, span, thick=0.07, start=0.0, base=0.2):
    """Fins round Z: root and tip are (leading z, trailing z)."""
    out = Mesh()
    for k in range(count):
        a, b = (base, root[0]), (base, root[1])
        c, d = (span, tip[1]), (span, tip[0])
        flat = [(x, -thick / 2, z) for x, z in (a, b, c, d)]
        top = [(x, thick / 2, z) for x, z in (a, b, c, d)]
        quads = [flat, top[::-1]]
        for i in range(4):
            j = (i + 1) % 4
            quads.append([flat[j], flat[i], top[i], top[j]])
        fin = Mesh(np.array(quads), material, crease=5).orient()
        out = out + fin.rotate('z', start + 360.0 * k / count)
    return out


def bullet(length, radius, case, tip, n=8):
    """A cartridge along Z, its tip towards -Z, its middle at 0."""
    h = length / 2
    body = lathe([(h, radius * 1.08), (h - length * .07, radius * 1.08),
                  (h - length * .10, radius * .88),
                  (h - length * .15, radius), (-h * .10, radius)], n, case)
    nose = lathe([(-h * .08, radius * .90), (-h * .35, radius * .84),
                  (-h * .72, radius * .55), (-h, radius * .10)], n, tip)
    return body + nose


# --- weapons ---------------------------------------------------------------

def laser(count):
    bolt = light('bolt', BOLTS[count], 0.9)
    frame, dark = steel(), gunmetal()
    size = {1: 0.30, 2: 0.25, 3: 0.23, 4: 0.21}[count]
    ring = {1: 0.0, 2: 0.31, 3: 0.34, 4: 0.40}[count]
    n = 8 if count == 1 else 6
    model = Mesh()
    for k in range(count):
        barrel = lathe([(-1.0, size * .6), (-.84, size), (.62, size),
                        (.9, size * .7)], n, frame, crease=35,
                       caps=(False, True))
        core = lathe([(-1.04, .02), (-.99, size * .62)], n, bolt,
                     caps=(False, False))
        a = 2 * np.pi * (k + .5) / count
        model = model + (barrel + core).move(ring * np.cos(a),
                                             ring * np.sin(a), 0)
    # as many bright collars as barrels
    outer = ring + size + 0.08
    for k in range(count):
        z = (k - (count - 1) / 2.0) * (0.30 if count < 4 else 0.26)
        model = model + lathe([(z - .09, outer - .04), (z - .03, outer),
                               (z + .03, outer), (z + .09, outer - .04)]
                              if count < 3 else
                              [(z - .08, outer), (z + .08, outer)], 8,
                              bolt, caps=(True, True), crease=30)
    if count > 1:
        model = model + lathe([(-.6, ring * 1.1), (.66, ring * 1.1)], 6, dark)
    return model + hoops(RED)


def cannon():
    iron, gold = metal('gun steel', (0.66, 0.69, 0.76), 0.16), brass()
    fire = light('charge', BOLTS[5], 0.95)
    glow = hoop_glow(RED)
    model = lathe([(-.86, .33), (-.90, .46), (-.72, .46), (-.66, .36),
                   (.10, .40), (.18, .50), (.62, .50), (.82, .22)], 10, iron,
                  crease=30, caps=(False, True))
    model = model + lathe([(-.86, .33), (-.66, .28)], 10, iron,
                          caps=(False, False)).flip()
    # the shell looks out of the muzzle
    model = model + lathe([(-1.14, .04), (-1.06, .17), (-.94, .25),
                           (-.72, .29)], 10, fire, caps=(True, False),
                          crease=60)
    for z, r in ((-.42, .44), (-.12, .46), (.38, .57)):
        model = model + lathe([(z - .09, r - .07), (z, r), (z + .09, r - .07)],
                              10, gold, caps=(False, False), crease=30)
    return model + hoop(-.58, .80, glow) + hoop(.66, .86, glow)


def extra_bullet():
    tip = plain('copper tip', (1.0, 0.34, 0.16), 0.3)
    model = bullet(2.0, .44, brass(), tip, 12)
    return model + hoops(RED, 0.84, 0.62)


def autofire():
    frame, dark = steel(), gunmetal()
    case = brass()
    tip = plain('copper tip', (1.0, 0.34, 0.16), 0.3)
    fire = light('muzzle', BOLTS[5], 0.9)
    model = lathe([(.05, .30), (.12, .44), (.62, .44), (.86, .24)], 10, frame,
                  crease=30)
    for k in range(4):
        barrel = lathe([(-1.0, .12), (.1, .12)], 6, frame,
                       caps=(True, False))
        model = model + barrel.move(.26, 0, 0).rotate('z', 45 + 90 * k)
    model = model + lathe([(-1.06, .03), (-.92, .15), (-.7, .15)], 6, fire,
                          caps=(True, False))
    model = model + lathe([(-.72, .43), (-.56, .43)], 8, dark, crease=30)
    # the belt: cartridges all round, held by a band
    model = model + lathe([(-.04, .48), (.11, .61), (.26, .48)], 10,
                          hoop_glow(RED), caps=(False, False),
                          crease=30)
    for k in range(6):
        shell = lathe([(.34, .10), (-.10, .10)], 4, case,
                      caps=(True, False))
        nose = lathe([(-.10, .10), (-.40, .0)], 4, tip, caps=(False, True))
        model = model + (shell + nose).move(.57, 0, 0).rotate('z', 60. * k)
    return model + hoops(RED, 0.88, 0.84)


# --- missiles --------------------------------------------------------------

def dumbfire():
    body = metal('green drab', (0.62, 0.72, 0.40), 0.16)
    nose = plain('red nose', (1.0, 0.16, 0.10), 0.3)
    band = hoop_glow(YELLOW)
    dark = gunmetal()
    model = lathe([(-1.0, .10), (-.93, .26), (-.78, .38), (-.58, .44)], 10,
                  nose, crease=50)
    model = model + lathe([(-.60, .43), (-.48, .46), (.55, .46), (.78, .30)],
                          10, body, crease=30)
    model = model + lathe([(-.30, .47), (-.27, .50), (-.12, .50),
                           (-.09, .47)], 10, band, caps=(False, False),
                          crease=30)
    model = model + lathe([(.74, .22), (.80, .26), (.98, .34)], 10, dark,
                          crease=30)
    model = model + fins(4, dark, (.25, .85), (.62, 1.0), .82, .10, 45, .38)
    return model + hoops(YELLOW, 0.90, 0.70)


def homing():
    body = metal('white paint', (0.95, 0.97, 1.0), 0.2)
    eye = light('seeker', (0.30, 0.85, 1.0), 0.8)
    red = plain('red paint', (1.0, 0.20, 0.12), 0.25)
    dark = gunmetal()
    model = lathe([(-1.02, .06), (-.98, .15), (-.86, .22)], 8, eye, crease=60)
    model = model + lathe([(-.88, .21), (-.80, .25), (.70, .25), (.86, .17)],
                          8, body, crease=30)
    model = model + lathe([(.84, .12), (.98, .22)], 8, dark)
    model = model + fins(4, red, (.45, .92), (.72, .98), .66, .07, 0, .2)
    model = model + fins(4, red, (-.55, -.25), (-.36, -.22), .52, .06, 0, .2)
    # the sight: a third hoop with four marks
    sight = light('sight', (1.0, 0.25, 0.15), 0.8)
    model = model + hoop(-.05, .80, sight, .06, .06)
    for k in range(4):
        model = model + slab((.24, .07, .07), (.66, 0, -.05),
                             sight).rotate('z', 45 + 90 * k)
    return model + hoops(YELLOW, 0.82, 0.80)


def missile_speed():
    """A dart with its wings swept back, on a long flame."""
    body = metal('white paint', (0.95, 0.97, 1.0), 0.2)
    nose = plain('red nose', (1.0, 0.16, 0.10), 0.3)
    fire = light('flame', (1.0, 0.50, 0.08), 0.9)
    hot = light('hot flame', (1.0, 0.95, 0.55), 1.0)
    arrow = light('arrow', (1.0, 0.36, 0.08), 0.6)
    model = lathe([(-1.02, .0), (-.84, .17), (-.60, .27)], 8, nose, crease=50)
    model = model + lathe([(-.61, .27), (.18, .27), (.28, .20)], 8, body,
                          crease=30)
    model = model + fins(4, arrow, (-.60, -.30), (-.06, .06), .72, .08, 0,
                         .22)
    model = model + fins(4, arrow, (-.14, .20), (.42, .54), .72, .08, 45, .22)
    model = model + lathe([(.24, .18), (.44, .34), (.62, .27), (1.06, .0)], 8,
                          fire, caps=(False, True), crease=50)
    model = model + lathe([(.20, .23), (.30, .25), (.40, .23)], 8, hot,
                          caps=(False, False))
    return model + hoops(YELLOW, 0.88, 0.76)


# --- engines ---------------------------------------------------------------

def engine():
    shell, dark = steel(), gunmetal()
    fire = light('exhaust', (0.30, 0.75, 1.0), 0.9)
    hot = light('hot exhaust', (0.85, 0.97, 1.0), 1.0)
    paint_ = plain('orange paint', (1.0, 0.48, 0.08), 0.25)
    model = lathe([(-.92, .46), (-.97, .56), (-.84, .62), (-.3, .66),
                   (.05, .60), (.30, .40)], 12, shell, crease=35,
                  caps=(False, False))
    model = model + lathe([(-.92, .46), (-.74, .43)], 12, dark,
                          caps=(False, False)).flip()
    model = model + lathe([(-.78, .16), (-.74, .44)], 12, dark,
                          caps=(False, False))
    spike = lathe([(-1.02, .03), (-.85, .13), (-.70, .18)], 6, paint_,
                  caps=(True, False), crease=60)
    model = model + spike
    for k in range(6):
        blade = Mesh([[(.14, -.07, -.80), (.14, .03, -.86), (.44, .08, -.86),
                       (.44, -.12, -.80)]], shell)
        blade.P = blade.P[:, ::-1] if blade.face_normals()[0, 2] > 0 \
            else blade.P
        model = model + blade.rotate('z', 60 * k)
    model = model + lathe([(-.30, .66), (-.18, .71), (-.05, .63)], 12, paint_,
                          caps=(False, False), crease=30)
    model = model + lathe([(.22, .36), (.62, .58)], 12, dark,
                          caps=(False, False), crease=30)
    model = model + lathe([(.36, .38), (.60, .54)], 12, hot,
                          caps=(False, False)).flip()
    model = model + lathe([(.40, .10), (.55, .42), (.78, .26), (1.05, .0)],
                          8, fire, crease=60)
    return model + hoops(GREEN, 0.90, 0.66)


# --- defence ---------------------------------------------------------------

def emblem(half, material, rim, thick):
    """A heater shield in the X-Z plane, its point towards +Z."""
    outline = np.array([(.06, -.98), (.36, -.90), (.74, -.82), (.74, -.10),
                        (.58, .40), (.30, .78), (.05, 1.0)]) * half
    left = outline[::-1] * (-1, 1)
    ring = np.concatenate([outline, left])

    def layer(scale, y):
        return np.stack([ring[:, 0] * scale, np.full(len(ring), y),
                         ring[:, 1] * scale], 1)
    edge = loft([layer(.86, -thick), layer(1, -thick * .7),
                 layer(1, thick * .7), layer(.86, thick)], rim,
                caps=(False, False), crease=30)
    face = loft([layer(.87, thick * .9), layer(.55, thick * 1.35)], material,
                caps=(False, False))
    quads = list(face.P)
    top = layer(.55, thick * 1.35)
    k = len(top)
    for i in range(k // 2 - 1):
        quads.append([top[i], top[i + 1], top[k - 2 - i], top[k - 1 - i]])
    face = Mesh(np.array(quads), material, crease=40).clean()
    wrong = face.face_normals()[:, 1] < 0
    face.P[wrong] = face.P[wrong][:, ::-1]
    return edge + face + face.copy().mirror('y')


def shield():
    face = plain('blue enamel', (0.16, 0.42, 1.0), 0.42)
    rim = plain('bright rim', (0.93, 0.96, 1.0), 0.30)
    one = emblem(.98, face, rim, .12)
    other = emblem(.98, face, rim, .12).rotate('z', 90)
    model = one + other
    return model + hoop(-.62, .88, hoop_glow(BLUE)) \
        + hoop(.42, .88, hoop_glow(BLUE))


def invulnerable():
    """A star with fourteen points, the brightest thing there is."""
    gold = plain('bright gold', (0.92, 0.60, 0.14), 0.5)
    blue = light('blue fire', (0.35, 0.60, 1.0), 0.8)
    points = []
    for axis in range(3):
        for sign in (-1, 1):
            d = np.zeros(3)
            d[axis] = sign
            points.append((d, 1.02, .30, gold, 0))
    for x in (-1, 1):
        for y in (-1, 1):
            for z in (-1, 1):
                points.append((np.array([x, y, z]) / 3 ** .5, .80, .24, blue,
                               45))
    model = Mesh()
    for d, length, radius, material, turn in points:
        spike = lathe([(.05, radius), (.24, radius), (length, .0)], 4,
                      material, caps=(False, True), crease=5, turn=turn / 90.)
        u = np.cross(d, (.31, .52, .79) if turn else (d[1], d[2], d[0]))
        u /= np.linalg.norm(u)
        v = np.cross(d, u)
        model = model + spike.transform(np.stack([u, v, d], 1))
    core = lathe([(-.40, .05), (-.32, .28), (0, .42), (.32, .28),
                  (.40, .05)], 8, light('heart', (1, .97, .8), .9), crease=60)
    return model + core + hoops(BLUE, 0.74, 0.56)


def extra_life():
    """The player's ship in small."""
    body = metal('white paint', (0.96, 0.97, 1.0), 0.25)
    trim = plain('orange paint', (1.0, 0.48, 0.08), 0.3)
    glass = plain('canopy', (0.25, 0.60, 1.0), 0.4)
    dark = gunmetal()
    fire = light('exhaust', (0.40, 0.80, 1.0), 0.9)
    shape = section_box(1, 1, .28)
    model = loft([ring_at(shape * (w, h), z, 0, y) for z, w, h, y in (
        (-1.0, .07, .05, 0), (-.55, .26, .20, 0), (-.1, .36, .30, .02),
        (.5, .38, .32, .02), (.85, .28, .22, .02))], body, crease=35)
    model = model + loft([ring_at(shape * (w, h), z, 0, y) for z, w, h, y in (
        (-.5, .10, .06, .10), (-.28, .20, .18, .14), (.05, .22, .20, .17),
        (.35, .12, .10, .16))], glass, crease=50)
    side = wing([((.14, 0, -.25), (.14, 0, .70), .14),
                 ((.78, .02, .40), (.78, .02, .80), .07)], body)
    side = side + wing([((.76, .02, .18), (.76, .02, .92), .13),
                        ((.94, .03, .40), (.94, .03, .92), .08)], trim)
    side = side + wing([((.24, .08, .35), (.24, .08, .85), .08),
                        ((.34, .46, .72), (.34, .46, .95), .05)], trim,
                       up=(1, -.2, 0))
    side = side + lathe([(-.25, .035), (.5, .05)], 6, dark).move(.52, -.02, 0)
    model = model + side.mirrored('x')
    model = model + lathe([(.82, .10), (.92, .12), (1.06, .0)], 6, fire)
    model.move(0, -.06, 0)
    return model + hoops(WHITE, 0.98, 0.80)


# --- capacity --------------------------------------------------------------

def crate():
    """Materials shared by the two capacity powerups."""
    case = metal('violet case', (0.55, 0.30, 0.90), 0.30)
    glow = light('plus', (1.0, 0.95, 1.0), 0.95)
    return case, glow


def bullet_capacity():
    case, glow = crate()
    gold = brass()
    tip = plain('copper tip', (1.0, 0.34, 0.16), 0.3)
    model = box((1.06, 1.06, 1.05), (0, 0, .30), case, .12)
    for k in range(4):
        sign = plus(.56, .18, .08, glow).rotate('x', -90).move(0, .58, .30)
        model = model + sign.rotate('z', 90 * k)
    for x in (-.30, 0, .30):
        for y in (-.30, .30):
            shell = lathe([(-.2, .14), (-.52, .14)], 6, gold,
                          caps=(False, False))
            nose = lathe([(-.52, .14), (-.92, .0)], 6, tip,
                         caps=(False, True), crease=50)
            model = model + (shell + nose).move(x, y, 0)
    return model + hoops(VIOLET, 0.88, 0.82)


def missile_capacity():
    case, glow = crate()
    white = metal('white paint', (0.95, 0.97, 1.0), 0.25)
    nose = plain('yellow nose', (1.0, 0.78, 0.08), 0.35)
    model = Mesh()
    for x in (-1, 1):
        for y in (-1, 1):
            pod = lathe([(-.40, .33), (.92, .33)], 8, case, crease=30)
            body = lathe([(-.40, .22), (-.62, .22)], 6, white,
                         caps=(False, False))
            tip = lathe([(-.62, .22), (-1.02, .0)], 6, nose,
                        caps=(False, True), crease=50)
            model = model + (pod + body + tip).move(.33 * x, .33 * y, 0)
    for k in range(4):
        sign = plus(.50, .17, .08, glow).rotate('x', -90).move(0, .68, .30)
        model = model + sign.rotate('z', 90 * k)
    model = model + slab((1.0, 1.0, .16), (0, 0, .30), gunmetal())
    return model + hoops(VIOLET, 0.92, 0.70)


# --- magnets ---------------------------------------------------------------

def horseshoe(radius, thick, leg, red, tips, n=8, bends=8):
    """An arch in the X-Z plane, its legs towards -Z."""
    path = [(radius, 0, -leg), (radius, 0, -leg * .4)]
    for a in np.linspace(0, 180, bends):
        path.append((radius * np.cos(np.radians(a)), 0,
                     radius * np.sin(np.radians(a))))
    path += [(-radius, 0, -leg * .4), (-radius, 0, -leg)]
    model = tube(path, thick, n, red, crease=50)
    for s in (-1, 1):
        model = model + lathe([(-leg - .34, thick * 1.08),
                               (-leg + .06, thick * 1.08)], n, tips,
                              caps=(True, bends > 5), crease=30).move(s * radius, 0, 0)
    return model


def magnet_weak():
    red = plain('magnet red', (0.95, 0.10, 0.14), 0.36)
    tips = plain('bare iron', (0.92, 0.94, 0.98), 0.40)
    model = horseshoe(.52, .24, .36, red, tips).move(0, 0, .12)
    return model + hoop(-.86, .72, hoop_glow(PINK)) \
        + hoop(-.60, .88, hoop_glow(PINK))


def magnet_strong():
    red = plain('magnet red', (0.95, 0.10, 0.14), 0.36)
    tips = plain('bare iron', (0.92, 0.94, 0.98), 0.40)
    arc = light('arc', (0.70, 0.90, 1.0), 1.0)
    one = horseshoe(.58, .21, .36, red, tips, 6, 5).move(0, 0, .14)
    model = one + one.copy().rotate('z', 90)
    random = np.random.RandomState(8)
    for k in range(4):
        a, b = np.radians(90 * k), np.radians(90 * (k + 1))
        path = []
        for f in np.linspace(0, 1, 3):
            p = np.array([np.cos(a), np.sin(a)]) * (1 - f) \
                + np.array([np.cos(b), np.sin(b)]) * f
            p *= .58 + (random.uniform(-.16, .16) if 0 < f < 1 else 0)
            path.append((p[0], p[1], -.66 + (random.uniform(-.12, .12)
                                             if 0 < f < 1 else 0)))
        model = model + tube(path, .05, 3, arc, caps=(False, False))
    model = model + lathe([(.5, .26), (.86, .30), (1.0, .18)], 6,
                          gunmetal(), caps=(False, True), crease=30)
    return model + hoops(PINK, 0.92, 0.80)


# --- suckers ---------------------------------------------------------------

def sucker(level):
    """A leech with a ring of teeth; one, two or three burning bands."""
    tint = {1: (0.50, 1.0, 0.15), 2: (1.0, 0.55, 0.05),
            3: (1.0, 0.08, 0.12)}[level]
    skin = plain('dark skin', (0.44, 0.19, 0.52), 0.22, shininess=0.5)
    horn = plain('horn', (0.80, 0.72, 0.60), 0.18)
    glow = light('venom', tint, 0.95)
    dark = Material('maw', (0.10, 0.02, 0.08), luminosity=0.2)
    size = 0.50 + 0.08 * level
    model = lathe([(-.72, size * .74), (-.80, size * .98), (-.62, size * 1.1),
                   (-.2, size), (.3, size * .82), (.72, size * .48),
                   (1.0, .06)], 10, skin, crease=60, caps=(False, True))
    model = model + lathe([(-.74, size * .74), (-.35, size * .45)], 10, dark,
                          caps=(False, False)).flip()
    model = model + lathe([(-.52, .05), (-.46, size * .40),
                           (-.30, size * .5)], 8, glow, caps=(True, False))
    for k in range(6):
        tooth = lathe([(0, .10), (-.36, .0)], 4, horn,
                      caps=(False, True), crease=20)
        model = model + tooth.rotate('y', 18).move(
            size * .88, 0, -.74).rotate('z', 60 * k)
    for k in range(level):
        z = -.34 + .34 * k
        r = np.interp(z, [-.62, -.2, .3, .72],
                      np.array([1.1, 1.0, .82, .48]) * size) + .035
        model = model + lathe([(z - .09, r - .05), (z, r + .03),
                               (z + .09, r - .08)], 10, glow, caps=(False, False), crease=40)
    for k in range(level + 2):
        path = [(size * .7, 0, .15), (size * 1.35, 0, .35),
                (size * 1.62 - .08 * level, 0, .72),
                (size * 1.2, 0, 1.0)]
        model = model + tube(path, [.12, .10, .06, .012], 4, skin,
                             caps=(False, True), crease=60).rotate('z', 360. * k / (level + 2)
                                               + 30)
    return model


# --- coins -----------------------------------------------------------------

def coin_picture(text, n=128):
    """A coin's face in grey: beads, rim and number in relief."""
    y, x = np.mgrid[0:n, 0:n].astype(float)
    u, v = (x + .5) / n * 2 - 1, (y + .5) / n * 2 - 1
    r = np.hypot(u, v)
    height = paint.smooth(.80, .86, r) * .7
    angle = np.arctan2(v, u)
    count = 28
    bead = np.hypot(r - .72, (((angle / (2 * np.pi) * count) % 1) - .5)
                    * 2 * np.pi / count * r)
    height = np.maximum(height, paint.smooth(.05, .02, bead) * .5)
    sign = paint.Mask(n, n)
    tall = {1: .46, 2: .42, 3: .33}[len(text)]
    paint.write(sign, text, .5, .5 - tall / 2, tall, .20, .42, .78, True)
    height = np.maximum(height, sign.array())
    height = paint.blur(height, .9)
    picture = paint.blank(n, n, '#dadada')
    picture *= (0.96 + .06 * np.cos(angle * 40))[..., None]
    picture = paint.occlusion(picture, height, 4, 1.5)
    picture *= (1 + .34 * height)[..., None]
    return np.clip(paint.relief(picture, height, .8), 0, 1)


def coin(radius, colour, text, name, thick):
    def face(side, flip):
        k = .5 / radius * flip
        return Material('%s %s' % (name, side), colour,
                        specular=(.8, .8, .7), shininess=.35,
                        luminosity=.56, textures=[Texture(
                            'coin%s.tga' % text, 'R', (k, 0, 0, .5),
                            (0, 0, -.5 / radius, .5))])
    # Edge-on twice a turn, so the edge has to shine too: deep bevels run
    # up to a burning ridge, as bright as a hoop.
    edge = plain('%s edge' % name, colour, .40)
    ridge = light('%s ridge' % name, [min(1, c * 1.1 + .06) for c in colour],
                  .75)
    n = 20
    t = (np.arange(n) + .5) * 2 * np.pi / n

    def ring(r, y):
        return np.stack([r * radius * np.cos(t), np.full(n, y),
                         r * radius * np.sin(t)], 1)
    rim = loft([ring(.80, -thick), ring(.94, -thick * .62)], edge,
               caps=(False, False), crease=20)
    rim = rim + rim.copy().mirror('y')
    rim = rim + loft([ring(.94, -thick * .62), ring(1, 0),
                      ring(.94, thick * .62)], ridge, caps=(False, False),
                     crease=20)
    upper, lower = face('front', 1), face('back', -1)
    rings = [ring(.80, thick), ring(.72, thick * .84)]
    quads = list(np.stack([rings[0], np.roll(rings[0], -1, 0),
                           np.roll(rings[1], -1, 0), rings[1]], 1))
    last = rings[-1]
    for i in range(n // 2 - 1):
        quads.append(np.array([last[i], last[i + 1], last[n - 2 - i],
                               last[n - 1 - i]]))
    disc = Mesh(np.array(quads), upper, crease=30).clean()
    wrong = disc.face_normals()[:, 1] < 0
    disc.P[wrong] = disc.P[wrong][:, ::-1]
    back = disc.copy().mirror('y')
    back.mat = [lower] * len(back)
    return rim + disc + back


# --- gems ------------------------------------------------------------------

def crystal(profile, n, colour, name, spread=.22, seed=0, count=3):
    """A cut stone: flat facets of some tones, so that it sparkles."""
    random = np.random.RandomState(seed)
    tones = []
    for k in ((1,), (1, 2), range(3))[count - 1]:
        f = 1 + spread * (k - 1) * 2
        tone = tuple(min(1.0, c * f + (.16 if k == 2 else 0)) for c in colour)
        tones.append(Material('%s %d' % (name, k + 1), tone,
                              specular=(1, 1, 1), shininess=.5,
                              luminosity=.46, reflection=.4))
    stone = lathe(profile, n, tones[0], crease=1)
    stone.mat = [tones[random.randint(count)] for _ in stone.mat]
    return stone


def gem1():
    return crystal([(-.95, .0), (-.62, .46), (-.46, .66), (.10, .66),
                    (.95, .0)], 6, (.10, .80, .30), 'emerald', seed=1)


def gem2():
    stone = crystal([(-.66, .40), (-.60, .46), (-.34, .92), (-.14, .92),
                     (.40, .46), (1.0, .0)], 10, (.20, .44, 1.0), 'sapphire',
                    seed=2)
    return stone


def gem3():
    model = crystal([(-1.12, .0), (-.72, .30), (-.5, .38), (.5, .38),
                     (.72, .30), (1.12, .0)], 6, (.95, .25, .85), 'star gem',
                    seed=3)
    for k in range(6):
        arm = crystal([(.05, .20), (.55, .24), (.98, .0)], 6,
                      ((1.0, .42, .30), (1.0, .85, .25), (.35, 1.0, .5),
                       (.3, .85, 1.0), (.5, .45, 1.0), (1, .4, .9))[k],
                      'ray %d' % (k + 1), seed=10 + k, count=1)
        arm.rotate('y', 90).rotate('z', 60 * k + 30)
        model = model + arm
    return model


# --- all -------------------------------------------------------------------

def metal_picture(n=128):
    """Brushed metal with a few seams and rivets, tiling."""
    y, x = np.mgrid[0:n, 0:n] / float(n)
    tone = 0.90 + 0.10 * noise.fbm(np.stack([x * 4, y * 4], -1), 4, 3,
                                   period=4)
    tone += 0.06 * noise.gradient(np.stack([x * 2, y * 32], -1), 4,
                                  period=32)
    seam = np.abs((y * 2) % 1 - .5)
    tone *= 1 - .45 * paint.smooth(.05, .015, seam)
    dots = np.hypot(((x * 8) % 1 - .5) / 8, (((y * 2) % 1) - .62) / 2)
    tone *= 1 - .35 * paint.smooth(.022, .012, dots)
    return np.clip(paint.blank(n, n, (1, 1, 1)) * tone[..., None], 0, 1)


POWERUPS = [
    ('PupSingleLaser', lambda: laser(1)),
    ('PupEngineUpgrade', engine),
    ('PupIncBullets', extra_bullet),
    ('PupDoubleLaser', lambda: laser(2)),
    ('pupDumbfireMissile', dumbfire),
    ('pupMissileSpeedUp', missile_speed),
    ('PupTripleLaser', lambda: laser(3)),
    ('PupHomingMissile', homing),
    ('pupMagnetWeak', magnet_weak),
    ('PupQuadLaser', lambda: laser(4)),
    ('PupAutofire', autofire),
    ('PupIncShields', shield),
    ('PupCannon', cannon),
    ('pupMagnetStrong', magnet_strong),
    ('Pup1Up', extra_life),
    ('pupIncBulletCapacity', bullet_capacity),
    ('pupIncMissileCapacity', missile_capacity),
    ('PupInvulnerability', invulnerable),
    ('PupSucker1', lambda: sucker(1)),
    ('PupSucker2', lambda: sucker(2)),
    ('PupSucker3', lambda: sucker(3)),
    ('MoneyCoin1', lambda: coin(.80, (.74, .36, .16), '10', 'bronze', .40)),
    ('MoneyCoin2', lambda: coin(.90, (.60, .66, .78), '50', 'silver', .44)),
    ('MoneyCoin3', lambda: coin(1.0, (.92, .54, .06), '100', 'gold', .48)),
    ('GemPoints1', gem1),
    ('GemPoints2', gem2),
    ('GemPoints3', gem3),
]


def build(out_dir, names):
    images = os.path.join(out_dir, 'images')
    tga.write_tga(os.path.join(images, METAL), metal_picture())
    for text in ('10', '50', '100'):
        tga.write_tga(os.path.join(images, 'coin%s.tga' % text),
                      coin_picture(text))
    for name, make in POWERUPS:
        if name not in names:
            continue
        drop_hidden(make(), pixels=240, down=-1, views=32).save(
            os.path.join(out_dir, 'Objects', name + '.aob'))
