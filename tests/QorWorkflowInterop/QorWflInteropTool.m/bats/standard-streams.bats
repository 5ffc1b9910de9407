#!/usr/bin/env bats
# What becomes of the command when the standard streams were closed before it started.

# shellcheck disable=SC2154 # $stderr and $output, which run assigns
bats_require_minimum_version 1.5.0
load shell.bash

# Runs the command line of bash in which "qorwfl" is the command. One that hangs has status 124.
shell() {
    run --separate-stderr env EXAMPLES="$EXAMPLES" bash -c "qorwfl() { timeout 60 '$QORWFL' \"\$@\"; }; $1"
}

@test "several inputs, - among them, and a closed standard input" {
    local command
    for command in import export; do
        shell "qorwfl $command - \$EXAMPLES/reply.xpdl \$EXAMPLES/minimal.json -o out-$command <&-"
        assert_status 1
        assert_output ""
        assert_contains "$stderr" "qorwfl: standard input: cannot be read: Bad file descriptor"
        assert_contains "$stderr" "qorwfl: 1 done, 2 failed"
        [[ $(ls out-$command) == "$([[ $command == import ]] && echo reply.txt || echo minimal.xpdl)" ]]
    done
}

@test "several inputs and no standard output and error: good inputs are done, the others fail" {
    local jobs closed
    : >empty
    for jobs in 1 2; do
        for closed in '>&- 2>&-' '<&- >&- 2>&-' '2>&-' '<&- 2>&-'; do
            rm -rf out
            shell "qorwfl import empty \$EXAMPLES/reply.xpdl missing -o out --jobs $jobs $closed"
            assert_status 1
            assert_output ""
            [[ $(ls out) == reply.txt ]] || fail "closed: $closed"
            cmp out/reply.txt <("$QORWFL" import "$EXAMPLES/reply.xpdl")
        done
    done
}

@test "- behind a file, and a closed standard input" {
    shell "qorwfl check \$EXAMPLES/reply.xpdl - <&-"
    assert_status 1
    assert_contains "$output" "standard input: error: cannot be read: Bad file descriptor [QW007]"
    shell "qorwfl diff \$EXAMPLES/reply.xpdl - <&-"
    assert_status 2
    assert_output ""
    assert_stderr "qorwfl: standard input: cannot be read: Bad file descriptor"
    shell "qorwfl export \$EXAMPLES/minimal.json --config - <&-"
    assert_status 1
    assert_stderr "qorwfl: standard input: cannot be read: Bad file descriptor"
}

@test "a closed standard output is told by every command that writes to it" {
    local list
    for list in "export \$EXAMPLES/minimal.json" "import \$EXAMPLES/reply.xpdl -o /dev/stdout" "url action x" \
        "check \$EXAMPLES/reply.xpdl" "config show" "graph \$EXAMPLES/reply.xpdl" "--help" "export --help"; do
        shell "qorwfl $list >&-"
        assert_status 1
        assert_contains "$stderr" "cannot be written: Bad file descriptor"
    done
    shell "qorwfl diff \$EXAMPLES/reply.xpdl \$EXAMPLES/minimal.json >&-"
    assert_status 2
    assert_stderr "qorwfl: standard output: cannot be written: Bad file descriptor"
}

@test "a closed standard output or error takes nothing into a file that is written" {
    shell "qorwfl import \$EXAMPLES/reply.xpdl -o file <&- >&- 2>&-"
    assert_status 0
    cmp file <("$QORWFL" import "$EXAMPLES/reply.xpdl")
    shell "qorwfl graph \$EXAMPLES/reply.xpdl --format svg -o picture <&- >&- 2>&-"
    assert_status 0
    cmp picture <("$QORWFL" graph "$EXAMPLES/reply.xpdl" --format svg)
}
