#!/usr/bin/env bash
# Installs what is missing, builds everything and runs the whole suite.
#   ./test.sh [PRESET]     release (default), debug, asan or clang
set -eu
project=$(dirname "${BASH_SOURCE[0]}")
. "$project/scripts/packages.sh"

preset=${1:-release}
case $preset in
    release | debug | asan | clang) ;;
    *) Refuse "there is no preset $preset" ;;
esac
[ "$preset" != clang ] || packages="$packages $ci_packages"
cd "$project"
InstallMissing $packages $test_packages
# Configured anew each time, so that packages which were missing before are found now.
Configure "$preset"
Build "$preset"
ctest --preset "$preset" --parallel 2
