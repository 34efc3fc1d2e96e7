#!/usr/bin/env python3
"""Writes the example scenes: OBJ files with their MTL materials and small generated textures.

    level/   a walled courtyard with a floor, walls, crates and a roofed hut: five materials, TGA and PNG
    crate/   one textured crate
    pillar/  an untextured pillar with a plain colour material

Run from anywhere; the files are written beside this script. The output is deterministic.
"""

import math
import os
import struct
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))


def write_tga(path, size, pixel):
    """Uncompressed 24-bit TGA, bottom-up rows; pixel(x, y) gives (r, g, b)."""
    header = struct.pack("<BBBHHBHHHHBB", 0, 0, 2, 0, 0, 0, 0, 0, size, size, 24, 0)
    rows = bytearray()
    for y in range(size):
        for x in range(size):
            r, g, b = pixel(x, y)
            rows += bytes((b, g, r))
    with open(path, "wb") as f:
        f.write(header + rows)


def write_png(path, size, pixel):
    """8-bit RGB PNG; pixel(x, y) gives (r, g, b)."""
    raw = bytearray()
    for y in range(size):
        raw.append(0)
        for x in range(size):
            raw += bytes(pixel(x, y))

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)

    png = b"\x89PNG\r\n\x1a\n"
    png += chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 2, 0, 0, 0))
    png += chunk(b"IDAT", zlib.compress(bytes(raw), 9))
    png += chunk(b"IEND", b"")
    with open(path, "wb") as f:
        f.write(png)


