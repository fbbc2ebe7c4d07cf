"""The two planets: a blue world of seas and clouds, and a ringed giant.

Their pictures are evaluated from noise in space, patch by patch, so no
seam shows; the poles stand far from +Y, where the game looks from.
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
from mesh import Mesh, rotation  # noqa: E402

REACH = 0.75


def ball(radius, steps, materials):
    """Mesh of a sphere, one material a patch, exact normals."""
    corners, normals, mats = [], [], []
    for f in range(6):
        g = globe.directions(f, steps)
        q = np.stack([g[:-1, :-1], g[:-1, 1:], g[1:, 1:], g[1:, :-1]], 2)
        q = q.reshape(-1, 4, 3)
        corners.append(q * radius)
        normals.append(q)
        mats += [materials[f]] * len(q)
    return Mesh(np.concatenate(corners), mats, N=np.concatenate(normals))


def unit(*v):
    v = np.array(v, np.float64)
    return v / np.linalg.norm(v)


def blue_world(d):
    pole = unit(0.35, 0.42, -0.84)
    latitude = d @ pole
    warp = np.stack([noise.fbm(d * 1.5 + k * 7.1, 4, 60 + k)
                     for k in range(3)], -1)
    land = noise.fbm(d * 1.25 + warp * 0.55, 6, 71, gain=0.56) + 0.02
    rough = noise.ridged(d * 4.2 + warp, 5, 72)
    sea = paint.ramp(land, [(-0.6, '#04143c'), (-0.25, '#0a3276'),
                            (-0.08, '#1160a8'), (0.03, '#2f9fca'),
                            (0.06, '#6fd0d8')])
    warm = paint.ramp(land + rough * 0.14,
                      [(0.06, '#c8b880'), (0.10, '#4f8038'),
                       (0.22, '#356a34'), (0.34, '#8a7a48'),
                       (0.5, '#a88a62'), (0.7, '#e8e0d8')])
    dry = paint.ramp(land + rough * 0.12,
                     [(0.06, '#e0cc92'), (0.2, '#c89858'),
                      (0.45, '#9a6840'), (0.7, '#d8c0a0')])
    desert = np.exp(-((np.abs(latitude) - 0.32) / 0.13) ** 2) * \
        paint.smooth(-0.15, 0.25, noise.fbm(d * 1.7, 3, 73))
    ground = paint.mix(warm, dry, desert)
    ground = ground * (0.86 + 0.3 * rough)[..., None]
    picture = paint.mix(sea, ground, paint.smooth(0.055, 0.075, land))
    ice = paint.smooth(0.89, 0.95, np.abs(latitude)
                       + noise.fbm(d * 4, 4, 74) * 0.10)
    picture = paint.mix(picture, paint.colour('#f2f8ff'), ice)
    # clouds drawn out along the parallels, with whirls
    along = d - pole * latitude[..., None]
    q = along * 1.9 + pole * (latitude * 4.4)[..., None] + warp * 0.9
    cover = noise.fbm(q, 6, 75, gain=0.58)
    wisps = noise.ridged(q * 1.7 + warp, 5, 76)
    veil = paint.smooth(0.06, 0.48, cover + (wisps - 0.35) * 0.3
                        + 0.08 * np.cos(latitude * 11))
    shade = paint.smooth(0.02, 0.40, noise.fbm(q + 0.03, 6, 75, gain=0.58))
    picture = picture * (1 - 0.25 * shade * (1 - veil))[..., None]
    picture = paint.mix(picture, paint.colour('#ffffff'), veil * 0.94)
    return np.clip(picture, 0, 1)


def giant(d):
    pole = unit(0, 1, 0)
    latitude = d @ pole
    swirl = np.stack([noise.fbm(d * 2.4 + k * 5.3, 5, 81 + k)
                      for k in range(3)], -1)
    shift = noise.fbm(np.stack([d[..., 0] * 1.6, latitude * 5,
                                d[..., 2] * 1.6], -1) + swirl * 0.35, 5, 85)
    y = np.arcsin(np.clip(latitude, -1, 1)) + shift * 0.075
    belts = noise.fbm(np.stack([y * 0, y * 3.2, y * 0 + 4.4], -1), 5, 86,
                      gain=0.65)
    tone = np.clip(0.52 + belts * 0.95 + shift * 0.22, 0, 1)
    picture = paint.ramp(tone, [(0.0, '#6e3a2a'), (0.22, '#a86840'),
                                (0.42, '#d8a468'), (0.58, '#f0d8a8'),
                                (0.75, '#e0b888'), (1.0, '#fff2dc')])
    pole_cap = paint.smooth(0.72, 0.98, np.abs(latitude))
    picture = paint.mix(picture, paint.colour('#7a6a72'), pole_cap * 0.75)
    for centre, size, tint in ((unit(0.55, -0.36, 0.75), 0.21, '#c8482a'),
                               (unit(-0.8, 0.42, 0.35), 0.10, '#fff4e0'),
                               (unit(-0.2, -0.5, -0.85), 0.12, '#fff0d8')):
        east = np.cross(pole, centre)
        east /= np.linalg.norm(east)
        north = np.cross(centre, east)
        a, b = (d @ east) / (size * 1.7), (d @ north) / size
        r = np.sqrt(a * a + b * b) + shift * 0.25
        front = (d @ centre) > 0
        eye = np.where(front, paint.smooth(1.05, 0.7, r), 0)
        rings = 0.85 + 0.2 * np.sin(r * 13)
        picture = paint.mix(picture, np.clip(
            np.asarray(paint.colour(tint)) * rings[..., None], 0, 1), eye)
        edge = np.where(front, np.exp(-((r - 1.12) / 0.14) ** 2), 0)
        picture = paint.mix(picture, paint.colour('#fff6e6'), edge * 0.55)
    return np.clip(picture, 0, 1)


def ring_picture(size, inner, outer, reach):
    y, x = np.mgrid[0:size, 0:size].astype(np.float64)
    a = ((x + 0.5) / size * 2 - 1) * reach
    b = ((y + 0.5) / size * 2 - 1) * reach
    r = np.sqrt(a * a + b * b)
    u = (r - inner) / (outer - inner)
    grooves = noise.fbm(np.stack([u * 9, u * 0, u * 0 + 2.2], -1), 5, 91,
                        gain=0.7)
    tone = np.clip(0.62 + grooves * 0.7, 0, 1)
    picture = paint.ramp(tone, [(0, '#6a5444'), (0.4, '#b89a78'),
                                (0.7, '#e6d2b0'), (1, '#fff6e2')])
    alpha = np.clip(0.72 + grooves * 0.75, 0.25, 0.95)
    alpha *= 0.45 + 0.55 * paint.smooth(0.0, 0.22, u)
    return np.concatenate([picture, alpha[..., None]], -1)


def annulus(inner, outer, steps, material):
    """A flat ring seen from both sides."""
    t = np.linspace(0, 2 * np.pi, steps + 1)
    c, s = np.cos(t), np.sin(t)
    quads = []
    for k in range(steps):
        a = (inner * c[k], 0.0, inner * s[k])
        b = (outer * c[k], 0.0, outer * s[k])
        e = (outer * c[k + 1], 0.0, outer * s[k + 1])
        f = (inner * c[k + 1], 0.0, inner * s[k + 1])
        quads.append([a, f, e, b])
    quads = np.array(quads)
    up = Mesh(quads, material, N=np.tile((0.0, 1.0, 0.0), (steps, 4, 1)))
    down = Mesh(quads[:, ::-1], material,
                N=np.tile((0.0, -1.0, 0.0), (steps, 4, 1)))
    return up + down


def tilted(matrix, planes):
    """Texture planes for a model turned by a matrix."""
    return [tuple(matrix @ np.array(p[:3])) + (p[3],) for p in planes]


def build_blue_world(out_dir):
    images = os.path.join(out_dir, 'images')
    objects = os.path.join(out_dir, 'Objects')
    radius = 7.0
    materials = []
    for f in range(6):
        name = 'planet1_%d.tga' % (f + 1)
        tga.write_tga(os.path.join(images, name),
                      blue_world(globe.cell_points(f, 256, REACH)))
        s, t = globe.planes(f, radius, REACH)
        materials.append(Material(
            'blue world %d' % (f + 1), colour=(1, 1, 1),
            specular=(0.18, 0.2, 0.24), shininess=0.12, luminosity=0.05,
            textures=[Texture(name, 'R', s, t)]))
    ball(radius, 11, materials).save(os.path.join(objects, 'Planet1.aob'))


def build_giant(out_dir):
    images = os.path.join(out_dir, 'images')
    objects = os.path.join(out_dir, 'Objects')
    radius = 4.7
    places = globe.cells()
    tga.write_tga(os.path.join(images, 'planet2.tga'), globe.atlas(
        [giant(globe.cell_points(f, 128, REACH)) for f in range(6)]))
    # Tilted, so that the ring is not a plain circle when the game, which
    # starts every scenery object unturned, brings the planet in.
    tilt = rotation('z', 18) @ rotation('x', 42)
    materials = []
    for f in range(6):
        s, t = tilted(tilt, globe.planes(f, radius, REACH, places[f]))
        materials.append(Material(
            'giant %d' % (f + 1), colour=(1, 1, 1),
            specular=(0.1, 0.1, 0.1), shininess=0.08, luminosity=0.05,
            textures=[Texture('planet2.tga', 'R', s, t)]))
    inner, outer, reach = 5.5, 7.95, 8.05
    tga.write_tga(os.path.join(images, 'planet2_ring.tga'),
                  ring_picture(256, inner, outer, reach))
    dust = Material('ring', colour=(1, 1, 1, 1), luminosity=0.25,
                    textures=[Texture('planet2_ring.tga', 'R', *tilted(
                        tilt, ((0.5 / reach, 0, 0, 0.5),
                               (0, 0, -0.5 / reach, 0.5))))])
    model = ball(radius, 9, materials)
    model = model + annulus(inner, 6.72, 40, dust)
    model = model + annulus(6.95, outer, 40, dust)
    model.transform(tilt)
    model.save(os.path.join(objects, 'Planet2.aob'))


def build(out_dir, names):
    for name, make in (('Planet1', build_blue_world),
                       ('Planet2', build_giant)):
        if name in names:
            make(out_dir)
