"""Planar textures painted for one model, in the model's own units.

    skin = Skin("player_top.tga", mesh, "top", 512)     # window round the mesh
    skin.fill((0.9, 0.9, 0.9))
    skin.line([(0, -2), (0, 2)], 0.05, DARK)            # coordinates: right and up in the projection
    skin.occlude(0.8)
    texture = skin.save(images)                         # Texture of kind R with its planes

Projections: "top" right +X, up -Z; "side" right +Z, up +Y; "front" right +X, up +Y.
Shapes given with mirror=True are painted on both sides of the middle (|x|).
"""
import os

import numpy as np

import noise
import preview
import tga
from aob import Texture

AXES = {"top": ((1, 0, 0), (0, 0, -1), (0, 1, 0)),
        "side": ((0, 0, 1), (0, 1, 0), (-1, 0, 0)),
        "front": ((1, 0, 0), (0, 1, 0), (0, 0, -1)),
        "rear": ((1, 0, 0), (0, 1, 0), (0, 0, 1))}


def smooth(low, high, v):
    t = np.clip((v - low) / (high - low), 0, 1)
    return t * t * (3 - 2 * t)


def blur(a, radius):
    """Three box blurs with edge padding; radius in pixels."""
    r = max(1, int(round(radius)))
    for _ in range(3):
        for axis in (0, 1):
            pad = [(0, 0)] * a.ndim
            pad[axis] = (r + 1, r)
            c = np.cumsum(np.pad(a, pad, mode="edge"), axis)
            n = a.shape[axis]
            take = lambda o: np.take(c, np.arange(o, o + n), axis)
            a = (take(2 * r + 1) - take(0)) / (2 * r + 1)
    return a


