#!/usr/bin/env bats
# qorwfl url: options, exit statuses, messages.

# shellcheck disable=SC2154 # $stderr and $output, which run assigns
bats_require_minimum_version 1.5.0
load shell.bash

short=qor://VERANT/ENV1.PART_LIST/00000000000000A100000000000000B2
long='LumenUID://Legacy+QOR1/ENV1/VERANT++#ENV1++++#PART_LIST+++++++++#00000000000000A1#00000000000000B2.PART_LIST'

@test "a subcommand is needed, and has to be one" {
    qorwfl url
    assert_usage "subcommand"
    qorwfl url actions
    assert_usage "actions"
}

@test "each subcommand has a help with an example of it that works" {
    local name example
    for name in action context instance parm explain; do
        qorwfl url "$name" --help
        assert_status 0
        assert_contains "$output" "Usage: qorwfl url $name"
        assert_stderr ""
        example=$(sed -n 's/^  qorwfl //p' <<<"$output")
        assert_contains "$example" "url $name "
        run --separate-stderr bash -c "'$QORWFL' $example"
        assert_status 0
        [[ -n $output ]] || fail "nothing printed"
        assert_stderr ""
    done
}

@test "action, instance, context and parm build" {
    qorwfl url action "DR 4711"
    assert_status 0
    assert_output "LumenUID://Legacy+QOR1/default/DR+4711.ACTION"
    qorwfl url instance $short "$long"
    assert_output "$long"$'\n'"$long"
    qorwfl url instance --db-name VERANT --environment ENV1 --table PART_LIST --coid 00000000000000A1 \
        --compid 00000000000000B2
    assert_output "$long"
    qorwfl url context --context "As built" $short
    assert_output "$long?context=As+built"
    qorwfl url parm "$output" Nickname "Pump/1"
    assert_output "$long?context=As+built&Nickname=Pump%2F1"
}

@test "lines of the standard input are taken" {
    run --separate-stderr "$QORWFL" url action - <<<$'a\nb'
    assert_output $'LumenUID://Legacy+QOR1/default/a.ACTION\nLumenUID://Legacy+QOR1/default/b.ACTION'
    run --separate-stderr "$QORWFL" url instance - <<<"$short"
    assert_output "$long"
    run --separate-stderr "$QORWFL" url context - --context x <<<"$short"
    assert_output "$long?context=x"
    run --separate-stderr "$QORWFL" url parm - a b <<<"$long"
    assert_output "$long?a=b"
    run --separate-stderr "$QORWFL" url explain - <<<"$long"$'\n'hello
    assert_status 1
    assert_contains "$output" "object instance of database \"VERANT\""
    assert_contains "$output" "no object instance: it begins neither"
    run --separate-stderr "$QORWFL" url explain - </dev/null
    assert_status 0
    assert_output ""
}

@test "wrong options are wrong usage" {
    qorwfl url action
    assert_usage "ID"
    qorwfl url instance
    assert_usage "UUID"
    qorwfl url context --context x
    assert_usage "UUID"
    qorwfl url context $short
    assert_usage "--context"
    qorwfl url instance --table T
    assert_usage "--table requires"
    qorwfl url instance $short --db-name A --environment B --table C --coid 1 --compid 2
    assert_usage "excludes"
    qorwfl url parm $short name
    assert_usage "VALUE"
    qorwfl url explain
    assert_usage "URL"
    qorwfl url explain $short --format xml
    assert_usage "--format"
}

@test "what cannot be built is told" {
    qorwfl url instance hello
    assert_status 1
    assert_output ""
    assert_contains "$stderr" 'UUID "hello": expected an instance URL'
    qorwfl url instance '{"dbName": "TOO_LONG_NAME"}'
    assert_status 1
    assert_contains "$stderr" "expected at most 8 characters, found 13"
    qorwfl url action €
    assert_status 1
    assert_contains "$stderr" "outside ISO-8859-1"
}

@test "a URL that cannot be read back is built with a warning" {
    qorwfl url instance '{"dbName": "A/B", "environment": "E", "table": "T", "coid": "00000000000000A1",
        "compid": "00000000000000A1"}'
    assert_status 0
    assert_contains "$output" "/A%2FB+++++#"
    assert_contains "$stderr" "warning: "
    assert_contains "$stderr" "the library cannot read it back"
}

@test "explain says by its status whether each URL is one" {
    qorwfl url explain $short qor://ACTION/x
    assert_status 0
    qorwfl url explain $short hello
    assert_status 1
    assert_stderr ""
    qorwfl url explain "${long/ENV1/ENV2}"
    assert_status 1
    assert_contains "$output" 'the environment in front, "ENV2", is not that of the key, "ENV1" (at 23) [environment-differs]'
}

@test "every format is given, the same each time" {
    local format first
    for format in text json; do
        qorwfl url explain --format $format "$long?context=a" hello
        first=$output
        qorwfl url explain --format $format "$long?context=a" hello
        assert_output "$first"
        [[ $format == text ]] || python3 -m json.tool <<<"$output" >/dev/null
    done
}

@test "control characters do not reach the terminal" {
    on_terminal "'$QORWFL' url explain \$'qor://ACTION/\\033[31m' 'qor://ACTION/%1B%9B' \$'qor://A\\033/B.C/\\x9b'"
    refute_contains "$output" $'\033'
    refute_contains "$output" $'\x9b'
    assert_contains "$output" 'action "\x1B[31m"'
    assert_contains "$output" 'action "\x1B\u{009B}"'
    on_terminal "'$QORWFL' url parm \$'x\\033' a b; '$QORWFL' url instance \$'\\033'"
    refute_contains "$output" $'\033'
    assert_contains "$output" "a control character in it"
}

@test "an output that cannot be written is told" {
    run --separate-stderr bash -c "'$QORWFL' url action x >/dev/full"
    assert_status 1
    assert_stderr "qorwfl: standard output: cannot be written: No space left on device"
}

@test "a text that is not UTF-8 is taken as ISO-8859-1" {
    qorwfl url action $'\xff' $'\xc3\xbf' ÿ
    assert_status 0
    assert_output "$(printf 'LumenUID://Legacy+QOR1/default/%%FF.ACTION\n%.0s' 1 2 3)"
}
