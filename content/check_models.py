#!/usr/bin/python3
"""Checks every model and its pictures; exit status 1 where one is wrong.

    content/check_models.py [assets] [NAME...]

Refuses what does not read as the game reads it, reversed, degenerate or oversized quads, normals that
are not unit, closed parts turned inside out, missing, unused or unsuitable pictures, and ships and shots
off their size or their budget. Prints a table of quads, materials, pictures and sizes.
"""
import os
import sys

import numpy as np

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "lib"))
from aob import check_quads, read_aob  # noqa: E402
from tga import read_tga  # noqa: E402

# name: ((least, most) width, height, length, most quads); None leaves a size open
ANY = (0.0, 1e9)
SWARM = ((2.4, 4.0), (0.8, 4.0), (2.0, 4.0), 280)
BOLT = ((0.15, 0.6), (0.15, 0.6), (1.0, 2.2), 40)
MISSILE = ((0.2, 0.8), (0.2, 0.8), (0.8, 1.4), 100)
ENGINE = ((0.4, 4.2), (0.4, 2.0), (0.8, 4.0), 200)
GUN = ((0.2, 6.2), (0.2, 1.2), (1.0, 5.2), 225)
LIMITS = {
    "PlayerBase": ((5.4, 6.2), (1.0, 2.4), (5.4, 6.4), 380),
    "PlayerBase-small": ((1.8, 2.2), ANY, (1.6, 2.6), 150),
    "Target": ((2.0, 5.0), (0.0, 0.6), (2.0, 5.0), 200),
    "BasicEngines": ENGINE, "TwinBasicEngines": ENGINE, "BigEngines": ENGINE, "TwinInterEngines": ENGINE,
    "TwinBigEngines": ENGINE,
    "SingleLaser": GUN, "DoubleLasers": GUN, "TripleLaser": GUN, "QuadLasers": GUN, "Cannon": GUN,
    "Dravek": SWARM, "jalka": SWARM, "Dravek2Shot": SWARM, "Fryjahn": SWARM,
    "boss1": ((14.0, 16.0), (3.0, 12.0), (8.0, 16.0), 3000), "boss2": ((16.0, 24.0), (4.0, 16.0), (8.0, 20.0), 3000),
    "Weapon1": BOLT, "Weapon2": BOLT, "Weapon3": BOLT, "Weapon4": BOLT, "Weapon5": BOLT,
    "Missile0": MISSILE, "Missile1": MISSILE,
}
POWERUP = ((1.0, 2.1), (0.7, 2.1), (1.5, 2.3), 250)
MOST_SHIP = 800      # quads of the player's ship with its heaviest engine and gun
MOST_MODELS, MOST_TEXTURES, MOST_QUADS = 100, 100, 4000
EXTENT = 80.0       # nothing is larger


def components(P):
    """Lists of quads joined by shared corners."""
    key = np.round(P.reshape(-1, 3) * 2048).astype(np.int64)
    _, ids = np.unique(key, axis=0, return_inverse=True)
    ids = ids.reshape(-1, 4)
    parent = list(range(ids.max() + 1))

    def root(i):
        while parent[i] != i:
            parent[i] = parent[parent[i]]
            i = parent[i]
        return i
    for q in ids:
        r = root(q[0])
        for v in q[1:]:
            parent[root(v)] = r
    groups = {}
    for i, q in enumerate(ids):
        groups.setdefault(root(q[0]), []).append(i)
    return [(np.array(g), ids[g]) for g in groups.values()]


def inside_out(P):
    """Number of closed parts whose faces look inwards, and of joined quads of opposite winding."""
    wrong = torn = 0
    for g, ids in components(P):
        edges = {}
        for q in ids:
            for a, b in zip(q, np.roll(q, -1)):
                edges[(a, b)] = edges.get((a, b), 0) + 1
        torn += sum(1 for (a, b), n in edges.items() if n > 1 and (b, a) not in edges)
        if all(edges.get((b, a), 0) == n for (a, b), n in edges.items()):
            a, b, c, d = (P[g][:, k] for k in range(4))
            volume = (a * np.cross(b, c)).sum() + (a * np.cross(c, d)).sum()
            if volume < -1e-6:
                wrong += 1
    return wrong, torn


