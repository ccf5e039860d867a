#!/usr/bin/env bash
# All that tells a version tells the same one; see docs/versioning.md.
# usage: check_versions.sh VERSION READELF ZRINSPECT CHANGELOG PKGCONFIG SHARED_LIBRARY...
set -euo pipefail
version=$1 readelf=$2 zrinspect=$3 changelog=$4 package=$5
shift 5
expect() {
    [[ $2 =~ ^$3$ ]] || { echo "$1: '$2' is not $3" >&2; exit 1; }
}

expect "zrinspect --version" "$("$zrinspect" --version)" "ZR_CodecParser_R$version\.[0-9]{2}"
expect "$changelog" "$(grep -m 1 -oE '^## \[[0-9][^]]*' "$changelog")" "## \[$version"
expect "$package" "$(sed -n 's/^Version: //p' "$package")" "$version"
for library in "$@"; do
    expect "$library" "$("$readelf" -d "$library" | sed -n 's/.*soname: \[\(.*\)\]/\1/p')" \
        "lib[A-Za-z]+\.so\.${version%%.*}"
done
