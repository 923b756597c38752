# Completion of quillon-cli for bash: subcommands, their options, listings. To be sourced, or put into
# ~/.local/share/bash-completion/completions/quillon-cli.

_quillon_cli_options() {
    case $1 in
        "") printf '%s\n' -h --help --version ;;
        play) printf '%s\n' -h --help --catalogue --no-save --text --bell ;;
        run) printf '%s\n' -h --help --page --max-ticks --seed --keys --echo --settings --record --values --catalogue ;;
        check) printf '%s\n' -h --help --json ;;
        replay) printf '%s\n' -h --help --until --lcd ;;
        drive) printf '%s\n' -h --help ;;
    esac
}

_quillon_cli() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command='' i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; i++)); do
        if [[ ${COMP_WORDS[i]} != -* ]]; then
            command=${COMP_WORDS[i]}
            break
        fi
    done
    case $before in
        --page) mapfile -t COMPREPLY < <(compgen -W '0 1 2 3 4 5 6 7 8 9' -- "$word") ; return ;;
        --max-ticks | --seed | --keys | --settings | --until) return ;;
        --values | --record | --catalogue) mapfile -t COMPREPLY < <(compgen -f -- "$word") ; return ;;
    esac
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_quillon_cli_options "$command")" -- "$word")
    elif [[ -z $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W 'play run check replay drive' -- "$word")
    elif [[ $command != drive ]]; then
        # Folders lead on to listings.
        mapfile -t COMPREPLY < <(
            compgen -d -S / -- "$word"
            compgen -f -X '!*.[bB][aA][sS]' -- "$word"
            compgen -f -X '!*.[tT][xX][tT]' -- "$word"
        )
        [[ ${#COMPREPLY[@]} -eq 0 || ${COMPREPLY[0]} != */ ]] || compopt -o nospace 2>/dev/null
    fi
}

complete -o filenames -F _quillon_cli quillon-cli
