#!/usr/bin/env bash
# Times "kestrel export" beside gltfpack (a converter of the same class: read glTF, weld, reorder,
# write) on generated terrains of 1M and 4M triangles, each as an indexed .glb and as its corner-soup
# version (every triangle with three vertices of its own). Prints wall and CPU seconds (user and
# system, children included: the machine is shared, CPU time is the steadier figure) and peak
# resident memory of each run, and the ratios of CPU time and memory. gltfpack comes from npm into a
# cache folder, for this measurement only; the exporter never depends on it. The scenes are
# generated once into the same folder.
#
# Usage: scripts/bench-gltfpack.sh [KESTREL_BINARY] [RUNS]
#   KESTREL_BINARY  default build/dev/kestrel/kestrel
#   RUNS            runs per file and tool, the fastest counts (default 1)
set -euo pipefail
cd "$(dirname "$0")/.."
kestrel=$(realpath "${1:-build/dev/kestrel/kestrel}")
runs=${2:-1}

cache=${XDG_CACHE_HOME:-$HOME/.cache}/kestrel-bench
gltfpack=$cache/node_modules/.bin/gltfpack
if [ ! -x "$gltfpack" ]; then
  mkdir -p "$cache"
  npm install --silent --no-audit --no-fund --prefix "$cache" gltfpack@1.3.0 >/dev/null
fi

work=$(mktemp -d "${TMPDIR:-/tmp}/kestrel-gltfpack-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
export XDG_CONFIG_HOME=$work/config
scenes=$cache/terrains-1

# A rolling height field with its own normals and UVs: N x N quads, two triangles each, over 10 m x 10 m at
# every size, within one cube of the stripper's batches.
mkdir -p "$scenes"
[ -f "$scenes/terrain_4m_soup.glb" ] || python3 - "$scenes" <<'EOF'
import json, math, struct, sys
from array import array

def glb(path, quads, soup):
    side = quads + 1
    vertices = array('f')
    for z in range(side):
        for x in range(side):
            fx, fz = 10.0 * x / quads, 10.0 * z / quads
            height = 0.8 * math.sin(fx * 0.5) * math.cos(fz * 0.7) + 0.05 * math.sin(fx * 9.0 + fz * 3.0)
            dx = 0.4 * math.cos(fx * 0.5) * math.cos(fz * 0.7) + 0.45 * math.cos(fx * 9.0 + fz * 3.0)
            dz = -0.56 * math.sin(fx * 0.5) * math.sin(fz * 0.7) + 0.15 * math.cos(fx * 9.0 + fz * 3.0)
            length = math.sqrt(dx * dx + 1.0 + dz * dz)
            vertices.extend((fx, height, fz, -dx / length, 1.0 / length, -dz / length, x / quads, z / quads))
    indices = array('I')
    for z in range(quads):
        for x in range(quads):
            a = z * side + x
            indices.extend((a, a + side, a + 1, a + 1, a + side, a + side + 1))
    if soup:
        raw = vertices.tobytes()
        vertices = array('f', b''.join(raw[i * 32:i * 32 + 32] for i in indices))
        indices = None
    count = len(vertices) // 8
    lo = [min(vertices[i::8]) for i in range(3)]
    hi = [max(vertices[i::8]) for i in range(3)]
    blob = vertices.tobytes() + (indices.tobytes() if indices else b'')
    views = [{"buffer": 0, "byteOffset": 0, "byteLength": count * 32, "byteStride": 32, "target": 34962}]
    accessors = [
        {"bufferView": 0, "byteOffset": 0, "componentType": 5126, "count": count, "type": "VEC3", "min": lo, "max": hi},
        {"bufferView": 0, "byteOffset": 12, "componentType": 5126, "count": count, "type": "VEC3"},
        {"bufferView": 0, "byteOffset": 24, "componentType": 5126, "count": count, "type": "VEC2"},
    ]
    primitive = {"attributes": {"POSITION": 0, "NORMAL": 1, "TEXCOORD_0": 2}, "material": 0}
    if indices:
        views.append({"buffer": 0, "byteOffset": count * 32, "byteLength": len(indices) * 4, "target": 34963})
        accessors.append({"bufferView": 1, "componentType": 5125, "count": len(indices), "type": "SCALAR"})
        primitive["indices"] = 3
    document = {
        "asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}],
        "nodes": [{"name": "terrain", "mesh": 0}], "meshes": [{"name": "terrain", "primitives": [primitive]}],
        "materials": [{"name": "ground"}],
        "buffers": [{"byteLength": len(blob)}], "bufferViews": views, "accessors": accessors,
    }
    text = json.dumps(document).encode()
    text += b' ' * (-len(text) % 4)
    blob += b'\0' * (-len(blob) % 4)
    with open(path, 'wb') as out:
        out.write(struct.pack('<III', 0x46546C67, 2, 12 + 8 + len(text) + 8 + len(blob)))
        out.write(struct.pack('<II', len(text), 0x4E4F534A) + text)
        out.write(struct.pack('<II', len(blob), 0x004E4942) + blob)

for name, quads in (('1m', 708), ('4m', 1415)):
    glb(f'{sys.argv[1]}/terrain_{name}.glb', quads, False)
    glb(f'{sys.argv[1]}/terrain_{name}_soup.glb', quads, True)
EOF

# Fastest of the runs by CPU time: "wall_s cpu_s peak_MiB".
measure() {
  local best=""
  for _ in $(seq "$runs"); do
    /usr/bin/time -f '%e %U %S %M' -o "$work/time" "$@" >/dev/null 2>"$work/stderr" || { cat "$work/stderr" >&2; exit 1; }
    read -r wall user system kib <"$work/time"
    cpu=$(awk -v u="$user" -v s="$system" 'BEGIN { print u + s }')
    if [ -z "$best" ] || awk -v a="$cpu" -v b="$(echo "$best" | cut -d' ' -f2)" 'BEGIN { exit !(a < b) }'; then
      best="$wall $cpu $((kib / 1024))"
    fi
  done
  echo "$best"
}

printf '%-22s %8s %8s %8s %8s %8s %8s %7s %7s\n' file pack_wall pack_cpu pack_MiB kes_wall kes_cpu kes_MiB cpu_x mem_x
for name in 1m 1m_soup 4m 4m_soup; do
  scene=$scenes/terrain_$name.glb
  read -r gw gc gm < <(measure "$gltfpack" -i "$scene" -o "$work/packed.glb")
  read -r kw kc km < <(measure "$kestrel" export "$scene" -o "$work/out_$name/terrain.qmesh")
  printf '%-22s %8s %8s %8s %8s %8s %8s %7.2f %7.2f\n' "terrain_$name.glb" "$gw" "$gc" "$gm" "$kw" "$kc" "$km" \
    "$(awk -v a="$kc" -v b="$gc" 'BEGIN { print a / b }')" "$(awk -v a="$km" -v b="$gm" 'BEGIN { print a / b }')"
done
