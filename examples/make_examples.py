#!/usr/bin/env python3
"""Writes the example scenes: OBJ files with their MTL materials and small generated textures.

    level/   a walled courtyard with a floor, walls, crates and a roofed hut: five materials, TGA and PNG
    crate/   one textured crate
    pillar/  an untextured pillar with a plain colour material
    house/   two rooms joined by a door, a corridor beyond an arch, crates and a screen (glTF): the
             door and the arch are portal nodes, the screen an anti-portal, marked with the
             plug-in's node attributes as glTF extras
    yard/    a paved yard (glTF) with two crates and a well that carry zephra_ExportTo, a lamp and a
             spot light: exported as a prefab, the crates share one nested mesh export and the well
             has its own

Run from anywhere; the files are written beside this script. The output is deterministic.
"""

import base64
import json
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


class GltfWriter:
    """Collects meshes of flat-shaded polygons into one glTF file with its buffer embedded.

    Each node holds one mesh; a polygon is fanned into triangles and wound so that its normal
    points the way asked for. Node extras become Maya attributes on import.
    """

    def __init__(self, name, materials):
        self.name = name
        self.materials = materials
        self.buffer = bytearray()
        self.nodes, self.meshes, self.accessors, self.views, self.lights = [], [], [], [], []

    def _accessor(self, data, count, kind, target, bounds=None):
        self.views.append({"buffer": 0, "byteOffset": len(self.buffer), "byteLength": len(data), "target": target})
        self.buffer += data
        accessor = {"bufferView": len(self.views) - 1, "componentType": 5126 if kind == "VEC3" else 5125,
                    "count": count, "type": kind}
        if bounds:
            accessor["min"], accessor["max"] = bounds
        self.accessors.append(accessor)
        return len(self.accessors) - 1

    def node(self, name, polygons, extras=None, translation=None):
        """polygons: (material, corners, facing); facing is the direction the normal must point;
        corners are in the node's own space, which translation moves."""
        primitives = []
        for material in sorted({m for m, _, _ in polygons}):
            positions, normals = [], []
            for m, corners, facing in polygons:
                if m != material:
                    continue
                a, b, c = corners[0], corners[1], corners[2]
                n = cross(sub(b, a), sub(c, a))
                if dot(n, facing) < 0:
                    corners = corners[::-1]
                    n = (-n[0], -n[1], -n[2])
                length = math.sqrt(dot(n, n))
                n = (n[0] / length, n[1] / length, n[2] / length)
                for k in range(1, len(corners) - 1):
                    for corner in (corners[0], corners[k], corners[k + 1]):
                        positions.append(corner)
                        normals.append(n)
            count = len(positions)
            low = [min(p[i] for p in positions) for i in range(3)]
            high = [max(p[i] for p in positions) for i in range(3)]
            pack = lambda points: b"".join(struct.pack("<3f", *p) for p in points)
            position = self._accessor(pack(positions), count, "VEC3", 34962, (low, high))
            normal = self._accessor(pack(normals), count, "VEC3", 34962)
            indices = self._accessor(struct.pack("<%dI" % count, *range(count)), count, "SCALAR", 34963)
            primitives.append({"attributes": {"POSITION": position, "NORMAL": normal}, "indices": indices,
                               "material": [m for m, _ in self.materials].index(material)})
        self.meshes.append({"name": name, "primitives": primitives})
        node = {"name": name, "mesh": len(self.meshes) - 1}
        if translation:
            node["translation"] = list(translation)
        if extras:
            node["extras"] = extras
        self.nodes.append(node)

    def light(self, name, light, translation, rotation=None):
        """light: a KHR_lights_punctual light; it shines along the node's -Z, which rotation
        (a quaternion x, y, z, w) turns."""
        self.lights.append(dict(light, name=name))
        node = {"name": name, "translation": list(translation),
                "extensions": {"KHR_lights_punctual": {"light": len(self.lights) - 1}}}
        if rotation:
            node["rotation"] = list(rotation)
        self.nodes.append(node)

    def save(self, folder):
        document = {
            "asset": {"version": "2.0", "generator": "Kestrel make_examples.py"},
            "scene": 0,
            "scenes": [{"nodes": list(range(len(self.nodes)))}],
            "nodes": self.nodes,
            "meshes": self.meshes,
            "materials": [{"name": m, "pbrMetallicRoughness": {"baseColorFactor": list(c) + [1.0],
                                                                 "metallicFactor": 0.0}}
                          for m, c in self.materials],
            "accessors": self.accessors,
            "bufferViews": self.views,
            "buffers": [{"byteLength": len(self.buffer),
                         "uri": "data:application/octet-stream;base64," + base64.b64encode(self.buffer).decode()}],
        }
        if self.lights:
            document["extensionsUsed"] = ["KHR_lights_punctual"]
            document["extensions"] = {"KHR_lights_punctual": {"lights": self.lights}}
        with open(os.path.join(folder, self.name + ".gltf"), "w", newline="\n") as f:
            json.dump(document, f, indent=1)
            f.write("\n")


