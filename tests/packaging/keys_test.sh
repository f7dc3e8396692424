#!/usr/bin/env bash
# The readers, the checker and the importer know the same keys.
#   keys_test.sh SOURCE_FOLDER
set -eu
cd "$1"
KeysOf() {
    grep -ohE '"\*[A-Z]+ ?"' "$@" | tr -d '" ' | sort -u
}
readers=$(KeysOf src/loading/attribute_file.cpp src/settings/settings_file.cpp)
[ "$(wc -l <<<"$readers")" -gt 20 ]
diff <(echo "$readers") <(KeysOf tools/check_scene/keys.cpp) >&2
# The importer's properties bear the names of keys of objects; a track is no key.
properties=$(sed -n '/keyNames\[\]/,/};/p' tools/import_scene/properties.cpp | grep -oE '"[A-Z]+"' | grep -v TRACK | tr -d '"')
[ "$(wc -l <<<"$properties")" -gt 5 ]
for property in $properties; do
    grep -qxF "*$property" <<<"$readers" || { echo "no reader knows *$property" >&2; exit 1; }
    for file in docs/attributes.md docs/from_blender.md; do
        grep -qF "$property" "$file" || { echo "$file lacks $property" >&2; exit 1; }
    done
done
for key in $readers; do
    grep -qF "$key" docs/attributes.md docs/settings.md || { echo "no page lists $key" >&2; exit 1; }
done
