#!/usr/bin/env bash
# Every object of the library is made for PAC and BTI, and so is what is linked of these alone; every
# exported operation begins where a call may land.
# usage: check_branch_protection.sh READELF OBJDUMP STATIC_LIBRARY SHARED_LIBRARY
set -euo pipefail
readelf=$1 objdump=$2 static=$3 shared=$4

property='feature: BTI, PAC$'
objects=$("$readelf" -nW "$static" | grep -c '^File:')
marked=$("$readelf" -nW "$static" | grep -c "$property" || true)
echo "$marked of $objects objects are marked"
[ "$marked" -eq "$objects" ]
[ "$objects" -gt 40 ]
"$readelf" -nW "$shared" | grep "$property"

# paciasp and bti c are hints 25 and 34.
"$readelf" -W --dyn-syms "$shared" | awk '$4 == "FUNC" && $7 != "UND" { print $8 }' | sort -u |
    awk 'NR == FNR { exported[$1]; next }
         /^[0-9a-f]+ <.*>:$/ { gsub(/[<>:]/, "", $2); name = $2; next }
         name in exported {
             ++seen
             if (!/paciasp$|bti[ \t]+c$|hint[ \t]+#(25|34)$/) { print name " begins with " $0; bad = 1 }
         }
         { name = "" }
         END { print seen " operations"; exit bad || seen < 80 }' - \
        <("$objdump" -d --no-show-raw-insn "$shared")
