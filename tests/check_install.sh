#!/usr/bin/env bash
# A program finds, compiles against and loads the installed library, by CMake and by pkg-config,
# also after the tree has been moved.
# usage: check_install.sh CMAKE BUILD CONSUMER WORK CXX
set -euo pipefail
cmake=$1 build=$2 consumer=$3 work=$4 cxx=$5

rm -rf "$work"
"$cmake" --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/prefix"

"$cmake" -S "$consumer" -B "$work/cmake" -G Ninja "-DCMAKE_CXX_COMPILER=$cxx" \
    "-DCMAKE_PREFIX_PATH=$work/prefix"
"$cmake" --build "$work/cmake"
for program in consumer consumer_static derived derived_static; do
    "$work/cmake/$program"
done

PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name zrcodecparserutils.pc)")
export PKG_CONFIG_PATH
read -ra flags <<<"$(pkg-config --cflags --libs zrcodecparserutils)"
"$cxx" -std=c++17 "$work/cmake/example.cpp" -o "$work/consumer" "${flags[@]}"
LD_LIBRARY_PATH=$(pkg-config --variable=libdir zrcodecparserutils) "$work/consumer"
