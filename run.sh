#!/usr/bin/env bash
# Installs what is missing, builds the engine, and runs a world.
#   ./run.sh                     the demo, one player, first person
#   ./run.sh split               the demo for two players side by side
#   ./run.sh blender             a world made in Blender
#   ./run.sh MODEL [OPTION...]   a model, made a world by import_scene with these options
#   ./run.sh FOLDER              a folder with a settings.atr
# With --watch as the last argument the world is taken in anew whenever something of it changes, its model or its
# make.sh's sources included, and the play goes on where everything stands then.
# Without a display it runs on a virtual one for some frames and leaves a screenshot.
set -eu
project=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$project/scripts/packages.sh"

watch=""
if [ "${*: -1}" = --watch ]; then
    watch=--watch
    set -- "${@:1:$#-1}"
fi
world=${1:-single}
[ $# -eq 0 ] || shift
name=${world%/}
name=${name##*/}
name=${name%.*}
if [ -f "$project/demo/$world/settings.atr" ]; then
    kind=demo
elif [ "$world" = blender ]; then
    kind=model
    model=$project/demo/blender/world.glb
elif [ -f "$world/settings.atr" ]; then
    kind=folder
    folder=$(cd "$world" && pwd)
elif [ -f "$world" ]; then
    kind=model
    model=$(cd "$(dirname "$world")" && pwd)/${world##*/}
elif [ -d "$world" ]; then
    Refuse "there is no settings.atr in $world"
else
    Refuse "there is no demo, model or folder $world"
fi
[ "$kind" = model ] || [ $# -eq 0 ] || Refuse "$1: options are for models"

# Make: makes the world that is to be played, of its model or by its make.sh; nothing else has to be made.
Make() {
    case $kind in
    folder) MakeWorld "$folder" ;;
    model) "$project/build/release/tools/import_scene" "$model" "$folder/data/world" --settings --force "$@" ;;
    esac
}
# KeepMaking ARGUMENT...: makes it again each time when a source has changed; what goes wrong then is reported, and the
# old world stays.
KeepMaking() {
    local sources=$folder stamp
    [ "$kind" != model ] || sources=$(dirname "$model")
    stamp=$(mktemp)
    while sleep 0.3; do
        [ -n "$(find "$sources" -maxdepth 1 -type f ! -name defaultlog.txt ! -name "*.atr" -newercm "$stamp" 2>/dev/null)" ] ||
            continue
        touch "$stamp"
        sleep 0.2  # for who writes in several steps
        (Make "$@") || echo "run.sh: the world stays as it was" >&2
    done
}

cd "$project"
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || packages="$packages $display_packages"
case $kind in
demo)
    InstallMissing $packages
    Build release engine demo ${watch:+check_scene}
    folder=$project/build/release/demo/$world
    cat "demo/$world/controls.txt"
    ;;
folder)
    PrepareWorld "$folder" engine
    Check "$folder"
    ;;
model)
    PrepareImport engine
    folder=$project/build/models/$name
    Make "$@"
    Check "$folder"
    [ "$world" != blender ] || cat demo/blender/controls.txt
    ;;
esac
engine=$project/build/release/engine
screenshot=$project/build/screenshot-$name.png
cd "$folder"

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    # The engine ends with code 1 whenever it ends in order, and also when it gets no window. Then its log
    # lacks the end.
    code=0
    if [ -n "$watch" ] && [ "$kind" != demo ]; then
        KeepMaking "$@" &
        trap 'kill $! 2>/dev/null || true' EXIT
    fi
    "$engine" $watch || code=$?
    if [ "$code" -ne 1 ] || ! grep -q "Logging ended" defaultlog.txt; then
        echo "run.sh: error: the engine ended early (exit code $code); its log is $PWD/defaultlog.txt" >&2
        echo "Can the display be used (DISPLAY=${DISPLAY:-}, WAYLAND_DISPLAY=${WAYLAND_DISPLAY:-})?" \
             "With both unset, a virtual one serves." >&2
        exit 1
    fi
    exit
fi

echo "There is no display: running on a virtual one."
temporary=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$temporary"' EXIT
mkfifo "$temporary/number"
Xvfb -displayfd 3 -screen 0 1920x1200x24 -nolisten tcp 3>"$temporary/number" 2>/dev/null &
read -r number <"$temporary/number"
DISPLAY=:$number "$engine" --frames 150 --screenshot "$screenshot"
echo "Screenshot: $screenshot"
