"""Quad meshes: primitives, copies, smooth normals.

    from mesh import *
    m = lathe([(-1, 0.1), (0, 0.5), (1, 0.3)], 12, steel)        # (along the axis, radius)
    m += box((1, 0.4, 2), (0, 0.3, 0), steel, bevel=0.05)
    m += tube([(0, 0, 0), (1, 0, 0.5)], [0.1, 0.05], 8, steel).mirrored("x")   # part and its mirror image
    m.save("assets/Objects/Thing.aob")

Every primitive returns a Mesh that is one smoothing part; `+` keeps the parts
apart, so parts may interpenetrate without blending their normals.  Closed parts
come out with their faces outward; a mirror image has its winding reversed.
Up is +Y, the nose points to -Z, right is +X.
"""
import numpy as np
from aob import write_aob

TINY = 0.004   # radius of the little rings that stand where a pole would be; they stay open, being smaller than a pixel


class Mesh:
    """P (n,4,3) corners, mat list of n materials, part (n,) smoothing part, crease (n,) degrees,
    N (n,4,3) given normals, NaN where they are to be computed."""
    _next = [0]

    def __init__(self, P=None, mat=None, crease=38.0, N=None, part=None):
        self.P = np.zeros((0, 4, 3)) if P is None else np.asarray(P, float).reshape(-1, 4, 3)
        n = len(self.P)
        self.mat = list(mat) if isinstance(mat, (list, tuple)) else [mat] * n
        self.crease = np.full(n, float(crease)) if np.isscalar(crease) else np.asarray(crease, float)
        self.N = np.full((n, 4, 3), np.nan) if N is None else np.asarray(N, float).reshape(-1, 4, 3)
        if part is None:
            Mesh._next[0] += 1
            part = np.full(n, Mesh._next[0])
        self.part = np.asarray(part, int)

    # ---- putting together
    def copy(self):
        m = Mesh(self.P.copy(), list(self.mat), self.crease.copy(), self.N.copy(), np.zeros(len(self.P), int))
        for old in np.unique(self.part):
            Mesh._next[0] += 1
            m.part[self.part == old] = Mesh._next[0]
        return m

    def __add__(self, other):
        return Mesh(np.concatenate([self.P, other.P]), self.mat + other.mat,
                    np.concatenate([self.crease, other.crease]), np.concatenate([self.N, other.N]),
                    np.concatenate([self.part, other.part]))

    def __len__(self):
        return len(self.P)

    def select(self, mask):
        mask = np.asarray(mask, bool)
        return Mesh(self.P[mask], [m for m, k in zip(self.mat, mask) if k], self.crease[mask], self.N[mask],
                    self.part[mask])

    def weld_parts(self, crease=None):
        """Makes everything one smoothing part (for pieces that share their border)."""
        Mesh._next[0] += 1
        self.part[:] = Mesh._next[0]
        if crease is not None:
            self.crease[:] = crease
        return self

    # ---- moving
    def transform(self, matrix, offset=(0, 0, 0)):
        """Applies a 3x3 matrix, then an offset; reverses the winding if the matrix mirrors."""
        A = np.asarray(matrix, float)
        self.P = self.P @ A.T + np.asarray(offset, float)
        N = self.N @ np.linalg.inv(A)
        self.N = N / np.maximum(np.linalg.norm(N, axis=2, keepdims=True), 1e-12)
        if np.linalg.det(A) < 0:
            self.flip(normals=False)
        return self

    def move(self, x=0, y=0, z=0):
        self.P = self.P + np.array([x, y, z], float)
        return self

    def scale(self, x=1, y=None, z=None):
        y = x if y is None else y
        z = x if z is None else z
        return self.transform(np.diag([x, y, z]))

    def rotate(self, axis, degrees):
        return self.transform(rotation(axis, degrees))

    def mirror(self, axis="x"):
        d = [1.0, 1.0, 1.0]
        d["xyz".index(axis)] = -1.0
        return self.transform(np.diag(d))

    def mirrored(self, axis="x"):
        """This mesh and its mirror image."""
        return self + self.copy().mirror(axis)

    def spread(self, count, axis="z", start=0.0):
        """count copies turned evenly about an axis."""
        out = Mesh()
        for i in range(count):
            out = out + self.copy().rotate(axis, start + 360.0 * i / count)
        return out

    def flip(self, normals=True):
        """Reverses the winding (and given normals)."""
        self.P = self.P[:, ::-1].copy()
        self.N = self.N[:, ::-1].copy()
        if normals:
            self.N = -self.N
        return self

    def orient(self):
        """Turns every closed part so that its volume is positive."""
        for k in np.unique(self.part):
            sel = self.part == k
            if signed_volume(self.P[sel]) < 0:
                self.P[sel] = self.P[sel][:, ::-1]
                self.N[sel] = -self.N[sel][:, ::-1]
        return self

    def bend(self, fn):
        """Moves every corner by fn(points (n,3)) -> points (n,3); given normals are dropped."""
        self.P = fn(self.P.reshape(-1, 3).copy()).reshape(-1, 4, 3)
        self.N[:] = np.nan
        return self

    def clean(self, area=2e-6):
        """Drops quads without area or with two corners on one spot."""
        q = np.round(self.P * 2048)
        d = np.abs(np.roll(q, -1, 1) - q).max(2).min(1)
        a = np.linalg.norm(np.cross(self.P[:, 2] - self.P[:, 0], self.P[:, 3] - self.P[:, 1]), axis=1)
        return self.select((a > area) & (d >= 1))

    # ---- surface
    def face_normals(self):
        n = np.cross(self.P[:, 2] - self.P[:, 0], self.P[:, 3] - self.P[:, 1])
        return n / np.maximum(np.linalg.norm(n, axis=1, keepdims=True), 1e-12)

    def centres(self):
        return self.P.mean(1)

    def paint(self, fn):
        """fn(centre, normal, old material) -> material, for every quad."""
        self.mat = [fn(c, n, m) for c, n, m in zip(self.centres(), self.face_normals(), self.mat)]
        return self

    def by_direction(self, only=None, top=None, side=None, front=None, bottom=None, rear=None, bias=1.0):
        """Gives quads (of material `only`, or all) the material of their dominant direction.
        bottom defaults to top, rear to front; bias above 1 favours top and bottom."""
        bottom = top if bottom is None else bottom
        rear = front if rear is None else rear

        def pick(c, n, m):
            if only is not None and m is not only:
                return m
            ax, ay, az = abs(n[0]), abs(n[1]) * bias, abs(n[2])
            if ay >= ax and ay >= az:
                return (top if n[1] > 0 else bottom) or m
            if ax >= az:
                return side or m
            return (front if n[2] < 0 else rear) or m
        return self.paint(pick)

    def normals(self):
        """Normals of all corners: given ones, else area-weighted within the crease angle of their part."""
        face = np.cross(self.P[:, 2] - self.P[:, 0], self.P[:, 3] - self.P[:, 1])
        unit = face / np.maximum(np.linalg.norm(face, axis=1, keepdims=True), 1e-12)
        out = np.repeat(unit[:, None, :], 4, 1)
        key = np.concatenate([np.round(self.P * 1000).reshape(-1, 3),
                              np.repeat(self.part, 4)[:, None]], 1).astype(np.int64)
        _, ids = np.unique(key, axis=0, return_inverse=True)
        ids = ids.reshape(-1)
        order = np.argsort(ids, kind="stable")
        cuts = np.flatnonzero(np.diff(ids[order])) + 1
        for group in np.split(order, cuts):
            faces = group // 4
            dots = unit[faces] @ unit[faces].T
            limit = np.cos(np.radians(np.minimum.outer(self.crease[faces], self.crease[faces])))
            total = (dots >= limit - 1e-9) @ face[faces]
            total /= np.maximum(np.linalg.norm(total, axis=1, keepdims=True), 1e-12)
            out[faces, group % 4] = total
        given = np.isfinite(self.N).all(2)
        out[given] = self.N[given]
        bad = (out * unit[:, None, :]).sum(2) < 0.08   # a normal behind its face would light it wrongly
        out[bad] = np.repeat(unit[:, None, :], 4, 1)[bad]
        return out

    def quads(self):
        """List of (material, positions, normals) for write_aob, after cleaning."""
        m = self.clean()
        return list(zip(m.mat, m.P, m.normals()))

    def bounds(self):
        p = self.P.reshape(-1, 3)
        return p.min(0), p.max(0)

    def save(self, path):
        write_aob(path, self.quads())


