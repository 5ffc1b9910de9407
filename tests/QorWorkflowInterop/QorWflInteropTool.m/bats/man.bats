#!/usr/bin/env bats
# The manual pages: well formed, and of the same mind as the help.

# shellcheck disable=SC2154 # $stderr and $output, which run assigns
bats_require_minimum_version 1.5.0
load shell.bash
load help.bash

# Prints a page as plain text, each run of blanks and line ends as one blank.
page() {
    mandoc -T ascii "$MAN/$1" | col -b | tr -s ' \t\n' ' '
}

@test "no page has a finding of mandoc" {
    local file
    for file in "$MAN"/*.[15]; do
        run mandoc -T lint -W warning "$file"
        assert_status 0
        assert_output ""
    done
}

@test "every subcommand has a page, and the command's names each" {
    local name
    for name in $(subcommands_of); do
        [[ -f $MAN/qorwfl-$name.1 ]] || fail "there is no page of: $name"
        assert_contains "$(page qorwfl.1)" "qorwfl-$name(1)"
    done
    [[ -f $MAN/QorWflActionManager.5 ]]
}

@test "the page of each subcommand names every option of its help" {
    local command option text
    local -a words
    while read -r command; do
        read -ra words <<<"$command"
        text=$(page "qorwfl-${words[0]}.1")
        assert_contains "$text" "qorwfl $command"
        while read -r option; do
            [[ $text =~ (^|[ \[,|])"$option"($|[ ,\]|]) ]] || fail "the page of $command does not name: $option"
        done < <(options_of "${words[@]}")
    done < <(all_commands)
    text=$(page qorwfl.1)
    while read -r option; do
        assert_contains "$text" "$option"
    done < <(options_of)
}

@test "the page of each subcommand names every value that an option may have" {
    local command option value text
    local -a words
    while read -r command; do
        read -ra words <<<"$command"
        text=$(page "qorwfl-${words[0]}.1")
        for option in --format --from --to; do
            while read -r value; do
                assert_contains "$text" "$value"
            done < <(values_of "$option" "${words[@]}")
        done
    done < <(all_commands)
}

@test "the page of the property file names every key that the library asks for" {
    local key text
    text=$(page QorWflActionManager.5)
    for key in actionType actionStatus.start actionStatus.run actionStatus.complete actionStatus.abort \
        actionStatus.bypass actionPriority. dataName.missing dataName.ambiguous actionObjects.; do
        assert_contains "$text" "$key"
    done
}

@test "the example of the property file's page is a property file without a fault" {
    sed -n '/^\.Sh EXAMPLES/,/^\.Ed/{/^\./!p}' "$MAN/QorWflActionManager.5" >example
    grep -q actionPriority example
    qorwfl config check --format json example
    assert_status 0
    assert_contains "$output" '"warnings": 0'
}

@test "the built-in words of the property file's page are the library's" {
    local word text
    text=$(page QorWflActionManager.5)
    qorwfl config show
    while read -r word; do
        assert_contains "$text" "$word"
    done < <(sed -n '/^Words/,/^$/s/.*"\/\{0,1\}\([^"\/]*\)\/\{0,1\}".*/\1/p' <<<"$output")
}

@test "the page of each subcommand names the variables that it looks at, and the command's all of them" {
    local name text variable
    for name in $(subcommands_of); do
        text=$(page "qorwfl-$name.1")
        assert_contains "$text" "ENVIRONMENT"
        assert_contains "$text" "BexQorTrace"
        [[ $text == *" --config "* ]] || continue
        assert_contains "$text" "BexMsgCatalogPath"
        assert_contains "$text" "TMPDIR"
    done
    for variable in BexMsgCatalogPath BexQorTrace NO_COLOR TERM TMPDIR; do
        assert_contains "$(page qorwfl.1)" "$variable"
    done
}

@test "the synopsis of each page tells of --output what the help does" {
    local name type found=0
    for name in $(subcommands_of); do
        type=$("$QORWFL" "$name" --help | sed -n 's/^ *-o,--output \([A-Z_]*\).*/\1/p')
        [[ -n $type ]] || continue
        assert_contains "$(page "qorwfl-$name.1")" "[-o ${type,,}]"
        found=$((found + 1))
    done
    ((found == 5)) || fail "$found commands have an output"
}

@test "the page of export names every member of an action" {
    local text json member
    text=$(page qorwfl-export.1)
    for json in '{"?": 0}' '{"contexts": [{"?": 0}]}' '{"objects": [{"?": 0}]}' \
        '{"objects": [{"type": "Part", "uuid": {"?": 0}}]}'; do
        run --separate-stderr "$QORWFL" export - <<<"$json"
        assert_contains "$stderr" "known are "
        for member in ${stderr##*known are }; do
            [[ $text =~ [\ ]"${member%,}"[\ ,:.] ]] || fail "the page does not name: $member"
        done
    done
}

@test "the quotes of an example reach the reader of the page" {
    assert_contains "$(page qorwfl-url.1)" 'qorwfl url action "DR 4711"'
}
