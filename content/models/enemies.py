"""The four swarm kinds.

One colour and one outline each: Dravek a red forward crescent, jalka a green
bell on legs, Dravek2Shot a violet arrowhead with two prongs, Fryjahn a golden
claw of four arms.  Their faces (towards -Z) burn, since the view from behind
the player shows them through much fog.
"""
import os

from aob import Material
from mesh import *  # noqa: F401,F403
from skin import Skin, smooth

CHITIN = dict(specular=(0.5, 0.45, 0.5), shininess=0.3)


def glow(name, colour, luminosity=1.0, **kw):
    return Material(name, colour, luminosity=luminosity, **kw)


def gem(r, depth, mat, n=6):
    """Small bead facing -Z; its open back sits in the body."""
    return lathe([(-depth, r * 0.45), (-depth * 0.35, r), (depth * 0.4, r * 0.7)], n, mat, caps=(True, False), crease=80)


def aim(m, direction):
    """Turns a part made along -Z to look in a direction."""
    d = np.asarray(direction, float)
    d = d / np.linalg.norm(d)
    u = np.array([0, 1.0, 0]) if abs(d[1]) < 0.9 else np.array([0, 0, 1.0])
    x = np.cross(d, u)
    x /= np.linalg.norm(x)
    y = np.cross(x, d)
    return m.transform(np.stack([x, y, -d], 1))


def body(stations, mat, n=8, power=2.2, crease=55):
    """Loft of superelliptic sections: (z, width, height, y)."""
    return loft([ring_at(section_round(w, h, n, power), z, 0, y) for z, w, h, y in stations], mat, crease=crease)


def chitin(skin, base, edge, dark, scale=1.6, seed=1):
    """Organic ground: base tone mottled to dark, light growth lines, dark cell seams."""
    skin.fill(base)
    f, border = skin.cells(scale, seed, mirror=True)
    skin.fill(dark, 0.55 * smooth(0.16, 0.0, border))
    skin.fill(edge, 0.45 * smooth(0.45, 0.1, f))
    skin.shade(1 + 0.22 * skin.noise(scale * 1.3, 4, seed + 3))
    return skin


def skins(name, shape, images, paint, top=256, side=(256, 128), lum=0.10, kw=CHITIN):
    """Paints top and side pictures; gives the two materials."""
    s_top = Skin(name + "_top.tga", shape, "top", top)
    s_side = Skin(name + "_side.tga", shape, "side", side[0], side[1])
    paint(s_top, "top")
    paint(s_side, "side")
    return (Material(name + " top", (1, 1, 1), luminosity=lum, textures=[s_top.save(images)], **kw),
            Material(name + " side", (1, 1, 1), luminosity=lum, textures=[s_side.save(images)], **kw))


def faced(m, only, top, side, face, lean=0.45):
    """Skins by direction, but whatever leans towards the nose takes the face: that is all one sees from ahead."""
    m.by_direction(only, top, side, face)
    return m.paint(lambda c, n, old: face if old in (top, side) and n[2] < -lean else old)


# ---------------------------------------------------------------- Dravek

