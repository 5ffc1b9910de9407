#!/usr/bin/env bats
# The command as a whole, whatever its subcommands.

# shellcheck disable=SC2154 # $stderr and $output, which run assigns
bats_require_minimum_version 1.5.0
load shell.bash
load help.bash

@test "every subcommand has a help with an example of it" {
    local name names
    names=$(subcommands_of)
    assert_contains "$names" export
    assert_contains "$names" import
    for name in $names; do
        qorwfl "$name" --help
        assert_status 0
        assert_contains "$output" "Usage: qorwfl $name"
        assert_contains "$output" "Example"
        assert_contains "$output" "  qorwfl $name "
    done
}

@test "--version tells the version" {
    qorwfl --version
    assert_status 0
    [[ $output =~ ^qorwfl\ [0-9]+\.[0-9]+\.[0-9]+$ ]]
}

@test "no subcommand and an unknown one are wrong usage" {
    qorwfl
    assert_usage "subcommand"
    qorwfl exports
    assert_usage "exports"
}

@test "an empty name of a file is wrong usage" {
    local name
    for name in export import check "convert --from xpdl --to text" "diff $EXAMPLES/reply.xpdl" graph "config check"; do
        # shellcheck disable=SC2086 # several words
        qorwfl $name ""
        assert_usage "a name is needed"
    done
    for name in "export a.json" "convert --from json --to text a.json" "graph a.json" "diff a.json b.json" \
        "config show" "config explain --environment E --table T"; do
        # shellcheck disable=SC2086 # several words
        qorwfl $name --config ""
        assert_usage "--config: a name is needed"
    done
    for name in "export a.json" "import a" "convert --from xpdl --to text a" "check a" "graph a"; do
        # shellcheck disable=SC2086 # several words
        qorwfl $name -o ""
        assert_usage "--output: a name is needed"
    done
    [[ -z $(ls) ]]
}

@test "what arguments and names of files hold has no effect on a terminal" {
    qorwfl import $'a\e[1m\x9b\xc2\x9b\xc3\xbc\xff'
    assert_status 1
    assert_stderr 'qorwfl: a\x1B[1m\x9B\u{009B}ü\xFF: cannot be read: No such file or directory'
    qorwfl $'exports\e[1m'
    assert_usage 'exports\x1B[1m'
}
