"""Pictures that belong to no model: the two skies that shiny surfaces
mirror, the icon and the banner of the tray menu."""
import os
import sys

import numpy as np
from PIL import Image

sys.path.insert(0, os.path.join(os.path.dirname(__file__), '..', 'lib'))
import noise  # noqa: E402
import paint  # noqa: E402
import tga  # noqa: E402

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', '..')


def sphere_directions(size):
    """Direction that each pixel of a sphere map shows, eye space."""
    y, x = np.mgrid[0:size, 0:size].astype(np.float64)
    s = (x + 0.5) / size * 2 - 1
    t = 1 - (y + 0.5) / size * 2
    r2 = np.clip(s * s + t * t, 0, 0.9999)
    nz = np.sqrt(1 - r2)
    return np.stack([2 * nz * s, 2 * nz * t, 2 * nz * nz - 1], -1)


def soft_sky(size):
    """For glass and painted metal: a wide soft light above, blue below.

    It multiplies the lit colour, so it stays bright everywhere.
    """
    d = sphere_directions(size)
    up = d[..., 1] * 0.5 + 0.5
    picture = paint.ramp(up, [(0.0, '#9896a0'), (0.35, '#b2b4c2'),
                              (0.55, '#d6dae6'), (0.78, '#f6f8ff'),
                              (1.0, '#ffffff')])
    haze = noise.fbm(d * 1.4, 4, 5)
    picture *= (1 + haze * 0.16)[..., None]
    lamp = np.array([-0.45, 0.55, 0.70])
    lamp /= np.linalg.norm(lamp)
    shine = paint.smooth(0.84, 0.985, d @ lamp)
    picture = paint.mix(picture, np.array([1.0, 1.0, 1.0]), shine)
    return np.clip(picture, 0, 1)


def chrome(size):
    """For bright metal: sky, a sharp dark horizon and warm ground."""
    d = sphere_directions(size)
    angle = np.arcsin(np.clip(d[..., 1], -1, 1)) / (np.pi / 2)
    angle = angle + noise.fbm(d * 2.3, 4, 8) * 0.035
    sky = paint.ramp(angle, [(0.0, '#ffffff'), (0.10, '#e8f2ff'),
                             (0.38, '#a2bce8'), (0.72, '#6f8fd0'),
                             (1.0, '#c8dcff')])
    ground = paint.ramp(angle, [(-1.0, '#f0e0d0'), (-0.62, '#cdb7a4'),
                                (-0.28, '#92806f'), (-0.10, '#5c5560'),
                                (0.0, '#3a4058')])
    picture = paint.mix(ground, sky, paint.smooth(-0.012, 0.012, angle))
    for lamp, low, high in (((-0.5, 0.62, 0.6), 0.955, 0.985),
                            ((0.7, 0.35, 0.5), 0.975, 0.99),
                            ((0.15, -0.75, 0.5), 0.97, 0.99)):
        lamp = np.array(lamp) / np.linalg.norm(lamp)
        picture = paint.mix(picture, np.array([1.0, 1.0, 1.0]),
                            paint.smooth(low, high, d @ lamp))
    return np.clip(picture, 0, 1)


# --- The ship of the icon --------------------------------------------------