def dravek(images):
    RED, DEEP, BONE = (0.90, 0.13, 0.08), (0.32, 0.03, 0.06), (1.0, 0.72, 0.45)
    skin = Material("chitin", RED)
    m = body([(-1.02, 0.50, 0.40, 0.0), (-0.75, 0.95, 0.72, 0.04), (-0.2, 1.15, 0.86, 0.10), (0.4, 0.95, 0.74, 0.10),
              (0.95, 0.52, 0.46, 0.08), (1.25, 0.26, 0.24, 0.12)], skin)
    horn = tube(curve([(0.30, 0.05, 0.10), (1.05, 0.10, 0.52), (1.62, 0.22, 0.10), (1.66, 0.34, -0.75), (1.38, 0.40, -1.42)], 7),
                [0.50, 0.50, 0.46, 0.40, 0.32, 0.20, 0.02], 6, skin, caps=(False, True), crease=75, flat=0.46)
    m += horn.mirrored()
    sting = tube(curve([(0, 0.10, 1.05), (0, 0.45, 1.50), (0, 0.98, 1.45), (0, 1.18, 0.95)], 6), [0.17, 0.17, 0.15, 0.13, 0.10, 0.06], 6, skin, caps=(False, False), crease=75)
    m += sting

    def paint(s, side):
        chitin(s, RED, (1.0, 0.36, 0.18), DEEP, 1.7, 11)
        if side == "top":
            s.shape(s.path(curve([(0.9, -0.45), (1.55, -0.15), (1.72, 0.7), (1.42, 1.45)], 12), True) - 0.10, BONE, 0.9, 0.1)
            for z in (-0.55, -0.15, 0.25):
                s.line([(0, -z - 0.12), (0.35, -z), (0.62, -z + 0.05)], 0.07, DEEP, 0.9, True)
            s.shape(s.poly([(0, 1.1), (0.12, 0.6), (0.07, -1.3), (0, -1.4)], True), BONE, 0.85)
        else:
            for z in (-0.5, 0.0, 0.5):
                s.line([(z, 0.6), (z + 0.1, -0.4)], 0.07, DEEP, 0.8)
            s.shape(s.rect(0.7, 0.9, 1.2, 1.4), BONE, 0.9)
        s.occlude(0.9, (0.08, 0.3), 0.35)
    top, side = skins("dravek", m, images, paint, lum=0.2)
    faced(m, skin, top, side, Material("dravek face", (1.0, 0.38, 0.24), luminosity=0.75, **CHITIN))
    eye = glow("dravek eye", (1.0, 0.84, 0.22), 1.0)
    m += gem(0.34, 0.20, eye, 8).move(0, 0.04, -0.98)
    m += aim(gem(0.14, 0.09, eye, 4), (0.35, 1, -0.4)).move(0.30, 0.44, -0.48).mirrored()
    # the horns' inner edges burn, and their tips
    m += tube(curve([(0.52, 0.12, -0.30), (1.02, 0.16, 0.03), (1.27, 0.26, -0.18), (1.36, 0.36, -0.72), (1.34, 0.41, -1.34)], 6),
              [0.06, 0.10, 0.11, 0.10, 0.09, 0.14], 4, glow("dravek blades", (1.0, 0.50, 0.30)), caps=(False, True), crease=95).mirrored()
    m += aim(gem(0.16, 0.14, eye), (0, 0.1, -1)).move(0, 1.15, 0.98)
    return m


# ---------------------------------------------------------------- jalka

def jalka(images):
    GREEN, DEEP, LIME = (0.16, 0.68, 0.16), (0.02, 0.20, 0.10), (0.72, 1.0, 0.30)
    skin = Material("bell", GREEN)
    bell = lathe([(-0.16, 0.92), (-0.22, 1.18), (-0.02, 1.32), (0.28, 1.18), (0.58, 0.84), (0.82, 0.36)], 10, skin, axis="y", crease=70)

    def scallop(p):
        a = np.arctan2(p[:, 0], -p[:, 2])
        r = np.hypot(p[:, 0], p[:, 2])
        k = 1 - 0.12 * np.cos(5 * a) * smooth(0.5, 1.3, r)
        p[:, 0] *= k
        p[:, 2] *= k
        return p
    m = bell.bend(scallop)
    leg = tube(curve([(0, -0.10, -0.95), (0, -0.02, -1.55), (0, -0.62, -1.68), (0, -1.35, -1.30)], 5), [0.24, 0.23, 0.20, 0.15, 0], 5, skin, caps=(False, True), crease=75)
    m += leg.spread(5, "y", 36)

    def paint(s, side):
        chitin(s, GREEN, (0.40, 0.90, 0.28), DEEP, 1.9, 23)
        if side == "top":
            a = np.arctan2(s.A, s.B)
            r = np.hypot(s.A, s.B)
            s.fill(LIME, 0.85 * smooth(0.55, 0.95, -np.cos(5 * a)) * smooth(0.25, 0.5, r))
            s.fill(DEEP, 0.9 * smooth(0.86, 0.97, np.cos(5 * a)) * smooth(0.3, 0.5, r) * smooth(1.4, 1.2, r))
            s.fill(DEEP, smooth(0.06, 0.02, np.abs(r - 0.46)))
        else:
            s.shape(s.rect(-1.5, -0.12, 1.5, 0.02), LIME, 0.8, 0.06)
            s.fill(DEEP, 0.6 * smooth(-0.5, -1.4, s.B))
        s.occlude(0.8, (0.08, 0.3), 0.3)
    top, side = skins("jalka", m, images, paint, side=(256, 128), lum=0.15)
    faced(m, skin, top, side, side_on_front(side))
    core = glow("jalka core", (0.66, 1.0, 0.14))
    m += lathe([(0.76, 0.34), (0.92, 0.26), (1.0, 0.06)], 8, core, axis="y", crease=80)
    m += lathe([(-0.12, 0.80), (-0.38, 0.72), (-0.62, 0.40), (-0.70, 0.06)], 10, core, axis="y", crease=80)
    eye = glow("jalka eyes", (1.0, 0.92, 0.30))
    m += gem(0.27, 0.18, eye, 8).move(0, 0.12, -1.07)
    m += aim(gem(0.18, 0.12, eye), (0.4, 0.2, -1)).move(0.50, 0.16, -1.06).mirrored()
    return m


