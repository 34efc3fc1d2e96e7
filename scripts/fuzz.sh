#!/usr/bin/env bash
# Builds the libFuzzer targets with clang in build/fuzz and runs one of them.
#
#   scripts/fuzz.sh TARGET SECONDS [CORPUS_DIR]
#
# The corpus defaults to fuzz-corpus/<first word of TARGET, lower case>, e.g. ChunkReaderFuzz uses
# fuzz-corpus/chunk; new inputs that reach new code are added to it. Crashing inputs are kept in
# build/fuzz/artifacts/. The run ends with libFuzzer's final statistics.
set -euo pipefail

if [ $# -lt 2 ] || [ $# -gt 3 ]; then
  echo "usage: $0 TARGET SECONDS [CORPUS_DIR]" >&2
  exit 2
fi
target=$1
seconds=$2
case $seconds in
  ''|*[!0-9]*) echo "SECONDS must be a whole number, got '$seconds'" >&2; exit 2 ;;
esac

cd "$(dirname "$0")/.."
root=$(pwd)
default_corpus=$(echo "$target" | sed -E 's/^([A-Z][a-z0-9]*).*/\1/' | tr '[:upper:]' '[:lower:]')
corpus=${3:-fuzz-corpus/$default_corpus}
build=build/fuzz

CC=clang CXX=clang++ cmake -G Ninja -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DKESTREL_FUZZ=ON -DKESTREL_TESTS=OFF -DKESTREL_BENCH=OFF >/dev/null
# Two jobs at most: the machine is shared.
ninja -C "$build" -j 2 "$target"

fuzzer=$build/tests/fuzz/$target
if [ ! -x "$fuzzer" ]; then
  echo "no fuzz target $target (tests/fuzz/$target.cmake declares it)" >&2
  exit 2
fi
mkdir -p "$corpus" "$build/artifacts"
exec "$fuzzer" \
  -max_total_time="$seconds" -print_final_stats=1 -artifact_prefix="$build/artifacts/$target-" "$corpus"
