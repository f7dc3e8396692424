# Read by the scripts at the top: answers --help, and installs the Debian packages that are
# missing. Ends where nothing can be built.

# Help: the comment that the script begins with; for a script that is still in the folder it was called from.
Help() { awk 'NR > 1 { if (!sub(/^# ?/, "")) exit; print }' "$0"; }
# Refuse MESSAGE: ends a script that was called wrongly.
Refuse() {
    echo "${0##*/}: $1" >&2
    Help >&2
    exit 2
}
if [ "${1:-}" = --help ]; then
    Help
    exit
fi

built=${BASH_SOURCE[0]%/*}/../build
[ -e "$built" ] || built=${built%/build}
if [ ! -w "$built" ]; then
    echo "What is built goes into build/, which can't be written here. Copy the project into a folder of yours." >&2
    exit 1
fi

run_packages="g++ cmake ninja-build libsdl2-dev libfreetype-dev libfontconfig-dev libgl-dev
    libglu1-mesa-dev libgl1-mesa-dri fonts-liberation libdecor-0-plugin-1-cairo nlohmann-json3-dev"
import_packages="libassimp-dev libmeshoptimizer-dev libsdl2-image-dev libstb-dev"
display_packages="xvfb"
test_packages="$display_packages $import_packages libgtest-dev libbenchmark-dev imagemagick jq netpbm openbox
    weston x11-utils x11-xserver-utils xdotool xwayland"
package_packages="dpkg-dev file"
ci_packages="$package_packages clang clang-format clang-tidy g++-aarch64-linux-gnu git
    libclang-rt-14-dev qemu-user"
packages=$run_packages

# InstallMissing PACKAGE...: has apt install those that are not there, all in one go. Without apt it prints the
# list, and goes on where there are the tools to build with; where apt can't be used it prints the line to run as
# root, and ends the script.
InstallMissing() {
    if ! command -v apt-get >/dev/null; then
        echo "This machine has no apt-get. The packages needed, under their Debian names:" $* >&2
        command -v cmake >/dev/null && command -v ninja >/dev/null || exit 1
        return 0
    fi
    local missing=""
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q "ok installed" || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    local root="" advice="Run this as root, then start again:
    apt-get update && apt-get install --no-install-recommends$missing"
    if [ "$(id -u)" -ne 0 ]; then
        root="sudo"
        if ! command -v sudo >/dev/null; then
            echo "Packages are missing, and there is no sudo to install them with. $advice" >&2
            exit 1
        fi
    fi
    echo "Installing:$missing"
    # Lists of other sources that can't be fetched need not matter.
    $root apt-get update -qq || true
    # sudo drops the variable, hence env after it.
    if ! (set -o pipefail
          $root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
              -o DPkg::Lock::Timeout=300 -o APT::Status-Fd=1 $missing </dev/null | ShowProgress); then
        echo "The packages could not be installed. $advice" >&2
        exit 1
    fi
}

# ShowProgress: shows in steps of ten percent how far apt is, from what it says on its status descriptor.
ShowProgress() {
    awk -F: '
        /^(dl|pm)status:/ {
            stage = /^dl/ ? "Downloading" : "Installing"
            match($0, /:[0-9]+[.][0-9]*:/)
            percent = int(substr($0, RSTART + 1) / 10) * 10
            if (stage != shownStage) { printf "%s%s", shownStage == "" ? "" : "\n", stage; shown = -1 }
            if (percent > shown) { printf " %d%%", percent; fflush(); shown = percent }
            shownStage = stage
        }
        END { if (shownStage != "") print "" }'
}

# Configure PRESET: says so, as it takes some seconds and its own report is long.
Configure() {
    echo "Configuring build/$1"
    cmake --preset "$1" >/dev/null
}

# Build PRESET TARGET...: configures once; the build itself notices when that has to be done again.
Build() {
    local preset=$1
    shift
    [ -f "build/$preset/build.ninja" ] || Configure "$preset"
    cmake --build --preset "$preset" ${1:+--target "$@"}
}

# MakeWorld FOLDER: has its make.sh make the world anew, if it has one.
MakeWorld() { [ ! -x "$1/make.sh" ] || ENGINE_BUILD=$project/build/release "$1/make.sh"; }

# PrepareImport TARGET...: installs $packages and what the importer needs, and builds it, check_scene and these targets.
PrepareImport() {
    InstallMissing $packages $import_packages
    (cd "$project" && Configure release &&  # the importer may have been left out before
     Build release check_scene import_scene "$@")
}

# PrepareWorld FOLDER TARGET...: installs and builds the same with what the folder's make.sh needs, and has it make the
# world.
PrepareWorld() {
    local folder=$1
    shift
    if [ -f "$folder/world.glb" ]; then
        PrepareImport "$@"
    else
        InstallMissing $packages
        (cd "$project" && Build release check_scene scene_writer "$@")
    fi
    MakeWorld "$folder"
}

# Check FOLDER: what is wrong with the world there, or that nothing is.
Check() {
    "$project/build/release/tools/check_scene" --quiet --strict "$1" && echo "check_scene finds nothing wrong." || true
}
