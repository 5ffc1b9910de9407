# Completion of the command qorwfl for bash. Needs nothing but bash itself.
# shellcheck shell=bash

# Prints the options of a subcommand.
_qorwfl_options() {
    case $1 in
        '') echo '-h --help --version' ;;
        export) echo '-h --help --config --format -o --output --jobs --created' ;;
        import) echo '-h --help --format -o --output --jobs' ;;
        convert) echo '-h --help --from --to -o --output --config --created' ;;
        check) echo '-h --help --format --strict -o --output' ;;
        diff) echo '-h --help --format --config' ;;
        graph) echo '-h --help --format --from -o --output --config' ;;
        'config check') echo '-h --help --format --strict' ;;
        'config show') echo '-h --help --config --format' ;;
        'config explain') echo '-h --help --environment --table --config --format' ;;
        'url instance') echo '-h --help --db-name --environment --table --coid --compid' ;;
        'url context') echo '-h --help --db-name --environment --table --coid --compid --context' ;;
        'url explain') echo '-h --help --format' ;;
        *) echo '-h --help' ;;
    esac
}

# Prints the words that may come behind an option of a subcommand: "FILES" for file names, nothing for free text.
_qorwfl_values() {
    case $2 in
        -o | --output | --config) echo FILES ;;
        --from | --to) echo 'xpdl text json' ;;
        --format)
            case $1 in
                export | diff) echo 'xpdl text json' ;;
                check) echo 'text json sarif' ;;
                graph) echo 'dot mermaid svg' ;;
                *) echo 'text json' ;;
            esac
            ;;
    esac
}

# Whether an option of a subcommand wants a value.
_qorwfl_wants_value() {
    case $1 in
        -h | --help | --version | --strict) return 1 ;;
        -*) return 0 ;;
    esac
    return 1
}

_qorwfl() {
    local current=${COMP_WORDS[COMP_CWORD]} previous='' command='' words='' word i
    COMPREPLY=()
    # The subcommand is made of the words in front that are no options and no values of options.
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        case $command in
            '') case $word in export | import | convert | check | diff | graph | config | url) command=$word ;; esac ;;
            config) case $word in check | show | explain) command="config $word" ;; esac ;;
            url) case $word in action | context | instance | parm | explain) command="url $word" ;; esac ;;
        esac
    done
    ((COMP_CWORD > 0)) && previous=${COMP_WORDS[COMP_CWORD - 1]}
    # "--format=json" comes as three words.
    if [[ $current == '=' ]]; then
        current=''
    elif [[ $previous == '=' ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi

    if _qorwfl_wants_value "$previous"; then
        words=$(_qorwfl_values "$command" "$previous")
    elif [[ $current == -* ]]; then
        words=$(_qorwfl_options "$command")
    else
        case $command in
            '') words='export import convert check config url diff graph' ;;
            config) words='check show explain' ;;
            url) words='action context instance parm explain' ;;
            'config show' | 'config explain' | url\ *) ;;
            *) words=FILES ;;
        esac
    fi
    if [[ $words == FILES ]]; then
        compopt -o filenames 2>/dev/null || true  # outside a completion there is nothing to set
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    fi
}

complete -F _qorwfl qorwfl
