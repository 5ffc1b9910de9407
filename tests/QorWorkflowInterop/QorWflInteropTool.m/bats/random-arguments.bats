#!/usr/bin/env bats
# Whatever the arguments are, the command ends by itself, with one of its three statuses.

# shellcheck disable=SC2154 # $stderr and $output, which run assigns
bats_require_minimum_version 1.5.0
load shell.bash

commands=(export import convert diff graph)
words=(export import convert diff graph --help -h --version --config --format --from --to -o --output --jobs --created
    -- - -x --no-such --format=xpdl --format=text --format=json --format=svg --format= --jobs=2 --jobs=0 --jobs=x
    --config=words --created=now --created= xpdl text json dot mermaid svg 1 -1 99999999999999999999 ''
    action.json record.json reply.xpdl record.txt empty random folder folder/ missing missing/below /dev/null
    $'\e[31m' $'\xff\xfe' 'with blank' '*' '%s%n' "$(printf 'x%.0s' {1..5000})")

@test "lists of random arguments give status 0, 1 or 2 and never a signal" {
    cp "$EXAMPLES/review.json" action.json
    cp "$EXAMPLES/reply.xpdl" reply.xpdl
    "$QORWFL" import reply.xpdl -o record.txt
    "$QORWFL" import reply.xpdl --format json -o record.json
    cp "$EXAMPLES/QorWflActionManager" words
    RANDOM=20031
    : >empty
    mkdir folder
    local i j list
    for ((i = 0; i < 500; ++i)); do
        # What a former list has written over must not make the next one another.
        printf '\x00\xff<{id=' >random
        list=("${commands[RANDOM % ${#commands[@]}]}")
        ((RANDOM % 8)) || list=()
        for ((j = RANDOM % 7; j > 0; --j)); do
            list+=("${words[RANDOM % ${#words[@]}]}")
        done
        status=0
        timeout 60 "$QORWFL" "${list[@]}" <reply.xpdl >out 2>err || status=$?
        ((status <= 2)) || fail "$(printf '%q ' "${list[@]}")" "$(cat err)"
        ((status == 0)) || [[ -s err || ${list[0]} == diff ]] || fail "no message: $(printf '%q ' "${list[@]}")"
        ! grep -q $'\e' err || fail "an escape sequence came through: $(printf '%q ' "${list[@]}")"
    done
}

@test "files of random bytes give status 0, 1 or 2 in every command and form" {
    RANDOM=50803
    local i j bytes
    for ((i = 0; i < 60; ++i)); do
        case $((i % 4)) in
            0) : >file ;;
            1) printf '{"record": {' >file ;;
            2) head -c $((RANDOM % 1500)) "$EXAMPLES/reply.xpdl" >file ;;
            3) "$QORWFL" import "$EXAMPLES/reply.xpdl" | head -c $((RANDOM % 1500)) >file ;;
        esac
        bytes=""
        for ((j = RANDOM % 60; j > 0; --j)); do
            printf -v bytes '%s\\x%02x' "$bytes" $((RANDOM % 256))
        done
        printf "%b" "$bytes" >>file
        for list in "export file" "import file" "diff file file" "graph file" "graph file --from text" \
            "convert --from xpdl --to json file" "convert --from text --to xpdl file" \
            "convert --from json --to text file"; do
            status=0
            # shellcheck disable=SC2086 # the words of the list
            timeout 60 "$QORWFL" $list >out 2>err || status=$?
            ((status <= 2)) || fail "$list" "$(od -c file)" "$(cat err)"
            ((status == 0)) || [[ -s err ]] || fail "no message: $list"
        done
    done
}
