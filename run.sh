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
InstallMissing $run_packages
Build release engine demo

cat "demo/$demo/controls.txt"
engine=$PWD/build/release/engine
screenshot=$PWD/build/screenshot-$demo.png
cd "build/release/demo/$demo"

# RunEngine: the engine ends with code 1 whenever it ends in order.
RunEngine() {
    local code=0
    "$engine" || code=$?
    [ "$code" -eq 1 ]
}

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    RunEngine
    exit
fi

echo "There is no display: running on a virtual one."
(cd "$OLDPWD" && InstallMissing $display_packages)
folder=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$folder"' EXIT
mkfifo "$folder/number"
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$folder/number" 2>/dev/null &
read -r number <"$folder/number"
export DISPLAY=:$number
RunEngine &
running=$!
sleep 5
import -window root "$screenshot"
xdotool keydown Escape  # held, as a frame has to see it
wait "$running"
echo "Screenshot: $screenshot"
