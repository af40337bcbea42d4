#!/bin/sh
# Transfer benchmark: fetching and sending a member of LINES 80-column lines over the
# loopback, `quorva ftp-run` on a recv + send script against the `curl` tool doing the same
# two transfers (one invocation, connection reused), both against the test FTP server.
# Prints the median wall time of each over RUNS runs and their ratio.
#
#   bench/ftp_transfer.sh QUORVA [LINES [RUNS]]
set -eu

quorva=$1 lines=${2:-100000} runs=${3:-11}
here=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
server_pid=
cleanup() {
  [ -n "$server_pid" ] && kill "$server_pid" 2>/dev/null
  rm -rf "$work"
}
trap cleanup EXIT INT TERM

mkdir -p "$work/host/BENCH.SOURCE" "$work/local"
awk -v n="$lines" 'BEGIN { for (i = 1; i <= n; i++) printf "%-72s%08d\n", sprintf("       MOVE WS-FIELD-%06d TO OUT-FIELD-%06d.", i, i), i }' \
  > "$work/local/BIGPROG.txt"
cp "$work/local/BIGPROG.txt" "$work/host/BENCH.SOURCE/BIGPROG"
/usr/bin/python3 "$here/tests/support/zos_ftp_server.py" "$work/host" "$work/port" BENCH BENCHPW \
  >/dev/null 2>&1 &
server_pid=$!
i=0
while [ ! -f "$work/port" ] && [ "$i" -lt 100 ]; do sleep 0.1; i=$((i + 1)); done
port=$(cat "$work/port")
"$quorva" init "$work/home" >/dev/null
remote="'BENCH.SOURCE(BIGPROG)'"
url="ftp://127.0.0.1:$port/%27BENCH.SOURCE%28BIGPROG%29%27"

median() { sort -n | awk '{ t[NR] = $1 } END { print t[int((NR + 1) / 2)] }'; }
time_us() {
  start=$(date +%s%N)
  "$@" >/dev/null 2>&1 || echo "failed: $*" >&2
  end=$(date +%s%N)
  echo $(((end - start) / 1000))
}

run_quorva() {
  rm -f "$work/local/BIGPROG.BKP"
  printf 'open 127.0.0.1:%s\nBENCH\nBENCHPW\n\nrecv %s "%s"\n\nsend "%s" %s\n\nbye' "$port" \
    "$remote" "$work/local/BIGPROG.BKP" "$work/local/BIGPROG.txt" "$remote" > "$work/script"
  time_us "$quorva" --home "$work/home" ftp-run "$work/script"
}
run_curl() {
  time_us curl -s -B --ftp-method nocwd -u BENCH:BENCHPW -o "$work/local/BIGPROG.CURL" "$url" \
    --next -s -B --ftp-method nocwd -u BENCH:BENCHPW -T "$work/local/BIGPROG.txt" "$url"
}

i=0
: > "$work/q"
: > "$work/c"
while [ "$i" -lt "$runs" ]; do
  run_quorva >> "$work/q"
  run_curl >> "$work/c"
  i=$((i + 1))
done
q=$(median < "$work/q")
c=$(median < "$work/c")
echo "member of $lines lines ($(wc -c < "$work/local/BIGPROG.txt") bytes), fetch + send, median of $runs runs"
echo "quorva ftp-run: $q us"
echo "curl          : $c us"
awk -v q="$q" -v c="$c" 'BEGIN { printf "ratio quorva/curl: %.2f\n", q / c }'