def side_on_front(m):
    """The side picture thrown along Z, for the faces that look fore and aft."""
    from aob import Texture
    t = m.textures[0]
    turn = lambda p: (p[2], p[1], 0.0, p[3])
    return Material(m.name + " front", m.colour, luminosity=m.luminosity + 0.75, specular=m.specular, shininess=m.shininess,
                    textures=[Texture(t.name, "R", turn(t.s_plane), turn(t.t_plane))])


# ---------------------------------------------------------------- Dravek with two guns

def dravek2(images):
    VIOLET, DEEP, PALE = (0.58, 0.20, 0.88), (0.16, 0.03, 0.30), (0.96, 0.72, 1.0)
    skin = Material("chitin", VIOLET)
    m = body([(-0.85, 0.62, 0.36, -0.02), (-0.55, 0.98, 0.62, 0.02), (0.1, 1.05, 0.86, 0.10), (0.8, 0.70, 0.66, 0.10),
              (1.35, 0.34, 0.34, 0.06), (1.62, 0.12, 0.14, 0.04)], skin)
    m += wing([((0.25, 0.12, -0.55), (0.25, 0.12, 0.95), 0.34), ((1.10, 0.10, 0.10), (1.10, 0.10, 1.00), 0.20),
               ((1.88, -0.55, 1.20), (1.88, -0.55, 1.72), 0.06)], skin).mirrored()
    m += wing([((0, 0.35, -0.05), (0, 0.35, 1.05), 0.20), ((0, 1.02, 0.95), (0, 1.02, 1.50), 0.06)], skin, up=(1, 0, 0))
    prong = tube(curve([(0.42, -0.04, -0.35), (0.62, -0.02, -0.95), (0.58, 0.0, -1.40), (0.50, 0.0, -1.72)], 5), [0.24, 0.22, 0.18, 0.15, 0.12], 6, skin, caps=(False, False), crease=75)
    m += prong.mirrored()

    def paint(s, side):
        chitin(s, VIOLET, (0.78, 0.42, 1.0), DEEP, 1.6, 31)
        if side == "top":
            s.line([(0.35, 0.5), (1.12, -0.12), (1.9, -1.25)], 0.16, PALE, 0.95, True)
            for k in range(3):
                s.line([(0.5, 0.05 - 0.3 * k), (1.0 + 0.22 * k, -0.35 - 0.35 * k)], 0.06, DEEP, 0.9, True)
            s.shape(s.poly([(0.52, 1.75), (0.72, 1.2), (0.66, 0.75), (0.44, 0.75), (0.42, 1.2)], True), DEEP, 0.7)
            s.shape(s.rect(-0.06, -1.7, 0.06, 0.5), PALE, 0.9)
        else:
            s.line([(-0.05, 0.42), (0.95, 1.02)], 0.14, PALE, 0.95)
            s.shape(s.rect(-1.8, -0.7, -0.9, 0.5), DEEP, 0.4)
            for z in (0.2, 0.5, 0.8):
                s.line([(z, 0.45), (z + 0.35, 0.95)], 0.05, DEEP, 0.8)
        s.occlude(0.9, (0.08, 0.3), 0.35)
    top, side = skins("dravek2", m, images, paint, lum=0.18)
    faced(m, skin, top, side, Material("dravek2 face", (0.78, 0.40, 1.0), luminosity=0.75, **CHITIN), 0.3)
    hot = glow("dravek2 muzzle", (1.0, 0.36, 0.90))
    m += lathe([(-1.66, 0.13), (-1.74, 0.17), (-1.86, 0.16), (-1.95, 0.05)], 6, hot, caps=(False, True), crease=80).move(0.50, 0, 0).mirrored()
    eye = glow("dravek2 eyes", (0.35, 0.95, 1.0))
    slit = tube([(0.06, 0.06, -0.92), (0.24, 0.14, -0.88), (0.46, 0.28, -0.66)], [0.13, 0.15, 0.03], 6, eye)
    m += slit.mirrored()
    # burning leading edges
    m += tube([(0.50, 0.12, -0.36), (1.10, 0.10, 0.08), (1.90, -0.56, 1.20)], [0.09, 0.12, 0.05], 4, hot, caps=(False, True), crease=95).mirrored()
    # a keen edge on the fin, too
    m += tube([(0, 0.42, -0.08), (0, 1.00, 0.92)], [0.07, 0.05], 4, hot, caps=(False, False), crease=95)
    m += gem(0.13, 0.1, hot, 4).mirror("z").move(0, 0.05, 1.55)
    return m


