#!/usr/bin/env bats
# qorwfl diff: what differs between two records.

# shellcheck disable=SC2154 # $stderr and $output, which run assigns
bats_require_minimum_version 1.5.0
load shell.bash

# Writes a record in JSON from its members.
record() {
    printf '{"record": {%s}}' "$2" >"$1"
}

@test "records that are the same: nothing, and status 0" {
    qorwfl diff "$EXAMPLES/reply.xpdl" "$EXAMPLES/reply.xpdl"
    assert_status 0
    assert_output ""
    assert_stderr ""
}

@test "order and layout of the text are no difference" {
    record a.json '"id": "A", "name": "N"'
    printf '{\n\n "record":{"name":"N","id":"\\u0041", "generation": 1}}\n' >b.json
    qorwfl diff a.json b.json
    assert_status 0
    sed -e 's/" *Name *= *"/" Name="/' -e 's/></>\n\n  </g' "$EXAMPLES/reply.xpdl" >spaced.xpdl
    qorwfl diff "$EXAMPLES/reply.xpdl" spaced.xpdl
    assert_status 0
}

@test "the same record in any two forms is the same" {
    qorwfl export "$EXAMPLES/minimal.json" -o r.xpdl --created now
    qorwfl convert --from xpdl --to json r.xpdl -o r.json
    qorwfl convert --from xpdl --to text r.xpdl -o r.txt
    for first in r.xpdl r.json r.txt; do
        for second in r.xpdl r.json r.txt; do
            qorwfl diff "$first" "$second"
            assert_status 0
            assert_output ""
        done
    done
}

@test "fields that differ are listed with both values, and status 1" {
    record a.json '"id": "A", "generation": 1, "documentation": "one\ntwo", "owner": null, "process": {"name": "p"}'
    record b.json '"id": "B", "generation": 2, "documentation": "a \"b\"", "owner": "", "process": {"name": "q"}'
    qorwfl diff a.json b.json
    assert_status 1
    assert_stderr ""
    assert_output 'id
  - "A"
  + "B"
generation
  - 1
  + 2
owner
  - null
  + ""
documentation
  - "one\ntwo"
  + "a \"b\""
process.name
  - "p"
  + "q"'
}

@test "elements of lists are matched by their names" {
    record a.json '"process": {"datas": [{"name": "D1", "value": "x"}, {"name": "D2"}, {"name": "D3"}]},
                   "inputs": ["D1", "D2", "D1"], "outputs": ["D3"]'
    record b.json '"process": {"datas": [{"name": "D3"}, {"name": "D1", "value": "y"}, {"name": "D4", "type": "t"}]},
                   "inputs": ["D1", "D2"], "outputs": ["D3", null]'
    qorwfl diff a.json b.json
    assert_status 1
    assert_output 'process.datas, "D1", value
  - "x"
  + "y"
process.datas
  - "D2", type null, extid null, value null
  + "D4", type "t", extid null, value null
process.datas, order
  - "D1", "D3"
  + "D3", "D1"
inputs
  - "D1" (2)
outputs
  + null'
}

@test "null and empty texts differ between two JSON files only" {
    record null.json '"owner": null'
    record empty.json '"owner": ""'
    qorwfl diff null.json empty.json
    assert_status 1
    qorwfl convert --from json --to xpdl empty.json -o empty.xpdl
    qorwfl convert --from json --to text null.json -o null.txt
    qorwfl diff null.txt empty.json
    assert_status 0
    qorwfl diff empty.json null.txt
    assert_status 0
}

@test "the participant is not compared with a record text, which has none" {
    record a.json '"participant": "x"'
    record b.json '"participant": "y"'
    qorwfl convert --from json --to text a.json -o a.txt
    qorwfl diff a.json b.json
    assert_status 1
    qorwfl diff a.txt b.json
    assert_status 0
}

@test "an action in JSON is compared as the record that it becomes" {
    qorwfl export "$EXAMPLES/review.json" --config "$EXAMPLES" -o sent.xpdl
    qorwfl diff "$EXAMPLES/review.json" sent.xpdl --config "$EXAMPLES"
    assert_status 0
    qorwfl diff "$EXAMPLES/review.json" sent.xpdl
    assert_status 1
    assert_contains "$output" $'status\n  - "DSGin work"\n  + "In work"'
}

