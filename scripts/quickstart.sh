#!/usr/bin/env bash
# Builds the optimised library and runs the example host over the bundled data.
set -euo pipefail
cd "$(dirname "$0")/.."
if ! command -v cmake > /dev/null || ! command -v ninja > /dev/null; then
  if [ "$(id -u)" -eq 0 ]; then apt-get update -qq && apt-get install -y -qq cmake ninja-build g++ libbenchmark-dev;
  else sudo apt-get update -qq && sudo apt-get install -y -qq cmake ninja-build g++ libbenchmark-dev; fi
fi
cmake --preset release > /dev/null
cmake --build --preset release --target quickstart
./build/release/examples/quickstart "$@"
