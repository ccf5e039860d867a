#!/usr/bin/env bash
# The shared library exports the names of a list, which are those of the public headers and no others,
# and nothing of the library runs when it is loaded.
# usage: check_exports.sh NM READELF SHARED_LIBRARY STATIC_LIBRARY HEADERS LIST
set -euo pipefail
nm=$1 readelf=$2 shared=$3 static=$4 headers=$5 list=$6

classes=$(sed -nE 's/^class ZR_EXPORT (\w+).*/\1/p' "$headers"/*.h | paste -sd '|')
constants=$(sed -nE 's/^ZR_EXPORT extern .* const (\w+);.*/\1/p' "$headers"/*.h | paste -sd '|')
public="^((vtable|typeinfo|typeinfo name) for )?android::(($classes)(::.*)?|$constants)$"

exported=$("$nm" -D -C --defined-only "$shared" | cut -d ' ' -f 3-)
grep -q 'android::MediaExtractorHelper::setTrackMeta' <<<"$exported"
if grep -vE "$public" <<<"$exported"; then
    echo "exported, but in no public header" >&2
    exit 1
fi
if ! diff -U 0 "$list" <(LC_ALL=C sort <<<"$exported"); then
    echo "not the names of $list: docs/versioning.md" >&2
    exit 1
fi
# Programs with RTTI derive from the classes that have a vtable.
if ! diff <(sed -n 's/^vtable for //p' <<<"$exported") \
    <(sed -n 's/^typeinfo for //p' <<<"$exported"); then
    echo "a vtable without its typeinfo" >&2
    exit 1
fi
if "$readelf" -SW "$static" | grep -E '\.(init_array|ctors)'; then
    echo "a global constructor" >&2
    exit 1
fi