def sub(a, b):
    return (a[0] - b[0], a[1] - b[1], a[2] - b[2])


def dot(a, b):
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def room_shell(material, x0, x1, z0, z1, height, holes):
    """The inside faces of a room; holes maps "west"/"east" to the doorway (z low, z high, top)."""
    polygons = [
        ("floor", [(x0, 0, z0), (x1, 0, z0), (x1, 0, z1), (x0, 0, z1)], (0, 1, 0)),
        (material, [(x0, height, z0), (x1, height, z0), (x1, height, z1), (x0, height, z1)], (0, -1, 0)),
        (material, [(x0, 0, z0), (x1, 0, z0), (x1, height, z0), (x0, height, z0)], (0, 0, 1)),
        (material, [(x0, 0, z1), (x1, 0, z1), (x1, height, z1), (x0, height, z1)], (0, 0, -1)),
    ]
    for side, x in (("west", x0), ("east", x1)):
        facing = (x0 - x, 0, 0) if side == "east" else (x1 - x, 0, 0)
        pieces = [(z0, z1, 0, height)]
        if side in holes:
            a, b, top = holes[side]
            pieces = [(z0, a, 0, height), (b, z1, 0, height), (a, b, top, height)]
        for za, zb, ya, yb in pieces:
            if za < zb and ya < yb:
                polygons.append((material, [(x, ya, za), (x, ya, zb), (x, yb, zb), (x, yb, za)], facing))
    return polygons


def tunnel(material, x0, x1, za, zb, top):
    """The floor, lintel and jambs of a doorway through a wall, seen from inside the opening."""
    return [
        ("floor", [(x0, 0, za), (x1, 0, za), (x1, 0, zb), (x0, 0, zb)], (0, 1, 0)),
        (material, [(x0, top, za), (x1, top, za), (x1, top, zb), (x0, top, zb)], (0, -1, 0)),
        (material, [(x0, 0, za), (x1, 0, za), (x1, top, za), (x0, top, za)], (0, 0, 1)),
        (material, [(x0, 0, zb), (x1, 0, zb), (x1, top, zb), (x0, top, zb)], (0, 0, -1)),
    ]


def closed_box(material, low, high):
    (x0, y0, z0), (x1, y1, z1) = low, high
    c = ((x0 + x1) / 2, (y0 + y1) / 2, (z0 + z1) / 2)
    faces = [[(x0, y0, z0), (x1, y0, z0), (x1, y0, z1), (x0, y0, z1)],
             [(x0, y1, z0), (x1, y1, z0), (x1, y1, z1), (x0, y1, z1)],
             [(x0, y0, z0), (x1, y0, z0), (x1, y1, z0), (x0, y1, z0)],
             [(x0, y0, z1), (x1, y0, z1), (x1, y1, z1), (x0, y1, z1)],
             [(x0, y0, z0), (x0, y1, z0), (x0, y1, z1), (x0, y0, z1)],
             [(x1, y0, z0), (x1, y1, z0), (x1, y1, z1), (x1, y0, z1)]]
    polygons = []
    for face in faces:
        centre = tuple(sum(p[i] for p in face) / 4 for i in range(3))
        polygons.append((material, face, sub(centre, c)))
    return polygons


def covering_triangle(x, za, zb, ya, yb):
    """A triangle in the plane at x around the rectangle za..zb by ya..yb: base below, apex above."""
    half = zb - za
    return [(x, ya, za - half / 2), (x, ya, zb + half / 2), (x, ya + 2 * (yb - ya), (za + zb) / 2)]


