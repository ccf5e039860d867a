#!/usr/bin/env bash
# The examples build against the installed library: by CMake, and by the commands of their README.
# usage: check_install.sh CMAKE BUILD EXAMPLES WORK CXX
set -euo pipefail
cmake=$1 build=$2 examples=$3 work=$4 cxx=$5

rm -rf "$work"
"$cmake" --install "$build" --prefix "$work/prefix" >/dev/null
for example in avi_parser decoder_glue; do
    "$cmake" -S "$examples/$example" -B "$work/$example" -G Ninja "-DCMAKE_CXX_COMPILER=$cxx" \
        "-DCMAKE_PREFIX_PATH=$work/prefix"
    "$cmake" --build "$work/$example"
done

PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name zrcodecparserutils.pc)")
LD_LIBRARY_PATH=$(dirname "$PKG_CONFIG_PATH")
export PKG_CONFIG_PATH LD_LIBRARY_PATH
# A copy, because the commands leave their programs where they run.
cp -r "$examples" "$work/examples"
cd "$work/examples"
mapfile -t commands < <(grep '^\$ g++ ' README.md | sed 's/^\$ g++ //')
[ ${#commands[@]} -eq 2 ]
for command in "${commands[@]}"; do eval "$cxx $command"; done
for program in ./parser ./glue; do
    status=0
    "$program" || status=$?
    [ "$status" -eq 2 ]  # called without a file
done
