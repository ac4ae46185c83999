#!/usr/bin/env bash
# Builds and runs every test on both targets (x86-64 and i386). With
# ZVP_SANITIZERS=1 it also runs them under AddressSanitizer and
# UndefinedBehaviorSanitizer on x86-64 (a slower, third build).
set -euo pipefail
cd "$(dirname "$0")/.."
tools/ensure-packages.sh cmake ninja-build g++ make gcc-multilib g++-multilib googletest pkg-config binutils

presets=(x64 i386)
if [ "${ZVP_SANITIZERS:-0}" = 1 ]; then presets+=(asan); fi
export ASAN_OPTIONS=detect_leaks=1
export UBSAN_OPTIONS=print_stacktrace=1
failed=()
for p in "${presets[@]}"; do
  echo "=== ${p}: build ==="
  cmake --preset "$p" -DZVP_BUILD_TESTS=ON >/dev/null
  cmake --build --preset "$p"
  echo "=== ${p}: test ==="
  ctest --preset "$p" || failed+=("$p")
done
if [ ${#failed[@]} -ne 0 ]; then
  echo "FAILED on: ${failed[*]}"
  exit 1
fi
echo "All tests passed on: ${presets[*]}"
