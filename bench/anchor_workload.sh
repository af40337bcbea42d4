#!/bin/sh
# The anchor workload: a working folder whose template has LINES code lines, each holding
# one of KEYS keys, with the KEYS pairs in temp/key2value.dat. Generation time on it is the
# figure the README quotes.
#
#   bench/anchor_workload.sh QUORVA FOLDER [LINES [KEYS]]    make the folder
#   bench/anchor_workload.sh --time QUORVA FOLDER [RUNS]     median wall time of RUNS runs
#
# To compare two builds, make one folder per build and time both in turns, e.g.
#   bench/anchor_workload.sh old/quorva /tmp/old && bench/anchor_workload.sh new/quorva /tmp/new
#   bench/anchor_workload.sh --time old/quorva /tmp/old; bench/anchor_workload.sh --time new/quorva /tmp/new
set -eu

if [ "${1:-}" = "--time" ]; then
  quorva=$2 folder=$3 runs=${4:-21}
  i=0
  while [ "$i" -lt "$runs" ]; do
    start=$(date +%s%N)
    "$quorva" --home "$folder" --yes generate >/dev/null 2>&1
    end=$(date +%s%N)
    echo $(((end - start) / 1000))
    i=$((i + 1))
  done | sort -n | awk '{ t[NR] = $1 } END { printf "median %d us over %d runs\n", t[int((NR + 1) / 2)], NR }'
  exit 0
fi

quorva=$1 folder=$2 lines=${3:-10000} keys=${4:-200}
rm -rf "$folder"
"$quorva" init --sample "$folder" >/dev/null
awk -v lines="$lines" -v keys="$keys" 'BEGIN {
  printf "quormem=ANCHOR-1\nnumlines=%d\nclient=1.33\n[THE CODE BEGINS HERE]\n", lines
  for (i = 0; i < lines; i++)
    printf "C           MOVE <KEY%04d> TO WS-FIELD-%05d.\n", i % keys, i
}' >"$folder/Resource/Anchor.txt"
awk -v keys="$keys" 'BEGIN {
  for (k = 0; k < keys; k++) printf "<KEY%04d>=VALUE-%04d\n", k, k
}' >"$folder/temp/key2value.dat"
printf 'ALTERNATIVE_QUORMEM_FILE=Anchor.txt\n' >>"$folder/Resource/QVconfig.ini"
"$quorva" --home "$folder" --yes generate >/dev/null 2>&1
echo "anchor working folder: $folder ($lines lines, $keys keys)"
