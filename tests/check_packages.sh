#!/usr/bin/env bash
# The Debian packages are made, are what lintian wants, and work where they are unpacked: zrinspect, its
# man page, and programs built against the library.
# usage: check_packages.sh CMAKE BUILD SOURCE WORK CXX...
set -euo pipefail
cmake=$1 build=$2 source=$3 work=$4
shift 4
fail() { echo "$*" >&2; exit 1; }

rm -rf "$work"
"$(dirname "$cmake")/cpack" --config "$build/CPackConfig.cmake" -B "$work" >/dev/null
packages=("$work"/{libzrcodecparserutils7,libzrcodecparserutils-dev,zrinspect}_*_"$(dpkg --print-architecture)".deb)
lintian --allow-root --fail-on error,warning "${packages[@]}"

root="$work/root"
for package in "${packages[@]}"; do dpkg-deb -x "$package" "$root"; done
version=$(dpkg-deb -f "${packages[0]}" Version)
[[ $(dpkg-deb -f "${packages[2]}" Depends) == *"libzrcodecparserutils7 (= $version)"* ]] ||
    fail "zrinspect may be installed with another library"

# Run and loaded from where it was unpacked.
zrinspect="$root/usr/bin/zrinspect" sample="$source/samples/video.mp4"
[[ $(ldd "$zrinspect") == *"libZRCodecParserUtils.so.7 => $root"* ]] || fail "another library is loaded"
diff <("$zrinspect" --json "$sample") <("$build/tools/inspect/zrinspect" --json "$sample")

manual="$root/usr/share/man/man1/zrinspect.1.gz"
said=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=100 man --warnings -E UTF-8 -l "$manual" 2>&1 >/dev/null)
[ -z "$said" ] || fail "$said"
text=$(LC_ALL=C.UTF-8 MANWIDTH=200 man -l "$manual" 2>/dev/null | col -b)
for option in $("$zrinspect" --help | grep -oE '^  (-.,)?--[a-z-]+' | grep -oE -e '--.*'); do
    grep -qE -e "^ +(-., )?$option( |\[|$)" <<<"$text" || fail "the man page lacks $option"
done

"$(dirname "$0")/check_consumer.sh" "$cmake" "$source/tests/consumer" "$root/usr" "$work" "$@"
