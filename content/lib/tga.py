"""Uncompressed true-colour TGA files, the only pictures the game reads."""
import struct

import numpy as np

MAGIC = bytes([0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0])


def to_bytes(picture):
    """Picture with values 0..1 (float) or 0..255 (integer) as uint8."""
    picture = np.asarray(picture)
    if picture.dtype.kind == 'f':
        picture = np.clip(np.rint(picture * 255.0), 0, 255)
    return picture.astype(np.uint8)


def write_tga(path, picture):
    """Write an H x W x 3 or H x W x 4 array, RGB(A), first row on top.

    The game clears the alpha of the outermost frame of pixels of every
    32-bit picture, so nothing that matters may lie there.
    """
    pixels = to_bytes(picture)
    height, width, channels = pixels.shape
    if channels not in (3, 4):
        raise ValueError('%s: %d channels' % (path, channels))
    order = [2, 1, 0] if channels == 3 else [2, 1, 0, 3]
    header = MAGIC + struct.pack('<HHBB', width, height, channels * 8,
                                 8 if channels == 4 else 0)
    with open(path, 'wb') as file:
        file.write(header)
        file.write(np.ascontiguousarray(pixels[::-1, :, order]).tobytes())


def read_tga(path):
    """Read a file as uint8 H x W x 3 or 4, RGB(A), first row on top."""
    with open(path, 'rb') as file:
        data = file.read()
    if len(data) < 18 or data[:12] != MAGIC:
        raise ValueError('%s: not an uncompressed true-colour TGA' % path)
    width, height, bits = struct.unpack('<HHB', data[12:17])
    if bits not in (24, 32):
        raise ValueError('%s: %d bits' % (path, bits))
    channels = bits // 8
    size = width * height * channels
    if len(data) < 18 + size:
        raise ValueError('%s: too short' % path)
    pixels = np.frombuffer(data, np.uint8, size, 18)
    pixels = pixels.reshape(height, width, channels)
    order = [2, 1, 0] if channels == 3 else [2, 1, 0, 3]
    return np.ascontiguousarray(pixels[::-1, :, order])
