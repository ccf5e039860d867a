#!/usr/bin/env bash
# Two hosts share a list of files through GNU parallel, both die on the way, and the same command
# again does what is left: the lines are those of one run on one machine. The hosts are two sshd of
# this machine, on loopback ports, with keys and settings of their own.
# usage: spread.sh ZRINSPECT FOLDER [FILES A PART]
set -euo pipefail
for program in parallel ssh /usr/sbin/sshd; do
  command -v "$program" >/dev/null && continue
  echo "spread.sh: not run, as there is no $program; 'scripts/setup spread' installs it"
  exit 77
done
zrinspect=$(realpath "$1") folder=$(realpath "$2")
size=${3:-100}
work=$(mktemp -d)

declare -A sshd=()
ports=(0 $((20000 + $$ % 20000)) $((40000 + $$ % 20000)))

finish() {
  for host in "${!sshd[@]}"; do kill_host "$host"; done
  rm -rf "$work"
}
trap finish EXIT
trap 'echo "spread.sh: failed at line $LINENO" >&2' ERR

start_host() {  # number; its home is a folder of its own
  local number=$1 home=$work/host-$1
  mkdir -p "$home"
  cat >"$work/sshd_config-$number" <<TEXT
ListenAddress 127.0.0.1
Port ${ports[$number]}
HostKey $work/key
AuthorizedKeysFile $work/key.pub
PidFile none
StrictModes no
UsePAM no
PasswordAuthentication no
PermitRootLogin prohibit-password
SetEnv HOME=$home PATH=$(dirname "$zrinspect"):/usr/bin:/bin
TEXT
  /usr/sbin/sshd -D -e -f "$work/sshd_config-$number" 2>"$home/log" &
  sshd[$number]=$!
  for _ in {1..50}; do
    ssh -F "$work/ssh_config" "worker-$number" true 2>/dev/null && return
    sleep 0.1
  done
  cat "$home/log" >&2
  return 1
}

kill_tree() {  # process
  local child children
  children=$(pgrep -P "$1" || true)
  kill -KILL "$1" || true
  for child in $children; do kill_tree "$child"; done
}

kill_host() {  # number
  kill_tree "${sshd[$1]}" 2>/dev/null
  wait "${sshd[$1]}" 2>/dev/null || true
  unset "sshd[$1]"
}

done_parts() {
  awk -F'\t' 'NR > 1 && $7 == 0 && $8 == 0' joblog 2>/dev/null | wc -l
}

wait_for_parts() {  # number
  until (($(done_parts) >= $1)); do
    kill -0 "$first" || { cat ../first.log >&2; return 1; }
    sleep 0.02
  done
}

# What docs/collections.md shows.
spread() {
  parallel --sshloginfile hosts --workdir "$PWD" --joblog joblog --resume-failed --retries 2 \
    --results {}.jsonl 'zrinspect --jsonl -0 --files-from {} || [ $? -eq 1 ]' \
    ::: part.???? >/dev/null
}

mkdir -p "$work/scan" "$work/parallel"
[[ $(id -u) -ne 0 ]] || mkdir -p /run/sshd
ssh-keygen -q -t ed25519 -N '' -f "$work/key"
for number in 1 2; do
  cat <<TEXT
Host worker-$number
  HostName 127.0.0.1
  Port ${ports[$number]}
  IdentityFile $work/key
  IdentitiesOnly yes
  UserKnownHostsFile $work/known_hosts
  StrictHostKeyChecking no
  LogLevel ERROR
TEXT
done >"$work/ssh_config"
export PARALLEL_SSH="ssh -F $work/ssh_config" PARALLEL_HOME=$work/parallel

cd "$work/scan"
find "$folder" -type f -print0 | sort -z >list
split -t '\0' -l "$size" -a 4 -d list part.
parts=(part.????)
"$zrinspect" --jsonl -0 --files-from list >../single.jsonl 2>../single.log || [ $? -eq 1 ]

start_host 1
start_host 2
printf '1/worker-%s\n' 1 2 >hosts
spread 2>../first.log &
first=$!
wait_for_parts $((${#parts[@]} / 4))
kill_host 1
echo "worker-1 killed, $(done_parts) of ${#parts[@]} parts done"
wait_for_parts $((${#parts[@]} / 2))
kill_host 2
if wait "$first"; then echo "spread.sh: nothing failed" >&2; exit 1; fi
left=$((${#parts[@]} - $(done_parts)))
echo "worker-2 killed too, $left parts left"

start_host 2
before=$(wc -l <joblog)
echo 1/worker-2 >hosts
spread
((left > 0 && $(wc -l <joblog) - before == left))

cat part.????.jsonl | sort | cmp - <(sort ../single.jsonl)
echo "$(wc -l <../single.jsonl) lines are those of a single run, $left parts made good"
