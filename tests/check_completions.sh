#!/usr/bin/env bash
# The shells complete what zrinspect says of itself, and what a later one may say.
# usage: check_completions.sh DESCRIBE ZRINSPECT WORK
set -euo pipefail
describe=$1 zrinspect=$2 work=$3
rm -rf "$work"
mkdir -p "$work/real" "$work/later" "$work/files/folder"
touch "$work/files/a film.mp4"

# Options of forms that zrinspect may come to have.
cat >"$work/program" <<'TEXT'
#!/bin/sh
[ "$1" = --help ] || exec echo "phone  it's: a [phone]"
cat <<'HELP'
Looks at files.
Usage: program [OPTIONS] [FILE|DIR...]

Positionals:
  FILE ...                    Files to look at,
                              and folders

Options:
  -j,--jobs UINT:POSITIVE [4] How many at a time
  -0                          Names end in a zero byte
  --files-from FILE Excludes: FILE
                              Names of files: "it's" one a line [text]
  --order{size}               Sort: =size or =name
  --state on|off ...          A state
  --device FILE|NAME ...      A device
  --out DIR REQUIRED          Into this folder
HELP
TEXT
chmod +x "$work/program"
"$describe" completions "$zrinspect" "$work/real"
"$describe" completions "$work/program" "$work/later"

# What bash offers for a line, whose last word is still being written.
inBash() {
    bash --norc -c 'cd "$1"; source "$2"; shift 2
        COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
        _zrinspect; printf "%s\n" "${COMPREPLY[@]}"' _ "$work/files" "$@" | sort | paste -sd ' '
}
inFish() {
    (cd "$work/files" && HOME=$work fish --no-config -c 'source $argv[1]; complete -C $argv[2]' "$1" "$2") |
        cut -f 1 | sort | paste -sd ' '
}
# The line, split as bash splits it by "|", and what is to be offered for it.
status=0
check() {
    local line=$2 expected=$3 words got
    IFS='|' read -ra words <<<"$line"
    [[ $line != *'|' ]] || words+=('')
    got=$(inBash "$work/$1/zrinspect" zrinspect "${words[@]}")
    [ "$got" = "${4-$expected}" ] || { echo "bash, $line: '$got', not '${4-$expected}'"; status=1; }
    got=$(inFish "$work/$1/zrinspect.fish" "zrinspect $(sed 's/|=|*/=/; s/|/ /g' <<<"$line")")
    [ "$got" = "$expected" ] || { echo "fish, $line: '$got', not '$expected'"; status=1; }
} >&2

#     options  line                       offered (other in bash)
check real  '--de'                      '--decoder --device'
check real  '--only'                    '--only-decoders'
check real  '--check|='                 '--check=all --check=audio --check=video' 'all audio video'
check real  '--check|=|v'               '--check=video' 'video'
check real  '--divx-alternative|'       'off on unset'
check real  '--media-server|no'         'no-list'
check real  '--media-server|=|al'       '--media-server=alive' 'alive'
check real  '--device|phone-'           'phone-2016'
check real  '--device|fo'               'folder/' 'folder'
check real  '--device|b'                'bare'
check real  '--compare|phone,b'         '' 'phone,bare'
check real  '--pictures|'               'folder/' 'folder'
check real  '--decoder|'                ''
check later '--jo'                      '--jobs'
check later '--jobs|'                   ''
check later '--order|=|n'               '--order=name' 'name'
check later '--state|'                  'off on'
check later '--device|ph'               'phone'
check later '--out|f'                   'folder/' 'folder'
check later '--files-from|fo'           'folder/' ''
check later '--|--jo'                   ''

for folder in real later; do
    zsh -n "$work/$folder/_zrinspect"
done
exit $status
