#!/usr/bin/env bash
# Installs the build to a scratch prefix, moves it, and builds and runs a program against it: by CMake, then by pkg-config.
#   check_package.sh CMAKE BUILD_DIR SOURCE_DIR SCRATCH_DIR
set -euo pipefail
cmake=$1 build=$2 source=$3 scratch=$4
rm -rf "$scratch"
"$cmake" --install "$build" --prefix "$scratch/first" >/dev/null
mv "$scratch/first" "$scratch/moved"
prefix=$scratch/moved

echo "the tool, through its link"
"$prefix/bin/zelmar-label" check "ISO on TCP" DB1.DBW4 M10.7 >/dev/null

if [ -d "$build/bin/translations" ]; then
    echo "the translations"
    [ -s "$prefix/share/zelmar_label/translations/zelmar_label_de.qm" ]
fi

echo "a program by CMake"
"$cmake" -S "$source/tests/packaging/consumer" -B "$scratch/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
"$cmake" --build "$scratch/cmake" >/dev/null
[ "$("$scratch/cmake/bin/consumer")" = DB1.DBW ]

echo "a program by pkg-config"
PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name zelmar_label.pc)")
export PKG_CONFIG_PATH
mkdir "$scratch/pkgconfig"
# shellcheck disable=SC2046 # the flags are words
g++ -std=c++17 -fPIC "$source/tests/packaging/consumer/main.cpp" -o "$scratch/pkgconfig/consumer" \
    $(pkg-config --cflags --libs zelmar_label)
data=$(pkg-config --variable=datadir zelmar_label)
cp -r "$data/database" "$data/scripts" "$scratch/pkgconfig/"
[ "$(LD_LIBRARY_PATH=$(pkg-config --variable=libdir zelmar_label) "$scratch/pkgconfig/consumer")" = DB1.DBW ]

if grep -rIlE "$scratch/first|$source" "$prefix" --include='*.cmake' --include='*.pc' --include='*.h'; then
    echo "the files above name a folder of the build" >&2
    exit 1
fi
