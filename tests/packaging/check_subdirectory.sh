#!/usr/bin/env bash
# Builds and runs a project that has zelmar_label in its own tree.
#   check_subdirectory.sh CMAKE SOURCE_DIR SCRATCH_DIR
set -euo pipefail
cmake=$1 source=$2 scratch=$3
rm -rf "$scratch"
"$cmake" -S "$source/tests/packaging/consumer" -B "$scratch" -G Ninja -DZELMAR_LABEL_SOURCE_DIR="$source" >/dev/null
"$cmake" --build "$scratch" >/dev/null
[ "$("$scratch/bin/consumer")" = DB1.DBW ]
