#!/usr/bin/env bash
# Installs what is missing and makes the Debian package, build/package/engine_VERSION_ARCHITECTURE.deb, and
# the add-on for Blenders from elsewhere, build/package/engine_world_VERSION.zip.
#   ./package.sh
set -eu
project=$(dirname "${BASH_SOURCE[0]}")
. "$project/scripts/packages.sh"

[ $# -eq 0 ] || Refuse "nothing can be chosen"
cd "$project"
InstallMissing $packages $import_packages $package_packages
cmake --workflow --preset package
