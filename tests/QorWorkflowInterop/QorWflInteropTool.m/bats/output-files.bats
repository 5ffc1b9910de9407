#!/usr/bin/env bats
# Output files of every command: written whole or not at all.

# shellcheck disable=SC2154 # $stderr and $output, which run assigns
bats_require_minimum_version 1.5.0
load shell.bash

@test "a new file has the permissions that the umask gives, a replaced one keeps its own" {
    (umask 027 && "$QORWFL" import "$EXAMPLES/reply.xpdl" -o new.txt)
    [[ $(stat -c %a new.txt) == 640 ]]
    echo old >old.txt
    chmod 604 old.txt
    qorwfl import "$EXAMPLES/reply.xpdl" -o old.txt
    assert_status 0
    [[ $(stat -c %a old.txt) == 604 ]]
    cmp new.txt old.txt
}

@test "a reader of the former file is not disturbed" {
    echo former >file
    exec 7<file
    qorwfl import "$EXAMPLES/reply.xpdl" -o file
    [[ $(cat <&7) == former ]]
    exec 7<&-
    grep -q '^id=' file
}

@test "a write that fails leaves the former file and nothing else" {
    echo former >file
    run --separate-stderr bash -c 'ulimit -f 1; exec "$@"' bash "$QORWFL" import "$EXAMPLES/reply.xpdl" -o file
    assert_status 1
    assert_stderr "qorwfl: file: cannot be written: File too large"
    [[ $(ls -A) == file ]]
    [[ $(cat file) == former ]]
}

@test "an input that fails leaves the former file" {
    echo former >file
    qorwfl import missing -o file
    assert_status 1
    [[ $(cat file) == former ]]
}

