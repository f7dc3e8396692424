#!/usr/bin/env bash
# Installs what is missing, builds everything and runs the whole suite.
#   ./test.sh [PRESET]     release (default), debug, asan or clang
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/packages.sh

preset=${1:-release}
case $preset in
    release | debug | asan | clang) ;;
    *) echo "usage: ./test.sh [release|debug|asan|clang]" >&2; exit 2 ;;
esac
InstallMissing $run_packages $test_packages
[ "$preset" != clang ] || InstallMissing $ci_packages
# Configured anew each time, so that packages which were missing before are found now.
Configure "$preset"
Build "$preset"
ctest --preset "$preset" --parallel 2
