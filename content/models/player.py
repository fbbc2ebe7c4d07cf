"""The player's hull, the lives icon, the aiming ring, and the fleet's materials.

engines.py and guns.py draw their parts in the hull's frame: mounts are at
x 0 and +-0.86 on the tail (z 2.3), at the wing tips (x +-2.75) and on the nose.
"""
import os

from aob import Material, Texture
from mesh import *  # noqa: F401,F403
from skin import Skin, smooth
import noise
import tga

WHITE = (0.93, 0.95, 0.97)
STEEL = (0.56, 0.61, 0.68)
DARK = (0.17, 0.19, 0.24)
ORANGE = (1.0, 0.45, 0.06)
BLUE = (0.10, 0.34, 0.85)
ENGINE_Y = 0.02
TWIN_X = 0.86
TIP_X = 2.75

TRIM = "fleet_trim.tga"
SHINE = dict(specular=(0.55, 0.57, 0.6), shininess=0.35)


def trim_texture(images):
    """Tiling steel of the mods: broad panels, rivets, a row of vents."""
    n = 256
    y, x = (np.mgrid[0:n, 0:n] + 0.5) / n
    img = np.full((n, n, 3), 0.86) + 0.07 * noise.fbm(np.stack([x * 4, y * 4], -1), 4, 5, period=4)[..., None]
    seam = np.minimum(np.abs((x * 2) % 1 - 0.5), np.abs((y * 2 + 0.5 * np.floor(x * 2)) % 1 - 0.5))
    img *= (0.5 + 0.5 * smooth(0.015, 0.05, seam))[..., None]
    vents = (x > 0.56) & (x < 0.94) & (y > 0.1) & (y < 0.34) & ((y * 256 // 6) % 2 == 0)
    img[vents] *= 0.45
    tga.write_tga(os.path.join(images, TRIM), np.clip(img, 0, 1))


def trim(name, colour, scale=1.6, **kw):
    """Material of the mods; the tilted plane lets one picture serve tops and sides."""
    t = Texture(TRIM, "R", (0, 0, 1 / scale, 0), (0.8 / scale, 0.8 / scale, 0, 0.25))
    return Material(name, colour, textures=[t], **dict(SHINE, **kw))


def glow(name, colour, luminosity=0.9, **kw):
    return Material(name, colour, luminosity=luminosity, **kw)


PLAIN = Material("plain", WHITE)
GLASS = Material("canopy", (0.34, 0.62, 1.0), specular=(1, 1, 1), shininess=0.7, luminosity=0.18, reflection=0.35)


def nose_section(w, h, z, y=0.0):
    """Hull section: flat belly, sloping shoulders, a narrow back."""
    a, b = w / 2, h / 2
    pts = [(a * 0.86, -b * 0.72), (a, -b * 0.10), (a * 0.80, b * 0.48), (a * 0.36, b), (-a * 0.36, b),
           (-a * 0.80, b * 0.48), (-a, -b * 0.10), (-a * 0.86, -b * 0.72), (-a * 0.5, -b), (a * 0.5, -b)]
    return ring_at(pts, z, 0, y)


def build_hull(body, dark, small=False):
    """Parts that take the hull's skin, and those of dark metal."""
    frames = ((-3.30, 0.16, 0.10, -0.06), (-3.05, 0.34, 0.20, -0.06), (-2.3, 0.62, 0.40, -0.03), (-1.3, 0.98, 0.64, 0.02),
              (-0.2, 1.30, 0.84, 0.04), (1.0, 1.36, 0.90, 0.05), (1.9, 1.16, 0.78, 0.05), (2.3, 0.92, 0.56, 0.03))
    m = loft([nose_section(w, h, z, y) for z, w, h, y in (frames[::2] + frames[-1:] if small else frames)], body, crease=32)
    # wings: long root, kinked leading edge, light dihedral
    m += wing([((0.45, -0.08, -1.25), (0.45, -0.08, 2.05), 0.40), ((1.15, -0.06, 0.05), (1.15, -0.06, 2.05), 0.30),
               ((TIP_X, 0.08, 1.00), (TIP_X, 0.08, 2.05), 0.13)], body).mirrored()
    # canted tail fins
    m += wing([((0.80, 0.12, 0.95), (0.80, 0.12, 2.25), 0.16), ((1.08, 1.18, 1.85), (1.08, 1.18, 2.55), 0.07)], body,
              up=(1, -0.26, 0), keen=True).mirrored()
    # nose planes
    m += wing([((0.30, -0.02, -2.05), (0.30, -0.02, -1.35), 0.13), ((1.12, 0.04, -1.45), (1.12, 0.04, -1.08), 0.06)],
              body, keen=True).mirrored()
    if small:
        return m
    # keel
    m += wing([((0, -0.28, 0.75), (0, -0.28, 1.95), 0.14), ((0, -0.78, 1.45), (0, -0.78, 2.0), 0.06)], body, up=(1, 0, 0), keen=True)
    # intakes beside the cockpit, running back into the engine shoulders
    shoulder = loft([ring_at(section_box(w, h, 0.11), z, x, y) for z, x, w, h, y in (
        (-0.55, 0.74, 0.40, 0.36, 0.08), (0.3, 0.80, 0.50, 0.48, 0.07), (1.3, TWIN_X, 0.56, 0.54, 0.05),
        (2.2, TWIN_X, 0.50, 0.48, ENGINE_Y))], body, crease=30)
    m += shoulder.mirrored()
    m += slab((0.28, 0.22, 0.16), (0.74, 0.09, -0.56), dark).mirrored()
    # dorsal spine
    m += loft([ring_at(section_box(w, h, 0.08), z, 0, y) for z, w, h, y in (
        (-0.05, 0.44, 0.30, 0.44), (0.9, 0.40, 0.34, 0.52), (1.8, 0.26, 0.30, 0.46), (2.35, 0.14, 0.16, 0.34))], body,
        crease=30)
    # wing tip rails
    m += lathe([(0.30, 0.03), (0.7, 0.14), (1.9, 0.15), (2.28, 0.05)], 8, body, caps=(False, True)
               ).move(TIP_X, 0.08, 0).mirrored()
    # tail plate with the engine mounts
    m += block((0.70, 0.44, 0.22), (0, ENGINE_Y, 2.28), dark, 0.06)
    m += block((0.40, 0.38, 0.20), (TWIN_X, ENGINE_Y, 2.22), dark, 0.05).mirrored()
    return m


def hull_shape():
    """The hull as engines and guns meet it: what is sunk in it need not be drawn."""
    return build_hull(PLAIN, PLAIN) + canopy()


def canopy(step=1):
    return loft([ring_at(section_round(w, h, 8, 2.2), z, 0, y) for z, w, h, y in (
        (-1.78, 0.10, 0.06, 0.24), (-1.55, 0.34, 0.26, 0.27), (-1.05, 0.50, 0.46, 0.36), (-0.5, 0.54, 0.54, 0.42),
        (-0.1, 0.46, 0.48, 0.44), (0.12, 0.34, 0.36, 0.44))[::step]], GLASS, crease=60)


def paint_top(skin):
    s = skin
    s.fill(WHITE)
    # darker inner wing, white outer wing with an orange tip
    s.shape(s.poly([(0.60, 1.3), (1.15, 0.0), (1.62, -0.42), (1.62, -2.2), (0.55, -2.2)], True), (0.70, 0.76, 0.84))
    s.shape(s.poly([(2.08, -0.55), (2.60, -0.98), (2.60, -2.3), (2.08, -2.3)], True), ORANGE)
    s.shape(s.poly([(1.90, -0.50), (1.98, -0.55), (1.98, -2.3), (1.90, -2.3)], True), ORANGE)
    s.shape(s.rect(2.58, -2.6, 3.0, -0.2, mirror=True), (0.50, 0.55, 0.63))
    s.shape(s.rect(2.58, -1.75, 3.0, -1.45, mirror=True), ORANGE)
    # flaps
    s.shape(s.rect(1.0, -2.2, 2.55, -1.72, mirror=True), (0.45, 0.50, 0.58), 0.6)
    s.seam([(1.0, -1.72), (2.55, -1.72)], 0.035, True)
    s.seam([(1.62, -0.45), (1.62, -1.72)], 0.035, True)
    s.seam([(1.62, -0.95), (2.6, -1.3)], 0.03, True)
    # nose: blue chevron, orange tip, dark anti-glare panel before the glass
    s.shape(s.poly([(0, 2.9), (0.4, 2.3), (0.4, 2.0), (0, 2.6), ], True), BLUE)
    s.shape(s.poly([(0, 3.5), (0.4, 3.5), (0.4, 2.95), (0, 3.08)], True), ORANGE)
    s.shape(s.poly([(0, 2.35), (0.13, 2.2), (0.22, 1.55), (0.30, 1.0), (0, 1.0)], True), (0.20, 0.22, 0.28))
    s.seam([(0.0, 2.62), (0.5, 2.1)], 0.03, True)
    s.seam([(0.44, 1.75), (0.44, -2.3)], 0.03, True)
    s.seam([(0.0, -0.55), (0.44, -0.55), (0.62, -0.75), (1.1, -0.75)], 0.03, True)
    # shoulders: blue bands and vents
    s.shape(s.rect(0.60, -1.15, 1.14, -0.85, mirror=True), BLUE)
    for k in range(5):
        s.shape(s.rect(0.70, -1.42 - 0.13 * k, 1.02, -1.35 - 0.13 * k, 0.02, True), (0.12, 0.13, 0.17))
    # nose planes carry orange tips
    s.shape(s.poly([(0.86, 2.1), (1.3, 2.1), (1.3, 0.9), (0.86, 0.9)], True), ORANGE)
    # spine stripe, fin roots
    s.shape(s.rect(-0.09, -2.4, 0.09, -0.1), ORANGE)
    # wing insignia
    s.shape(s.disc(1.36, -1.18, 0.20, mirror=True), BLUE)
    s.shape(s.poly([(1.36, -1.02), (1.50, -1.30), (1.36, -1.23), (1.22, -1.30)], True), WHITE)
    s.grime(0.10, 0.9, 3)
    s.bump(s.noise(1.4, 3, 9), 0.25)
    s.occlude(0.75, (0.10, 0.35), 0.25)


def paint_side(skin):
    s = skin      # right +Z (tail), up +Y
    s.fill(WHITE)
    s.shape(s.rect(-4, -1, 4, -0.10), (0.52, 0.57, 0.65))
    s.shape(s.rect(-4, -0.10, 4, 0.0), ORANGE)
    s.shape(s.rect(-4, -1, -3.0, 1), ORANGE)
    s.shape(s.rect(-0.45, -0.02, 0.15, 0.45), BLUE)
    s.shape(s.poly([(1.38, 0.62), (2.9, 0.62), (2.9, 1.5), (1.38, 1.5)]), ORANGE)
    s.shape(s.poly([(1.2, 0.50), (2.9, 0.50), (2.9, 0.56), (1.2, 0.56)]), BLUE)
    for k in range(6):
        s.shape(s.rect(0.5 + 0.14 * k, 0.05, 0.57 + 0.14 * k, 0.25), DARK)
    for z in (-2.4, -1.2, 0.3, 1.4):
        s.seam([(z, -1), (z, 0.5)], 0.03)
    s.grime(0.18, 1.5, 4)
    s.occlude(0.6, (0.10, 0.3), 0.2)


def build(out_dir, names):
    objects, images = os.path.join(out_dir, "Objects"), os.path.join(out_dir, "images")
    trim_texture(images)
    body = Material("hull", WHITE)
    dark = Material("dark metal", (0.30, 0.33, 0.40), **SHINE)
    hull = build_hull(body, dark)
    whole = hull + canopy()
    top, side = Skin("player_top.tga", whole, "top", 512), Skin("player_side.tga", whole, "side", 256)
    paint_top(top)
    paint_side(side)
    t_top, t_side = top.save(images), side.save(images)
    m_top = Material("hull top", (1, 1, 1), textures=[t_top], luminosity=0.14, **SHINE)
    m_side = Material("hull side", (1, 1, 1), textures=[t_side], luminosity=0.14, **SHINE)
    m_front = Material("hull ends", (0.74, 0.79, 0.86), luminosity=0.12, **SHINE)
    hull.by_direction(body, m_top, m_side, m_front, bias=1.25)
    lamps = glow("intake light", (0.20, 0.55, 1.0), 0.9)
    parts = hull + canopy()
    parts += slab((0.20, 0.07, 0.06), (0.74, 0.09, -0.645), lamps).mirrored()
    parts += slab((0.05, 0.05, 0.5), (TIP_X + 0.155, 0.08, 1.35), glow("tip light", (1.0, 0.42, 0.05), 0.9)).mirrored()
    if "PlayerBase" in names:
        drop_hidden(parts).save(os.path.join(objects, "PlayerBase.aob"))

    # lives icon: the bare hull at a third, on the same pictures
    k = 2.0 / 5.8
    icon = build_hull(body, dark, small=True).by_direction(
        body, icon_skin("icon top", t_top, k), icon_skin("icon side", t_side, k),
        Material("icon ends", (0.62, 0.66, 0.73)), bias=1.25) + canopy(2)
    icon += lathe([(2.1, 0.34), (2.5, 0.34), (2.62, 0.24)], 6, glow("icon flame", (0.25, 0.6, 1.0), 1.0))
    if "PlayerBase-small" in names:
        drop_hidden(icon.scale(k)).save(os.path.join(objects, "PlayerBase-small.aob"))
    if "Target" in names:
        aiming_ring().save(os.path.join(objects, "Target.aob"))


def icon_skin(name, t, k):
    scale = lambda p: tuple(v / k for v in p[:3]) + (p[3],)
    return Material(name, (1, 1, 1), luminosity=0.15, textures=[Texture(t.name, "R", scale(t.s_plane), scale(t.t_plane))])


def flat_ring(r0, r1, a0, a1, n, mat, y=0.0):
    """Arc of quads in the X-Z plane facing +Y, from angle a0 to a1 degrees."""
    a = np.radians(np.linspace(a0, a1, n + 1))
    at = lambda r, t: np.stack([r * np.cos(t), np.full(len(t), y), -r * np.sin(t)], 1)
    q = np.stack([at(r0, a[:-1]), at(r1, a[:-1]), at(r1, a[1:]), at(r0, a[1:])], 1)
    return Mesh(q, mat)


def aiming_ring():
    """Four arcs, four ticks pointing in, a dot."""
    ring = glow("sight ring", (0.15, 0.95, 0.45), 1.0)
    tick = glow("sight ticks", (1.0, 0.62, 0.10), 1.0)
    m = Mesh()
    for k in range(4):
        m += flat_ring(1.62, 1.74, 90 * k + 14, 90 * k + 76, 6, ring)
        m += flat_ring(1.80, 1.86, 90 * k + 30, 90 * k + 60, 4, ring)
        w = 0.055
        m += Mesh([[(1.02, 0, w * 0.4), (1.74, 0, w * 1.6), (1.74, 0, -w * 1.6), (1.02, 0, -w * 0.4)]], tick).rotate("y", 90.0 * k)
    m += flat_ring(0.02, 0.09, 0, 360, 8, tick)
    return m