def checker(a, b, cell):
    return lambda x, y: a if ((x // cell) + (y // cell)) % 2 == 0 else b


def bricks(x, y):
    row = y // 8
    mortar = y % 8 == 0 or (x + (4 if row % 2 else 0)) % 16 == 0
    return (200, 200, 190) if mortar else (150 + (row * 13) % 40, 60, 40)


def planks(x, y):
    edge = x % 16 == 0 or y % 32 == 0
    grain = int(20 * math.sin(y * 0.4 + (x // 16) * 2.0))
    return (90, 60, 30) if edge else (160 + grain, 110 + grain, 60)


def tiles(x, y):
    return (110, 110, 120) if x % 32 < 2 or y % 32 < 2 else (170 + (x * y) % 17, 170, 160)


class ObjWriter:
    """Collects boxes and quads into one OBJ file, one object per call, faces in material groups."""

    def __init__(self, name):
        self.name = name
        self.lines = ["# Kestrel example scene: %s" % name, "mtllib %s.mtl" % name]
        self.vertex_count = 0
        self.uv_count = 0

    def quad(self, corners, uvs, material):
        for x, y, z in corners:
            self.lines.append("v %g %g %g" % (x, y, z))
        for u, v in uvs:
            self.lines.append("vt %g %g" % (u, v))
        self.lines.append("usemtl %s" % material)
        v0, t0 = self.vertex_count + 1, self.uv_count + 1
        self.lines.append("f " + " ".join("%d/%d" % (v0 + i, t0 + i) for i in range(4)))
        self.vertex_count += 4
        self.uv_count += 4

    def box(self, name, low, high, material, tiling=1.0):
        (x0, y0, z0), (x1, y1, z1) = low, high
        self.lines.append("o %s" % name)
        faces = [
            [(x0, y0, z1), (x1, y0, z1), (x1, y1, z1), (x0, y1, z1)],
            [(x1, y0, z0), (x0, y0, z0), (x0, y1, z0), (x1, y1, z0)],
            [(x1, y0, z1), (x1, y0, z0), (x1, y1, z0), (x1, y1, z1)],
            [(x0, y0, z0), (x0, y0, z1), (x0, y1, z1), (x0, y1, z0)],
            [(x0, y1, z1), (x1, y1, z1), (x1, y1, z0), (x0, y1, z0)],
            [(x0, y0, z0), (x1, y0, z0), (x1, y0, z1), (x0, y0, z1)],
        ]
        uvs = [(0, 0), (tiling, 0), (tiling, tiling), (0, tiling)]
        for corners in faces:
            self.quad(corners, uvs, material)

    def save(self, folder):
        with open(os.path.join(folder, self.name + ".obj"), "w", newline="\n") as f:
            f.write("\n".join(self.lines) + "\n")


def write_mtl(folder, name, materials):
    lines = ["# Kestrel example materials"]
    for material, colour, texture in materials:
        lines += ["", "newmtl %s" % material, "Kd %g %g %g" % colour, "Ka 0 0 0", "Ks 0.1 0.1 0.1", "Ns 16"]
        if texture:
            lines.append("map_Kd %s" % texture)
    with open(os.path.join(folder, name + ".mtl"), "w", newline="\n") as f:
        f.write("\n".join(lines) + "\n")


def make_level():
    folder = os.path.join(HERE, "level")
    os.makedirs(os.path.join(folder, "textures"), exist_ok=True)
    write_tga(os.path.join(folder, "textures", "floor.tga"), 64, tiles)
    write_tga(os.path.join(folder, "textures", "bricks.tga"), 64, bricks)
    write_tga(os.path.join(folder, "textures", "planks.tga"), 64, planks)
    write_png(os.path.join(folder, "textures", "roof.png"), 32, checker((150, 40, 30), (110, 30, 20), 4))

    level = ObjWriter("level")
    level.box("ground", (-1000, -20, -1000), (1000, 0, 1000), "floor", tiling=8)
    level.box("wallNorth", (-1000, 0, -1000), (1000, 300, -960), "bricks", tiling=4)
    level.box("wallSouth", (-1000, 0, 960), (1000, 300, 1000), "bricks", tiling=4)
    level.box("wallWest", (-1000, 0, -960), (-960, 300, 960), "bricks", tiling=4)
    level.box("wallEast", (960, 0, -960), (1000, 300, 960), "bricks", tiling=4)
    for i, (x, z) in enumerate([(-600, -500), (-480, -520), (-540, -400), (500, 300)]):
        level.box("crate%d" % (i + 1), (x, 0, z), (x + 100, 100, z + 100), "planks")
    level.box("hutWalls", (200, 0, -700), (700, 250, -300), "bricks", tiling=2)
    level.box("hutRoof", (180, 250, -720), (720, 300, -280), "roof", tiling=3)
    level.box("well", (-100, 0, 200), (100, 80, 400), "stone")
    level.save(folder)
    write_mtl(folder, "level", [
        ("floor", (1, 1, 1), "textures/floor.tga"),
        ("bricks", (1, 1, 1), "textures/bricks.tga"),
        ("planks", (1, 1, 1), "textures/planks.tga"),
        ("roof", (1, 1, 1), "textures/roof.png"),
        ("stone", (0.55, 0.55, 0.6), None),
    ])


def make_crate():
    folder = os.path.join(HERE, "crate")
    os.makedirs(folder, exist_ok=True)
    write_tga(os.path.join(folder, "crate.tga"), 32, planks)
    crate = ObjWriter("crate")
    crate.box("crate", (-50, 0, -50), (50, 100, 50), "crate")
    crate.save(folder)
    write_mtl(folder, "crate", [("crate", (1, 1, 1), "crate.tga")])


def make_pillar():
    folder = os.path.join(HERE, "pillar")
    os.makedirs(folder, exist_ok=True)
    pillar = ObjWriter("pillar")
    pillar.lines.append("o pillar")
    sides, radius, height = 12, 40, 400
    for i in range(sides):
        a0, a1 = 2 * math.pi * i / sides, 2 * math.pi * (i + 1) / sides
        corners = [(radius * math.cos(a0), 0, radius * math.sin(a0)), (radius * math.cos(a1), 0, radius * math.sin(a1)),
                   (radius * math.cos(a1), height, radius * math.sin(a1)),
                   (radius * math.cos(a0), height, radius * math.sin(a0))]
        pillar.quad(corners, [(i / sides, 0), ((i + 1) / sides, 0), ((i + 1) / sides, 1), (i / sides, 1)], "marble")
    pillar.box("plinth", (-60, -30, -60), (60, 0, 60), "marble")
    pillar.save(folder)
    write_mtl(folder, "pillar", [("marble", (0.9, 0.88, 0.82), None)])


if __name__ == "__main__":
    make_level()
    make_crate()
    make_pillar()
