# Completion in bash, for each of the programs: options as its --help lists them, else files and folders.
_engine_program() {
    [[ $2 != -* ]] || mapfile -t COMPREPLY < <(compgen -W "$("$1" --help | grep -oE '^  --[a-z-]+')" -- "$2")
}
complete -o default -F _engine_program engine import_scene check_scene