def check(path, name, used, images):
    """Lines of complaint about a model; fills used with (texture, kind)."""
    bad = []
    try:
        model = read_aob(path)
        check_quads([(m, np.asarray(p), np.asarray(n)) for m, p, n in model.quads()], name)
    except ValueError as e:
        return None, [str(e)]
    P, N = model.positions, model.normals
    face = np.cross(P[:, 2] - P[:, 0], P[:, 3] - P[:, 1])
    face /= np.linalg.norm(face, axis=1, keepdims=True)
    behind = ((N * face[:, None]).sum(2) < 0.02).any(1)
    if behind.any():
        bad.append("%d quads with a normal behind their face (reversed?)" % behind.sum())
    # a bent quad: its two triangles must not face apart
    t1 = np.cross(P[:, 1] - P[:, 0], P[:, 2] - P[:, 0])
    t2 = np.cross(P[:, 2] - P[:, 0], P[:, 3] - P[:, 0])
    folded = ((t1 * t2).sum(1) < -1e-9)
    if folded.any():
        bad.append("%d folded quads" % folded.sum())
    lo, hi = P.reshape(-1, 3).min(0), P.reshape(-1, 3).max(0)
    size = hi - lo
    if size.max() > EXTENT:
        bad.append("larger than %g" % EXTENT)
    wrong, torn = inside_out(P)
    if wrong:
        bad.append("%d closed parts inside out" % wrong)
    # an edge run twice one way and never the other: its two neighbours face apart
    if torn:
        bad.append("%d edges where neighbours are wound against each other" % torn)
    for i, m in enumerate(model.materials):
        if not (model.index == i).any():
            bad.append("material %s on no quad" % m.name)
        for t in m.textures:
            used.add((t.name, t.kind))
            if not os.path.exists(os.path.join(images, t.name)):
                bad.append("no picture %s" % t.name)
            for plane in (t.s_plane, t.t_plane):
                if t.kind == "R" and not any(plane[:3]):
                    bad.append("plane of %s has no direction" % t.name)
    limit = LIMITS.get(name) or (POWERUP if name.lower().startswith(("pup", "moneycoin", "gempoints")) else None)
    if limit:
        for axis, v, (least, most) in zip(("width", "height", "length"), size, limit[:3]):
            if not least <= v <= most:
                bad.append("%s %.2f is not within %g to %g" % (axis, v, least, most))
    if len(P) > (limit[3] if limit else MOST_QUADS):
        bad.append("%d quads, %d allowed" % (len(P), limit[3] if limit else MOST_QUADS))
    kinds = sorted({t.name for m in model.materials for t in m.textures})
    row = "%-18s %5d %3d %3d  %6.2f %6.2f %6.2f" % (name, len(P), len(model.materials), len(kinds), *size)
    return row, bad


def main(arguments):
    assets = arguments[0] if arguments else os.path.join(os.path.dirname(HERE), "assets")
    objects, images = os.path.join(assets, "Objects"), os.path.join(assets, "images")
    names = sorted(n[:-4] for n in os.listdir(objects) if n.endswith(".aob"))
    chosen = set(arguments[1:]) or set(names)
    used, failures = set(), 0
    print("%-18s %5s %3s %3s  %6s %6s %6s" % ("model", "quads", "mat", "tex", "x", "y", "z"))
    for name in names:
        row, bad = check(os.path.join(objects, name + ".aob"), name, used, images)
        if name in chosen:
            if row:
                print(row)
            for line in bad:
                print("    %s: %s" % (name, line))
            failures += len(bad)
    if not arguments[1:]:
        quads = {n: len(read_aob(os.path.join(objects, n + ".aob")).positions) for n in LIMITS if n in names}
        ship = quads["PlayerBase"] + sum(max(quads[n] for n in LIMITS if LIMITS[n] is kind) for kind in (ENGINE, GUN))
        print("the player's ship takes %d quads at most" % ship)
        if ship > MOST_SHIP:
            print("    %d allowed" % MOST_SHIP)
            failures += 1
    pictures = {t for t, _ in used}
    total = 0
    for t in sorted(pictures):
        path = os.path.join(images, t)
        if os.path.exists(path):
            total += os.path.getsize(path)
            try:
                read_tga(path)
            except ValueError as e:
                print("    %s" % e)
                failures += 1
    print("%d models, %d pictures on them (%d with their kinds), %.2f MB" % (len(names), len(pictures), len(used), total / 1e6))
    if len(names) > MOST_MODELS or len(used) > MOST_TEXTURES:
        print("    more than the game's tables hold")
        failures += 1
    if not arguments[1:]:
        # pictures that the program itself asks for stand on no model
        spare = {n for n in os.listdir(images) if n.endswith(".tga")} - pictures - {"Reflect.tga", "Reflect2.tga"}
        for n in sorted(spare):
            print("    %s is on no model" % n)
        failures += len(spare)
        missing = set(LIMITS) - set(names)
        for n in sorted(missing):
            print("    model %s is missing" % n)
        failures += len(missing)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
