#!/usr/bin/env bash
# Installs the Debian packages Kestrel builds with. Safe to run again: it only
# calls apt-get when a package is missing, and stays quiet otherwise.
set -euo pipefail

packages=(
  cmake ninja-build ccache g++ clang libclang-rt-dev
  libtinyxml2-dev libassimp-dev libcli11-dev
  libgtest-dev libgmock-dev libbenchmark-dev libmeshoptimizer-dev
  libqhull-dev
  qt6-base-dev
  libeigen3-dev zlib1g-dev libstb-dev
  chromium
  locales
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

sudo_cmd=()
[ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive

if [ ${#missing[@]} -ne 0 ]; then
  echo "Installing: ${missing[*]}"
  "${sudo_cmd[@]}" apt-get update -qq
  "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi

# The tests prove that text files keep their decimal point under a comma-decimal locale.
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  "${sudo_cmd[@]}" localedef -i de_DE -f UTF-8 de_DE.UTF-8 >/dev/null 2>&1 || true
fi
