"""The two bosses: a horned brood carrier with cannon claws, and the eye in the broken ring.

Bodies are skins of distance fields; plates, horns and machines are set on them.
"""
import os

from aob import Material
from enemies import CHITIN, aim, chitin, gem, glow
from mesh import *  # noqa: F401,F403
from skin import Skin, smooth
import noise


def mirror_field(fn):
    """Field of a body whose right half is given."""
    def both(p):
        q = p.copy()
        q[:, 0] = np.abs(q[:, 0])
        return fn(q)
    return both


def chain(p, points, radii, k):
    """Blend of capsules along points."""
    d = capsule(p, points[0], points[1], radii[0], radii[1])
    for a, b, ra, rb in zip(points[1:], points[2:], radii[1:], radii[2:]):
        d = smooth_union(d, capsule(p, a, b, ra, rb), k)
    return d


def slab(fn, nu, nv, thick, mat, crease=40):
    """Closed curved plate: fn(u, v) -> point arrays (..., 3) for u, v in 0..1, thickened inwards."""
    u, v = np.meshgrid(np.linspace(0, 1, nu + 1), np.linspace(0, 1, nv + 1), indexing="ij")
    out = fn(u, v)
    e = 1e-3
    nrm = np.cross(fn(u + e, v) - fn(u - e, v), fn(u, v + e) - fn(u, v - e))
    nrm /= np.maximum(np.linalg.norm(nrm, axis=2, keepdims=True), 1e-9)
    inn = out - nrm * thick
    quad = lambda g: np.stack([g[:-1, :-1], g[1:, :-1], g[1:, 1:], g[:-1, 1:]], 2).reshape(-1, 4, 3)
    rim = np.concatenate
    loop_o = rim([out[:-1, 0], out[-1, :-1], out[:0:-1, -1], out[0, :0:-1]])
    loop_i = rim([inn[:-1, 0], inn[-1, :-1], inn[:0:-1, -1], inn[0, :0:-1]])
    side = np.stack([loop_o, loop_i, np.roll(loop_i, -1, 0), np.roll(loop_o, -1, 0)], 1)
    m = Mesh(np.concatenate([quad(out), quad(inn)[:, ::-1], side]), mat, crease)
    return m.orient()


def horn(points, radii, mat, n=8, steps=9, flat=1.0):
    r = np.interp(np.linspace(0, 1, steps), np.linspace(0, 1, len(radii)), radii)
    return tube(curve(points, steps), r, n, mat, caps=(False, True), crease=70, flat=flat)


def painted(name, shape, images, paint, top=512, side=256, front=256, lum=0.1):
    """Top, side and front materials of a boss."""
    out = []
    for axis, size in (("top", top), ("side", side), ("front", front)):
        s = Skin("%s_%s.tga" % (name, axis), shape, axis, size)
        paint(s, axis)
        out.append(Material("%s %s" % (name, axis), (1, 1, 1), luminosity=lum + (0.20 if axis == "front" else 0),
                            textures=[s.save(images)], **CHITIN))
    return out


# ---------------------------------------------------------------- the brood carrier

# back plates: front, rear, half width, height, base
PLATES = ((-4.1, -2.0, 2.15, 1.75, 0.35), (-2.5, -0.4, 3.2, 2.20, 0.25), (-0.9, 1.3, 3.75, 2.45, 0.2), (0.9, 3.0, 3.3, 2.15, 0.2),
          (2.6, 4.3, 2.3, 1.75, 0.15), (3.9, 5.3, 1.55, 1.35, 0.15))


