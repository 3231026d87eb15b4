# Completion of tamrel's options, their values and script files for bash.
#
# Installed under share/bash-completion/completions/tamrel, from where bash-completion loads it when it
# is needed; without that package, source this file. It uses nothing of the package itself.

_tamrel() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local options="-j --jobs -n --num -N --north -E --east -S --south -W --west -f --format -s --nostats
        -r --noremarks --seed --first --max --time --verbose --filter --stats --summary --merge
        -h --help --version"
    COMPREPLY=()
    case $previous in
        -f | --format)
            mapfile -t COMPREPLY < <(compgen -W "none NESW short full PBN" -- "$current")
            return
            ;;
        -n | --num)
            mapfile -t COMPREPLY < <(compgen -W "all" -- "$current")
            return
            ;;
        --summary)
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
        -j | --jobs | -N | --north | -E | --east | -S | --south | -W | --west | --seed | --first | \
            --max | --time | --filter | --stats)
            return
            ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
        return
    fi
    local ending=lua
    [[ " ${COMP_WORDS[*]} " == *" --merge "* ]] && ending=json
    mapfile -t COMPREPLY < <(compgen -f -X "!*.$ending" -- "$current")
}

# Folders, and what else nothing here fits, are completed by bash as usual.
complete -o default -o bashdefault -F _tamrel tamrel
