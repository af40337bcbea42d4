#!/bin/sh
# The desktop application's benchmark (not a test):
#   1. time to show the main window against time to show an empty Qt window, whole process,
#      median of RUNS runs each, taken in turns;
#   3. the column selection on a 750-column member: fill the tree, check the root;
#   2. GO on the anchor workload (bench/anchor_workload.sh, 10,000 lines) from the window:
#      the longest time its thread could not repaint while the program was generated.
#
#   bench/gui_bench.sh [BUILD [RUNS]]      e.g. bench/gui_bench.sh build 21
#
# Runs on an X server under xvfb-run when there is one, else on Qt's offscreen platform.
set -eu
build=${1:-build} runs=${2:-21}
bench=$build/src/ui/quorva-gui-bench quorva=$build/src/quorva
[ -x "$bench" ] || { echo "$bench not built (Qt 6 Widgets missing?)" >&2; exit 2; }
# One X server for all the runs, so its start-up is not counted.
if command -v xvfb-run >/dev/null 2>&1 && [ -z "${DISPLAY:-}" ]; then
  exec xvfb-run -a -s "-screen 0 1280x1024x24" sh "$0" "$@"
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$quorva" init --sample "$work/home" >/dev/null
sh "$(dirname "$0")/anchor_workload.sh" "$quorva" "$work/anchor" >/dev/null
[ -n "${DISPLAY:-}" ] || export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
echo "platform: ${DISPLAY:+X server $DISPLAY}${QT_QPA_PLATFORM:-}"

median() { sort -n | awk '{ t[NR] = $1 } END { print t[int((NR + 1) / 2)] }'; }
i=0
: >"$work/empty" && : >"$work/main" && : >"$work/empty_in" && : >"$work/main_in"
while [ "$i" -lt "$runs" ]; do
  for mode in empty main; do
    start=$(date +%s%N)
    "$bench" $mode --home "$work/home" | awk '{ print $2 }' >>"$work/${mode}_in"
    end=$(date +%s%N)
    echo $(((end - start) / 1000)) >>"$work/$mode"
  done
  i=$((i + 1))
done
empty=$(median <"$work/empty") main=$(median <"$work/main")
empty_in=$(median <"$work/empty_in") main_in=$(median <"$work/main_in")
echo "empty Qt window shown:  ${empty} us whole process, ${empty_in} us to first paint"
echo "main window shown:      ${main} us whole process, ${main_in} us to first paint"
awk -v a="$main" -v b="$empty" -v c="$main_in" -v d="$empty_in" \
  'BEGIN { printf "ratio main / empty:    %.2f whole process, %.2f to first paint (target <= 1.5)\n", a / b, c / d }'

: >"$work/go"
i=0
while [ "$i" -lt 5 ]; do
  "$bench" go --home "$work/anchor" >>"$work/go"
  i=$((i + 1))
done
awk '{ go[NR] = $2; gap[NR] = $4; paints[NR] = $6 }
  END { for (i = 1; i <= NR; i++) printf "GO on the anchor workload: %d us, longest time without repainting %d us, %d paints\n", go[i], gap[i], paints[i] }' "$work/go"

i=0
: >"$work/tree"
while [ "$i" -lt 5 ]; do
  "$bench" tree --home "$work/home" >>"$work/tree"
  i=$((i + 1))
done
awk '{ printf "Column selection, %d columns: tree filled in %d us, root checked and painted in %d us\n", $2, $4, $6 }' "$work/tree"
