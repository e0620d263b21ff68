#!/usr/bin/env bash
# Builds the project and runs every test, headless: first the developer build with warnings as errors, then with
# address and undefined-behaviour sanitizers.
#   scripts/test.sh [PRESET...]     default: dev asan; also possible: tsan, release, coverage
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh

presets=("$@")
[ ${#presets[@]} -gt 0 ] || presets=(dev asan)
for preset in "${presets[@]}"; do
    echo "== $preset: build"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset"
    echo "== $preset: test"
    ctest --preset "$preset"
done
