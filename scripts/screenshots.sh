#!/usr/bin/env bash
# Draws the pictures of the documentation under Xvfb: into docs/pictures/, and in double size into build/pictures/.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh

mkdir -p build
cmake --preset release -DBUILD_TESTING=OFF -DZELMAR_LABEL_BENCHMARKS=OFF >build/screenshots.log
cmake --build --preset release --target zelmar_label_screenshots >>build/screenshots.log || {
    cat build/screenshots.log
    exit 1
}
draw() {
    local scale=$1 folder=$2 palette=$3
    QT_SCALE_FACTOR=$scale QT_QPA_PLATFORM=xcb LC_ALL=C.UTF-8 XDG_DATA_HOME="$PWD/build/screenshots-data" \
        xvfb-run --auto-servernum --server-args="-screen 0 3200x2000x24 -dpi 96" \
        build/release/bin/zelmar_label_screenshots "$folder" "$palette"
}
rm -rf build/screenshots-data
for palette in light dark; do
    draw 1 docs/pictures "$palette"
    draw 2 build/pictures "$palette"
done