def boss1(images):
    IVORY, BLOOD, DEEP = (0.88, 0.80, 0.66), (0.66, 0.10, 0.08), (0.20, 0.05, 0.06)
    RED = (0.78, 0.15, 0.08)
    skin, plate = Material("flesh", BLOOD), Material("plate", IVORY)

    def field(p):
        d = ellipsoid(p, (0, 0.2, 0.6), (3.6, 2.1, 3.5))
        d = smooth_union(d, ellipsoid(p, (0, 0.1, -2.7), (2.25, 1.75, 2.0)), 0.7)             # head
        d = smooth_union(d, chain(p, [(3.2, 0.3, 0.3), (5.2, 0.9, 1.6), (6.5, 0.2, 1.0), (6.5, 0, 0.1)], [1.25, 0.85, 0.95, 0.85], 0.4), 0.6)
        d = smooth_union(d, chain(p, [(0, 0.1, 3.4), (0, 0.2, 4.8), (0, 0.9, 5.9)], [1.7, 1.2, 0.55], 0.3), 0.5)   # abdomen
        d = smooth_cut(d, ellipsoid(p, (0, -0.62, -4.4), (1.5, 0.95, 1.8)), 0.25)              # maw
        return d
    m = surface_nets(mirror_field(field), (-8.1, -2.9, -5.9), (8.1, 3.2, 7.2), 0.575, skin)

    # overlapping back plates, each drawn out to a point behind
    def back(z0, z1, w, h, y, span=70):
        def fn(u, v):
            a = np.radians(-span + 2 * span * u)
            k = 0.90 + 0.17 * v                     # each flares over the next
            side = np.abs(2 * u - 1)
            z = z0 + (z1 - z0) * v + v * (0.75 * np.maximum(0, 1 - side * 3) - 0.15) + 0.9 * side ** 2 * (0.25 + 0.9 * v)
            peak = 1 + 0.12 * np.maximum(0, 1 - side * 4)
            return np.stack([w * k * np.sin(a), y + h * k * np.cos(a) * peak, z], -1)
        return slab(fn, 10, 2, 0.24, plate, 32)
    for p in PLATES:
        m += back(*p)

    # domes over shoulder and elbow
    def dome(x, y, z, w, h, l, tilt):
        def fn(u, v):
            a = np.radians(-75 + 150 * u)
            f = np.sqrt(np.maximum(0.10, 1 - (2 * v - 1) ** 2 * 0.88))
            return np.stack([w * f * np.sin(a), h * f * np.cos(a), l * (2 * v - 1)], -1)
        return slab(fn, 6, 5, 0.2, plate, 40).rotate("y", tilt).move(x, y, z)
    m += dome(4.75, 0.55, 1.0, 1.35, 1.35, 1.75, 28).mirrored()
    m += dome(6.5, 0.0, 0.75, 1.2, 1.2, 1.6, 0).mirrored()

    bone = Material("bone", (0.95, 0.88, 0.74), luminosity=0.15, **CHITIN)
    # great horns out and forward, brow horns, mandibles, ribs, sting and tail hooks
    m += horn([(1.5, 1.2, -2.6), (3.2, 2.3, -3.0), (4.0, 2.8, -4.8), (3.1, 2.3, -6.6)], [0.62, 0.56, 0.38, 0.02], bone, 6, 9).mirrored()
    m += horn([(0.55, 1.5, -3.6), (0.85, 2.3, -4.4), (0.8, 2.5, -5.5)], [0.34, 0.26, 0.02], bone, 6, 6).mirrored()
    m += horn([(1.75, -0.5, -3.2), (2.5, -0.9, -4.5), (1.9, -1.0, -5.9), (0.75, -0.8, -6.5)], [0.46, 0.44, 0.32, 0.02], bone, 6, 8).mirrored()
    m += horn([(3.1, 0.9, -0.9), (4.3, 1.5, -1.6), (4.6, 1.5, -3.0)], [0.46, 0.34, 0.02], bone, 6, 6).mirrored()
    for z, r in ((-0.9, 2.6), (0.6, 3.0), (2.1, 2.7)):
        m += horn([(r * 0.9, -0.9, z), (r * 1.15, -1.8, z + 0.1), (r * 0.85, -2.7, z - 0.6)], [0.36, 0.30, 0.02], bone, 6, 5).mirrored()
    m += horn([(0, 1.2, 5.3), (0, 2.4, 6.3), (0, 3.5, 6.0), (0, 3.75, 4.7)], [0.55, 0.48, 0.34, 0.02], bone, 6, 8)
    m += horn([(0.9, 0.5, 5.0), (1.6, 0.7, 6.1), (1.3, 0.9, 7.2)], [0.40, 0.32, 0.02], bone, 6, 6).mirrored()

    def paint(s, axis):
        chitin(s, BLOOD, (0.88, 0.26, 0.14), DEEP, 0.7, 51)
        s.occlude(0.9, (0.2, 0.9), 0.35)

    f_top, f_side, f_front = painted("boss1", m, images, paint, 256, 256, 256, 0.16)
    s = Skin("boss1_plates.tga", m, "top", 512)
    s.fill(IVORY)
    s.shade(1 + 0.16 * s.noise(0.9, 5, 61))
    _, border = s.cells(0.45, 71, mirror=True)
    s.fill((0.50, 0.30, 0.20), 0.55 * smooth(0.08, 0.0, border))
    for z0, z1, w, h, y in PLATES[2:]:      # blood along the plates' rear edges
        u = np.linspace(0.5, 1, 9)
        side = np.abs(2 * u - 1)
        x = 1.07 * w * np.sin(np.radians(-70 + 140 * u))
        z = z1 + 0.75 * np.maximum(0, 1 - side * 3) - 0.15 + 0.9 * side ** 2 * 1.15
        d = s.path(np.stack([x, -z], 1), True)
        s.shape(d - 0.26, RED, 0.92, 0.12)
        s.shape(d - 0.09, (0.30, 0.05, 0.05), 0.8, 0.08)
    for x, z, r in ((4.75, 1.0, 0.62), (6.5, 0.75, 0.55)):
        s.shape(s.disc(x, -z, r, mirror=True), RED)
        s.shape(s.disc(x, -z, r * 0.55, mirror=True), IVORY)
    # slanted eye-marks on the widest plate, to stare at who looks down on it
    s.shape(s.poly([(0.80, 0.22), (1.60, 0.02), (2.70, -0.95), (1.70, -0.72)], True) - 0.06, (0.30, 0.05, 0.05), 0.9)
    s.shape(s.poly([(0.95, 0.12), (1.60, -0.06), (2.45, -0.78), (1.68, -0.60)], True), (1.0, 0.50, 0.10))
    s.shape(s.disc(1.62, -0.30, 0.20, 0.30, mirror=True), (0.12, 0.02, 0.03))
    # blades of blood from them towards the head
    for blade in ([(0, 0.10), (0.26, 0.75), (0.10, 2.20), (0, 2.60)], [(0.75, 0.75), (1.02, 0.85), (0.72, 2.10), (0.62, 2.10)],
                  [(1.55, 0.60), (1.85, 0.62), (1.35, 1.85), (1.25, 1.80)]):
        s.shape(s.poly(blade, True) - 0.05, (0.30, 0.05, 0.05), 0.8, 0.05)
        s.shape(s.poly(blade, True), RED, 0.92)
    s.occlude(0.8, (0.2, 0.9), 0.3)
    p_top = Material("plates top", (1, 1, 1), luminosity=0.06, textures=[s.save(images)], **CHITIN)
    p_side = Material("plates side", (0.86, 0.74, 0.60), luminosity=0.10, **CHITIN)
    m.by_direction(skin, f_top, f_side, f_front).by_direction(plate, p_top, p_side, p_side, bias=2.5)

    # cannons in the claws
    iron = Material("cannon iron", (0.42, 0.40, 0.44), specular=(0.6, 0.6, 0.6), shininess=0.4)
    fire = glow("boss1 fire", (1.0, 0.42, 0.05))
    shot = glow("boss1 muzzle", (0.15, 0.95, 0.40))
    gun = lathe([(0.2, 0.80), (-1.0, 0.80), (-1.15, 0.56), (-2.3, 0.50), (-2.4, 0.66), (-2.9, 0.66), (-3.0, 0.45)], 8, iron, caps=(False, False))
    gun += lathe([(-2.90, 0.52), (-3.02, 0.38), (-3.1, 0.06)], 8, shot, caps=(False, True))
    for z in (-1.45, -1.95):
        gun += lathe([(z + 0.14, 0.50), (z, 0.68), (z - 0.14, 0.50)], 8, shot, caps=(False, False))
    claw = horn([(0.55, 0.75, 0.2), (0.9, 1.35, -1.2), (0.8, 1.15, -2.8), (0.2, 0.8, -4.1)], [0.38, 0.36, 0.28, 0.02], bone, 6, 7)
    gun += claw + claw.copy().mirror("y")
    gun += horn([(-0.7, 0, 0.2), (-1.35, 0, -1.2), (-1.15, 0, -2.8), (-0.75, 0, -3.9)], [0.38, 0.36, 0.28, 0.02], bone, 6, 7)
    m += gun.move(6.5, 0, 0).mirrored()

    # the face: six eyes over a burning throat; organs glow between the plates
    eye = glow("boss1 eyes", (1.0, 0.80, 0.12))
    pupil = Material("boss1 pupils", (0.25, 0.02, 0.02))
    for x, y, z, r in ((0.62, 0.82, -4.30, 0.50), (1.42, 0.92, -3.75, 0.36), (1.95, 0.42, -3.30, 0.26)):
        d = np.array([x * 0.3, 0.18, -1.0])
        m += aim(lathe([(-r, 0.06), (-r * 0.85, r * 0.55), (-r * 0.3, r), (r * 0.6, r * 0.9)], 8, eye, caps=(True, False), crease=80), d).move(x, y, z).mirrored()
        if r > 0.3:
            m += aim(lathe([(-0.05, 0.05), (0.02, r * 0.34)], 6, pupil, caps=(True, False)), d).move(*(np.array([x, y, z]) + d / np.linalg.norm(d) * r * 0.94)).mirrored()
    m += cube_sphere((1.25, 0.72, 0.8), 4, fire, (0, -0.62, -3.55))
    for k in range(6):
        x = -1.15 + 0.46 * k
        m += lathe([(0, 0.15), (0.55, 0)], 4, bone, axis="y", caps=(False, True)).mirror("y").move(x, 0.16 - 0.16 * abs(x), -4.45 + 0.35 * abs(x))
        m += lathe([(0, 0.15), (0.50, 0)], 4, bone, axis="y", caps=(False, True)).move(x, -1.45 + 0.16 * abs(x), -4.2 + 0.30 * abs(x))
    for z, x in ((-2.2, 2.35), (-0.6, 3.35), (1.1, 3.6), (2.8, 2.75), (4.2, 1.75)):
        m += cube_sphere((0.40, 0.30, 0.26), 2, fire, (x, 0.62, z + 0.75)).mirrored()
    return m


