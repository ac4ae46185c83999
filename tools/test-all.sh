#!/usr/bin/env bash
# Builds and runs every test on both targets (x86-64 and i386), then once more
# on x86-64 under AddressSanitizer and UndefinedBehaviorSanitizer. The
# sanitizer run samples the large sweeps (ZVP_TEST_QUICK=1) to stay quick;
# ZVP_SANITIZERS=0 leaves it out.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/ensure-packages.sh cmake ninja-build g++ make gcc-multilib g++-multilib googletest pkg-config binutils libspandsp-dev

presets=(x64 i386)
if [ "${ZVP_SANITIZERS:-1}" != 0 ]; then presets+=(asan); fi
export ASAN_OPTIONS=detect_leaks=1
export UBSAN_OPTIONS=print_stacktrace=1
failed=()
for p in "${presets[@]}"; do
  start=$SECONDS
  echo "=== ${p}: build ==="
  cmake --preset "$p" -DZVP_BUILD_TESTS=ON >/dev/null
  cmake --build --preset "$p"
  echo "=== ${p}: test ==="
  if [ "$p" = asan ]; then
    ZVP_TEST_QUICK=1 ctest --preset "$p" || failed+=("$p")
  else
    ctest --preset "$p" || failed+=("$p")
  fi
  echo "=== ${p}: $((SECONDS - start)) s ==="
done
if [ ${#failed[@]} -ne 0 ]; then
  echo "FAILED on: ${failed[*]}"
  exit 1
fi
echo "All tests passed on: ${presets[*]}"
