# Read by the scripts at the top: installs the Debian packages that are missing.

run_packages="g++ cmake ninja-build libsdl2-dev libfreetype-dev libfontconfig-dev libgl-dev
    libglu1-mesa-dev libgl1-mesa-dri fonts-liberation"
display_packages="xvfb xdotool imagemagick"
test_packages="$display_packages libgtest-dev libbenchmark-dev openbox netpbm x11-utils
    x11-xserver-utils"
ci_packages="clang clang-format clang-tidy libclang-rt-14-dev"

# InstallMissing PACKAGE...: asks apt for those that are not there; without apt it prints the list.
InstallMissing() {
    if ! command -v apt-get >/dev/null; then
        echo "This machine has no apt-get. The packages needed, under their Debian names:" $* >&2
        return 0
    fi
    local missing=""
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q "ok installed" || missing="$missing $package"
    done
    [ -z "$missing" ] && return 0
    echo "Installing:$missing"
    local root=""
    [ "$(id -u)" -eq 0 ] || root="sudo"
    $root apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $root apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

# Build PRESET TARGET...: configures once; the build itself notices when that has to be done again.
Build() {
    local preset=$1
    shift
    [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" ${1:+--target "$@"}
}
