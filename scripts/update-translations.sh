#!/usr/bin/env bash
# Brings the library's texts into the translation sources: zelmar_label.ts has the English texts, to begin a language with;
# translations that have lost their text are dropped.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh

folder=zelmar_label/translations
lupdate="lupdate"
[ -x /usr/lib/qt5/bin/lupdate ] && lupdate=/usr/lib/qt5/bin/lupdate
sources=()
while IFS= read -r file; do sources+=("$file"); done < <(find zelmar_label -name '*.cpp' -o -name '*.h' | LC_ALL=C sort)
"$lupdate" -silent -I . -locations none -no-obsolete -source-language en_GB "${sources[@]}" \
    -ts "$folder/zelmar_label.ts" "$folder"/zelmar_label_*.ts
