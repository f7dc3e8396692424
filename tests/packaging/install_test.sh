#!/usr/bin/env bash
# Installs into an empty folder, uses what is there as a stranger would, and removes it again.
#   install_test.sh SOURCE_FOLDER BUILD_FOLDER
set -eu
source=$1
build=$2
folder=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$folder"' EXIT
Fail() {
    echo "install_test: $*" >&2
    exit 1
}

# The list of what this build folder has really installed is left as it was.
manifest=$build/install_manifest.txt
[ ! -f "$manifest" ] || mv "$manifest" "$folder/before.txt"
cmake --install "$build" --prefix "$folder/usr" >/dev/null
mv "$manifest" "$folder/manifest.txt"
[ ! -f "$folder/before.txt" ] || mv "$folder/before.txt" "$manifest"
export PATH=$folder/usr/bin:$PATH HOME=$folder/home
unset XDG_DATA_HOME

# Each program has a page of the manual, which names each option that the program names, and all but the
# script complete them.
for program in "$folder"/usr/bin/*; do
    page=$(zcat "$folder/usr/share/man/man1/$(basename "$program").1.gz" | sed 's/\\-/-/g')
    for option in $("$program" --help | grep -oE '(^|[ ,[])--[a-z-]+' | tr -d ' ,[' | sort -u); do
        grep -qe "$option\b" <<<"$page" || Fail "the page of $program lacks $option"
        completion=$folder/usr/share/bash-completion/completions/$(basename "$program")
        [[ $program = */engine-demo ]] || (
            . "$completion"
            _engine_program "$program" "$option"
            [[ " ${COMPREPLY[*]} " = *" $option "* ]]
        ) || Fail "$program $option isn't completed"
    done
done

# A program of somebody else's, the recipes of the page, finds the scene writer and makes a world with it.
mkdir "$folder/maker"
cat >"$folder/maker/CMakeLists.txt" <<'EOF'
cmake_minimum_required(VERSION 3.23)
project(Maker LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 20)
find_package(Engine 1.0 REQUIRED)
add_executable(maker maker.cpp)
target_link_libraries(maker PRIVATE Engine::scene_writer)
EOF
sed -n '/^```cpp$/,/^```$/{/^```/d;p}' "$source/docs/recipes.md" >"$folder/maker/maker.cpp"
cd "$folder/maker"
cmake -G Ninja -S . -B build -D CMAKE_PREFIX_PATH="$folder/usr" >/dev/null
cmake --build build >output.txt || Fail "the maker doesn't build: $(cat output.txt)"
build/maker "$folder/recipes"
check_scene "$folder/recipes" >output.txt || Fail "the world of the recipes isn't clean: $(cat output.txt)"

# What the menu starts is a demo world, and closing it is a success.
command=$(sed -n 's/^Exec=//p' "$folder/usr/share/applications/engine-demo.desktop" | head -n 1)
mkfifo "$folder/number"
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$folder/number" 2>/dev/null &
read -r number <"$folder/number"
export DISPLAY=:$number
$command 2>"$folder/errors.txt" &
demo=$!
world=$HOME/.local/share/engine/demo/single
for ((i = 0; i < 200; i++)); do
    ! grep -qs "Polygon" "$world/defaultlog.txt" || break
    sleep 0.1
done
grep -q "Polygon" "$world/defaultlog.txt" || Fail "the demo loads nothing"
xdotool search --sync --onlyvisible --name '^Engine$' keydown Escape
wait "$demo" || Fail "the demo ended with $?"
[ ! -s "$folder/errors.txt" ] || Fail "the demo complains: $(cat "$folder/errors.txt")"
# TGA textures load only from files that the user may write, which nobody may in a real installation.
[ -z "$(find "$world" -type l)" ] || Fail "the demo links to installed files"
[ -z "$(find "$folder/usr" -name defaultlog.txt)" ] || Fail "it logs among the installed files"

# Removal takes all of it, and leaves the folders that others use too.
cmake -D MANIFEST="$folder/manifest.txt" -P "$source/packaging/uninstall.cmake"
left=$(find "$folder/usr" -not -type d -o -ipath '*engine*' -o -ipath '*scene_writer*')
[ -z "$left" ] || Fail "left behind: $left"
[ -d "$folder/usr/bin" ] || Fail "the folder bin is gone"
