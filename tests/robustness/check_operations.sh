#!/usr/bin/env bash
# Every operation that the shared library exports is performed by the table of operations.
# usage: check_operations.sh NM SHARED_LIBRARY OPERATIONS
set -euo pipefail
nm=$1 shared=$2 operations=$3
private='findFrame|hold|view|isOpen|rewriteHeader'

names=$("$nm" -D -C --defined-only "$shared" | sed -nE 's/^\S+ [TW] android::(\w+::)+(\w+)\(.*/\2/p')
for name in $(sort -u <<<"$names" | grep -vxE "$private") setTrackMeta; do
    grep -qw -- "$name" "$operations" || { echo "$name: not in the table" >&2; exit 1; }
done
