"""Reads and writes AOB model files.

    from aob import Material, Texture, write_aob, read_aob
    steel = Material("steel", colour=(0.5, 0.55, 0.6, 1), shininess=0.4)
    write_aob("assets/Objects/Thing.aob", [(steel, positions, normals), ...])

A quad is (material, positions 4x3, normals 4x3), its corners counter-clockwise
seen from outside.  Quads of one material are written together, in the order in
which the materials first appear; the model's first material decides whether
corners get the coordinates of a kind C texture.

The layout is fixed to the character (see the writer): two characters after each
list keyword, fifteen between a texture's name and its kind, five before the S
plane, four before the T plane, and no carriage returns.
"""
import struct
import numpy as np

POSITION_STEP = 2048.0   # positions are rounded to 1/2048 unit: repeatable, and they compress
NORMAL_STEP = 2048.0
BYTES_PER_MATERIAL = 275  # the reader counts every definition as at least this much text


class Texture:
    """One texture of a material.

    kind R: planar; s = dot(s_plane, (x, y, z, 1)), t likewise; repeats; multiplied with the lit colour
    kind C: the whole picture on every quad, replaces the lit colour
    kind D: like R but in eye space, clamped, a decal
    name is a file in assets/images.
    """

    def __init__(self, name, kind="R", s_plane=(1, 0, 0, 0), t_plane=(0, 1, 0, 0)):
        assert kind in ("C", "R", "D"), kind
        assert 0 < len(name) <= 64 and not any(c.isspace() for c in name), name
        self.name, self.kind = name, kind
        self.s_plane = tuple(float(v) for v in s_plane)
        self.t_plane = tuple(float(v) for v in t_plane)


class Material:
    """colour is r, g, b or r, g, b, a in 0..1; what the lamp shows is
    colour * (luminosity + 0.2 + 0.85 * cos) + specular, times the textures."""

    def __init__(self, name, colour=(1, 1, 1, 1), diffuse=None, specular=(0, 0, 0, 0), shininess=0.2,
                 transparency=0.0, luminosity=0.0, reflection=0.0, textures=()):
        assert 0 < len(name) <= 64 and ":" not in name and "\n" not in name, name
        self.name = name
        self.colour = _rgba(colour)
        self.diffuse = _rgba(colour if diffuse is None else diffuse)
        self.specular = _rgba(specular)
        self.shininess = float(shininess)
        self.transparency = float(transparency)
        self.luminosity = float(luminosity)
        self.reflection = float(reflection)
        self.textures = list(textures)
        assert 0 <= self.shininess <= 1 and 0 <= self.transparency <= 1 and len(self.textures) <= 7

    def __repr__(self):
        return "Material(%s)" % self.name


def _rgba(c):
    c = tuple(float(v) for v in c)
    return c if len(c) == 4 else c + (1.0,)


def _number(v):
    text = "%.6f" % v
    text = text.rstrip("0").rstrip(".")
    return "0" if text in ("-0", "") else text


def _numbers(values):
    return " ".join(_number(v) for v in values)


def _material_text(m):
    text = ("Material: %s\nColour: %s\nDiffuse: %s\nSpecular: %s\nShininess: %s\nTransparency: %s\n"
            "Luminosity: %s\nReflection: %s\nNumTextures: %d\n" % (
                m.name, _numbers(m.colour), _numbers(m.diffuse), _numbers(m.specular), _number(m.shininess),
                _number(m.transparency), _number(m.luminosity), _number(m.reflection), len(m.textures)))
    for t in m.textures:
        # 15 characters between the name and the kind, 5 before S, 4 before T
        text += "#  Texture: %s\n#  Kind:      %s\n#S: %s\n#T: %s\n" % (
            t.name, t.kind, _numbers(t.s_plane), _numbers(t.t_plane))
    if len(text) < BYTES_PER_MATERIAL + 5:
        text += "#" + "-" * (BYTES_PER_MATERIAL + 3 - len(text)) + "\n"
    return text


def check_quads(quads, where=""):
    """Refuses what the renderer would draw wrongly.  positions and normals as float arrays."""
    for i, (m, p, n) in enumerate(quads):
        spot = "%s quad %d (%s)" % (where, i, m.name)
        if p.shape != (4, 3) or n.shape != (4, 3):
            raise ValueError(spot + ": needs 4x3 positions and normals")
        if not (np.isfinite(p).all() and np.isfinite(n).all()):
            raise ValueError(spot + ": not a number")
        if np.abs(np.sqrt((n * n).sum(1)) - 1).max() > 2e-3:
            raise ValueError(spot + ": normal is not unit")
        edges = np.roll(p, -1, 0) - p
        if (edges * edges).sum(1).min() < 1e-8:
            raise ValueError(spot + ": two corners coincide")
        area2 = np.linalg.norm(np.cross(p[2] - p[0], p[3] - p[1]))
        if area2 < 1e-6:
            raise ValueError(spot + ": no area")


