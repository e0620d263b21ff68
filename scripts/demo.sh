#!/usr/bin/env bash
# Builds the project and shows its main functions: checks, runs, splits and blocks of addresses of four PLCs, and the tags
# of a sample project with their commands and bytes.
#   scripts/demo.sh                   on the terminal
#   scripts/demo.sh --gui [PROJECT]   opens the example editor, with the sample project or another one
set -euo pipefail
cd "$(dirname "$0")/.."

gui=no
if [ "${1:-}" = --gui ]; then
    gui=yes
    shift
    if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
        echo "The editor needs a display. Either" >&2
        echo "  - run this on a desktop, or log in with \"ssh -X\", or" >&2
        echo "  - look at docs/pictures/editor.png; scripts/screenshots.sh draws the pictures without a display." >&2
        exit 1
    fi
elif [ $# -gt 0 ]; then
    echo "usage: scripts/demo.sh [--gui [PROJECT]]" >&2
    exit 2
fi
scripts/install-packages.sh

echo "Building; the first time this takes a few minutes."
mkdir -p build
cmake --preset release -DBUILD_TESTING=OFF -DZELMAR_LABEL_BENCHMARKS=OFF >build/demo.log
cmake --build --preset release >>build/demo.log || { cat build/demo.log; exit 1; }
if [ $gui = yes ]; then
    echo "Opening the editor. F1 shows its keys."
    exec build/release/bin/tag_editor "$@"
fi
tool=build/release/bin/zelmar-label

bold=""; plain=""
if [ -t 1 ]; then bold=$'\e[1m'; plain=$'\e[0m'; fi
# A refused address gives exit code 1, which is not a failure here.
show() {
    local words="" word
    for word in "$@"; do
        if [[ $word == *[\ \>]* ]]; then word="\"$word\""; fi
        words+=" $word"
    done
    printf '\n%s$ zelmar-label%s%s\n' "$bold" "$words" "$plain"
    "$tool" "$@" || [ $? -eq 1 ]
}

show drivers
show check "ISO on TCP" DB1.DBW4 4-DB12.DBX3.7 M10.7 M10.8 MW16383 DB2048.DBW0 Q0.0
show check "FX5U Ethernet" D100 X17 X18 W1F K4M16 K4M12 D8000 Q9
show check "Modbus TCP" 4x1 40001 400001 4x9.15 4x9.16 4x0 00001
show check "OMRON FINS" CIO0010.13 D100.15 D100.16 D1O0
show next "FX5U Ethernet" X17 --as bit --count 3
show next "ISO on TCP" DB1.DBD4 --as dword --count 3
show split "FX5U Ethernet" 2-D100 --as qword
show blocks "Modbus TCP" 40001 --count 300

show lint --samples drivers/samples --counts

project=build/sample-project.db
rm -f "$project"
show sample-project "$project"
show tags "$project" --link 1 --find level
show tags "$project" --link 4 --find power
show tags "$project" --recipe "R>1_1=Mixer_level_1" | sed -n '1,5p; $p'
show system-tags | sed -n '1,8p'
echo "..."
show commands "$project" Mixer_level_7 --count 3
show blocks "$project" Mixer_level_7 --count 2000
show encode "$project" Mixer_level_7 1500
show decode "$project" Mixer_level_7 dc05
show limits "$project" Mixer_level_7 Packer_speed_9
echo
echo "Add --json for output as data. All formats of a driver: $tool formats \"ISO on TCP\""
