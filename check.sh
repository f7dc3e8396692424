#!/usr/bin/env bash
# Says what is wrong with a world: builds check_scene if need be, makes the world anew where it has a make.sh, and
# hands the arguments on.
#   ./check.sh FOLDER       ./check.sh --help names the options
set -eu
project=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$project/scripts/packages.sh" ""  # --help is check_scene's
world=.
for argument in "$@"; do
    [ ! -d "$argument" ] || world=$argument
done
PrepareWorld "$world" >&2  # the output may be read as JSON
exec "$project/build/release/tools/check_scene" "$@"
