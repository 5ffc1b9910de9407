#!/usr/bin/env bats
# qorwfl config: options, exit statuses, messages.

# shellcheck disable=SC2154 # $stderr and $output, which run assigns
bats_require_minimum_version 1.5.0
load shell.bash

@test "a subcommand is needed, and has to be one" {
    qorwfl config
    assert_usage "subcommand"
    qorwfl config chek
    assert_usage "chek"
}

@test "each subcommand has a help with an example of it" {
    local name
    for name in check show explain; do
        qorwfl config "$name" --help
        assert_status 0
        assert_contains "$output" "Usage: qorwfl config $name"
        assert_contains "$output" "Example:"
        assert_contains "$output" "  qorwfl config $name "
        assert_stderr ""
    done
}

@test "the examples of the help do what they say" {
    cd "$EXAMPLES/.."
    qorwfl config check examples/QorWflActionManager
    assert_status 0
    assert_output ""
    qorwfl config show --config examples/QorWflActionManager
    assert_status 0
    assert_contains "$output" "  priority 4         \"Immediate\"    line 23"
    qorwfl config explain --environment PROD --table DOC_STD --config examples/QorWflActionManager
    assert_status 0
    assert_contains "$output" "Type: VERANT_QORStandard"
}

@test "wrong options are wrong usage" {
    qorwfl config check --format xml
    assert_usage "--format"
    qorwfl config check --config file
    assert_usage "--config"
    qorwfl config check one two
    assert_usage "two"
    qorwfl config show file
    assert_usage "file"
    qorwfl config explain --table T
    assert_usage "--environment"
    qorwfl config explain --environment E
    assert_usage "--table"
}

@test "a file that is not there is told" {
    local name
    qorwfl config check missing
    assert_status 1
    assert_output ""
    assert_stderr "qorwfl: missing: the property file cannot be read: No such file or directory"
    for name in show "explain --environment E --table T"; do
        # shellcheck disable=SC2086
        qorwfl config $name --config missing
        assert_status 1
        assert_output ""
        assert_contains "$stderr" "missing: the property file cannot be read"
    done
}

@test "an error gives status 1, a warning only with --strict" {
    printf 'actionObjects.X = DOC*.A\n' >error
    printf 'hello\n' >warning
    qorwfl config check error
    assert_status 1
    assert_contains "$output" "error:1: error: "
    assert_stderr ""
    qorwfl config check warning
    assert_status 0
    assert_contains "$output" "warning:1: warning: "
    qorwfl config check warning --strict
    assert_status 1
}

@test "standard input is taken, a folder too" {
    run --separate-stderr "$QORWFL" config check - <<<'hello'
    assert_contains "$output" "standard input:1: warning: "
    run --separate-stderr "$QORWFL" config show --config - <<<'actionType = Own'
    assert_contains "$output" 'Property file: standard input'
    assert_contains "$output" 'action type        "Own"           line 1'
    mkdir folder
    printf 'actionType = Folder\n' >folder/QorWflActionManager
    qorwfl config show --config folder
    assert_contains "$output" 'Property file: folder/QorWflActionManager'
}

@test "the path is followed, and each entry told" {
    mkdir -p one two/QorWflActionManager
    printf 'actionType = Own\n' >one/QorWflActionManager
    BexMsgCatalogPath=none:two:one: qorwfl config show
    assert_status 0
    assert_contains "$output" 'Looked for along BexMsgCatalogPath, which is "none:two:one:"'
    assert_contains "$output" "none/QorWflActionManager  passed over: there is no such file"
    assert_contains "$output" "two/QorWflActionManager   passed over: it is a folder"
    assert_contains "$output" "one/QorWflActionManager   taken"
    assert_contains "$output" "./QorWflActionManager     passed over: a file was found before"
}

@test "a file that cannot be opened counts as empty, and that is an error" {
    ((EUID != 0)) || skip "the superuser opens every file"
    printf 'actionType = Own\n' >QorWflActionManager
    chmod 0 QorWflActionManager
    qorwfl config check
    assert_status 1
    assert_contains "$output" "cannot be opened"
    assert_contains "$output" "[QC002]"
}

@test "an object without a type is an answer, not an error" {
    qorwfl config explain --environment E --table PART_LIST
    assert_status 0
    assert_contains "$output" "Kind: Part"
    assert_contains "$output" "Type: none"
    qorwfl config explain --environment E --table OTHER
    assert_contains "$output" "Kind: none"
}

@test "every format is given, the same each time" {
    local name format first
    for name in check show "explain --environment E --table DOC"; do
        for format in text json; do
            # shellcheck disable=SC2086
            qorwfl config $name --format $format
            first=$output
            # shellcheck disable=SC2086
            qorwfl config $name --format $format
            assert_output "$first"
            [[ $format == text ]] || python3 -m json.tool <<<"$output" >/dev/null
        done
    done
}

