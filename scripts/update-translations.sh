#!/usr/bin/env bash
# Updates the translation sources with the library's texts: zelmar_label.ts has the English texts, to start a language from.
# Translations without a source text are removed.
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