# ---------------------------------------------------------------- small helpers

def rotation(axis, degrees):
    a = np.radians(degrees)
    c, s = np.cos(a), np.sin(a)
    if axis == "x":
        return np.array([[1, 0, 0], [0, c, -s], [0, s, c]])
    if axis == "y":
        return np.array([[c, 0, s], [0, 1, 0], [-s, 0, c]])
    return np.array([[c, -s, 0], [s, c, 0], [0, 0, 1]])


def signed_volume(P):
    """Six times the volume enclosed by quads (n,4,3); positive when they face outward."""
    a, b, c, d = P[:, 0], P[:, 1], P[:, 2], P[:, 3]
    return float((a * np.cross(b, c)).sum() + (a * np.cross(c, d)).sum())


def _cap(ring):
    """Quads over an even polygon, as a strip across it; none over a ring that nobody can see into."""
    n = len(ring)
    if np.linalg.norm(ring - ring.mean(0), axis=1).max() < 1.5 * TINY:
        return []
    assert n % 2 == 0, "rings need an even number of points"
    return [[ring[i], ring[i + 1], ring[n - 2 - i], ring[n - 1 - i]] for i in range(n // 2 - 1)]


# ---------------------------------------------------------------- cross-sections (2D, counter-clockwise)

def section_box(w, h, chamfer):
    """Rectangle w by h with cut corners: 8 points."""
    a, b, c = w / 2.0, h / 2.0, min(chamfer, w * 0.49, h * 0.49)
    return np.array([(a, -b + c), (a, b - c), (a - c, b), (-a + c, b),
                     (-a, b - c), (-a, -b + c), (-a + c, -b), (a - c, -b)])


def section_round(w, h, n, power=2.0, turn=0.5):
    """Superellipse: power 2 is an ellipse, 4 nearly a rectangle; n even."""
    t = (np.arange(n) + turn) * 2 * np.pi / n
    c, s = np.cos(t), np.sin(t)
    return np.stack([np.sign(c) * np.abs(c) ** (2 / power) * w / 2,
                     np.sign(s) * np.abs(s) ** (2 / power) * h / 2], 1)


def ring_at(section, z, x=0.0, y=0.0):
    """Puts a section (x, y) into the plane z."""
    s = np.asarray(section, float)
    return np.stack([s[:, 0] + x, s[:, 1] + y, np.full(len(s), float(z))], 1)


# ---------------------------------------------------------------- primitives

def loft(rings, mat, caps=(True, True), crease=38.0, closed=False):
    """Skin over rings (k,3) of equal even length; closed joins the last ring to the first."""
    rings = [np.asarray(r, float) for r in rings]
    quads = []
    pairs = list(zip(rings, rings[1:])) + ([(rings[-1], rings[0])] if closed else [])
    for a, b in pairs:
        a2, b2 = np.roll(a, -1, 0), np.roll(b, -1, 0)
        quads.extend(np.stack([a, a2, b2, b], 1))
    if not closed:
        if caps[0]:
            quads.extend(np.array(q)[::-1] for q in _cap(rings[0]))
        if caps[1]:
            quads.extend(np.array(q) for q in _cap(rings[-1]))
    m = Mesh(np.array(quads), mat, crease).clean()
    if closed or all(caps):
        m.orient()
    elif _outwardness(m, rings) < 0:
        m.flip()
    return m


def _outwardness(m, rings):
    spine = np.array([r.mean(0) for r in rings])
    c, n = m.centres(), m.face_normals()
    near = np.argmin(((c[:, None] - spine[None]) ** 2).sum(2), 1)
    return float(((c - spine[near]) * n).sum())


def lathe(profile, n, mat, axis="z", caps=(True, True), crease=38.0, turn=0.5):
    """Turned body: profile is a list of (position along the axis, radius); n even.
    A radius of 0 becomes a tiny cap."""
    t = (np.arange(n) + turn) * 2 * np.pi / n
    rings = []
    for along, r in profile:
        r = max(r, TINY)
        a, b, c = r * np.cos(t), r * np.sin(t), np.full(n, float(along))
        rings.append(np.stack({"z": (a, b, c), "y": (a, c, b), "x": (c, a, b)}[axis], 1))
    return loft(rings, mat, caps, crease)


def box(size, centre, mat, bevel=0.04, axis="z", crease=25.0):
    """Box with bevelled edges (30 quads); axis is the direction of its octagonal prism."""
    order = {"z": (0, 1, 2), "y": (0, 2, 1), "x": (2, 1, 0)}[axis]
    w, h, l = (size[i] for i in order)
    b = min(bevel, w * 0.3, h * 0.3, l * 0.3)
    big, small = section_box(w, h, b), section_box(w - 2 * b, h - 2 * b, b)
    rings = [ring_at(small, -l / 2), ring_at(big, -l / 2 + b), ring_at(big, l / 2 - b), ring_at(small, l / 2)]
    rings = [r[:, order] for r in rings]
    return loft(rings, mat, crease=crease).move(*centre)


def block(size, centre, mat, chamfer=0.05, axis="z", crease=25.0):
    """Like box, but only its four long edges are cut (14 quads)."""
    order = {"z": (0, 1, 2), "y": (0, 2, 1), "x": (2, 1, 0)}[axis]
    w, h, l = (size[i] for i in order)
    rings = [ring_at(section_box(w, h, chamfer), z)[:, order] for z in (-l / 2, l / 2)]
    return loft(rings, mat, crease=crease).move(*centre)


def slab(size, centre, mat):
    """Plain box: six quads, hard edges."""
    w, h, l = (s / 2.0 for s in size)
    quads = []
    for axis in range(3):
        for sign in (-1.0, 1.0):
            n, u = np.zeros(3), np.zeros(3)
            n[axis], u[(axis + 1) % 3] = sign, 1.0
            v = np.cross(n, u)
            quads.append([n - u - v, n + u - v, n + u + v, n - u + v])
    return Mesh(np.array(quads) * (w, h, l), mat, 5).move(*centre)


def prism(outline, y0, y1, mat, bevel=0.0, axis="y", crease=25.0):
    """Plate from an even 2D outline (strip-tessellated: keep it convex or mirror-symmetric
    about the line between its first and last point), from y0 to y1; bevel shrinks the faces
    towards the outline's centre."""
    o = np.asarray(outline, float)
    c = o.mean(0)
    r = np.linalg.norm(o - c, axis=1, keepdims=True)
    small = c + (o - c) * np.maximum(1 - bevel / np.maximum(r, 1e-6), 0.2)

    def put(p, y):
        f = np.full(len(p), float(y))
        return np.stack({"y": (p[:, 0], f, p[:, 1]), "z": (p[:, 0], p[:, 1], f),
                         "x": (f, p[:, 0], p[:, 1])}[axis], 1)
    if bevel > 0:
        rings = [put(small, y0), put(o, y0 + bevel), put(o, y1 - bevel), put(small, y1)]
    else:
        rings = [put(o, y0), put(o, y1)]
    return loft(rings, mat, crease=crease)


def tube(path, radii, n, mat, caps=(True, True), crease=60.0, flat=1.0, up=(0, 1, 0)):
    """Round tube along a path (k,3); radii one number or one for each point; flat squeezes it
    along its up direction."""
    path = np.asarray(path, float)
    radii = np.full(len(path), float(radii)) if np.isscalar(radii) else np.maximum(np.asarray(radii, float), TINY)
    tang = np.gradient(path, axis=0)
    tang /= np.linalg.norm(tang, axis=1, keepdims=True)
    u = np.asarray(up, float)
    if abs(u @ tang[0]) > 0.95:
        u = np.array([1.0, 0, 0]) if abs(tang[0][0]) < 0.9 else np.array([0, 0, 1.0])
    t = (np.arange(n) + 0.5) * 2 * np.pi / n
    rings = []
    for p, d, r in zip(path, tang, radii):
        u = u - d * (u @ d)
        u /= np.linalg.norm(u)
        v = np.cross(d, u)
        rings.append(p + r * (np.cos(t)[:, None] * v + np.sin(t)[:, None] * u * flat))
    return loft(rings, mat, caps, crease)


def curve(points, n):
    """n points of a smooth curve (Catmull-Rom) through the given ones."""
    p = np.asarray(points, float)
    p = np.concatenate([[2 * p[0] - p[1]], p, [2 * p[-1] - p[-2]]])
    out = []
    for t in np.linspace(0, len(p) - 3, n):
        i = min(int(t), len(p) - 4)
        f = t - i
        a, b, c, d = p[i:i + 4]
        out.append(0.5 * (2 * b + (c - a) * f + (2 * a - 5 * b + 4 * c - d) * f * f
                          + (3 * b - a - 3 * c + d) * f ** 3))
    return np.array(out)


def wing(stations, mat, crease=30.0, up=(0, 1, 0), edge=0.18, keen=False):
    """Wing through stations (leading edge xyz, trailing edge xyz, thickness): eight-sided section,
    thickest at a third of the chord, with blunt edges; keen makes it four-sided, with sharp ones."""
    u = np.asarray(up, float)
    rings = []
    for le, te, th in stations:
        le, te = np.asarray(le, float), np.asarray(te, float)
        d = te - le
        h = th / 2.0
        at = lambda f, s: le + d * f + u * h * s
        rings.append(np.array([at(0.3, -1.0), at(0.0, 0.0), at(0.3, 1.0), at(1.0, 0.0)]) if keen else np.array([at(0.0, -edge), at(0.0, edge), at(0.22, 1.0), at(0.62, 0.85),
                               at(1.0, edge), at(1.0, -edge), at(0.62, -0.85), at(0.22, -1.0)]))
    # the strip over the cap runs across the chord
    rings = [np.roll(r, -1, 0) for r in rings]
    return loft(rings, mat, crease=crease)


def cube_sphere(radius, n, mat, centre=(0, 0, 0), displace=None, crease=60.0):
    """Sphere (or ellipsoid: radius of three numbers) from a cube of n x n quads a side.
    displace(unit directions (k,3)) -> factor (k,) on the radius."""
    a = np.tan(np.linspace(-1, 1, n + 1) * np.pi / 4)
    quads = []
    for axis in range(3):
        for sign in (-1.0, 1.0):
            g = np.empty((n + 1, n + 1, 3))
            g[..., axis] = sign
            g[..., (axis + 1) % 3] = a[:, None] * sign
            g[..., (axis + 2) % 3] = a[None, :]
            quads.append(np.stack([g[:-1, :-1], g[1:, :-1], g[1:, 1:], g[:-1, 1:]], 2).reshape(-1, 4, 3))
    P = np.concatenate(quads)
    P /= np.linalg.norm(P, axis=2, keepdims=True)
    if displace is not None:
        P = P * np.asarray(displace(P.reshape(-1, 3))).reshape(-1, 4, 1)
    P = P * (np.full(3, float(radius)) if np.isscalar(radius) else np.asarray(radius, float))
    return Mesh(P + np.asarray(centre, float), mat, crease).orient()


def surface_nets(fn, low, high, step, mat, crease=75.0):
    """Skin of the signed distance field fn(points (n,3)) -> (n,) (negative inside), on a grid of
    `step` between low and high; the field must be positive on the border."""
    low, high = np.asarray(low, float), np.asarray(high, float)
    step = np.full(3, float(step)) if np.isscalar(step) else np.asarray(step, float)
    count = np.ceil((high - low) / step - 1e-6).astype(int) + 1
    axes = [low[i] + step[i] * np.arange(count[i]) for i in range(3)]
    G = np.stack(np.meshgrid(*axes, indexing="ij"), -1)
    V = np.asarray(fn(G.reshape(-1, 3))).reshape(count)
    inside = V < 0
    cells = tuple(count - 1)
    total, hits = np.zeros(cells + (3,)), np.zeros(cells)
    corner = lambda A, o: A[o[0]:o[0] + cells[0], o[1]:o[1] + cells[1], o[2]:o[2] + cells[2]]
    for axis in range(3):
        for i in (0, 1):
            for j in (0, 1):
                o = [0, 0, 0]
                o[(axis + 1) % 3], o[(axis + 2) % 3] = i, j
                e = list(o)
                e[axis] = 1
                a, b = corner(V, o), corner(V, e)
                cross = (a < 0) != (b < 0)
                # kept off the grid points, where quads would shrink to triangles
                f = np.clip(np.where(cross, a / np.where(cross, a - b, 1.0), 0.0), 0.08, 0.92)
                p = corner(G, o) + f[..., None] * (corner(G, e) - corner(G, o))
                total += np.where(cross[..., None], p, 0)
                hits += cross
    points = total / np.maximum(hits, 1)[..., None]
    quads = []
    for axis in range(3):
        b, c = (axis + 1) % 3, (axis + 2) % 3
        sl0, sl1 = [slice(None)] * 3, [slice(None)] * 3
        sl0[axis], sl1[axis] = slice(0, -1), slice(1, None)
        change = inside[tuple(sl0)] != inside[tuple(sl1)]
        at = np.argwhere(change)
        at = at[(at[:, b] > 0) & (at[:, c] > 0) & (at[:, b] < count[b] - 1) & (at[:, c] < count[c] - 1)]
        out = inside[tuple(sl0)][tuple(at.T)]
        q = []
        for db, dc in ((1, 1), (0, 1), (0, 0), (1, 0)):
            k = at.copy()
            k[:, b] -= db
            k[:, c] -= dc
            q.append(points[tuple(k.T)])
        q = np.stack(q, 1)
        q[~out] = q[~out][:, ::-1]
        quads.append(q)
    P = np.concatenate(quads)
    m = Mesh(P, mat, crease)
    if signed_volume(m.P) < 0:
        m.flip()
    return m.clean()


def smooth_union(a, b, k):
    """Blend of two distance fields."""
    h = np.clip(0.5 + 0.5 * (b - a) / k, 0, 1)
    return b + (a - b) * h - k * h * (1 - h)


def smooth_cut(a, b, k):
    """a without b, blended."""
    return -smooth_union(-a, b, k)


def ellipsoid(p, centre, radii):
    """Near-distance to an ellipsoid."""
    q = (p - np.asarray(centre, float)) / np.asarray(radii, float)
    k0 = np.linalg.norm(q, axis=1)
    k1 = np.linalg.norm(q / np.asarray(radii, float), axis=1)
    return np.where(k1 > 1e-9, k0 * (k0 - 1.0) / np.maximum(k1, 1e-9), -min(radii))


def capsule(p, a, b, ra, rb=None):
    """Distance to a capsule whose radius runs from ra to rb."""
    rb = ra if rb is None else rb
    a, b = np.asarray(a, float), np.asarray(b, float)
    t = np.clip(((p - a) @ (b - a)) / ((b - a) @ (b - a)), 0, 1)
    return np.linalg.norm(p - a - t[:, None] * (b - a), axis=1) - (ra + (rb - ra) * t)


def drop_hidden(mesh, pixels=360, down=-0.75, views=48, within=None):
    """Drops quads that no eye outside can see (buried where parts meet), looking from many
    directions whose height is at least `down` (nothing in the game looks straight up).
    within: a mesh that is always drawn around this one, and hides what is sunk in it."""
    import preview
    mesh = mesh.clean()
    whole = mesh if within is None else mesh + within.clean()
    solid = whole.P[[m.transparency == 0 and m.colour[3] >= 1 for m in whole.mat]]
    normal = mesh.face_normals()
    lo, hi = whole.bounds()
    centre, extent = (lo + hi) / 2, 1.02 * float(np.linalg.norm(hi - lo))
    u, v = (g.ravel() for g in np.meshgrid(*[(0.05, 0.275, 0.5, 0.725, 0.95)] * 2))
    weights = np.stack([(1 - u) * (1 - v), u * (1 - v), u * v, (1 - u) * v], 1)
    points = np.einsum("kc,ncd->nkd", weights, mesh.P)
    seen = np.zeros(len(mesh), bool)
    k = np.arange(views) + 0.5
    ys = 1 - 2 * k / views
    turn = k * np.pi * (3 - np.sqrt(5))
    r = np.sqrt(1 - ys * ys)
    dirs = [np.array(v, float) for v in ((0, 1, 0), (1, 0, 0), (-1, 0, 0), (0, 0, 1), (0, 0, -1))]
    dirs += [d for d in np.stack([r * np.cos(turn), ys, r * np.sin(turn)], 1) if d[1] >= down]
    for d in dirs:
        u = np.array([0, 1.0, 0]) if abs(d[1]) < 0.9 else np.array([0, 0, -1.0])
        right = np.cross(u, d)
        right /= np.linalg.norm(right)
        R = np.array([right, np.cross(d, right), d])
        depth = preview.depth_map(solid, R, pixels, extent, centre)
        low = depth.copy()
        for axis in (0, 1):
            low = np.minimum(low, np.minimum(np.roll(low, 1, axis), np.roll(low, -1, axis)))
        e = (points - centre) @ R.T
        px = np.clip((pixels / 2 + e[..., 0] * pixels / extent).astype(int), 0, pixels - 1)
        py = np.clip((pixels / 2 - e[..., 1] * pixels / extent).astype(int), 0, pixels - 1)
        front = normal @ d > 1e-3
        seen |= front & ((e[..., 2] >= low[py, px] - 1e-3)).any(1)
    return mesh.select(seen)
