# Completion of kora-cli in bash. Commands and options are those that its help tells.

_kora_cli_options() { grep -o -e '--[a-z-]*' | sort -u; }

_kora_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local help syntax command='' index words=''
    local parts='settings midi-in expression-pedal switch-outs midi-devices banks'
    COMPREPLY=()
    help=$("$1" --help 2>/dev/null) || return
    syntax=$(sed -n '/^Commands:/,/^$/s/^  \([a-z]\)/\1/p' <<<"$help")

    for ((index = 1; index < COMP_CWORD; ++index)); do
        case ${COMP_WORDS[index]} in
            --port | --wait | --banks | --only) ((++index)) ;;
            -*) ;;
            *)
                command=${COMP_WORDS[index]}
                break
                ;;
        esac
    done

    case $previous in
        --wait | --banks) return ;;
        --only)
            local before=''
            [[ $current != *,* ]] || before=${current%,*},
            compopt -o nospace 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -P "$before" -W "$parts" -- "${current##*,}")
            return
            ;;
        --port) command=port ;;
    esac
    if [[ $current == -?* ]]; then
        words=$(comm -23 <(sed -n '/^Options:/,/^$/p' <<<"$help" | _kora_cli_options) <(_kora_cli_options <<<"$syntax")
            [[ -z $command ]] || grep "^$command " <<<"$syntax" | _kora_cli_options)
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
        return
    fi
    case $command in
        '') words=$(cut -d ' ' -f 1 <<<"$syntax") ;;
        show) words=unit ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    case $command in
        backup | restore | compare | show | firmware | port)
            compopt -o filenames 2>/dev/null
            mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -f -- "$current")
            ;;
    esac
}

complete -F _kora_cli kora-cli
