#!/usr/bin/env bats
# qorwfl import: documents become records.

# shellcheck disable=SC2154 # $stderr and $output, which run assigns
bats_require_minimum_version 1.5.0
load shell.bash

@test "the record text goes to standard output" {
    qorwfl import "$EXAMPLES/reply.xpdl"
    assert_status 0
    assert_contains "$output" 'status="Completed";'
    assert_stderr ""
    local text=$output
    qorwfl import "$EXAMPLES/reply.xpdl" --format text
    assert_output "$text"
}

@test "--format json gives what export makes the same document of" {
    qorwfl export "$EXAMPLES/review.json" --created now -o sent.xpdl
    qorwfl import sent.xpdl --format json -o sent.json
    assert_status 0
    qorwfl export sent.json --created now -o again.xpdl
    assert_status 0
    cmp sent.xpdl again.xpdl
}

@test "--format knows text and json" {
    qorwfl import "$EXAMPLES/reply.xpdl" --format xpdl
    assert_usage "--format: xpdl not in {text,json}"
}

@test "several documents give a file each and a summary" {
    mkdir in
    cp "$EXAMPLES/reply.xpdl" in/a.xpdl
    cp "$EXAMPLES/reply.xpdl" in/b.xpdl
    qorwfl import in/*.xpdl -o text
    assert_status 0
    assert_output ""
    assert_stderr "qorwfl: 2 done, 0 failed"
    [[ $(ls -A text) == $'a.txt\nb.txt' ]]
    qorwfl import in/*.xpdl -o json --format json --jobs 2
    assert_status 0
    [[ $(ls -A json) == $'a.json\nb.json' ]]
    qorwfl import in/*.xpdl
    assert_usage "-o DIR"
}

@test "a document with a required element missing is written as far as it is read, and told" {
    sed 's/DataType/Gone/g' "$EXAMPLES/reply.xpdl" >short.xpdl
    local message="short.xpdl: Package/WorkflowProcesses/WorkflowProcess/DataFields/DataField[1]/DataType: required \
element missing; the reading stopped there"
    qorwfl import short.xpdl -o short.txt
    assert_status 1
    assert_stderr "qorwfl: $message"
    grep -q '^process.id="PRC-311";$' short.txt
    qorwfl import short.xpdl "$EXAMPLES/reply.xpdl" -o out
    assert_status 1
    assert_stderr "qorwfl: $message
qorwfl: 1 done, 1 failed"
    [[ $(ls -A out) == $'reply.txt\nshort.txt' ]]
}

@test "whatever is no document is told with its place" {
    head -c 4096 /dev/zero >zeros.xpdl
    : >empty.xpdl
    echo '<a>' >open.xpdl
    qorwfl import zeros.xpdl
    assert_status 1
    assert_contains "$stderr" "qorwfl: zeros.xpdl"
    qorwfl import empty.xpdl
    assert_status 1
    assert_contains "$stderr" "qorwfl: empty.xpdl"
    qorwfl import open.xpdl
    assert_status 1
    assert_contains "$stderr" "qorwfl: open.xpdl:2:"
    qorwfl import missing.xpdl
    assert_status 1
    assert_stderr "qorwfl: missing.xpdl: cannot be read: No such file or directory"
}
