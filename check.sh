#!/usr/bin/env bash
# Says what is wrong with a world before it runs: builds check_scene if need be and hands the arguments on.
#   ./check.sh FOLDER       ./check.sh --help names the options
set -eu
project=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$project/scripts/packages.sh"
InstallMissing $run_packages >&2  # the output may be read as JSON
(cd "$project" && Build release check_scene) >&2
exec "$project/build/release/tools/check_scene" "$@"
