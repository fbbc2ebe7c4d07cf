"""Seeded noise in two and three dimensions, the same on every machine.

The lattice is hashed with integer arithmetic only, so a seed gives the
same picture wherever and in whatever order it is asked for.
"""
import numpy as np

_M = np.uint32


_FACTORS = (_M(0x8da6b343), _M(0xd8163841), _M(0xcb1ab31f))


def _scramble(h, seed):
    h = h ^ _M((seed * 0x9e3779b1 + 0x7f4a7c15) & 0xffffffff)
    h ^= h >> _M(15)
    h *= _M(0x2c1b3c6d)
    h ^= h >> _M(12)
    h *= _M(0x297a2d39)
    h ^= h >> _M(15)
    return h


def _hash(ix, iy, iz, seed):
    h = ix.astype(np.uint32) * _FACTORS[0]
    h ^= iy.astype(np.uint32) * _FACTORS[1]
    h ^= iz.astype(np.uint32) * _FACTORS[2]
    return _scramble(h, seed)


def _random(ix, iy, iz, seed):
    """Even random numbers 0..1 at lattice points."""
    return _hash(ix, iy, iz, seed).astype(np.float64) / 4294967295.0


_GRADIENTS = np.array(
    [(1, 1, 0), (-1, 1, 0), (1, -1, 0), (-1, -1, 0),
     (1, 0, 1), (-1, 0, 1), (1, 0, -1), (-1, 0, -1),
     (0, 1, 1), (0, -1, 1), (0, 1, -1), (0, -1, -1),
     (1, 1, 0), (-1, 1, 0), (0, -1, 1), (0, -1, -1)], np.float64).T.copy()


def gradient(points, seed=0, period=None):
    """Gradient noise, about -1..1, at points of shape (..., 3) or (..., 2).

    With a period (an integer) the noise repeats after that many units.
    """
    points = np.asarray(points, np.float64)
    axes = [np.ascontiguousarray(points[..., k])
            for k in range(points.shape[-1])]
    if len(axes) == 2:
        axes.append(np.full(points.shape[:-1], 0.37))
    # for the lattice planes below and above, on each axis: share of the
    # hash, distance, weight
    planes = []
    for p, factor in zip(axes, _FACTORS):
        base = np.floor(p)
        frac = p - base
        cell = base.astype(np.int64)
        fade = frac ** 3 * (frac * (frac * 6 - 15) + 10)
        pair = []
        for step in (0, 1):
            c = cell + step
            if period:
                c = c % period
            pair.append((c.astype(np.uint32) * factor, frac - step,
                         fade if step else 1 - fade))
        planes.append(pair)
    total = np.zeros(points.shape[:-1])
    for hx, x, wx in planes[0]:
        for hy, y, wy in planes[1]:
            hxy, wxy = hx ^ hy, wx * wy
            for hz, z, wz in planes[2]:
                g = _scramble(hxy ^ hz, seed) & _M(15)
                total += wxy * wz * (_GRADIENTS[0][g] * x
                                     + _GRADIENTS[1][g] * y
                                     + _GRADIENTS[2][g] * z)
    return total


def fbm(points, octaves=5, seed=0, gain=0.5, lacunarity=2, period=None):
    """Sum of octaves of gradient noise, about -1..1."""
    points = np.asarray(points, np.float64)
    total = np.zeros(points.shape[:-1])
    amplitude, norm, scale = 1.0, 0.0, 1
    for octave in range(octaves):
        total += amplitude * gradient(
            points * scale, seed + octave * 101,
            int(period * scale) if period else None)
        norm += amplitude
        amplitude *= gain
        scale *= lacunarity
    return total * 1.5 / norm


def ridged(points, octaves=5, seed=0, gain=0.5, lacunarity=2, period=None):
    """Noise of sharp bright ridges, 0..1."""
    points = np.asarray(points, np.float64)
    total = np.zeros(points.shape[:-1])
    weight = np.ones(points.shape[:-1])
    amplitude, norm, scale = 1.0, 0.0, 1
    for octave in range(octaves):
        n = 1 - np.abs(gradient(points * scale, seed + octave * 101,
                                int(period * scale) if period else None)) * 1.4
        n = np.clip(n, 0, 1) ** 2
        total += amplitude * n * weight
        weight = np.clip(n * 1.6, 0, 1)
        norm += amplitude
        amplitude *= gain
        scale *= lacunarity
    return total / norm


def worley(points, seed=0, period=None, jitter=1.0):
    """Distances to the nearest and second nearest feature point."""
    points = np.asarray(points, np.float64)
    if points.shape[-1] == 2:
        points = np.concatenate(
            [points, np.full(points.shape[:-1] + (1,), 0.5)], -1)
        layers = (0,)
        flat = True
    else:
        layers = (-1, 0, 1)
        flat = False
    cell = np.floor(points).astype(np.int64)
    first = np.full(points.shape[:-1], 9.0)
    second = np.full(points.shape[:-1], 9.0)
    for dx in (-1, 0, 1):
        for dy in (-1, 0, 1):
            for dz in layers:
                c = cell + np.array([dx, dy, dz])
                h = c % period if period else c
                offset = np.stack(
                    [_random(h[..., 0], h[..., 1], h[..., 2], seed + k)
                     for k in (0, 1, 2)], -1)
                offset = 0.5 + (offset - 0.5) * jitter
                if flat:
                    offset[..., 2] = 0.5
                d = np.sqrt(((c + offset - points) ** 2).sum(-1))
                second = np.minimum(second, np.maximum(first, d))
                first = np.minimum(first, d)
    return first, second


def white(height, width, seed=0):
    """Independent random numbers 0..1 for every pixel."""
    y, x = np.mgrid[0:height, 0:width]
    return _random(x, y, np.zeros_like(x), seed)


def plane(height, width, scale=1.0):
    """Points of a picture, x and y from 0 to scale (square pixels)."""
    y, x = np.mgrid[0:height, 0:width].astype(np.float64)
    return np.stack([(x + 0.5) / width * scale,
                     (y + 0.5) / width * scale], -1)
