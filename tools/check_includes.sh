#!/usr/bin/env bash
# Prints which folder of src/ includes which other, and fails on an include that goes up or in a circle: includes
# point one way, from the left of this list to the right. The same holds for the files of platform/, one by one.
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")/.."

folders="app render simulation loading settings engine scene services math platform"

# Edges FILE...: "from to" for each include within src/, as the folders or, in platform/, the files of both ends.
Edges() {
    grep -o '^#include "[a-z_]*/[a-z_0-9]*\.h"' "$@" | sed -E 's#^src/##; s#:\#include "# #; s#"$##'
}

failed=0
position() {
    local i=0 folder
    for folder in $folders; do
        i=$((i + 1))
        [ "$folder" != "$1" ] || break
    done
    echo $i
}

echo "Includes between the folders of src/:"
while read -r count from to; do
    verdict=""
    if [ ! -d "src/$to" ]; then
        verdict="  <- outside of src/"
    elif [ "$(position "$from")" -ge "$(position "$to")" ]; then
        verdict="  <- points up"
    fi
    [ -z "$verdict" ] || failed=1
    printf '%5d  %s -> %s%s\n' "$count" "$from" "$to" "$verdict"
done < <(Edges $(git ls-files 'src/*.h' 'src/*.cpp') | sed -E 's#/[^ ]*##g' | awk '$1 != $2' | sort | uniq -c)

# A file's header and source are one; tsort names the circles.
echo "The files of src/platform/, each above all that it stands on:"
circles=$(mktemp)
trap 'rm -f "$circles"' EXIT
Edges $(git ls-files 'src/platform/*.h' 'src/platform/*.cpp') | sed -E 's#platform/##g; s#\.(h|cpp)##g' |
    awk '$1 != $2' | sort -u | tsort 2>"$circles" | sed 's/^/       /' || true
if [ -s "$circles" ]; then
    cat "$circles"
    failed=1
fi
exit $failed
