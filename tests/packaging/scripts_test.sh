#!/usr/bin/env bash
# What run.sh and test.sh do where something is missing: packages, sudo, apt, a display.
#   scripts_test.sh SOURCE_FOLDER ENGINE
# Only the machine's package tools are stand-ins; they stand in a folder that is the whole PATH.
set -eu
source=$1
engine=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder/bin" "$folder/tree"
cp -r "$source"/{run.sh,test.sh,check.sh,scripts,demo} "$folder/tree"
for tool in bash sh env awk grep id cat dirname rm; do
    ln -s "$(command -v "$tool")" "$folder/bin"
done

# StandIn NAME: a program made of the lines on standard input.
StandIn() {
    rm -f "$folder/bin/$1"
    { echo "#!/bin/sh"; cat; } >"$folder/bin/$1"
    chmod +x "$folder/bin/$1"
}
# Expect CODE TEXT COMMAND: how the command ends, and a text among what it says.
Expect() {
    local code=0 said
    said=$(PATH=$folder/bin bash -euc "$3" 2>&1) || code=$?
    if [ "$code" -ne "$1" ] || [[ $said != *"$2"* ]]; then
        printf '%s\nended with %s instead of %s, or without "%s":\n%s\n' "$3" "$code" "$1" "$2" "$said" >&2
        exit 1
    fi
}
install=". '$folder/tree/scripts/packages.sh'; InstallMissing alpha beta"

Expect 1 "no apt-get. The packages needed, under their Debian names: alpha beta" "$install"
StandIn cmake <<<'exit 0'
StandIn ninja <<<'exit 0'
Expect 0 "no apt-get." "$install"

StandIn dpkg-query <<<'[ "$4" = alpha ] && echo "install ok installed"'
StandIn apt-get <<<'exit 77'
StandIn id <<<'echo 1000'
Expect 1 "there is no sudo to install them with. Run this as root, then start again:
    apt-get update && apt-get install --no-install-recommends beta" "$install"

# As sudo does: nothing of the environment comes through but the path.
StandIn sudo <<<'exec env -i PATH="$PATH" "$@"'
Expect 1 "could not be installed. Run this as root" "$install"
StandIn apt-get <<'EOF'
[ "$1" = install ] || exit 0
[ "$DEBIAN_FRONTEND" = noninteractive ] || exit 78
echo "dlstatus:1:55.5:Retrieving file 1 of 1"
echo "(Reading database ..."
echo "pmstatus:beta:any:9.1:Unpacking beta"
echo "pmstatus:beta:100.0000:Installed beta"
EOF
Expect 0 "Installing: beta
Downloading 50%
Installing 0% 100%" "$install"

# A display that doesn't answer: the real engine in place, and a build that has nothing to do.
StandIn dpkg-query <<<'echo "install ok installed"'
mkdir -p "$folder/tree/build/release"
cp -r "$source/demo" "$folder/tree/build/release"
ln -s "$engine" "$folder/tree/build/release/engine"
if [ "$(id -u)" -ne 0 ]; then  # nothing keeps root from writing
    chmod a-w "$folder/tree/build"
    Expect 1 "goes into build/, which can't be written here" "'$folder/tree/run.sh'"
    chmod u+w "$folder/tree/build"
fi
unset WAYLAND_DISPLAY
export DISPLAY=:9876
Expect 1 "Can the display be used (DISPLAY=:9876" "'$folder/tree/run.sh'"
Expect 2 "./test.sh [PRESET]" "'$folder/tree/test.sh' everything"
Expect 0 "./run.sh MODEL" "'$folder/tree/run.sh' --help"
Expect 2 "there is no settings.atr in" "'$folder/tree/run.sh' '$folder/tree'"
# What is said of the work isn't among what may be read as JSON.
mkdir -p "$folder/world" "$folder/tree/build/release/tools"
printf '#!/bin/sh\necho made\n' >"$folder/world/make.sh"
chmod +x "$folder/world/make.sh"
printf '#!/bin/sh\n' >"$folder/tree/build/release/tools/check_scene"
chmod +x "$folder/tree/build/release/tools/check_scene"
Expect 0 "made" "'$folder/tree/check.sh' '$folder/world'"
Expect 1 "" "'$folder/tree/check.sh' '$folder/world' 2>/dev/null | grep ."
