#!/usr/bin/env bash
# Installs what is missing (Debian packages), builds the sanitizer build and
# runs every test; then checks that clang builds the tree warning-free.
set -euo pipefail
cd "$(dirname "$0")/.."

required=(cmake ninja-build g++ clang-14 libgtest-dev libgmock-dev libbenchmark-dev python3)
optional=(python3-opm-common libopm-common-bin)

installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q "install ok installed"; }
as_root() { if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi; }

missing=()
for p in "${required[@]}" "${optional[@]}"; do installed "$p" || missing+=("$p"); done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  as_root apt-get update -qq
  need=()
  for p in "${required[@]}"; do installed "$p" || need+=("$p"); done
  if [ ${#need[@]} -gt 0 ]; then
    DEBIAN_FRONTEND=noninteractive as_root apt-get install -y -qq "${need[@]}"
  fi
  for p in "${optional[@]}"; do
    installed "$p" || DEBIAN_FRONTEND=noninteractive as_root apt-get install -y -qq "$p" ||
      echo "Could not install $p: the checks that use it will report themselves skipped."
  done
fi

cmake --preset dev
cmake --build --preset dev
ctest --preset dev

# Warning check under the second compiler (no tests run from this build).
cmake --preset clang > /dev/null
cmake --build --preset clang
