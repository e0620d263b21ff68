#!/usr/bin/env bash
# Draws docs/pictures/demo.svg, the terminal output of the demonstration's checks. Run scripts/demo.sh first.
set -euo pipefail
cd "$(dirname "$0")/.."

# The checks of the demonstration: from the first "check" to the first "next".
scripts/demo.sh | sed -n '/^\$ zelmar-label check/,/^\$ zelmar-label next/p' | sed '$d' | sed '$d' |
    awk '
    { line[NR] = $0; if (length($0) > widest) widest = length($0) }
    END {
        most = 104
        if (widest > most) widest = most
        width = int(widest * 8.43) + 48
        height = NR * 19 + 46
        printf "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" viewBox=\"0 0 %d %d\" role=\"img\" ", width, height, width, height
        print "aria-label=\"Addresses of four PLCs, judged by zelmar-label\">"
        print "<rect width=\"100%\" height=\"100%\" rx=\"8\" fill=\"#1b1f27\"/>"
        print "<g font-family=\"DejaVu Sans Mono, Menlo, Consolas, monospace\" font-size=\"14\" fill=\"#d7dae0\" xml:space=\"preserve\">"
        for (i = 1; i <= NR; ++i) {
            text = line[i]
            if (length(text) > most) text = substr(text, 1, most - 1) "…"
            gsub(/&/, "\\&amp;", text); gsub(/</, "\\&lt;", text)
            if (text ~ /^ok /) sub(/^ok/, "<tspan fill=\"#7ec699\">ok</tspan>", text)
            if (text ~ /^refused /) sub(/^refused/, "<tspan fill=\"#f08d81\">refused</tspan>", text)
            if (text ~ /^\$ /) text = "<tspan fill=\"#8ab4f8\">" text "</tspan>"
            if (text ~ /^verdict /) text = "<tspan fill=\"#8b93a1\">" text "</tspan>"
            printf "<text x=\"24\" y=\"%d\" xml:space=\"preserve\">%s</text>\n", 34 + (i - 1) * 19, text
        }
        print "</g></svg>"
    }' >docs/pictures/demo.svg
echo "docs/pictures/demo.svg"
