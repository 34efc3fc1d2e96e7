#!/usr/bin/env bash
# Builds the command-line exporter and exports the example scenes into an editor project under
# out/examples. Installs what it needs first.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh

cmake -G Ninja -S . -B build/release -DCMAKE_BUILD_TYPE=Release -DKESTREL_TESTS=OFF -DKESTREL_BENCH=OFF >/dev/null
cmake --build build/release --target kestrel -j "$(nproc)"
kestrel=build/release/kestrel/kestrel
"$kestrel" --version

project=out/examples
mkdir -p "$project"/{Textures,Prefabs,Models,Meshes,Shaders}
touch "$project/Examples.project"

for scene in examples/*/*.obj; do
  name=$(basename "$scene" .obj)
  echo
  echo "=== $scene"
  options=()
  # The level is lit by lightmaps: its second UV set is unwrapped and the atlases drawn beside it.
  if [ "$name" = level ]; then
    options=(--set LightmapUVs=1 --lightmap-png "$project/Meshes/level_lightmap.png")
  fi
  "$kestrel" export "$scene" -o "$project/Meshes/$name.qmesh" "${options[@]}"
done

# The house's doorways are portal nodes: its zones and portals go to house.qmesh_data/visibility.xml.
echo
echo "=== examples/house/house.gltf"
"$kestrel" export examples/house/house.gltf -o "$project/Meshes/house.qmesh" --set ComputeVisibility=1

# The yard is a prefab: its crates share one nested mesh export, the well has its own, and its
# lamp and spot light become light shapes.
echo
echo "=== examples/yard/yard.gltf"
"$kestrel" export examples/yard/yard.gltf -o "$project/Prefabs/yard.prefab"
"$kestrel" info "$project/Prefabs/yard.prefab"

# An exported mesh back as a scene any viewer opens.
echo
"$kestrel" import "$project/Meshes/level.qmesh" -o out/viewer/level.glb

echo
echo "The project is $(pwd)/$project:"
find "$project" -type f | sort | sed 's/^/  /'
