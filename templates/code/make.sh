#!/usr/bin/env bash
# Makes the world anew from world.cpp. ENGINE_BUILD is a build of the engine, such as ENGINE/build/release;
# without it the installed library is used.
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")"
grep -qsxF "World_SOURCE_DIR:STATIC=$PWD" build/CMakeCache.txt || rm -rf build  # the folder may have been moved
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release ${ENGINE_BUILD:+"-DEngine_DIR=$ENGINE_BUILD"} >/dev/null
cmake --build build
build/make_world .
