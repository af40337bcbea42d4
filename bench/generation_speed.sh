#!/bin/sh
# Generation against copying. On the anchor workload (10,000 template lines, 200 keys):
# `quorva generate` beside `cat` of the same template and `sed -f` with the same pairs, in
# one run, as ratios; then the scaling table (lines x keys). Medians of RUNS runs each.
#
#   bench/generation_speed.sh [QUORVA [SCRATCH]]      (RUNS=11 by default)
set -eu

quorva=${1:-build/src/quorva}
scratch=${2:-${TMPDIR:-/tmp}/quorva-speed}
runs=${RUNS:-11}
here=$(dirname "$0")
mkdir -p "$scratch"

# Median wall time in microseconds of a command run $runs times.
median() {
  i=0
  while [ "$i" -lt "$runs" ]; do
    start=$(date +%s%N)
    "$@" >/dev/null 2>&1
    end=$(date +%s%N)
    echo $(((end - start) / 1000))
    i=$((i + 1))
  done | sort -n | awk '{ t[NR] = $1 } END { print t[int((NR + 1) / 2)] }'
}

# The same pairs as a sed script (the keys hold no sed specials).
sed_script() {
  sed 's/^\([^=]*\)=\(.*\)$/s|\1|\2|g/' "$1/temp/key2value.dat" >"$2"
}

folder=$scratch/anchor
"$here/anchor_workload.sh" "$quorva" "$folder" 10000 200 >/dev/null
sed_script "$folder" "$scratch/anchor.sed"
generate=$(median "$quorva" --home "$folder" --yes generate)
copy=$(median cat "$folder/Resource/Anchor.txt")
substitute=$(median sed -f "$scratch/anchor.sed" "$folder/Resource/Anchor.txt")
echo "anchor workload, median of $runs runs (microseconds)"
echo "  quorva generate  $generate"
echo "  cat              $copy   generate/cat = $(awk "BEGIN { printf \"%.2f\", $generate / $copy }")"
echo "  sed -f           $substitute   generate/sed = $(awk "BEGIN { printf \"%.2f\", $generate / $substitute }")"

echo "scaling: quorva generate, median microseconds"
printf '  %8s %8s %10s\n' lines keys generate
for lines in 10000 40000 160000; do
  for keys in 200 800 3200; do
    folder=$scratch/l${lines}k$keys
    "$here/anchor_workload.sh" "$quorva" "$folder" "$lines" "$keys" >/dev/null
    printf '  %8s %8s %10s\n' "$lines" "$keys" "$(median "$quorva" --home "$folder" --yes generate)"
  done
done
