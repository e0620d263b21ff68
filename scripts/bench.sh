#!/usr/bin/env bash
# Builds and runs the benchmarks. Each prints the ratios of this run.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh

mkdir -p build
cmake --preset release -DBUILD_TESTING=ON >build/bench.log
cmake --build --preset release --target bench_diagnosis bench_editor bench_judge bench_labelbuild bench_lint bench_pickers \
    bench_tags bench_validation >>build/bench.log || {
    cat build/bench.log
    exit 1
}
for program in bench_judge bench_labelbuild bench_validation bench_tags "bench_tags tolv" bench_pickers bench_editor bench_lint \
    bench_diagnosis; do
    echo "== $program"
    # shellcheck disable=SC2086 # program and argument
    (cd "build/release/benchmarks/run/${program%% *}" && ./$program)
done
