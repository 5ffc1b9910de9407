#!/usr/bin/env bats
# qorwfl export: actions in JSON become documents.

# shellcheck disable=SC2154,SC2016 # $stderr and $output, which run assigns; single quotes for another shell
bats_require_minimum_version 1.5.0
load shell.bash

# A folder "in" with the actions a1.json, a2.json ... of those numbers.
actions() {
    local number
    mkdir -p in
    for number in $(seq "$1"); do
        printf '{"id": "ACT-%s"}\n' "$number" >"in/a$number.json"
    done
}

@test "a document goes to standard output" {
    qorwfl export "$EXAMPLES/review.json"
    assert_status 0
    assert_contains "$output" "<XPDLVersion>0.02</XPDLVersion>"
    assert_stderr ""
}

@test "--created makes the document the same at any time" {
    qorwfl export "$EXAMPLES/review.json" --created "01-02-2003-04:05:06"
    assert_status 0
    assert_contains "$output" "<Created>01-02-2003-04:05:06</Created>"
    local first=$output
    sleep 1.1
    qorwfl export "$EXAMPLES/review.json" --created "01-02-2003-04:05:06"
    assert_output "$first"
}

@test "--created is escaped, and only the header's element changes" {
    printf '{"record": {"documentation": "<Created>old</Created>"}}' >action.json
    qorwfl export action.json --created '<&">ü'
    assert_status 0
    [[ $(printf '%s' "$output" | grep -c $'^<Created>&lt;&amp;&quot;&gt;\xFC</Created>$') -eq 1 ]]
    assert_contains "$output" "&lt;Created&gt;old&lt;/Created&gt;"
}

@test "--created refuses what cannot be in a document" {
    qorwfl export "$EXAMPLES/review.json" --created ""
    assert_usage "--created: is empty"
    qorwfl export "$EXAMPLES/review.json" --created "€"
    assert_usage "outside ISO-8859-1"
    qorwfl export "$EXAMPLES/review.json" --created $'\xFF'
    assert_usage "not in UTF-8"
    qorwfl export "$EXAMPLES/review.json" --created $'a\x01'
    assert_usage "cannot be in an XML document"
}

@test "--config gives the words of a property file" {
    qorwfl export "$EXAMPLES/review.json" --config "$EXAMPLES/QorWflActionManager"
    assert_contains "$output" 'Value = "In work"'
    qorwfl export "$EXAMPLES/review.json" --config "$EXAMPLES"
    assert_contains "$output" 'Value = "In work"'
    qorwfl export "$EXAMPLES/review.json" --config missing
    assert_status 1
    assert_stderr "qorwfl: missing: the property file cannot be read: No such file or directory"
}

@test "--format json holds the record, --format text its lines" {
    qorwfl export "$EXAMPLES/review.json" --format json
    assert_status 0
    assert_contains "$output" '"participantType": "HUMAN"'
    qorwfl export "$EXAMPLES/review.json" --format text
    assert_status 0
    assert_contains "$output" 'owner="k.'
    qorwfl export "$EXAMPLES/review.json" --format xml
    assert_usage "--format: xml not in {xpdl,text,json}"
}

@test "a record in JSON is exported as it stands, whatever the property file says" {
    printf 'actionPriority.1 = Other\n' >words
    printf '{"record": {"priority": "1", "status": "run"}}' >record.json
    qorwfl export record.json --config words
    assert_status 0
    assert_contains "$output" "<Priority>1</Priority>"
    assert_contains "$output" 'Value = "run"'
}

@test "a record beside an action is refused" {
    printf '{"record": {}, "owner": "x"}' >both.json
    qorwfl export both.json
    assert_status 1
    assert_output ""
    assert_stderr "qorwfl: both.json: /owner: belongs to an action, and a record stands beside it; expected one of the two"
}

@test "a record whose text cannot be in a document is refused with the field's name" {
    printf '{"record": {"process": {"datas": [{}, {"value": "\\u20ac"}]}}}' >wide.json
    qorwfl export wide.json
    assert_status 1
    assert_stderr "qorwfl: wide.json: process.datas.2.value: character U+20AC (€) is outside ISO-8859-1"
    printf '{"record": {"inputs": ["a\\u0000b"]}}' >nul.json
    qorwfl export nul.json
    assert_status 1
    assert_stderr "qorwfl: nul.json: inputs.1.name: character U+0000 cannot be in an XML document"
    qorwfl export wide.json --format json
    assert_status 0
    assert_contains "$output" '"value": "€"'
}

