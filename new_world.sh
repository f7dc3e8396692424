#!/usr/bin/env bash
# Makes a folder with a small world that runs at once: floor, walls, ramp, crate, lamp, player.
#   ./new_world.sh FOLDER            made by a program, world.cpp, which is there to be changed
#   ./new_world.sh FOLDER code       the same
#   ./new_world.sh FOLDER blender    made from a model, world.glb, which Blender opens
# Afterwards ./run.sh FOLDER makes the world anew and walks in it.
set -eu
project=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

folder=${1:-}
kind=${2:-code}
if [ -z "$folder" ] || [ "${folder#-}" != "$folder" ] || [ ! -d "$project/templates/$kind" ]; then
    echo "usage: ./new_world.sh FOLDER [code|blender]" >&2
    exit 2
fi
if [ -e "$folder" ]; then
    echo "$folder is there already: choose another name, or take it away." >&2
    exit 1
fi
mkdir -p "$folder"
cp "$project/templates/settings.atr" "$project/templates/$kind"/* "$folder"
sed -i "s|NAME|$(basename "$folder")|; s|WORLD|$folder|g" "$folder/README.md"

. "$project/scripts/packages.sh"
cd "$folder"
folder=$PWD
cd "$project"
if [ "$kind" = blender ]; then
    InstallMissing $run_packages $import_packages
    Configure release
    Build release check_scene import_scene
else
    InstallMissing $run_packages
    Configure release
    Build release check_scene scene_writer
fi
ENGINE_BUILD=$project/build/release "$folder/make.sh"
Check "$folder"
echo "Made $folder. Walk in it: ./run.sh $1"
