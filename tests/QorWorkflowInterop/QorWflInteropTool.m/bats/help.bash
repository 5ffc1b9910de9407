# What the help of the command shows, for tests of what has to know the same.
# shellcheck shell=bash

# Prints the subcommands of a command, one a line.
subcommands_of() {
    "$QORWFL" "$@" --help | sed -n '/^Subcommands:/,/^$/s/^  \([^ ][^ ]*\) .*/\1/p'
}

# Prints every command with its subcommands, one a line: "export", "config", "config check".
all_commands() {
    local name sub
    for name in $(subcommands_of); do
        echo "$name"
        for sub in $(subcommands_of "$name"); do
            echo "$name $sub"
        done
    done
}

# Prints the options of a command, one a line, -o and --output both.
options_of() {
    "$QORWFL" "$@" --help | sed -n '/^Options:/,/^$/s/^  \(-[^ ]*\).*/\1/p' | tr ',' '\n'
}

# Prints the values that an option of a command may have, as its help shows them; nothing for free text.
values_of() {
    local option=$1
    shift
    "$QORWFL" "$@" --help | sed -n "s/^  .*$option [^ ]*{\\([^}]*\\)}.*/\\1/p" | tr ',' '\n'
}