def write_aob(path, quads):
    """Writes the model; quads: list of (material, positions 4x3, normals 4x3)."""
    order, groups = [], {}
    for m, p, n in quads:
        if id(m) not in groups:
            groups[id(m)] = []
            order.append(m)
        p = np.round(np.asarray(p, float) * POSITION_STEP) / POSITION_STEP + 0.0
        n = np.asarray(n, float)
        n = n / np.maximum(np.linalg.norm(n, axis=1, keepdims=True), 1e-12)
        n = np.round(n * NORMAL_STEP) / NORMAL_STEP + 0.0
        groups[id(m)].append((m, p, n))
    flat = [q for m in order for q in groups[id(m)]]
    check_quads(flat, str(path))
    separators, faces = [], 0
    for s, m in enumerate(order):
        separators.append(faces + s)   # a switch takes a place of its own in the stream
        faces += len(groups[id(m)])
    head = "# Nebulorix model\nVertices: %d\nFaces: %d\nMaterials: %d\n" % (4 * faces, faces, len(order))
    head += "Separators: %d %s\n" % (len(order), " ".join(str(s) for s in separators))
    head += "SepIndex: %s\n" % " ".join(str(s) for s in range(len(order)))
    head += "vertices:\n"
    block = np.empty((faces, 4, 6), "<f4")
    for i, (m, p, n) in enumerate(flat):
        block[i, :, :3] = n
        block[i, :, 3:] = p
    tail = "\n#MatDefs:\n" + "".join(_material_text(m) for m in order)
    with open(path, "wb") as f:
        f.write(head.encode("ascii") + block.tobytes() + tail.encode("ascii"))


class Model:
    """What read_aob gives: materials, positions (n,4,3), normals (n,4,3), material index per quad (n,)."""

    def __init__(self, materials, positions, normals, index):
        self.materials, self.positions, self.normals, self.index = materials, positions, normals, index

    def quads(self):
        return [(self.materials[m], p, n) for m, p, n in zip(self.index, self.positions, self.normals)]


def read_aob(path):
    """Reads a model the way the game does, character counts and all; raises ValueError where it can't."""
    data = open(path, "rb").read()
    text = data.decode("latin-1")

    def find(word, start):
        at = text.find(word, start)
        if at < 0:
            raise ValueError("%s: no %r" % (path, word))
        return at

    def unsigned(at):
        end = at
        while text[end:end + 1].isdigit():
            end += 1
        return int(text[at:end] or "0"), end

    at = find("Vertices: ", 0)
    at = find("Faces: ", at)
    faces, _ = unsigned(at + 7)
    at = find("Materials: ", at)
    count, _ = unsigned(at + 11)
    at = find("Separators", 0) + 12
    n, at = unsigned(at)
    at += 1
    separators, indices = [], []
    for _ in range(n):
        v, at = unsigned(at)
        separators.append(v)
        at += 1
    at = find("SepIndex", 0) + 10
    for _ in range(n):
        v, at = unsigned(at)
        indices.append(v)
        at += 1
    at = find("vertices", 0) + 10
    if len(data) - at - BYTES_PER_MATERIAL * count < 96 * faces:
        raise ValueError("%s: not enough data for its faces" % path)
    block = np.frombuffer(data, "<f4", faces * 24, at).reshape(faces, 4, 6).astype(float)
    at = find("#MatDefs:", at + 96 * faces)

    def number(at):
        end = at
        while text[end:end + 1] and text[end] in "+-.0123456789eE":
            end += 1
        return float(text[at:end] or "0"), end + 1

    def numbers(at, n):
        out = []
        for _ in range(n):
            v, at = number(at)
            out.append(v)
        return out, at

    materials = []
    for _ in range(count):
        at = find("Material:", at) + 10
        end = text.index("\n", at)
        name, at = text[at:end], end
        groups = []
        for word in ("Colour:", "Diffuse:", "Specular:"):
            v, at = numbers(find(word, at) + len(word) + 1, 4)
            groups.append(v)
        single = []
        for word in ("Shininess:", "Transparency:", "Luminosity:", "Reflection:"):
            at = find(word, at) + len(word) + 1
            single.append(number(at)[0])
        at = find("NumTextures:", at) + 13
        n, at = unsigned(at)
        at += 1
        textures = []
        for _ in range(n):
            if text[at:at + 12] != "#  Texture: ":
                raise ValueError("%s: texture block of %s out of place" % (path, name))
            at += 12
            end = at
            while not text[end].isspace():
                end += 1
            tex, at = text[at:end], end + 15
            end = at
            while not text[end].isspace():
                end += 1
            kind, at = text[at:end], end + 5
            s, at = numbers(at, 4)
            t, at = numbers(at + 4, 4)
            textures.append(Texture(tex, kind, s, t))
        materials.append(Material(name, groups[0], groups[1], groups[2], *single, textures=textures))
    index, s = [], 0
    current = -1
    for i in range(faces + len(separators)):
        if s < len(separators) and separators[s] == i:
            current = indices[s]
            s += 1
        else:
            index.append(current)
    if current < 0 or index[0] < 0 or max(index) >= count:
        raise ValueError("%s: quads without a material" % path)
    return Model(materials, block[:, :, 3:], block[:, :, :3], np.array(index))