def make_house():
    """Metres, Y up. Room A (x 0..6) and room B (x 6.3..12.3) share a 0.3 m wall with a door;
    beyond room B an arch leads into a corridor (x 12.6..22.6). Each portal stands in the middle
    of its doorway, a little larger than the opening, its front facing +x."""
    folder = os.path.join(HERE, "house")
    os.makedirs(folder, exist_ok=True)
    house = GltfWriter("house", [("floor", (0.45, 0.4, 0.35)), ("plaster", (0.85, 0.82, 0.75)),
                                 ("wood", (0.55, 0.35, 0.2))])
    height, door, arch = 3.0, (2.0, 3.2, 2.2), (2.0, 3.0, 2.4)
    house.node("roomA", room_shell("plaster", 0, 6, 0, 5, height, {"east": door}))
    house.node("roomB", room_shell("plaster", 6.3, 12.3, 0, 5, height, {"west": door, "east": arch}))
    house.node("corridor", room_shell("plaster", 12.6, 22.6, 1.75, 3.25, 2.8, {"west": arch}))
    house.node("doorway", tunnel("plaster", 6.0, 6.3, *door))
    house.node("archway", tunnel("plaster", 12.3, 12.6, *arch))
    house.node("crateA", closed_box("wood", (1, 0.2, 1), (2, 1.2, 2)))
    house.node("tableB", closed_box("wood", (8, 0.7, 1), (10, 0.8, 2)))
    house.node("crateCorridor", closed_box("wood", (20, 0.2, 2), (20.8, 1, 2.8)))
    house.node("door_portal", [("plaster", covering_triangle(6.15, door[0] - 0.1, door[1] + 0.1, -0.1, door[2] + 0.1),
                                (1, 0, 0))],
               {"ExportAs": 2, "front_name": "RoomB", "back_name": "RoomA"})
    house.node("arch_portal", [("plaster", covering_triangle(12.45, arch[0] - 0.1, arch[1] + 0.1, -0.1, arch[2] + 0.1),
                                (1, 0, 0))],
               {"ExportAs": 2, "front_name": "Corridor", "back_name": "RoomB"})
    house.node("screen_antiportal", [("wood", [(10, 0, 3), (10, 0, 4.5), (10, 2, 3.75)], (-1, 0, 0))],
               {"ExportAs": 2, "antiportal": 1})
    house.save(folder)


def make_yard():
    """Metres, Y up. A paved square 10 m wide; two crates and a well placed by their nodes, each
    node naming the project file its subtree is exported to; a warm lamp above the well and a spot
    light shining straight down on the crates."""
    folder = os.path.join(HERE, "yard")
    os.makedirs(folder, exist_ok=True)
    yard = GltfWriter("yard", [("paving", (0.5, 0.5, 0.48)), ("wood", (0.55, 0.35, 0.2)), ("stone", (0.6, 0.6, 0.62))])
    yard.node("ground", [("paving", [(-5, 0, -5), (5, 0, -5), (5, 0, 5), (-5, 0, 5)], (0, 1, 0))])
    crate = closed_box("wood", (-0.4, 0, -0.4), (0.4, 0.8, 0.4))
    yard.node("crateA", crate, {"zephra_ExportTo": "Meshes\\yard_crate.qmesh"}, (-3, 0, 2))
    yard.node("crateB", crate, {"zephra_ExportTo": "Meshes\\yard_crate.qmesh"}, (-2, 0, 3))
    well = closed_box("stone", (-0.8, 0, -0.8), (0.8, 0.9, 0.8))
    yard.node("well", well, {"zephra_ExportTo": "Meshes\\yard_well.qmesh"}, (2, 0, -1))
    yard.light("lamp", {"type": "point", "color": [1.0, 0.8, 0.6], "intensity": 40.0}, (2, 3, -1))
    down = (-math.sqrt(0.5), 0, 0, math.sqrt(0.5))
    yard.light("spot", {"type": "spot", "color": [0.9, 0.9, 1.0], "intensity": 80.0,
                        "spot": {"innerConeAngle": 0.3, "outerConeAngle": 0.5}}, (-2.5, 4, 2.5), down)
    yard.save(folder)


if __name__ == "__main__":
    make_level()
    make_crate()
    make_pillar()
    make_house()
    make_yard()
