#!/usr/bin/env bash
# What a browser makes of the pages that zrinspect writes: runs each *.test.mjs of this folder.
# usage: page.sh ZRINSPECT SAMPLES FFMPEG MODULES [FILE...]
set -euo pipefail
missing() {
  echo "page.sh: not run, as there is no $1; 'scripts/setup browser' installs it"
  exit 77
}
for program in node chromium; do command -v "$program" >/dev/null || missing "$program"; done
for module in playwright-core axe-core; do [ -d "$4/node_modules/$module" ] || missing "$module"; done
ZRINSPECT=$(realpath "$1") SAMPLES=$(realpath "$2") FFMPEG=$3 MODULES=$(realpath "$4")
FOLDER=$(mktemp -d)
export ZRINSPECT SAMPLES FFMPEG MODULES FOLDER
trap 'rm -rf "$FOLDER"' EXIT
shift 4
[ $# -gt 0 ] || set -- "$(dirname "$0")"/*.test.mjs
node --test "$@"