# ---------------------------------------------------------------- Fryjahn

def fryjahn(images):
    GOLD, DEEP, LIGHT = (0.95, 0.66, 0.12), (0.30, 0.14, 0.02), (1.0, 0.92, 0.55)
    skin = Material("shell", GOLD)
    m = body([(-0.55, 0.80, 0.80, 0), (-0.2, 1.18, 1.18, 0), (0.35, 1.30, 1.30, 0), (0.95, 0.95, 0.95, 0), (1.45, 0.36, 0.36, 0)], skin, n=8, power=2.0)
    arm = tube(curve([(0.30, 0.30, 0.55), (1.02, 1.02, 0.72), (1.24, 1.24, 0.20), (1.16, 1.16, -0.45), (1.0, 1.0, -0.95)], 5),
               [0.34, 0.36, 0.36, 0.27, 0.15], 6, skin, caps=(False, False), crease=75)
    blade = tube([(1.15, 1.15, 0.40), (1.36, 1.36, 0.72), (1.46, 1.46, 1.25)], [0.30, 0.22, 0.02], 4, skin, caps=(False, True))
    quarter = arm + blade
    m += quarter.mirrored("x").mirrored("y")

    def paint(s, side):
        chitin(s, GOLD, LIGHT, DEEP, 1.5, 41)
        mirror = side == "top"
        A, B = (np.abs(s.A), s.B) if mirror else (np.abs(s.B), -s.A)     # across, towards the nose
        s.fill(DEEP, 0.9 * smooth(0.09, 0.03, np.abs((B + 0.3) % 0.5 - 0.25)) * smooth(0.75, 0.65, A))
        s.fill(LIGHT, 0.8 * smooth(0.14, 0.08, np.abs(A - 1.22)))
        s.fill(DEEP, 0.75 * smooth(0.5, 0.75, B) * smooth(0.7, 0.8, A))
        s.occlude(0.8, (0.08, 0.3), 0.3)
    top, side = skins("fryjahn", m, images, paint, side=(256, 128), lum=0.08)
    faced(m, skin, top, side, Material("fryjahn face", (1.0, 0.72, 0.22), luminosity=0.7, **CHITIN))
    hot = glow("fryjahn muzzle", (1.0, 0.46, 0.88))
    core = glow("fryjahn core", (0.30, 0.90, 1.0))
    muzzle = lathe([(-0.88, 0.18), (-1.0, 0.23), (-1.16, 0.12)], 6, hot, caps=(False, True), crease=80).move(1.0, 1.0, 0)
    m += muzzle.mirrored("x").mirrored("y")
    m += lathe([(-0.50, 0.42), (-0.62, 0.45), (-0.80, 0.34), (-0.90, 0.08)], 8, core, crease=80)
    m += gem(0.15, 0.12, hot).move(0, 0, -0.84)
    m += gem(0.20, 0.14, core).mirror("z").move(0, 0, 1.42)
    return m


def build(out_dir, names):
    objects, images = os.path.join(out_dir, "Objects"), os.path.join(out_dir, "images")
    for name, make in (("Dravek", dravek), ("jalka", jalka), ("Dravek2Shot", dravek2), ("Fryjahn", fryjahn)):
        if name in names:
            drop_hidden(make(images)).save(os.path.join(objects, name + ".aob"))
