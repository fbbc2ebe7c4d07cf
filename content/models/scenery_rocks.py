"""The three asteroids: a big grey boulder, a rusty one with veins of ore
and a small one of dirty ice. The tougher, the bigger and the darker."""
import os
import sys

import numpy as np

sys.path.insert(0, os.path.join(os.path.dirname(__file__), '..', 'lib'))
import globe  # noqa: E402
import noise  # noqa: E402
import paint  # noqa: E402
import tga  # noqa: E402
from aob import Material, Texture  # noqa: E402
from mesh import Mesh  # noqa: E402


def craters(seed, number, small, large):
    """Centres and angular radii of craters, the large ones first."""
    random = np.random.RandomState(seed)
    found = []
    for k in range(number):
        size = large * (small / large) ** (k / max(1, number - 1))
        for _ in range(40):
            centre = random.normal(size=3)
            centre /= np.linalg.norm(centre)
            if all(np.arccos(np.clip(centre @ c, -1, 1)) > (size + r) * 0.75
                   for c, r in found):
                found.append((centre, size))
                break
    return found


def crater_height(d, found):
    """Height added by craters (in crater radii) and how deep inside."""
    total = np.zeros(d.shape[:-1])
    floor = np.zeros(d.shape[:-1])
    rim = np.zeros(d.shape[:-1])
    for centre, radius in found:
        x = np.arccos(np.clip(d @ centre, -1, 1)) / radius
        bowl = np.where(x < 1, (x * x - 1) * 0.55, 0)
        wall = np.exp(-((x - 1.0) / 0.22) ** 2)
        total += radius * (bowl + wall * 0.20)
        floor = np.maximum(floor, paint.smooth(1.0, 0.35, x))
        rim = np.maximum(rim, wall)
    return total, floor, rim


class Rock:
    def __init__(self, name, seed, size, steps, cell, lumps, holes, tones):
        self.name, self.seed, self.steps, self.cell = name, seed, steps, cell
        self.size = np.array(size, np.float64) / 2
        self.lumps, self.holes, self.tones = lumps, holes, tones

    def height(self, d):
        p = d * self.lumps[0]
        h = noise.fbm(p, 3, self.seed, gain=0.45) * self.lumps[1]
        facets = noise.worley(d * self.lumps[0] * 0.9, self.seed + 5)[0]
        h += (0.45 - facets) * self.lumps[2]
        return h + crater_height(d, self.holes)[0] * 0.75

    def points(self, d):
        return d * (1 + self.height(d))[..., None] * self.size

    def colours(self, d):
        n = noise.fbm(d * 3.1, 6, self.seed + 20, gain=0.6)
        fine = noise.ridged(d * 5.3, 5, self.seed + 21)
        grain = noise.fbm(d * 17, 3, self.seed + 22, gain=0.7)
        _, floor, rim = crater_height(d, self.holes)
        small = crater_height(d, craters(self.seed + 60, 46, 0.06, 0.15))
        picture = self.tones(d, n, fine, self.seed)
        shade = 1 + n * 0.30 + grain * 0.22 + (0.35 - fine) * 0.35
        shade *= (1 - floor * 0.36) * (1 + rim * 0.26)
        shade *= (1 - small[1] * 0.38) * (1 + small[2] * 0.18)
        return np.clip(picture * shade[..., None], 0, 1)

    def build(self, out_dir):
        picture_name = self.name.lower() + '.tga'
        grids = [globe.directions(f, self.steps) for f in range(6)]
        solid = [self.points(g) for g in grids]
        every = np.concatenate([s.reshape(-1, 3) for s in solid])
        middle = (every.max(0) + every.min(0)) / 2
        solid = [s - middle for s in solid]
        reach = max(np.abs(s @ np.array(globe.FACES[f][a], float)).max()
                    for f, s in enumerate(solid) for a in (1, 2)) * 1.04
        pictures, places = [], []
        for f in range(6):
            fine = globe.directions(f, self.steps)
            values, known = globe.bake(solid[f], fine, self.cell, f, reach)
            values = paint.dilate(values, known, self.cell)
            values /= np.maximum(np.linalg.norm(values, axis=-1,
                                                keepdims=True), 1e-9)
            pictures.append(self.colours(values))
        places = globe.cells()
        tga.write_tga(os.path.join(out_dir, 'images', picture_name),
                      globe.atlas(pictures))
        quads, materials = [], []
        for f in range(6):
            s, t = globe.planes(f, reach, 1.0, places[f])
            stone = Material('%s side %d' % (self.name, f + 1),
                             colour=(1, 1, 1), specular=(0.1, 0.1, 0.1),
                             shininess=0.06, luminosity=0.10,
                             textures=[Texture(picture_name, 'R', s, t)])
            g = solid[f]
            q = np.stack([g[:-1, :-1], g[:-1, 1:], g[1:, 1:], g[1:, :-1]], 2)
            quads.append(q.reshape(-1, 4, 3))
            materials += [stone] * len(quads[-1])
        Mesh(globe.unfold(np.concatenate(quads)), materials, crease=89).save(
            os.path.join(out_dir, 'Objects', self.name + '.aob'))


def grey(d, n, fine, seed):
    base = paint.ramp(n * 0.5 + 0.5, [(0.1, '#6a625a'), (0.45, '#a0968a'),
                                      (0.7, '#b8ad9c'), (1, '#d6ccba')])
    return base


def rusty(d, n, fine, seed):
    base = paint.ramp(n * 0.5 + 0.5, [(0.1, '#54291c'), (0.4, '#9c4f30'),
                                      (0.65, '#c07848'), (1, '#e0a878')])
    vein = noise.ridged(d * 2.3, 4, seed + 30)
    where = paint.smooth(-0.1, 0.3, noise.fbm(d * 1.6, 3, seed + 33))
    return paint.mix(base, np.array(paint.colour('#f6c98a')) * 1.2,
                     paint.smooth(0.60, 0.80, vein) * where)


def icy(d, n, fine, seed):
    base = paint.ramp(n * 0.5 + 0.5, [(0.1, '#4c6a86'), (0.45, '#8fb4cc'),
                                      (0.7, '#c6e2ee'), (1, '#ffffff')])
    dust = paint.smooth(0.1, 0.5, noise.fbm(d * 1.9, 4, seed + 31))
    return paint.mix(base, paint.colour('#7a6a5c'), dust * 0.6)


ROCKS = [
    Rock('Asteroid1', 101, (5.4, 4.6, 5.0), 8, 128, (1.3, 0.34, 0.18),
         craters(5, 9, 0.22, 0.62), grey),
    Rock('Asteroid2', 202, (4.3, 3.2, 3.5), 7, 96, (1.4, 0.36, 0.26),
         craters(6, 6, 0.26, 0.5), rusty),
    Rock('Asteroid3', 304, (2.3, 2.0, 2.6), 6, 64, (1.4, 0.28, 0.28),
         craters(7, 4, 0.28, 0.5), icy),
]


def build(out_dir, names):
    for rock in ROCKS:
        if rock.name in names:
            rock.build(out_dir)