def ship_icon(size):
    """The player's ship before a nebula, RGBA, drawn at any size."""
    big = 512
    y, x = np.mgrid[0:big, 0:big].astype(np.float64)
    u, v = (x + 0.5) / big * 2 - 1, (y + 0.5) / big * 2 - 1
    p = np.stack([u * 1.5, v * 1.5, u * 0 + 0.6], -1)
    gas = noise.fbm(p, 6, 31, gain=0.55)
    fil = noise.ridged(p * 1.2, 5, 32)
    picture = paint.ramp(np.clip(gas * 0.9 + 0.42 - 0.25 * v, 0, 1),
                         [(0, '#050820'), (0.4, '#14205c'), (0.65, '#3c3cb4'),
                          (0.85, '#9a5ce0'), (1, '#f0a0f0')])
    picture *= (0.65 + 0.7 * fil)[..., None]
    flame = np.exp(-(u / 0.13) ** 2) * paint.smooth(1.0, 0.35, v) \
        * paint.smooth(0.2, 0.45, v)
    picture += flame[..., None] * np.array([0.5, 0.9, 1.3])
    m = lambda: paint.Mask(big, big, 2)
    q = lambda pts: [((a + 1) / 2, (b + 1) / 2) for a, b in pts]
    both = lambda pts: pts + [(-a, b) for a, b in reversed(pts)]

    wings = m().polygon(q(both([(0, -0.30), (0.30, 0.0), (0.80, 0.42),
                                (0.80, 0.62), (0.34, 0.50), (0, 0.48)])))
    picture = paint.paste(picture, paint.ramp(u * 0.5 + 0.5, [
        (0, '#eef3fa'), (0.5, '#c2ccdc'), (1, '#7f8ca6')]), wings.array())
    tips = m()
    tips.polygon(q([(0.64, 0.27), (0.82, 0.42), (0.82, 0.64), (0.64, 0.59)]))
    tips.polygon(q([(-0.64, 0.27), (-0.82, 0.42), (-0.82, 0.64),
                    (-0.64, 0.59)]))
    picture = paint.paste(picture, '#ff7a1a', tips.array())
    guns = m()
    for side in (-1, 1):
        guns.polygon(q([(side * 0.50, -0.02), (side * 0.58, -0.02),
                        (side * 0.58, 0.42), (side * 0.50, 0.42)]))
    picture = paint.paste(picture, '#4a566e', guns.array())
    hull = m().polygon(q(both([(0, -0.88), (0.10, -0.62), (0.19, -0.05),
                               (0.21, 0.46), (0.12, 0.60)])))
    picture = paint.paste(picture, paint.ramp((u + 0.22) / 0.44, [
        (0, '#ffffff'), (0.35, '#f4f7fc'), (0.65, '#b4c0d4'),
        (1, '#6c7890')]), hull.array())
    stripe = m().polygon(q(both([(0.0, 0.20), (0.205, 0.20), (0.21, 0.32),
                                 (0.0, 0.32)])))
    picture = paint.paste(picture, '#ff7a1a', stripe.array() * hull.array())
    glass = m().polygon(q(both([(0, -0.48), (0.085, -0.30), (0.10, 0.02),
                                (0.05, 0.12)])))
    picture = paint.paste(picture, paint.ramp((v + 0.5) / 0.6, [
        (0, '#d8f4ff'), (0.4, '#3aa0f0'), (1, '#0a3a8c')]), glass.array())
    alpha = paint.Mask(big, big, 2).rounded(0.01, 0.01, 0.99, 0.99, 0.2)
    alpha = alpha.array()
    rim = alpha - paint.Mask(big, big, 2).rounded(
        0.035, 0.035, 0.965, 0.965, 0.178).array()
    picture = paint.paste(picture, paint.ramp(v * 0.5 + 0.5, [
        (0, '#ffd0a0'), (0.5, '#ff8a2a'), (1, '#7a3410')]),
        np.clip(rim, 0, 1))
    full = np.concatenate([np.clip(picture, 0, 1), alpha[..., None]], -1)
    full[..., :3] *= full[..., 3:]
    small = paint.downscale(full, size, size)
    small[..., :3] /= np.maximum(small[..., 3:], 1e-6)
    return np.clip(small, 0, 1)


def sixteen_colours(picture):
    """RGBA picture of at most sixteen colours, hard edges of alpha."""
    solid = picture[..., 3] > 0.5
    rgb = Image.fromarray(tga.to_bytes(picture[..., :3]))
    few = rgb.quantize(15, method=Image.MEDIANCUT, kmeans=4,
                       dither=Image.NONE).convert('RGB')
    out = np.zeros(picture.shape, np.uint8)
    out[..., :3] = np.asarray(few)
    out[..., 3] = np.where(solid, 255, 0)
    out[~solid] = 0
    return out


def banner(width=103, height=13):
    """The name on a strip of nebula."""
    over = 4
    y, x = np.mgrid[0:height * over, 0:width * over].astype(np.float64)
    p = np.stack([x / (height * over) * 0.8, y / (height * over) * 0.8], -1)
    gas = noise.fbm(p, 5, 51) * 0.9 + 0.42
    picture = paint.ramp(np.clip(gas, 0, 1), [
        (0, '#040616'), (0.4, '#0c1438'), (0.7, '#1c2260'), (1, '#4c2e80')])
    picture = paint.downscale(picture, height, width)
    letters = paint.Mask(height, width, 8)
    paint.write(letters, 'NEBULORIX', 0.5, 3 / height, 7 / height,
                weight=0.22, spacing=0.36, aspect=1.42, centre=True)
    mask = letters.array()
    shadow = np.roll(np.roll(mask, 1, 0), 1, 1)
    picture = paint.paste(picture, '#02030c', shadow * 0.8)
    face = paint.ramp(np.linspace(0, 1, height), [
        (0.15, '#ffffff'), (0.48, '#ffe0b0'), (0.52, '#ff9a30'),
        (0.85, '#ffb860')])[:, None, :]
    picture = paint.paste(picture, np.tile(face, (1, width, 1)), mask)
    return np.clip(picture, 0, 1)


def save_png(path, array, colours=None):
    image = Image.fromarray(tga.to_bytes(array))
    if colours:
        image = image.quantize(colours, method=Image.MEDIANCUT,
                               dither=Image.NONE)
    image.save(path, optimize=True)


def build(out_dir, names):
    images = os.path.join(out_dir, 'images')
    for name, sky in (('Reflect', soft_sky), ('Reflect2', chrome)):
        if name in names:
            tga.write_tga(os.path.join(images, name + '.tga'), sky(256))
    if 'Icon' in names:
        save_png(os.path.join(images, 'Icon.png'),
                 sixteen_colours(ship_icon(32)))
    if 'TrayMenu' in names:
        save_png(os.path.join(images, 'TrayMenu.png'), banner(), 256)
    if 'nebulorix' not in names:
        return
    packaging = os.path.join(out_dir, '..', 'packaging')
    os.makedirs(packaging, exist_ok=True)
    save_png(os.path.join(packaging, 'nebulorix.png'), ship_icon(256))
