#!/usr/bin/env bash
# SPDX-FileCopyrightText: the zelmar_label authors
# SPDX-License-Identifier: MIT
#
# Compiles driver files into the SQLite driver database:
#     compile.sh DATABASE FILE.tsv...
# Every error is told as "file:line: error: text"; then there is no database, and the exit code is 1.
# README.md beside this script describes the form of a driver file.
set -euo pipefail

if (($# < 2)); then
    echo "usage: $0 DATABASE FILE.tsv..." >&2
    exit 2
fi
readonly database=$1
shift

for file in "$@"; do
    if [[ ! -r $file ]]; then
        echo "$file:1: error: cannot be read" >&2
        exit 1
    fi
done

folder=$(dirname -- "$database")
mkdir -p -- "$folder"
# In the folder of the result, so that the rename at the end stays within one file system.
work=$(mktemp -d -- "$folder/.drivers-XXXXXX")
trap 'rm -rf -- "$work"' EXIT

awk -F '\t' -f "$(dirname -- "${BASH_SOURCE[0]}")/compile.awk" "$@" >"$work/drivers.sql"
sqlite3 -batch -bail "$work/drivers" <"$work/drivers.sql"
mv -f -- "$work/drivers" "$database"
