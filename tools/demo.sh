#!/usr/bin/env bash
# Builds the library and the demo for x86-64 and runs the demo.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/ensure-packages.sh cmake ninja-build g++ make
cmake --preset x64 -DZVP_BUILD_TESTS=OFF >/dev/null
cmake --build --preset x64 --target zvp_demo
exec build/x64/examples/zvp_demo
