"""The five engine mods, drawn on the hull's tail; bigger levels have bigger bells, collars and flames."""
import os

from mesh import *  # noqa: F401,F403
from aob import Material
from player import ENGINE_Y, ORANGE, SHINE, TWIN_X, hull_shape, trim

CASE = trim("engine case", (0.80, 0.84, 0.90))
BAND = trim("engine band", ORANGE)
BELL = Material("engine bell", (0.30, 0.33, 0.40), **SHINE)
FLAME = Material("engine flame", (0.16, 0.50, 1.0), luminosity=1.0, transparency=0.45)
CORE = Material("engine flame core", (0.60, 0.85, 1.0), luminosity=1.0)


def engine(r, length, n=8, flame=1.0, bands=1, start=1.75):
    """Pod of radius r round the Z axis from `start`, its bell ending at start + length."""
    z0, z1 = start, start + length
    m = lathe([(z0, r * 0.66), (z0 + 0.2, r * 0.96), (z1 - 0.42, r), (z1 - 0.32, r * 0.80)], n, CASE, caps=(True, False))
    for b in range(bands):
        z = z0 + length * (0.38 + 0.20 * b)
        m += lathe([(z - 0.09, r * 0.94), (z, r * 1.09), (z + 0.09, r * 0.94)], n, BAND, caps=(False, False))
    # bell: outside and inside, then the hot throat
    m += lathe([(z1 - 0.36, r * 0.62), (z1, r * 0.95), (z1 - 0.16, r * 0.60)], n, BELL, caps=(False, False))
    m += lathe([(z1 - 0.2, r * 0.61), (z1 - 0.15, r * 0.61)], n, CORE, caps=(False, True)).select([False] * n + [True] * (n // 2 - 1))
    m += lathe([(z1 - 0.10, r * 0.42), (z1 + 0.72 * flame, 0)], 6, CORE, caps=(False, True), crease=80)
    m += lathe([(z1 - 0.08, r * 0.56), (z1 + 0.28 * flame, r * 0.70), (z1 + 1.15 * flame, 0)], 6, FLAME, caps=(False, True), crease=80)
    return m


def fins(r, z0, z1, reach, count, start):
    """Cooling fins round a pod."""
    f = wing([((r * 0.9, 0, z0), (r * 0.9, 0, z1), 0.09), ((r + reach, 0, z0 + 0.22), (r + reach, 0, z1), 0.05)], CASE, up=(0, 1, 0), keen=True)
    return f.spread(count, "z", start)


def build(out_dir, names):
    objects = os.path.join(out_dir, "Objects")
    hull = hull_shape()

    def save(m, name):
        if name in names:
            drop_hidden(m.move(0, ENGINE_Y, 0), within=hull).save(os.path.join(objects, name + ".aob"))
    save(engine(0.34, 1.15, flame=0.75), "BasicEngines")
    save(engine(0.31, 1.15, flame=0.8).move(TWIN_X).mirrored(), "TwinBasicEngines")
    big = engine(0.56, 1.55, 10, flame=1.25, bands=2, start=1.55)
    big += fins(0.56, 1.85, 2.65, 0.22, 4, 45)
    save(big, "BigEngines")
    inter = engine(0.42, 1.45, flame=1.1, bands=1, start=1.55).move(TWIN_X)
    inter += block((0.16, 0.30, 0.7), (TWIN_X + 0.44, 0, 2.2), BAND, 0.05)
    save(inter.mirrored(), "TwinInterEngines")
    twin = engine(0.52, 1.8, 8, flame=1.4, bands=1, start=1.4).move(TWIN_X + 0.08)
    twin += wing([((TWIN_X + 0.5, 0, 1.75), (TWIN_X + 0.5, 0, 2.75), 0.16), ((TWIN_X + 0.98, 0.02, 2.3), (TWIN_X + 0.98, 0.02, 3.0), 0.07)], BAND, keen=True)
    twin += wing([((TWIN_X + 0.08, 0.45, 1.8), (TWIN_X + 0.08, 0.45, 2.75), 0.12), ((TWIN_X + 0.08, 0.82, 2.35), (TWIN_X + 0.08, 0.82, 2.9), 0.06)], CASE, up=(1, 0, 0), keen=True)
    twin = twin.mirrored()
    twin += block((0.9, 0.26, 0.7), (0, 0.05, 2.25), CASE, 0.08)
    save(twin, "TwinBigEngines")
