"""Bolts, the cannon shell and the two missiles.

Bolts are a white-hot core in a coloured shell, alike from both ends: one model
serves the player and the enemies.
"""
import os

from mesh import *  # noqa: F401,F403
from aob import Material
from player import ORANGE, SHINE, WHITE, glow


def symmetric(half):
    """Profile from one half (z from 0 up)."""
    return [(-z, r) for z, r in half[::-1] if z > 0] + half


def bolt(shell, core, shell_half, core_half, n=4):
    """Four-sided core in a shell one can see through; forty fly at a time, so quads are dear here."""
    m = lathe(symmetric(core_half), 4, Material("core", core, luminosity=1.0), crease=80, turn=0)
    m += lathe(symmetric(shell_half), n, Material("shell", shell, luminosity=1.0, transparency=0.4), crease=80, turn=0)
    return m


def ring(z, r, w, mat, n=6, foot=0.5, turn=0.5):
    return lathe([(z - w, r * foot), (z, r), (z + w, r * foot)], n, mat, caps=(False, False), crease=80, turn=turn)


def fin(r, z0, z1, reach, mat, sweep=0.1):
    return prism([(z0, r * 0.8), (z1, r * 0.8), (z1, r + reach), (z0 + sweep, r + reach)], -0.018, 0.018, mat, axis="x"
                 ).transform([[1, 0, 0], [0, 0, 1], [0, 1, 0]])


def build(out_dir, names):
    objects = os.path.join(out_dir, "Objects")

    def save(m, name):
        if name in names:
            m.save(os.path.join(objects, name + ".aob"))

    save(bolt((1.0, 0.20, 0.03), (1.0, 0.85, 0.50), [(0.32, 0.17), (0.85, 0.0)], [(0.3, 0.09), (0.95, 0.0)], 6), "Weapon1")

    save(bolt((0.02, 0.85, 0.25), (0.65, 1.0, 0.75), [(0.15, 0.09), (0.75, 0.13), (1.0, 0.0)],
              [(0.4, 0.065), (1.08, 0.0)]), "Weapon2")

    # a blue bolt with a waist and a bright knot in it
    save(bolt((0.08, 0.28, 1.0), (0.55, 0.78, 1.0), [(0.12, 0.08), (0.42, 0.18), (0.80, 0.0)],
              [(0.42, 0.095), (0.9, 0.0)]), "Weapon3")

    pink = Material("rings", (1.0, 0.62, 1.0), luminosity=1.0)
    m = lathe(symmetric([(0.72, 0.15), (0.95, 0.0)]), 4, Material("shell", (0.85, 0.12, 0.90), luminosity=1.0), crease=80, turn=0)
    m += ring(-0.40, 0.25, 0.14, pink, 4, turn=0) + ring(0.40, 0.25, 0.14, pink, 4, turn=0)
    save(m, "Weapon4")

    # shell: brass body, tracer band, hot tips
    brass = Material("brass", (0.95, 0.68, 0.22), specular=(1, 0.9, 0.6), shininess=0.4, luminosity=0.35)
    hot = Material("tracer", (1.0, 0.90, 0.45), luminosity=1.0)
    m = lathe([(-0.62, 0.15), (0.0, 0.20), (0.62, 0.15)], 6, brass, caps=(False, False), crease=80)
    m += lathe([(0.60, 0.155), (1.0, 0.0)], 6, hot, caps=(False, False), crease=80).mirrored("z")
    m += ring(0.0, 0.245, 0.10, hot)
    save(m, "Weapon5")

    # homing: white, slim, blue seeker eye, four swept fins
    white = Material("missile white", WHITE, luminosity=0.1, **SHINE)
    orange = Material("missile orange", ORANGE, luminosity=0.25, **SHINE)
    seeker = glow("seeker", (0.15, 0.55, 1.0), 0.9)
    flame = glow("missile flame", (1.0, 0.55, 0.10), 1.0)
    m = lathe([(-0.40, 0.09), (-0.28, 0.115), (0.32, 0.115), (0.40, 0.09)], 8, white)
    m += lathe([(-0.39, 0.088), (-0.48, 0.065), (-0.54, 0.012)], 8, seeker)
    m += fin(0.11, 0.08, 0.42, 0.20, orange).spread(4, "z", 45)
    m += lathe([(0.39, 0.07), (0.50, 0.06), (0.66, 0.0)], 6, flame)
    save(m, "Missile0")

    # dumbfire: fat, dark, red warhead with a yellow band, tail ring
    dark = Material("missile dark", (0.38, 0.41, 0.48), luminosity=0.05, **SHINE)
    red = Material("warhead", (0.95, 0.16, 0.08), luminosity=0.35, **SHINE)
    yellow = Material("band", (1.0, 0.82, 0.15), luminosity=0.5)
    m = lathe([(-0.20, 0.19), (0.26, 0.17), (0.42, 0.11)], 8, dark, caps=(False, True))
    m += lathe([(-0.17, 0.20), (-0.34, 0.185), (-0.52, 0.09), (-0.56, 0.02)], 8, red, caps=(False, True), crease=60)
    m += lathe([(-0.13, 0.18), (-0.07, 0.215), (-0.01, 0.18)], 8, yellow, caps=(False, False))
    m += fin(0.14, 0.14, 0.46, 0.17, yellow, 0.06).spread(3, "z", 0)
    m += lathe([(0.40, 0.09), (0.52, 0.08), (0.70, 0.0)], 6, flame)
    save(m, "Missile1")
