#!/usr/bin/env bash
# Installs what is missing, builds the engine and its demo world, and runs it.
#   ./run.sh          one player, first person
#   ./run.sh split    two players side by side
# Without a display it runs on a virtual one for a few seconds and leaves a screenshot.
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")"
. tools/packages.sh

demo=${1:-single}
if [ ! -d "demo/$demo" ]; then
    echo "usage: ./run.sh [single|split]" >&2
    exit 2
fi
display_needed=""
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || display_needed=$display_packages
InstallMissing $run_packages $display_needed
Build release engine demo

cat "demo/$demo/controls.txt"
engine=$PWD/build/release/engine
screenshot=$PWD/build/screenshot-$demo.png
cd "build/release/demo/$demo"

# RunEngine: the engine ends with code 1 whenever it ends in order, and also when it gets no window. Then
# its log lacks the end.
RunEngine() {
    local code=0
    "$engine" || code=$?
    if [ "$code" -ne 1 ] || ! grep -q "Logging ended" defaultlog.txt; then
        echo "run.sh: error: the engine ended early (exit code $code); its log is $PWD/defaultlog.txt" >&2
        echo "Can the display be used (DISPLAY=${DISPLAY:-}, WAYLAND_DISPLAY=${WAYLAND_DISPLAY:-})?" \
             "With both unset, a virtual one serves." >&2
        return 1
    fi
}

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    RunEngine
    exit
fi

echo "There is no display: running on a virtual one."
folder=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$folder"' EXIT
mkfifo "$folder/number"
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$folder/number" 2>/dev/null &
read -r number <"$folder/number"
export DISPLAY=:$number
RunEngine &
running=$!
sleep 5
import -window "$(xdotool search --onlyvisible --name '^Engine$')" "$screenshot"
xdotool keydown Escape  # held, as a frame has to see it
wait "$running"
echo "Screenshot: $screenshot"