@test "-o names the output file, or a folder for it" {
    qorwfl export "$EXAMPLES/minimal.json" -o out.xpdl
    assert_status 0
    assert_output ""
    assert_stderr ""
    [[ -s out.xpdl ]]
    mkdir folder
    qorwfl export "$EXAMPLES/minimal.json" --output folder --format json
    assert_status 0
    [[ -s folder/minimal.json ]]
    qorwfl export "$EXAMPLES/minimal.json" -o new/
    assert_status 0
    [[ -s new/minimal.xpdl ]]
    qorwfl export "$EXAMPLES/minimal.json" -o -
    assert_status 0
    assert_contains "$output" "<XPDLVersion>"
}

@test "several actions give a file each, named after the action, and a summary" {
    actions 3
    qorwfl export in/*.json -o out
    assert_status 0
    assert_output ""
    assert_stderr "qorwfl: 3 done, 0 failed"
    [[ $(ls -A out) == $'a1.xpdl\na2.xpdl\na3.xpdl' ]]
    grep -q "/ACT-2.ACTION" out/a2.xpdl
}

@test "the standard input can be one of several" {
    actions 1
    qorwfl export in/a1.json - -o out <<<"{}"
    assert_status 0
    [[ $(ls -A out) == $'a1.xpdl\nstandard-input.xpdl' ]]
}

@test "several actions need a folder" {
    actions 2
    qorwfl export in/a1.json in/a2.json
    assert_usage "several inputs need a folder for their outputs: -o DIR"
    qorwfl export in/a1.json in/a2.json -o -
    assert_usage "several inputs need a folder"
    echo keep >file
    qorwfl export in/a1.json in/a2.json -o file
    assert_status 1
    assert_contains "$stderr" "qorwfl: file: cannot be made a folder for the output"
    [[ $(cat file) == keep ]]
    qorwfl export in/a1.json in/a2.json -o no/such/folder
    assert_status 1
    assert_contains "$stderr" "qorwfl: no/such/folder: cannot be made a folder for the output: No such file"
}

@test "two actions of one name are refused before anything is written" {
    actions 2
    mkdir other
    cp in/a1.json other/a1.json
    qorwfl export in/a2.json in/a1.json other/a1.json -o out
    assert_usage "in/a1.json and other/a1.json: both would be written to out/a1.xpdl"
    [[ ! -e out ]]
}

@test "an output that would overwrite an input is refused" {
    actions 2
    qorwfl export in/a1.json in/a2.json -o in --format json
    assert_usage "in/a1.json: would be written to in/a1.json, which is an input"
    [[ $(cat in/a1.json) == '{"id": "ACT-1"}' ]]
    qorwfl export in/a1.json -o in --format json
    assert_usage "which is an input"
}

@test "what fails is told with its file in the order of the inputs, and the rest is done" {
    actions 4
    printf '%3000000s{"owner": 1}' "" >in/a2.json # which takes longer to fail than the next
    rm in/a3.json
    mkdir in/a3.json
    for jobs in 1 3; do
        rm -rf out
        qorwfl export in/a{1,2,3,4}.json -o out --jobs $jobs
        assert_status 1
        assert_stderr "qorwfl: in/a2.json: /owner: expected a text, found the number 1
qorwfl: in/a3.json: cannot be read: Is a directory
qorwfl: 2 done, 2 failed"
        [[ $(ls -A out) == $'a1.xpdl\na4.xpdl' ]]
    done
}

@test "an output that cannot be written is told, and the rest is done" {
    actions 2
    mkdir -p out/a1.xpdl
    qorwfl export in/a1.json in/a2.json -o out
    assert_status 1
    assert_stderr "qorwfl: out/a1.xpdl: cannot be written: Is a directory
qorwfl: 1 done, 1 failed"
    [[ -s out/a2.xpdl ]]
}

@test "--jobs has no influence on what is written, for a thousand actions" {
    actions 1000
    qorwfl export in/*.json -o one --created now
    assert_status 0
    assert_stderr "qorwfl: 1000 done, 0 failed"
    qorwfl export in/*.json -o eight --created now --jobs 8
    assert_status 0
    assert_stderr "qorwfl: 1000 done, 0 failed"
    diff -r one eight
    [[ $(find eight -type f | wc -l) -eq 1000 ]]
    [[ -z $(find eight -name '.*' -type f) ]]
}

@test "--jobs takes a number of processes" {
    for jobs in 0 -1 257 many 99999999999999999999 1.5; do
        qorwfl export "$EXAMPLES/minimal.json" --jobs=$jobs
        assert_usage "--jobs"
    done
}

@test "a process that dies is told with its file, and the rest is done" {
    actions 5
    mkfifo in/a3.fifo
    "$QORWFL" export in/a1.json in/a2.json in/a3.fifo in/a4.json in/a5.json -o out --jobs 2 2>messages &
    local parent=$! workers=""
    # The process that works on the pipe waits for somebody to write to it; the others come to an end.
    for _ in $(seq 200); do
        sleep 0.05
        [[ -e out/a5.xpdl ]] || continue
        workers=$(cat /proc/$parent/task/$parent/children)
        [[ $(wc -w <<<"$workers") -ne 1 ]] || break
    done
    kill -KILL "${workers% }"
    status=0
    wait $parent || status=$?
    assert_status 1
    [[ $(cat messages) == "qorwfl: in/a3.fifo: the process that worked on it died of signal 9 (Killed)
qorwfl: 4 done, 1 failed" ]] || fail "$(cat messages)"
    [[ $(ls -A out) == $'a1.xpdl\na2.xpdl\na4.xpdl\na5.xpdl' ]]
}

@test "where fewer processes can be had the work takes them, and where there are none it is told" {
    actions 6
    # With so many open files at most; those of the test itself are closed.
    limited='for file in /proc/self/fd/*; do n=${file##*/}; ((n < 3)) || eval "exec $n>&-"; done; ulimit -n $0; exec "$@"'
    run --separate-stderr bash -c "$limited" 12 "$QORWFL" export in/*.json -o out --jobs 256
    assert_status 0
    assert_stderr "qorwfl: 6 done, 0 failed"
    run --separate-stderr bash -c "$limited" 5 "$QORWFL" export in/a1.json in/a2.json -o none
    assert_status 1
    assert_stderr "qorwfl: in/a1.json: no process can be started: Too many open files
qorwfl: in/a2.json: no process can be started: Too many open files
qorwfl: 0 done, 2 failed"
}

@test "on a terminal there is a progress bar, and how many a second" {
    actions 20
    on_terminal "$QORWFL export in/*.json -o out"
    assert_status 0
    assert_contains "$output" "[#"
    assert_contains "$output" "/20"
    [[ $output =~ 20\ done,\ 0\ failed,\ [0-9]+\ per\ second ]]
}

@test "a message stands on a line of its own beside the bar" {
    actions 2
    on_terminal "$QORWFL export in/a1.json missing.json in/a2.json -o out"
    assert_status 1
    assert_contains "$output" $'\r\e[Kqorwfl: missing.json: cannot be read: No such file or directory\r\n'
    assert_contains "$output" "2 done, 1 failed"
}

@test "no bar with NO_COLOR, on a dumb terminal, and where standard error is none" {
    actions 2
    on_terminal "NO_COLOR=1 $QORWFL export in/*.json -o out"
    assert_output $'qorwfl: 2 done, 0 failed\r'
    on_terminal "NO_COLOR= $QORWFL export in/*.json -o out"
    assert_output $'qorwfl: 2 done, 0 failed\r'
    TERM_HERE=dumb on_terminal "$QORWFL export in/*.json -o out"
    assert_output $'qorwfl: 2 done, 0 failed\r'
    on_terminal "$QORWFL export in/*.json -o out 2>messages"
    assert_output ""
    [[ $(cat messages) == "qorwfl: 2 done, 0 failed" ]]
}

@test "a folder where no action is and a file that is none are told" {
    head -c 4096 /dev/urandom >random.json
    : >empty.json
    qorwfl export random.json
    assert_status 1
    assert_contains "$stderr" "qorwfl: random.json:"
    qorwfl export empty.json
    assert_status 1
    assert_contains "$stderr" "qorwfl: empty.json:1:1: "
    qorwfl export .
    assert_status 1
    assert_stderr "qorwfl: .: cannot be read: Is a directory"
    truncate -s 3G huge.json
    qorwfl export huge.json
    assert_status 1
    assert_stderr "qorwfl: huge.json: has more than 2147483647 bytes"
}
