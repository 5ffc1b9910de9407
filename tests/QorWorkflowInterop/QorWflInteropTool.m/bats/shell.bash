# What the tests of the command share. Each test runs in an empty folder of its own. CTest says where
# the command and the examples are; by hand:
#     QORWFL=$PWD/build/debug/bin/qorwfl EXAMPLES=$PWD/examples bats tests/QorWorkflowInterop/QorWflInteropTool.m/bats
: "${QORWFL:?the path of the command}" "${EXAMPLES:?the folder of the examples}"

setup() {
    mkdir "$BATS_TEST_TMPDIR/here"
    cd "$BATS_TEST_TMPDIR/here" || return
    unset NO_COLOR BexMsgCatalogPath BexQorTrace
}

# Runs the command; $status, $output and $stderr are what it left behind.
qorwfl() {
    run --separate-stderr "$QORWFL" "$@"
}

# Runs a command line of bash on a terminal, which shows standard output and standard error alike; $output has what it
# showed. The shell is named because script takes the one of the environment, which may be another or none.
on_terminal() {
    run env SHELL="$BASH" TERM="${TERM_HERE-xterm}" script -qec "$1" /dev/null
}

# The test fails with these words.
fail() {
    printf '%s\n' "$@" "status: ${status-}" "output: ${output-}" "stderr: ${stderr-}" >&2
    return 1
}

# The exit status of the last command.
assert_status() {
    [[ $status -eq $1 ]] || fail "expected status $1"
}

# The standard output of the last command, as a whole.
assert_output() {
    [[ $output == "$1" ]] || fail "expected the output: $1"
}

# The standard error of the last command, as a whole.
assert_stderr() {
    [[ ${stderr-} == "$1" ]] || fail "expected the standard error: $1"
}

# A text that has to be in another.
assert_contains() {
    [[ $1 == *"$2"* ]] || fail "expected to find: $2"
}

# A text that must not be in another.
refute_contains() {
    [[ $1 != *"$2"* ]] || fail "expected not to find: $2"
}

# A wrong use of the command: status 2, nothing on standard output, and a message with these words.
assert_usage() {
    assert_status 2
    assert_output ""
    assert_contains "$stderr" "$1"
    assert_contains "$stderr" "--help"
}
