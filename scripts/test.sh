#!/usr/bin/env bash
# Builds and runs every test twice: with g++ and warnings as errors, then with clang under
# AddressSanitizer and UndefinedBehaviorSanitizer. Installs what it needs first.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh

jobs=$(nproc)

echo "== g++, warnings as errors"
cmake -G Ninja -S . -B build/test -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKESTREL_WERROR=ON >/dev/null
cmake --build build/test -j "$jobs"
ctest --test-dir build/test --output-on-failure -j "$jobs"

echo "== clang, AddressSanitizer and UndefinedBehaviorSanitizer"
CC=clang CXX=clang++ cmake -G Ninja -S . -B build/sanitize -DCMAKE_BUILD_TYPE=Debug \
  -DKESTREL_WERROR=ON -DKESTREL_SANITIZE=ON -DKESTREL_BENCH=OFF >/dev/null
cmake --build build/sanitize -j "$jobs"
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
  ctest --test-dir build/sanitize --output-on-failure -j "$jobs"
