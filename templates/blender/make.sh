#!/usr/bin/env bash
# Makes the world anew from world.glb. ENGINE_BUILD is a build of the engine, such as ENGINE/build/release;
# without it the installed importer is used.
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")"
"${ENGINE_BUILD:+$ENGINE_BUILD/tools/}import_scene" world.glb data/world
