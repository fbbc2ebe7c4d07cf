"""Spheres made of six square patches, and pictures baked onto them.

Every patch has its own plane projection into a picture, so that nothing
is stretched and colours that depend on the place alone meet without seams.
"""
import numpy as np

# Normal, right and up of each patch; right x up = normal.
FACES = [
    ((1, 0, 0), (0, 0, -1), (0, 1, 0)),
    ((-1, 0, 0), (0, 0, 1), (0, 1, 0)),
    ((0, 1, 0), (1, 0, 0), (0, 0, -1)),
    ((0, -1, 0), (1, 0, 0), (0, 0, 1)),
    ((0, 0, 1), (1, 0, 0), (0, 1, 0)),
    ((0, 0, -1), (-1, 0, 0), (0, 1, 0)),
]


def directions(face, steps):
    """Unit vectors of a patch's grid, (steps+1) x (steps+1) x 3."""
    n, u, v = (np.array(a, np.float64) for a in FACES[face])
    t = np.tan(np.linspace(-1, 1, steps + 1) * np.pi / 4)
    b, a = np.meshgrid(t, t, indexing='ij')
    d = n + a[..., None] * u + b[..., None] * v
    return d / np.linalg.norm(d, axis=-1, keepdims=True)


def cell_points(face, size, reach=0.75):
    """Unit vectors seen by every pixel of a patch's square picture.

    The picture spans -reach..reach across the patch; first row on top.
    """
    n, u, v = (np.array(a, np.float64) for a in FACES[face])
    y, x = np.mgrid[0:size, 0:size].astype(np.float64)
    a = ((x + 0.5) / size * 2 - 1) * reach
    b = (1 - (y + 0.5) / size * 2) * reach
    c = np.sqrt(np.clip(1 - a * a - b * b, 0.02, None))
    d = a[..., None] * u + b[..., None] * v + c[..., None] * n
    return d / np.linalg.norm(d, axis=-1, keepdims=True)


def planes(face, radius, reach=0.75, cell=(0, 0, 1, 1)):
    """The S and T planes that lay a patch into its cell of a picture.

    cell is left, bottom, width and height in texture coordinates.
    """
    _, u, v = FACES[face]
    left, bottom, width, height = cell
    e = 2.0 * reach * radius
    s = tuple(k * width / e for k in u) + (left + width * 0.5,)
    t = tuple(k * height / e for k in v) + (bottom + height * 0.5,)
    return s, t


def cells(columns=4, rows=2):
    """Cells of an atlas for six patches, filled row by row from below."""
    return [((k % columns) / columns, (k // columns) / rows,
             1.0 / columns, 1.0 / rows) for k in range(6)]


def atlas(pictures, columns=4, rows=2):
    """Six square pictures in one, as cells() orders them."""
    size = pictures[0].shape[0]
    out = np.zeros((rows * size, columns * size) + pictures[0].shape[2:])
    for k, picture in enumerate(pictures):
        x, y = (k % columns) * size, (rows - 1 - k // columns) * size
        out[y:y + size, x:x + size] = picture
    return out


def bake(grid, values, size, face, reach):
    """Draw a patch's grid of points into its picture.

    grid holds the patch's points, values what each carries (such as the
    unit vector it came from). Returns the values of every pixel and the
    mask of the pixels met; where the patch folds over, the upper part wins.
    """
    n, u, v = (np.array(a, np.float64) for a in FACES[face])
    px = ((grid @ u) / reach * 0.5 + 0.5) * size
    py = (0.5 - (grid @ v) / reach * 0.5) * size
    pz = grid @ n
    out = np.zeros((size, size, values.shape[-1]))
    depth = np.full((size, size), -1e9)
    rows, columns = px.shape
    for i in range(rows - 1):
        for j in range(columns - 1):
            quad = [(i, j), (i, j + 1), (i + 1, j + 1), (i + 1, j)]
            for tri in ((quad[0], quad[1], quad[2]),
                        (quad[0], quad[2], quad[3])):
                _triangle([(px[q], py[q], pz[q]) for q in tri],
                          [values[q] for q in tri], out, depth)
    return out, depth > -1e8


def _triangle(points, values, out, depth):
    (x0, y0, z0), (x1, y1, z1), (x2, y2, z2) = points
    area = (x1 - x0) * (y2 - y0) - (x2 - x0) * (y1 - y0)
    if abs(area) < 1e-9:
        return
    size = out.shape[0]
    xa = max(int(np.floor(min(x0, x1, x2) - 1)), 0)
    xb = min(int(np.ceil(max(x0, x1, x2) + 1)), size)
    ya = max(int(np.floor(min(y0, y1, y2) - 1)), 0)
    yb = min(int(np.ceil(max(y0, y1, y2) + 1)), size)
    if xa >= xb or ya >= yb:
        return
    y, x = np.mgrid[ya:yb, xa:xb] + 0.5
    w1 = ((x - x0) * (y2 - y0) - (x2 - x0) * (y - y0)) / area
    w2 = ((x1 - x0) * (y - y0) - (x - x0) * (y1 - y0)) / area
    w0 = 1 - w1 - w2
    z = w0 * z0 + w1 * z1 + w2 * z2
    spot = depth[ya:yb, xa:xb]
    inside = (w0 >= -0.02) & (w1 >= -0.02) & (w2 >= -0.02) & (z > spot)
    spot[inside] = z[inside]
    value = (w0[..., None] * values[0] + w1[..., None] * values[1]
             + w2[..., None] * values[2])
    out[ya:yb, xa:xb][inside] = value[inside]


def unfold(quads):
    """Turn bent quads so that the renderer splits them the better way.

    Corners 0 and 2 are where a quad is split in two; where the halves
    would face apart, the corners move on by one.
    """
    quads = np.array(quads, np.float64)

    def apart(q):
        a = np.cross(q[:, 1] - q[:, 0], q[:, 2] - q[:, 0])
        b = np.cross(q[:, 2] - q[:, 0], q[:, 3] - q[:, 0])
        return (a * b).sum(1) / np.maximum(
            np.linalg.norm(a, axis=1) * np.linalg.norm(b, axis=1), 1e-12)
    rolled = np.roll(quads, -1, 1)
    better = (apart(quads) < 0.1) & (apart(rolled) > apart(quads))
    quads[better] = rolled[better]
    return quads