@test "--format says in which form both are" {
    qorwfl diff --format xpdl "$EXAMPLES/reply.xpdl" "$EXAMPLES/reply.xpdl"
    assert_status 0
    qorwfl diff --format json "$EXAMPLES/reply.xpdl" "$EXAMPLES/reply.xpdl"
    assert_status 2
    assert_contains "$stderr" "reply.xpdl:1:1: "
    qorwfl diff --format dot "$EXAMPLES/reply.xpdl" "$EXAMPLES/reply.xpdl"
    assert_usage "--format: dot not in {xpdl,text,json}"
}

@test "the standard input is one of the two" {
    cp "$EXAMPLES/reply.xpdl" copy.xpdl
    qorwfl diff - copy.xpdl <"$EXAMPLES/reply.xpdl"
    assert_status 0
    qorwfl diff copy.xpdl - <"$EXAMPLES/reply.xpdl"
    assert_status 0
    qorwfl diff - - <"$EXAMPLES/reply.xpdl"
    assert_usage "the standard input can be one of the two only"
}

@test "trouble is status 2, with the file and what is wrong" {
    qorwfl diff "$EXAMPLES/reply.xpdl" missing
    assert_status 2
    assert_output ""
    assert_stderr "qorwfl: missing: cannot be read: No such file or directory"
    echo "neither" >other
    qorwfl diff "$EXAMPLES/reply.xpdl" other
    assert_status 2
    assert_stderr "qorwfl: other: expected an XPDL document, which begins with <, a record text, which begins with id=, \
or JSON, which begins with {; found something else"
    : >empty
    qorwfl diff empty "$EXAMPLES/reply.xpdl"
    assert_status 2
    assert_contains "$stderr" "qorwfl: empty: expected an XPDL document"
    assert_contains "$stderr" "found nothing"
    qorwfl diff "$EXAMPLES/reply.xpdl" .
    assert_status 2
    assert_stderr "qorwfl: .: cannot be read: Is a directory"
    echo "<Package/>" >short.xpdl
    qorwfl diff "$EXAMPLES/reply.xpdl" short.xpdl
    assert_status 2
    assert_stderr "qorwfl: short.xpdl: Package/PackageHeader: required element missing"
    qorwfl diff "$EXAMPLES/reply.xpdl" "$EXAMPLES/reply.xpdl" --config missing
    assert_status 2
    assert_contains "$stderr" "qorwfl: missing: the property file cannot be read"
}

@test "wrong usage is status 2" {
    qorwfl diff
    assert_usage "A is required"
    qorwfl diff one
    assert_usage "B is required"
    qorwfl diff one two three
    assert_usage "three"
}

@test "colours on a terminal only, and never with NO_COLOR" {
    record a.json '"id": "A"'
    record b.json '"id": "B"'
    on_terminal "$QORWFL diff a.json b.json"
    assert_status 1
    assert_contains "$output" $'\e[31m  - "A"\e[0m'
    assert_contains "$output" $'\e[32m  + "B"\e[0m'
    on_terminal "NO_COLOR=1 $QORWFL diff a.json b.json"
    assert_status 1
    refute_contains "$output" $'\e'
    TERM_HERE=dumb on_terminal "$QORWFL diff a.json b.json"
    refute_contains "$output" $'\e'
    on_terminal "$QORWFL diff a.json b.json | cat"
    refute_contains "$output" $'\e'
    qorwfl diff a.json b.json
    refute_contains "$output" $'\e'
}

@test "control characters of a record do not reach the terminal" {
    record a.json '"id": "\u001b[31m\u009b1m"'
    record b.json '"id": "ü€"'
    qorwfl diff a.json b.json
    assert_output 'id
  - "\x1B[31m\u{009B}1m"
  + "ü€"'
}

@test "the line feed that a document makes of a text is a difference" {
    echo '{"id": "A"}' >action.json
    qorwfl export action.json -o action.xpdl
    qorwfl diff action.json action.xpdl
    assert_status 1
    assert_output $'priority\n  - null\n  + "\\n"'
    record empty.json '"abstract": "", "owner": "", "priority": "", "documentation": ""'
    qorwfl convert --from json --to xpdl empty.json -o empty.xpdl
    qorwfl diff empty.json empty.xpdl
    assert_status 1
    for field in abstract priority owner documentation; do
        assert_contains "$output" "$field"$'\n  - ""\n  + "\\n"'
    done
}
