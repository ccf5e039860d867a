#!/usr/bin/env bash
# Programs work with the installed library also after the tree has been moved, and so does zrinspect.
# usage: check_install.sh CMAKE BUILD CONSUMER WORK CXX
set -euo pipefail
cmake=$1 build=$2 consumer=$3 work=$4 cxx=$5

rm -rf "$work"
"$cmake" --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/prefix"
"$(dirname "$0")/check_consumer.sh" "$cmake" "$consumer" "$work/prefix" "$work" "$cxx"

zrinspect="$work/prefix/bin/zrinspect"
[ ! -e "$zrinspect" ] || "$zrinspect" --version
