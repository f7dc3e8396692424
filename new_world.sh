#!/usr/bin/env bash
# Makes a folder with a small world that runs at once: floor, walls, ramp, crate, lamp, player.
#   ./new_world.sh FOLDER            made by a program, world.cpp, which is there to be changed
#   ./new_world.sh FOLDER code       the same
#   ./new_world.sh FOLDER blender    made from a model, world.glb, which Blender opens
# Afterwards ./run.sh FOLDER makes the world anew and walks in it.
set -eu
project=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

. "$project/scripts/packages.sh"

folder=${1:-}
kind=${2:-code}
[ $# -ge 1 ] && [ $# -le 2 ] && [ -n "$folder" ] && [ "${folder#-}" = "$folder" ] || Refuse "one folder is wanted"
[[ $folder != *[]\[\\\|\"\;]* ]] || Refuse 'CMake can build nothing where a name has one of [ ] \ | " ;'
[ "$kind" = code ] || [ "$kind" = blender ] || Refuse "there is no kind $kind"
if [ -e "$folder" ]; then
    echo "$folder is there already: choose another name, or take it away." >&2
    exit 1
fi
mkdir -p "$folder"
cp "$project/templates/settings.atr" "$project/templates/$kind"/* "$folder"
PrepareWorld "$(cd "$folder" && pwd)"
Check "$folder"
echo "Made $folder. Walk in it: ./run.sh ${folder@Q}"
