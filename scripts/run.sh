#!/usr/bin/env bash
# Builds the command-line exporter and runs it. Installs what it needs first.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh

cmake -G Ninja -S . -B build/release -DCMAKE_BUILD_TYPE=Release -DKESTREL_TESTS=OFF -DKESTREL_BENCH=OFF >/dev/null
cmake --build build/release --target kestrel -j "$(nproc)"

kestrel=build/release/kestrel/kestrel
"$kestrel" --version
"$kestrel" --help
