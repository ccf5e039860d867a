#!/usr/bin/env bash
# The examples build against the installed library, by CMake, and their README says what they print.
# usage: check_install.sh CMAKE BUILD EXAMPLES WORK CXX CHECK_BLOCKS...
set -euo pipefail
cmake=$1 build=$2 examples=$3 work=$4 cxx=$5
shift 5

rm -rf "$work"
"$cmake" --install "$build" --prefix "$work/zr" >/dev/null
for example in avi_parser decoder_glue; do
    "$cmake" -S "$examples/$example" -B "$work/$example" -G Ninja "-DCMAKE_CXX_COMPILER=$cxx" \
        "-DCMAKE_PREFIX_PATH=$work/zr"
    "$cmake" --build "$work/$example"
done

PKG_CONFIG_PATH=$(dirname "$(find "$work/zr" -name zrcodecparserutils.pc)")
LD_LIBRARY_PATH=$(dirname "$PKG_CONFIG_PATH")
export PKG_CONFIG_PATH LD_LIBRARY_PATH
# A copy, because the commands leave their programs where they run. The README's $HOME/zr is the
# installed tree, and its g++ the compiler of this build.
cp -r "$examples" "$work/examples"
mkdir "$work/bin"
ln -s "$(command -v "$cxx")" "$work/bin/g++"
HOME=$work PATH=$work/bin:$PATH "$@" --folder "$work/examples" --compiler "$cxx" "$examples/README.md"
for program in parser glue; do
    status=0
    "$work/examples/$program" || status=$?
    [ "$status" -eq 2 ]  # called without a file
done