class Skin:
    def __init__(self, name, mesh, axis, size=256, height=None, window=None, margin=0.02):
        """size x (height or size) pixels over the mesh's extent, or over window (left, bottom, right, top)."""
        self.name, self.axis = name, axis
        self.right, self.up, self.eye = (np.array(v, float) for v in AXES[axis])
        w, h = size, height or size
        quads = mesh.quads()
        if window is None:
            pts = mesh.P.reshape(-1, 3)
            a, b = pts @ self.right, pts @ self.up
            da, db = (a.max() - a.min()) * margin, (b.max() - b.min()) * margin
            window = (a.min() - da, b.min() - db, a.max() + da, b.max() + db)
        self.window = window
        x0, y0, x1, y1 = window
        self.px = max((x1 - x0) / w, (y1 - y0) / h)
        self.A, self.B = np.meshgrid(x0 + (np.arange(w) + 0.5) * (x1 - x0) / w,
                                     y1 - (np.arange(h) + 0.5) * (y1 - y0) / h)
        self.img = np.ones((h, w, 3))
        # depth towards the projector, for occlusion and for paint that follows the form
        n = 384
        ext = max(x1 - x0, y1 - y0)
        mid = (x0 + x1) / 2 * self.right + (y0 + y1) / 2 * self.up
        flat = quads
        R = np.array([self.right, self.up, self.eye])
        if np.linalg.det(R) < 0:                    # a left-handed frame would cull the wrong faces
            depth, mask = preview.render([(m, p[::-1], q[::-1]) for m, p, q in flat], R, n, ext, mid, sharp=1,
                                         depth_only=True)
        else:
            depth, mask = preview.render(flat, R, n, ext, mid, sharp=1, depth_only=True)
        i = np.clip(((y0 + y1) / 2 + ext / 2 - self.B) / ext * n, 0, n - 1).astype(int)
        j = np.clip((self.A - (x0 + x1) / 2 + ext / 2) / ext * n, 0, n - 1).astype(int)
        self.mask = mask[i, j]
        low = depth[mask].min() if mask.any() else 0.0
        self.depth = np.where(self.mask, depth[i, j], low)

    # ---- coordinates and covers
    def coords(self, mirror=False):
        return (np.abs(self.A) if mirror else self.A), self.B

    def cover(self, d, soft=0.0):
        """Share of each pixel inside a shape of signed distance d; soft widens its border."""
        w = max(self.px * 1.2, soft)
        return np.clip(0.5 - d / w, 0, 1)

    def rect(self, x0, y0, x1, y1, r=0.0, mirror=False):
        A, B = self.coords(mirror)
        qx = np.abs(A - (x0 + x1) / 2) - (x1 - x0) / 2 + r
        qy = np.abs(B - (y0 + y1) / 2) - (y1 - y0) / 2 + r
        return np.hypot(np.maximum(qx, 0), np.maximum(qy, 0)) + np.minimum(np.maximum(qx, qy), 0) - r

    def disc(self, x, y, r, ry=None, mirror=False):
        A, B = self.coords(mirror)
        if ry is None:
            return np.hypot(A - x, B - y) - r
        return (np.hypot((A - x) / r, (B - y) / ry) - 1) * min(r, ry)

    def poly(self, points, mirror=False):
        A, B = self.coords(mirror)
        p = np.asarray(points, float)
        d = np.full(A.shape, 1e9)
        inside = np.zeros(A.shape, bool)
        for (ax, ay), (bx, by) in zip(p, np.roll(p, -1, 0)):
            ex, ey = bx - ax, by - ay
            t = np.clip(((A - ax) * ex + (B - ay) * ey) / (ex * ex + ey * ey + 1e-12), 0, 1)
            d = np.minimum(d, np.hypot(A - ax - t * ex, B - ay - t * ey))
            cross = (ay > B) != (by > B)
            if ey != 0:
                inside ^= cross & (A < ax + (B - ay) / ey * ex)
        return np.where(inside, -d, d)

    def path(self, points, mirror=False):
        A, B = self.coords(mirror)
        d = np.full(A.shape, 1e9)
        p = np.asarray(points, float)
        for (ax, ay), (bx, by) in zip(p[:-1], p[1:]):
            ex, ey = bx - ax, by - ay
            t = np.clip(((A - ax) * ex + (B - ay) * ey) / (ex * ex + ey * ey + 1e-12), 0, 1)
            d = np.minimum(d, np.hypot(A - ax - t * ex, B - ay - t * ey))
        return d

    def noise(self, scale, octaves=4, seed=1):
        return noise.fbm(np.stack([self.A * scale, self.B * scale], -1), octaves, seed)

    def cells(self, scale, seed=1, mirror=False):
        """(nearest, border): cellular pattern; border is 0 on the seams."""
        A, B = self.coords(mirror)
        f, s = noise.worley(np.stack([A * scale, B * scale], -1), seed)
        return f, s - f

    # ---- paint
    def fill(self, colour, cover=1.0):
        c = np.broadcast_to(np.asarray(cover, float), self.A.shape)[..., None]
        self.img = self.img * (1 - c) + np.asarray(colour, float) * c
        return self

    def shape(self, d, colour, alpha=1.0, soft=0.0):
        return self.fill(colour, self.cover(d, soft) * alpha)

    def line(self, points, width, colour, alpha=1.0, mirror=False, soft=0.0):
        return self.shape(self.path(points, mirror) - width / 2, colour, alpha, soft)

    def seam(self, points, width=0.03, mirror=False, dark=0.45):
        """Panel joint: a dark line with a light one below it."""
        d = self.path(points, mirror)
        self.img *= (1 - dark * self.cover(d - width / 2))[..., None]
        A, B = self.A, self.B
        self.B = B + width * 0.9
        d = self.path(points, mirror)
        self.A, self.B = A, B
        self.img = np.minimum(self.img * (1 + 0.12 * self.cover(d - width / 2))[..., None], 1)
        return self

    def shade(self, factor):
        self.img = self.img * np.asarray(factor, float)[..., None]
        return self

    def bump(self, h, strength=1.0):
        """Relief light from the upper left by a height field."""
        gy, gx = np.gradient(h)
        s = np.clip((gx + gy) * strength, -0.5, 0.5)
        self.img = np.clip(self.img * (1 + s)[..., None], 0, 1)
        return self

    def occlude(self, strength=0.7, reach=(0.08, 0.3), edge=0.25, floor=0.3):
        """Darkens what lies lower than its surroundings and the strip round steps; brightens edges."""
        span = max(self.A.max() - self.A.min(), self.B.max() - self.B.min())
        total = np.zeros(self.A.shape)
        light = np.zeros(self.A.shape)
        for r in reach:
            m = blur(self.mask.astype(float), r / self.px / 2)
            avg = blur(np.where(self.mask, self.depth, 0.0), r / self.px / 2) / np.maximum(m, 1e-3)
            d = np.where(self.mask, (avg - self.depth) / r, 0)
            total += np.clip(d, 0, 1.2)
            light = np.maximum(light, np.clip(-d, 0, 0.6))
        f = np.clip(1 - strength * total / len(reach) * 1.6, floor, 1) + edge * light
        self.img = np.clip(self.img * f[..., None], 0, 1)
        return self

    def grime(self, amount=0.12, scale=1.2, seed=7):
        return self.shade(1 - amount * np.clip(self.noise(scale, 5, seed) + 0.3, 0, 1))

    def save(self, images):
        x0, y0, x1, y1 = self.window
        tga.write_tga(os.path.join(images, self.name), np.clip(self.img, 0, 1))
        preview._cache.pop(self.name, None)
        s, t = self.right / (x1 - x0), self.up / (y1 - y0)
        return Texture(self.name, "R", tuple(s) + (-x0 / (x1 - x0),), tuple(t) + (-y0 / (y1 - y0),))