@test "a command that is ended leaves no temporary file" {
    mkdir in out
    for number in $(seq 300); do
        cp "$EXAMPLES/review.json" "in/$number.json"
    done
    setsid "$QORWFL" export in/*.json -o out --jobs 4 2>messages &
    local parent=$!
    for _ in $(seq 2000); do
        [[ -z $(ls out) ]] || break
        sleep 0.02
    done
    kill -TERM -- -$parent
    wait $parent || true
    for _ in $(seq 2000); do  # its workers end by themselves
        kill -0 -- -$parent 2>/dev/null || break
        sleep 0.02
    done
    [[ -n $(ls out) ]]
    [[ -z $(find out -name '.*' -type f) ]]
    for file in out/*; do
        [[ $(tail -n 1 "$file") == "</Package>" ]]
    done
}

@test "a symbolic link stays, and its target is written" {
    mkdir folder
    echo old >folder/target
    ln -s folder/target link
    ln -s link second
    qorwfl import "$EXAMPLES/reply.xpdl" -o second
    assert_status 0
    [[ -L second && -L link ]]
    grep -q '^id=' folder/target
    ln -s folder/later dangling
    qorwfl import "$EXAMPLES/reply.xpdl" -o dangling
    assert_status 0
    grep -q '^id=' folder/later
    ln -s loop loop
    qorwfl import "$EXAMPLES/reply.xpdl" -o loop
    assert_status 1
    assert_stderr "qorwfl: loop: cannot be written: Too many levels of symbolic links"
}

@test "/dev/stdout, a descriptor, a pipe and a device are written to directly" {
    qorwfl import "$EXAMPLES/reply.xpdl"
    local text=$output
    qorwfl import "$EXAMPLES/reply.xpdl" -o /dev/stdout
    assert_output "$text"
    { echo first && "$QORWFL" import "$EXAMPLES/reply.xpdl" -o /dev/stdout; } >file
    [[ $(cat file) == first$'\n'"$text" ]]
    "$QORWFL" import "$EXAMPLES/reply.xpdl" -o /dev/fd/9 9>other
    [[ $(cat other) == "$text" ]]
    mkfifo pipe
    cat pipe >received &
    qorwfl import "$EXAMPLES/reply.xpdl" -o pipe
    assert_status 0
    wait $!
    [[ $(cat received) == "$text" && -p pipe ]]
    qorwfl import "$EXAMPLES/reply.xpdl" -o /dev/null
    assert_status 0
    [[ -c /dev/null ]]
}

@test "a full device and a folder that is not there are told" {
    qorwfl import "$EXAMPLES/reply.xpdl" -o /dev/full
    assert_status 1
    assert_stderr "qorwfl: /dev/full: cannot be written: No space left on device"
    qorwfl import "$EXAMPLES/reply.xpdl" -o no/file
    assert_status 1
    assert_stderr "qorwfl: no/file: cannot be written: No such file or directory"
    echo >file
    qorwfl import "$EXAMPLES/reply.xpdl" -o file/below
    assert_status 1
    assert_stderr "qorwfl: file/below: cannot be written: Not a directory"
}

@test "a file that must not be written is not replaced either" {
    [[ $EUID -ne 0 ]] || skip "the superuser writes every file"
    echo former >file
    chmod 444 file
    qorwfl import "$EXAMPLES/reply.xpdl" -o file
    assert_status 1
    assert_stderr "qorwfl: file: cannot be written: Permission denied"
    [[ $(cat file) == former ]]
}

@test "an output that is an input is refused by every command, by whatever name" {
    local list target
    cp "$EXAMPLES/reply.xpdl" reply.xpdl
    cp "$EXAMPLES/minimal.json" action.json
    cp "$EXAMPLES/QorWflActionManager" QorWflActionManager
    mkdir folder
    ln -s ../reply.xpdl folder/link
    ln reply.xpdl hard
    cp -r . ../before
    for target in reply.xpdl ./reply.xpdl "$PWD/reply.xpdl" folder/../reply.xpdl folder/link hard; do
        for list in "import reply.xpdl" "graph reply.xpdl" "convert --from xpdl --to json reply.xpdl"; do
            # shellcheck disable=SC2086 # the words of the list
            qorwfl $list -o "$target"
            assert_usage "reply.xpdl: would be written to $target, which is an input"
        done
        qorwfl check action.json reply.xpdl -o "$target"
        assert_usage "the findings would be written to $target, which is an input"
    done
    qorwfl export action.json -o action.json
    assert_usage "action.json: would be written to action.json, which is an input"
    qorwfl convert --from json --to json action.json -o action.json
    assert_usage "action.json: would be written to action.json, which is an input"
    for list in "--config QorWflActionManager" "--config ."; do
        # shellcheck disable=SC2086 # the words of the list
        qorwfl export action.json $list -o QorWflActionManager
        assert_usage "action.json: would be written to QorWflActionManager, which is an input"
    done
    target=reply.xpdl
    run --separate-stderr "$QORWFL" import - -o $target <reply.xpdl
    assert_usage "standard input: would be written to reply.xpdl, which is an input"
    target=QorWflActionManager
    run --separate-stderr "$QORWFL" export action.json --config - -o $target <QorWflActionManager
    assert_usage "action.json: would be written to QorWflActionManager, which is an input"
    diff -r . ../before
}

@test "what is no regular file may be input and output" {
    qorwfl check /dev/null -o /dev/null
    assert_status 1
    assert_stderr ""
    mkfifo pipe
    { cat "$EXAMPLES/reply.xpdl" >pipe && cat pipe >received; } &
    qorwfl import pipe -o pipe
    assert_status 0
    wait $!
    cmp received <("$QORWFL" import "$EXAMPLES/reply.xpdl")
    TERM_HERE=xterm on_terminal "'$QORWFL' import '$EXAMPLES/reply.xpdl' -o /dev/tty"
    assert_status 0
    assert_contains "$output" 'id="PRC-311-04"'
    on_terminal "'$QORWFL' check - -o /dev/tty </dev/tty" </dev/null
    refute_contains "$output" "which is an input"
}
