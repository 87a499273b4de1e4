# Completion of ostrova-cli for bash. Needs nothing but bash itself.

# The call among the words before the cursor, if there is one yet.
_ostrova_cli_call() {
    local i
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
        --data-folder | --site-host | --list) ((i++)) ;; # and its value
        results | search | fetch | weekend | guest | parse | match | key)
            echo "${COMP_WORDS[i]}"
            return
            ;;
        esac
    done
}

_ostrova_cli() {
    local word=${COMP_WORDS[COMP_CWORD]} call options
    call=$(_ostrova_cli_call)
    compopt +o filenames 2>/dev/null
    case ${COMP_WORDS[COMP_CWORD - 1]} in
    --data-folder)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
        return
        ;;
    --list | --year-page | --current-page)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        return
        ;;
    --jobs)
        mapfile -t COMPREPLY < <(compgen -W "1 2 3 4" -- "$word")
        return
        ;;
    --site-host | --from | --to | --at | --address | --title | --artist)
        # After key, --artist is a switch, and a text follows anyway.
        COMPREPLY=()
        return
        ;;
    esac

    options="--help --version --data-folder --site-host --list --offline --json"
    case $call in
    "") options+=" results search fetch weekend guest parse match key" ;;
    results) options+=" --all --csv --csv-safe" ;;
    search) options+=" --from --to --title --artist --csv --csv-safe" ;;
    fetch) options+=" --from --to --jobs" ;;
    weekend) options+=" --at" ;;
    guest) options+=" --year-page --current-page --address" ;;
    match) options+=" --csv --csv-safe" ;;
    key) options+=" --artist" ;;
    esac
    case $call:$word in
    parse:-* | match:-*) ;;
    parse:* | match:*) # pages
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        return
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
}
complete -F _ostrova_cli ostrova-cli
