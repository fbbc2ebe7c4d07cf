#!/usr/bin/env python3
"""Contact sheet of a model as the game's four views show it.

    content/lib/preview.py assets/Objects/Dravek.aob sheet.png [--turn] [--background 0.5,0.6,0.8]
    from preview import contact_sheet; contact_sheet(path_or_quads, "sheet.png", turn=True)

--turn shows the model the way enemies stand (turned round to face +Z), so that
view 4 gives the face.  The upper row is 300 pixels high, the lower one is the
same at 40 pixels with the fog of the game's distance, as it is and enlarged.
Textures are looked for in assets/images beside the sources.
"""
import os
import sys
import numpy as np
from PIL import Image, ImageDraw

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from aob import read_aob  # noqa: E402

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
IMAGES = os.path.join(ROOT, "assets", "images")
# right, up, towards the eye
VIEWS = {
    "1 top": ((1, 0, 0), (0, 0, -1), (0, 1, 0)),
    "2 left": ((0, 0, 1), (0, 1, 0), (-1, 0, 0)),
    "3 right": ((0, 0, -1), (0, 1, 0), (1, 0, 0)),
    "4 behind": ((1, 0, 0), (0, 1, 0), (0, 0, 1)),
}
LIGHT = np.array([-5.0, 5.0, 10.0]) / np.sqrt(150.0)   # in eye space: over the viewer's left shoulder
FOG = np.array([0.0, 0.0, 0.1])
_cache = {}


