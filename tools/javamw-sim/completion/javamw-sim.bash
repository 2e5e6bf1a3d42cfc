# Copyright (c) 2026 the applist authors
# SPDX-License-Identifier: Apache-2.0
# Completion of javamw-sim for bash.

_javamw_sim_options() {
    case $1 in
        serve) echo '--address --timeout --items --broadcast --service --language --text --all
            --interval --json --record' ;;
        watch | call) echo '--address --timeout --json --record' ;;
        run) echo '--address --check --keep-going' ;;
        shell) echo '--address --offline --json' ;;
        applications) echo '--service --language --text --json --csv' ;;
        record) echo '--address' ;;
        replay) echo '--address --timeout --speed --wait --conversation --json' ;;
        compare) echo '--names --tolerance --json' ;;
        *) echo '--version' ;;
    esac
    echo '--help'
}

# Words of $2 that begin with $1.
_javamw_sim_words() {
    mapfile -t COMPREPLY < <(compgen -W "$2" -- "$1")
}

_javamw_sim_files() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$1")
}

# What follows an option; false if that has no value to be completed.
_javamw_sim_value() {
    case $1 in
        --items | -i | --broadcast | -b | --record | -r) _javamw_sim_files "$2" ;;
        --text) _javamw_sim_words "$2" 'auto dvb isdb arib latin' ;;
        --speed) _javamw_sim_words "$2" 'max 1 2 10' ;;
        --address | -a | --timeout | -t | --service | -s | --language | -l | --interval | \
            --wait | -w | --conversation | --tolerance) COMPREPLY=() ;;
        *) return 1 ;;
    esac
}

_javamw_sim() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command='' i
    # The shell takes "=" for a word of its own.
    if [ "$word" = = ]; then
        word=
    elif [ "$before" = = ]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
            serve | watch | call | run | shell | applications | record | replay | compare)
                command=${COMP_WORDS[i]}
                break
                ;;
        esac
    done
    if _javamw_sim_value "$before" "$word"; then
        return
    fi
    if [[ $word == -* ]]; then
        _javamw_sim_words "$word" "$(_javamw_sim_options "$command")"
        return
    fi
    case $command in
        '') _javamw_sim_words "$word" \
            'serve watch call run shell applications record replay compare' ;;
        call) _javamw_sim_words "$word" 'SetSelection GetSelection GetAllItems RemoveAllItems
            AddItems AddItemAtEnd SetClicked RemoveItem ModifyItem' ;;
        run | applications | record | replay | compare) _javamw_sim_files "$word" ;;
        *) COMPREPLY=() ;;
    esac
}

complete -F _javamw_sim javamw-sim