@test "control characters do not reach the terminal" {
    printf 'actionType = \033[31mred\r\nno\033thing\n' >QorWflActionManager
    NO_COLOR=1 on_terminal "'$QORWFL' config show; '$QORWFL' config check; '$QORWFL' config explain --environment \$'\\033' --table T"
    refute_contains "$output" $'\033'
    assert_contains "$output" '\x1B[31mred\x0D'
    qorwfl config check $'no\033where'
    assert_status 1
    refute_contains "$stderr" $'\033'
    qorwfl config check $'no\x9bwhere\xc2\x9b'
    assert_stderr 'qorwfl: no\x9Bwhere\u{009B}: the property file cannot be read: No such file or directory'
}

@test "a terminal has colours, not with NO_COLOR, not in a pipe" {
    printf 'actionObjects.X = DOC*.A\nhello\nhostOwn = X\n' >QorWflActionManager
    on_terminal "'$QORWFL' config check"
    assert_contains "$output" $'QorWflActionManager:1: \033[1;31merror\033[0m: there is no second dot'
    assert_contains "$output" $'QorWflActionManager:2: \033[1;35mwarning\033[0m: '
    assert_contains "$output" $'QorWflActionManager:3: \033[1;36mnote\033[0m: '
    NO_COLOR=1 on_terminal "'$QORWFL' config check"
    refute_contains "$output" $'\033'
    qorwfl config check
    refute_contains "$output" $'\033'
}

@test "an output that cannot be written is told" {
    run --separate-stderr bash -c "'$QORWFL' config show >/dev/full"
    assert_status 1
    assert_stderr "qorwfl: standard output: cannot be written: No space left on device"
}

@test "one wide text does not widen the lines of the others" {
    local narrow wide
    { for ((i = 0; i < 2000; ++i)); do echo "key$i = v"; done; } >narrow
    { cat narrow && printf '%020000d = v\n' 0; } >wide
    narrow=$("$QORWFL" config show --config narrow | wc -c)
    wide=$("$QORWFL" config show --config wide | wc -c)
    # The key stands in the settings, and in the finding and its hint at the most; the others may have up to 80 characters
    # more to their columns.
    ((narrow > 2000 * 10)) || fail "only $narrow bytes"
    ((wide < narrow + 2000 * 80 + 4 * 20000)) || fail "$narrow bytes become $wide"
}

@test "a text of 80 characters has a column, one of 81 has not" {
    { echo "k = v" && printf '%080d = v\n' 0; } >file
    qorwfl config show --config file
    assert_contains "$output" "$(printf '  line 1  k%79s  ' "")"
    { echo "k = v" && printf '%081d = v\n' 0; } >file
    qorwfl config show --config file
    refute_contains "$output" "$(printf '  k%20s' "")"
}

@test "--config - is the standard input for every command" {
    local list from_file
    export TZ=UTC
    for list in "export $EXAMPLES/review.json --created x" "convert --from json --to text $EXAMPLES/review.json" \
        "graph $EXAMPLES/review.json" "config show --format text" "config explain --environment PROD --table DOC_STD"; do
        # shellcheck disable=SC2086 # the words of the list
        qorwfl $list --config "$EXAMPLES/QorWflActionManager"
        assert_status 0
        from_file=${output//"$EXAMPLES/QorWflActionManager"/standard input}
        # shellcheck disable=SC2086 # the words of the list
        run --separate-stderr "$QORWFL" $list --config - <"$EXAMPLES/QorWflActionManager"
        assert_status 0
        assert_output "$from_file"
    done
    echo 'actionPriority.3 = Sometimes' >words
    run --separate-stderr "$QORWFL" diff "$EXAMPLES/review.json" "$EXAMPLES/minimal.json" --config - <words
    assert_status 1
    assert_contains "$output" '  - "Sometimes"'
}

@test "a standard input that is the property file and an input is wrong usage" {
    local list
    for list in "export -" "export $EXAMPLES/review.json - -o out" "convert --from json --to text -" "graph -" \
        "diff - $EXAMPLES/review.json" "diff $EXAMPLES/review.json -"; do
        # shellcheck disable=SC2086 # the words of the list
        run --separate-stderr "$QORWFL" $list --config - <"$EXAMPLES/review.json"
        assert_usage "the standard input can be the property file or an input, not both"
    done
    [[ ! -e out ]]
}

@test "a file that is named and cannot be opened is a message, not a finding" {
    local format
    mkdir folder
    for format in text json; do
        qorwfl config check --format $format missing
        assert_status 1
        assert_output ""
        assert_stderr "qorwfl: missing: the property file cannot be read: No such file or directory"
        qorwfl config check --format $format folder
        assert_status 1
        assert_output ""
        assert_contains "$stderr" "qorwfl: folder/QorWflActionManager: the property file cannot be read"
    done
}