def load_texture(name):
    """HxWx4 floats, top row first, or None."""
    if name not in _cache:
        path = os.path.join(IMAGES, name)
        try:
            data = open(path, "rb").read()
            w, h, bits = data[12] + 256 * data[13], data[14] + 256 * data[15], data[16]
            a = np.frombuffer(data, np.uint8, w * h * bits // 8, 18).reshape(h, w, bits // 8)
            a = a[::-1].astype(float) / 255.0
            if bits == 32:
                a = a[..., [2, 1, 0, 3]]
            else:
                a = np.concatenate([a[..., ::-1], np.ones((h, w, 1))], 2)
            _cache[name] = a
        except (OSError, ValueError, IndexError):
            _cache[name] = None
    return _cache[name]


def sample(tex, s, t):
    h, w = tex.shape[:2]
    return tex[((1 - t) % 1.0 * h).astype(int) % h, (s % 1.0 * w).astype(int) % w]


def sky(n, strong):
    """Sphere map looked up by eye-space normal (the eye is far away)."""
    tex = load_texture("Reflect2.tga" if strong else "Reflect.tga")
    r = 2 * n[..., 2:3] * n - np.array([0, 0, 1.0])
    m = 2 * np.sqrt(r[..., 0] ** 2 + r[..., 1] ** 2 + (r[..., 2] + 1) ** 2) + 1e-9
    s, t = r[..., 0] / m + 0.5, r[..., 1] / m + 0.5
    if tex is not None:
        return sample(tex, s, t)[..., :3]
    g = np.clip(t, 0, 1)[..., None]
    return np.clip(np.array([0.25, 0.3, 0.4]) + g * np.array([0.9, 0.9, 0.85]), 0, 1)


def render(quads, view, pixels, extent, centre=(0, 0, 0), background=(0, 0, 0.1), sharp=2, depth_only=False):
    """RGB image (pixels, pixels, 3) of the square of `extent` units round centre; sharp: supersampling.
    depth_only gives (depth towards the eye, mask) instead."""
    R = np.array(VIEWS[view] if isinstance(view, str) else view, float)
    size = pixels * sharp
    k = size / float(extent)
    img = np.empty((size, size, 3))
    img[:] = background
    depth = np.full((size, size), -1e9)
    order = sorted(range(len(quads)), key=lambda i: quads[i][0].transparency > 0 or quads[i][0].colour[3] < 1)
    for i in order:
        m, p, n = quads[i]
        e = (p - np.asarray(centre, float)) @ R.T
        en = n @ R.T
        x, y = size / 2 + e[:, 0] * k, size / 2 - e[:, 1] * k
        for tri in ((0, 1, 2), (0, 2, 3)):
            tri = list(tri)
            X, Y = x[tri], y[tri]
            area = (X[1] - X[0]) * (Y[2] - Y[0]) - (X[2] - X[0]) * (Y[1] - Y[0])
            if area >= -1e-9:      # y runs down: outward faces are clockwise here
                continue
            x0, x1 = max(int(np.floor(X.min())), 0), min(int(np.ceil(X.max())), size)
            y0, y1 = max(int(np.floor(Y.min())), 0), min(int(np.ceil(Y.max())), size)
            if x0 >= x1 or y0 >= y1:
                continue
            gx, gy = np.meshgrid(np.arange(x0, x1) + 0.5, np.arange(y0, y1) + 0.5)
            w1 = ((gx - X[0]) * (Y[2] - Y[0]) - (X[2] - X[0]) * (gy - Y[0])) / area
            w2 = ((X[1] - X[0]) * (gy - Y[0]) - (gx - X[0]) * (Y[1] - Y[0])) / area
            w0 = 1 - w1 - w2
            hit = (w0 >= -1e-9) & (w1 >= -1e-9) & (w2 >= -1e-9)
            z = w0 * e[tri[0], 2] + w1 * e[tri[1], 2] + w2 * e[tri[2], 2]
            hit &= z >= depth[y0:y1, x0:x1] - 1e-6
            if not hit.any():
                continue
            W = np.stack([w0[hit], w1[hit], w2[hit]], 1)
            alpha = m.colour[3] * (1 - m.transparency)
            if depth_only:
                depth[y0:y1, x0:x1][hit] = z[hit]
                continue
            # lit per corner, as the game does
            lam = np.maximum(en[tri] @ LIGHT, 0)
            half = LIGHT + np.array([0, 0, 1.0])
            half /= np.linalg.norm(half)
            spec = np.where(lam > 0, np.maximum(en[tri] @ half, 0) ** max(m.shininess * 128, 1e-3), 0)
            col = np.array(m.colour[:3]) * (0.2 + m.luminosity + 0.85 * lam)[:, None] \
                + np.array(m.specular[:3]) * spec[:, None]
            rgb = W @ np.clip(col, 0, 1)
            for t in m.textures:
                tex = load_texture(t.name)
                if tex is None:
                    continue
                if t.kind == "C":
                    uv = np.array([(1, 0), (0, 0), (0, 1), (1, 1)], float)[tri]
                    c = sample(tex, *np.clip(W @ uv, 0, 0.9999).T)
                    rgb, alpha = c[:, :3], c[:, 3:]
                elif t.kind == "R":
                    pos = np.concatenate([W @ p[tri], np.ones((len(W), 1))], 1)
                    c = sample(tex, pos @ np.array(t.s_plane), pos @ np.array(t.t_plane))
                    rgb = rgb * c[:, :3]
                    alpha = alpha * c[:, 3:]
            if m.reflection >= 0.3 and not any(t.kind == "C" for t in m.textures):
                nn = W @ en[tri]
                rgb = rgb * sky(nn / np.maximum(np.linalg.norm(nn, axis=1, keepdims=True), 1e-9), m.reflection >= 0.7)
            old = img[y0:y1, x0:x1][hit]
            img[y0:y1, x0:x1][hit] = rgb * alpha + old * (1 - alpha)
            depth[y0:y1, x0:x1][hit] = z[hit]
    if depth_only:
        return depth, depth > -1e8
    mask = (depth > -1e8).astype(float)
    out = img.reshape(pixels, sharp, pixels, sharp, 3).mean((1, 3))
    render.mask = mask.reshape(pixels, sharp, pixels, sharp).mean((1, 3))[..., None]
    return out


def depth_map(P, R, pixels, extent, centre):
    """Depth towards the eye of opaque quads P (n,4,3) seen along R, -1e9 where there is nothing.
    Quicker than render, for work that needs many views."""
    k = pixels / float(extent)
    e = (P - np.asarray(centre, float)) @ np.asarray(R, float).T
    depth = np.full((pixels, pixels), -1e9)
    for tri in ((0, 1, 2), (0, 2, 3)):
        X, Y = pixels / 2 + e[:, tri, 0] * k, pixels / 2 - e[:, tri, 1] * k
        Z = e[:, tri, 2]
        area = (X[:, 1] - X[:, 0]) * (Y[:, 2] - Y[:, 0]) - (X[:, 2] - X[:, 0]) * (Y[:, 1] - Y[:, 0])
        a1 = np.stack([Y[:, 2] - Y[:, 0], -(X[:, 2] - X[:, 0])], 1) / np.where(area, area, 1)[:, None]
        a2 = np.stack([-(Y[:, 1] - Y[:, 0]), X[:, 1] - X[:, 0]], 1) / np.where(area, area, 1)[:, None]
        x0, x1 = np.maximum(np.floor(X.min(1)), 0).astype(int), np.minimum(np.ceil(X.max(1)), pixels).astype(int)
        y0, y1 = np.maximum(np.floor(Y.min(1)), 0).astype(int), np.minimum(np.ceil(Y.max(1)), pixels).astype(int)
        for i in np.flatnonzero((area < -1e-9) & (x0 < x1) & (y0 < y1)):
            gx = np.arange(x0[i], x1[i]) + 0.5 - X[i, 0]
            gy = (np.arange(y0[i], y1[i]) + 0.5 - Y[i, 0])[:, None]
            w1, w2 = a1[i, 0] * gx + a1[i, 1] * gy, a2[i, 0] * gx + a2[i, 1] * gy
            z = Z[i, 0] + w1 * (Z[i, 1] - Z[i, 0]) + w2 * (Z[i, 2] - Z[i, 0])
            old = depth[y0[i]:y1[i], x0[i]:x1[i]]
            np.copyto(old, z, where=(w1 >= 0) & (w2 >= 0) & (w1 + w2 <= 1) & (z > old))
    return depth


def contact_sheet(model, path, turn=False, background=(0, 0, 0.1), big=300, small=40, extent=None):
    """Writes the sheet as PNG; model: path of an .aob file or a list of quads (several lists joined by +)."""
    quads = read_aob(model).quads() if isinstance(model, str) else list(model)
    if turn:
        T = np.diag([-1.0, 1.0, -1.0])
        shown = [(m, p, n) for m, p, n in quads]
    pts = np.concatenate([p for _, p, _ in quads])
    lo, hi = pts.min(0), pts.max(0)
    centre = (lo + hi) / 2
    extent = extent or 1.06 * float((hi - lo).max())
    W = 4 * big
    sheet = Image.new("RGB", (W, big + 3 * small + 16), (24, 24, 30))
    draw = ImageDraw.Draw(sheet)
    for i, name in enumerate(VIEWS):
        R = np.array(VIEWS[name], float)
        if turn:
            R = R @ T
        img = render(quads, R, big, extent, centre, background)
        sheet.paste(Image.fromarray((np.clip(img, 0, 1) * 255 + 0.5).astype(np.uint8)), (i * big, 0))
        img = render(quads, R, small, extent, centre, background, sharp=3)
        keep = 0.41 if turn and name.startswith("4") else 0.75
        mask = render.mask
        img = np.where(mask > 0, img * keep + (FOG * (1 - keep)) * mask + np.array(background) * (1 - mask) * (1 - keep), img)
        tile = Image.fromarray((np.clip(img, 0, 1) * 255 + 0.5).astype(np.uint8))
        sheet.paste(tile, (i * big + 8, big + 8))
        sheet.paste(tile.resize((3 * small, 3 * small), Image.NEAREST), (i * big + small + 24, big + 8))
        draw.text((i * big + 8, big + small + 20), name, fill=(200, 200, 210))
    draw.text((2, 2), "%d quads  %.2f x %.2f x %.2f" % ((len(quads),) + tuple(hi - lo)), fill=(255, 255, 120))
    sheet.save(path)


if __name__ == "__main__":
    args = [a for a in sys.argv[1:] if not a.startswith("--")]
    back = (0, 0, 0.1)
    if "--background" in sys.argv:
        text = sys.argv[sys.argv.index("--background") + 1]
        args.remove(text)
        back = tuple(float(v) for v in text.split(","))
    contact_sheet(args[0], args[1], "--turn" in sys.argv, back)
