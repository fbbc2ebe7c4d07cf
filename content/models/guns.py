"""The five weapon mods; their emitters burn in the colour of the shots they fire."""
import os

from mesh import *  # noqa: F401,F403
from player import ORANGE, SHINE, TIP_X, glow, hull_shape, trim

CASE = trim("gun case", (0.80, 0.84, 0.90))
MOUNT = trim("gun mount", (0.34, 0.38, 0.46))
BAND = trim("gun band", ORANGE)
LIGHTS = {kind: glow("emitter %d" % kind, colour, 1.0) for kind, colour in {
    1: (1.0, 0.32, 0.10), 2: (0.05, 0.90, 0.35), 3: (0.12, 0.38, 1.0), 4: (0.95, 0.30, 0.95), 5: (1.0, 0.80, 0.25)}.items()}


def barrel(kind, z_back, z_front, r=0.085, n=6, coils=2, flared=True):
    """Laser barrel along Z: jacket, glowing coils, muzzle with an emitter, flared or plain."""
    light = LIGHTS[kind]
    length = z_back - z_front
    smooth = dict(crease=65)
    m = lathe([(z_back, r * 1.5), (z_back - length * 0.42, r * 1.5), (z_back - length * 0.48, r * 0.95), (z_front + 0.20, r * 0.9)], n, CASE,
              caps=(True, False), **smooth)
    for k in range(coils):
        z = z_back - length * 0.56 - 0.17 * k
        m += lathe([(z + 0.06, r * 0.9), (z, r * 1.6), (z - 0.06, r * 0.9)], n, light, caps=(False, False))
    if flared:
        m += lathe([(z_front + 0.26, r * 0.9), (z_front + 0.14, r * 1.6), (z_front, r * 1.3)], n, CASE, caps=(False, False), **smooth)
        return m + lathe([(z_front + 0.03, r * 1.25), (z_front - 0.13, r * 0.4)], n, light, caps=(False, True))
    return m + lathe([(z_front + 0.22, r * 0.9), (z_front + 0.06, r * 1.55), (z_front - 0.13, r * 0.4)], n, light, caps=(False, True), **smooth)


def build(out_dir, names):
    objects = os.path.join(out_dir, "Objects")
    hull = hull_shape()

    def save(m, name):
        if name in names:
            drop_hidden(m, within=hull).save(os.path.join(objects, name + ".aob"))

    # one barrel through the nose, held by a saddle on its back
    single = barrel(1, -2.35, -3.95, 0.095).move(0, -0.02)
    single += block((0.40, 0.22, 0.62), (0, 0.14, -2.42), MOUNT, 0.06)
    single += block((0.26, 0.09, 0.34), (0, 0.28, -2.40), BAND, 0.03)
    save(single, "SingleLaser")

    # on the wing tip rails
    double = barrel(2, 0.85, -1.25, 0.10, coils=2).move(TIP_X, 0.08)
    double += block((0.34, 0.34, 0.62), (TIP_X, 0.08, 0.92), MOUNT, 0.08)
    double += block((0.12, 0.42, 0.30), (TIP_X, 0.08, 0.95), BAND, 0.04)
    save(double.mirrored(), "DoubleLasers")

    # nose barrel and two splayed ones, as its shots fly
    triple = barrel(3, -2.35, -3.85, 0.085).move(0, -0.02)
    side = barrel(3, 0.55, -0.95, 0.085, coils=1).rotate("y", -25.6).move(0.78, -0.06, -2.0)
    triple += side.mirrored()
    triple += block((0.40, 0.20, 0.55), (0, 0.13, -2.40), MOUNT, 0.06)
    triple += block((0.95, 0.16, 0.34), (0, -0.05, -1.88), MOUNT, 0.05, axis="x")
    triple += block((0.24, 0.20, 0.30), (0.56, -0.05, -1.75), BAND, 0.05).mirrored()
    save(triple, "TripleLaser")

    # outer pair on the tips, inner pair on pylons from the wing roots
    outer = barrel(4, 0.55, -2.0, 0.095, coils=1, flared=False).move(2.7, 0.08)
    outer += slab((0.32, 0.34, 0.70), (2.7, 0.08, 0.72), MOUNT)
    inner = barrel(4, -0.95, -3.2, 0.095, coils=1, flared=False).move(1.0, -0.06)
    inner += slab((0.34, 0.30, 0.90), (0.96, -0.06, -0.82), BAND)
    save((outer + inner).mirrored(), "QuadLasers")

    # a long gun slung under the keel: breech, drums, and a muzzle that shows past the nose
    light = LIGHTS[5]
    y = -0.40
    cannon = lathe([(0.9, 0.12), (0.8, 0.26), (-0.6, 0.28), (-0.75, 0.17), (-3.5, 0.15)], 8, CASE, caps=(True, False)).move(0, y)
    for z in (-1.3, -2.0, -2.7):
        cannon += lathe([(z + 0.14, 0.15), (z, 0.25), (z - 0.14, 0.15)], 6, BAND, caps=(False, False)).move(0, y)
    cannon += block((0.62, 0.40, 0.62), (0, y, -3.62), CASE, 0.10)
    cannon += slab((0.70, 0.14, 0.18), (0, y, -3.56), light) + slab((0.70, 0.14, 0.18), (0, y, -3.80), light)
    cannon += lathe([(-3.9, 0.15), (-4.02, 0.05)], 8, light, caps=(False, True)).move(0, y)
    drum = lathe([(0.55, 0.15), (0.48, 0.22), (-0.30, 0.22), (-0.37, 0.15)], 8, MOUNT).move(0.46, y)
    drum += lathe([(0.20, 0.22), (0.10, 0.25), (0.0, 0.22)], 8, BAND, caps=(False, False)).move(0.46, y)
    cannon += drum.mirrored()
    cannon += slab((0.24, 0.34, 0.5), (0, y + 0.2, -1.55), MOUNT)
    save(cannon, "Cannon")
