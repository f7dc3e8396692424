#!/usr/bin/env bash
# Installs what is missing and makes the Debian package, build/package/engine_VERSION_ARCHITECTURE.deb, and
# the add-on for Blenders from elsewhere, build/package/engine_world_VERSION.zip.
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/packages.sh

InstallMissing $run_packages $import_packages $package_packages
cmake --workflow --preset package
