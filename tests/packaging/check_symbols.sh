#!/usr/bin/env bash
# Compares the dynamic symbols that the library defines with the list of exported names: nothing else is there, and of each
# name something is.
#   check_symbols.sh LIBRARY LIST
set -euo pipefail
library=$1 list=$2
# Of "vtable for X" and the like the X, of a function or method its class or name without arguments.
defined=$(nm -D --defined-only -C "$library" | cut -c20- |
    sed -E 's/^(vtable|typeinfo|typeinfo name|VTT) for //; s/\(.*//; s/::~?[A-Za-z_]+$/&/' | sort -u)
names=$(sed -e 's/#.*//' -e '/^[[:space:]]*$/d' "$list" | sort -u)
failed=0
while read -r symbol; do
    grep -qxF -e "$symbol" -e "${symbol%::*}" <<<"$names" || { echo "exported, but not on the list: $symbol"; failed=1; }
done <<<"$defined"
while read -r name; do
    grep -qE "^$name(::|\$)" <<<"$defined" || { echo "on the list, but not exported: $name"; failed=1; }
done <<<"$names"
exit $failed
