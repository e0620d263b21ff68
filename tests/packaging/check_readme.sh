#!/usr/bin/env bash
# The program that the README shows is the example that is built.
#   check_readme.sh SOURCE_DIR
set -euo pipefail
cd "$1"
shown=$(sed -n '/^```cpp$/,/^```$/p' README.md | sed '1d;$d')
built=$(sed '1,/^$/d' examples/judge_address/main.cpp)
[ "$shown" = "$built" ] || { diff <(echo "$shown") <(echo "$built"); exit 1; }
