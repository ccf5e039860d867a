#!/usr/bin/env bash
# Programs find, compile against and load a library that is installed below a prefix, the shared and
# the static one, by CMake with a compiler's own flags and by pkg-config as C++17.
# usage: check_consumer.sh CMAKE CONSUMER PREFIX WORK CXX...
set -euo pipefail
cmake=$1 consumer=$2 prefix=$3 work=$4
shift 4

for cxx in "$@"; do
    build="$work/cmake-$(basename "$cxx")"
    rm -rf "$build"
    "$cmake" -S "$consumer" -B "$build" -G Ninja "-DCMAKE_CXX_COMPILER=$cxx" \
        "-DCMAKE_PREFIX_PATH=$prefix" >/dev/null
    "$cmake" --build "$build" -- --quiet
    for program in consumer consumer_static derived derived_static; do
        "$build/$program"
    done
done

PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name zrcodecparserutils.pc)")
export PKG_CONFIG_PATH PKG_CONFIG_ALLOW_SYSTEM_CFLAGS=1 PKG_CONFIG_ALLOW_SYSTEM_LIBS=1
unset PKG_CONFIG_SYSROOT_DIR
LD_LIBRARY_PATH=$(pkg-config --variable=libdir zrcodecparserutils)
export LD_LIBRARY_PATH
for cxx in "$@"; do
    for package in zrcodecparserutils zrcodecparserutils_static; do
        read -ra flags <<<"$(pkg-config --cflags --libs "$package")"
        for source in "$build/example.cpp" "$consumer/derived.cpp"; do
            "$cxx" -std=c++17 "$source" -o "$work/program" "${flags[@]}"
            "$work/program"
            needed=$(readelf -d "$work/program" | grep -c 'NEEDED.*libZRCodecParserUtils' || true)
            if [ "$needed" != "$([ "$package" = zrcodecparserutils ] && echo 1 || echo 0)" ]; then
                echo "$package: not the library of that name" >&2
                exit 1
            fi
        done
    done
done