# ---------------------------------------------------------------- the eye in the ring

def boss2(images):
    TEAL, PALE, DEEP = (0.18, 0.52, 0.60), (0.80, 0.95, 0.95), (0.03, 0.10, 0.20)
    skin = Material("hide", TEAL)

    def field(p):
        d = ellipsoid(p, (0, 0, 0.4), (2.9, 2.5, 3.4))
        d = smooth_union(d, ellipsoid(p, (3.0, 0.3, 0.6), (1.9, 0.95, 2.0)), 0.9)                           # shoulders
        d = smooth_union(d, chain(p, [(4.4, 0.5, 0.6), (6.6, 1.5, 1.4), (8.6, 0.9, 0.4)], [0.75, 0.62, 0.62], 0.4), 0.5)   # arms
        d = smooth_union(d, chain(p, [(0, 0.2, 3.2), (0, 0.5, 5.0), (0, 0.2, 7.0), (0, -0.3, 8.6)], [1.6, 1.1, 0.7, 0.25], 0.4), 0.6)
        d = smooth_union(d, chain(p, [(0, 1.9, -0.6), (0, 3.0, 0.9), (0, 3.7, 2.4)], [0.9, 0.6, 0.25], 0.4), 0.5)            # crest
        d = smooth_cut(d, ellipsoid(p, (0, 0, -3.1), (2.0, 1.85, 1.8)), 0.3)                                # socket
        return d
    m = surface_nets(mirror_field(field), (-9.6, -3.0, -3.6), (9.6, 4.4, 9.2), 0.57, skin)

    bone = Material("boss2 bone", PALE, luminosity=0.20, **CHITIN)
    # scythe arms
    m += tube(curve([(8.3, 0.95, 0.7), (9.4, 0.7, -0.8), (9.3, 0.2, -3.2), (7.6, -0.3, -5.6)], 10),
              np.interp(np.linspace(0, 1, 10), [0, 0.2, 0.5, 1], [0.5, 0.78, 0.62, 0.02]), 8, bone, caps=(False, True), crease=60, flat=0.45).mirrored()
    m += horn([(6.6, 1.9, 1.4), (7.3, 2.9, 1.7), (7.2, 3.7, 2.9)], [0.5, 0.34, 0.02], bone, 6, 6).mirrored()
    # feelers below and beside the tail
    for a, b, c, d in (((1.6, -1.3, 1.6), (3.4, -2.4, 2.6), (4.2, -2.6, 5.0), (3.4, -1.8, 7.2)),
                       ((1.3, -0.2, 3.0), (2.6, 0.0, 4.6), (2.6, 0.5, 6.4), (1.6, 0.9, 8.0)),
                       ((1.8, -1.5, -0.6), (3.6, -2.7, -1.0), (4.4, -2.8, -2.8), (3.4, -2.2, -4.6))):
        m += horn([a, b, c, d], [0.60, 0.42, 0.28, 0.03], skin, 8, 10).mirrored()
    # thorns round the socket
    for k in range(10):
        a = np.radians(18 + 36 * k)
        x, y = np.cos(a), np.sin(a)
        m += horn([(1.95 * x, 1.8 * y, -1.5), (2.6 * x, 2.4 * y, -2.6), (2.35 * x, 2.15 * y, -3.9)], [0.42, 0.32, 0.02], bone, 6, 5)

    def paint(s, axis):
        chitin(s, TEAL, (0.30, 0.72, 0.76), DEEP, 0.6, 81)
        s.shade(1 + 0.2 * s.noise(0.35, 4, 83))
        A = np.abs(s.A) if axis != "side" else s.A
        if axis == "top":
            # pale spine and ribs running out along the arms
            s.shape(s.path([(0, 2.0), (0, -8.6)]) - 0.20, PALE, 0.9, 0.15)
            for k in range(9):
                z = -1.2 + k * 1.05
                w = np.interp(z, [-1.2, 1.5, 4, 8], [2.3, 2.6, 1.3, 0.4])
                s.shape(s.path([(0, -z), (w * 0.6, -z - 0.08), (w, -z - 0.45)], True) - 0.09, PALE, 0.8, 0.08)
            s.shape(s.path([(3.4, -0.5), (6.6, -1.4), (8.6, -0.4)], True) - 0.16, PALE, 0.85, 0.12)
            for x in (4.2, 5.0, 5.8, 7.0, 7.8):
                s.shape(s.rect(x - 0.08, -3, x + 0.08, 1.2, mirror=True), DEEP, 0.7)
        elif axis == "side":
            for k in range(8):
                z = -0.6 + k * 1.05
                s.shape(s.path([(z, 2.2), (z + 0.35, 0.2), (z + 0.1, -2.2)]) - 0.08, PALE, 0.7, 0.08)
            s.fill(DEEP, 0.5 * smooth(-0.3, -2.4, s.B))
        else:
            r = np.hypot(A, s.B)
            s.fill(PALE, 0.85 * smooth(0.3, 0.0, np.abs(r - 2.3)))
            s.fill(DEEP, 0.8 * smooth(1.7, 1.3, r))
        s.occlude(0.9, (0.2, 1.0), 0.35)
    m_top, m_side, m_front = painted("boss2", m, images, paint, 512, 256, 256, 0.14)
    m.by_direction(skin, m_top, m_side, m_front)

    # the eye, its picture thrown along Z
    eye_ball = cube_sphere((1.9, 1.75, 1.6), 6, Material("eye", (1, 1, 1)), (0, 0, -1.75))
    s = Skin("boss2_eye.tga", eye_ball, "front", 128)
    r, a = np.hypot(s.A, s.B) / 1.17, np.arctan2(s.B, s.A)
    s.fill((0.75, 0.95, 1.0))
    vein = noise.fbm(np.stack([np.cos(a) * 3, np.sin(a) * 3, r * 0.8], -1), 4, 91)
    s.fill((0.10, 0.45, 0.75), smooth(1.15, 1.5, r))
    s.fill((0.05, 0.70, 0.95), smooth(1.08, 0.98, r))
    s.shade(1 + 0.9 * vein * (r < 1.1))
    s.fill((0.01, 0.12, 0.35), smooth(0.14, 0.0, np.abs(r - 1.05)))
    s.fill((0.80, 1.0, 1.0), 0.9 * smooth(0.22, 0.0, np.abs(r - 0.52)))
    s.shape(s.disc(0, 0, 0.28, 0.74), (0.0, 0.02, 0.08))
    s.shape(s.disc(-0.5, 0.6, 0.18), (1, 1, 1), 1, 0.1)
    m += eye_ball.paint(lambda c, n, old, t=Material("boss2 eye", (1, 1, 1), luminosity=0.75, textures=[s.save(images)], specular=(0.6, 0.6, 0.6), shininess=0.6): t)

    # the broken ring behind the head, its runes burning
    stone = Material("ring", (0.34, 0.42, 0.52), luminosity=0.05, **CHITIN)
    rune = glow("boss2 runes", (0.10, 0.75, 0.95))
    for k in range(12):
        if k in (3, 9):
            continue                                      # gaps for crest and keel
        block = loft([ring_at(section_box(1.15, 0.85, 0.18), z, 0, 0) for z in (-0.95, 0.95)], stone, crease=25).rotate("y", 90)
        block += box((0.9, 0.24, 0.30), (0, 0, -0.50), rune, 0.05)
        block += box((0.9, 0.30, 0.24), (0, 0.36, 0), rune, 0.05)
        m += block.rotate("z", -90).move(4.55, 0, 1.3).rotate("z", 30.0 * k)
    for k in (3, 9):
        a = np.radians(30.0 * k)
        m += gem(0.5, 0.5, rune, 8).move(4.3 * np.cos(a), 4.2 * np.sin(a) * (1 if k == 3 else 0.8), 1.3)

    # five muzzles of light: spots along the arms and the tail's vents
    for x, y, z in ((3.4, 1.22, -0.2), (4.9, 1.25, 0.5), (6.5, 2.0, 1.0), (8.2, 1.45, 0.2)):
        m += cube_sphere((0.30, 0.22, 0.30), 2, rune, (x, y, z)).mirrored()
    for x, y, z in ((2.6, 0.2, -1.45), (4.4, 0.45, -0.15), (6.2, 1.2, 0.55)):
        m += aim(gem(0.30, 0.25, rune, 8), (0, 0, -1)).move(x, y, z).mirrored()
    for z in (4.6, 5.8, 7.0):
        m += cube_sphere((0.22, 0.18, 0.36), 2, rune, (0, 1.45 - 0.28 * (z - 4.6), z))
    return m


def build(out_dir, names):
    objects, images = os.path.join(out_dir, "Objects"), os.path.join(out_dir, "images")
    for name, make in (("boss1", boss1), ("boss2", boss2)):
        if name in names:
            drop_hidden(make(images)).save(os.path.join(objects, name + ".aob"))
