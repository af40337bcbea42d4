#!/bin/sh
# The real window on an X server: xvfb_screenshot.sh QUORVA QUORVA_GUI SCRATCH.
# Skipped (status 77) where xvfb-run is missing.
set -eu
command -v xvfb-run >/dev/null 2>&1 || { echo "xvfb-run not found: skipped"; exit 77; }
quorva=$1 gui=$2 scratch=$3
rm -rf "$scratch" && mkdir -p "$scratch"
"$quorva" init --sample "$scratch/home" >/dev/null
unset QT_QPA_PLATFORM WAYLAND_DISPLAY
xvfb-run -a -s "-screen 0 1280x1024x24" "$gui" --home "$scratch/home" \
  --screenshots "$scratch/pictures" >"$scratch/written.txt"
test -s "$scratch/pictures/main_window.png"
test "$(wc -l <"$scratch/written.txt")" -ge 8
echo "screenshots taken on X: $(wc -l <"$scratch/written.txt")"
