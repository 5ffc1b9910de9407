#!/usr/bin/env bats
# The completions for the shells know what the help shows.

# shellcheck disable=SC2154 # $stderr and $output, which run assigns
bats_require_minimum_version 1.5.0
load shell.bash
load help.bash

# Completes a command line whose words are given, the last of them the one to complete.
completed() {
    # shellcheck source=/dev/null
    source "$COMPLETIONS/qorwfl.bash"
    COMP_WORDS=("$@")
    COMP_CWORD=$(($# - 1))
    COMPREPLY=()
    _qorwfl
}

assert_completed() {
    [[ "${COMPREPLY[*]}" == "$1" ]] || fail "expected the proposals: $1" "found: ${COMPREPLY[*]}"
}

# The lines of two texts, whatever their order.
assert_same_lines() {
    diff <(sort <<<"$1") <(sort <<<"$2") >&2 || fail "expected the same lines for: $3"
}

@test "bash: every subcommand is proposed" {
    local -a words
    mapfile -t words < <(subcommands_of)
    completed qorwfl ''
    for name in "${words[@]}"; do
        [[ " ${COMPREPLY[*]} " == *" $name "* ]] || fail "not proposed: $name"
    done
    for name in config url; do
        completed qorwfl "$name" ''
        assert_same_lines "$(printf '%s\n' "${COMPREPLY[@]}")" "$(subcommands_of "$name")" "$name"
    done
}

@test "bash: the options of each subcommand are those of its help" {
    local command
    local -a words
    while read -r command; do
        read -ra words <<<"$command"
        completed qorwfl "${words[@]}" -
        assert_same_lines "$(printf '%s\n' "${COMPREPLY[@]}")" "$(options_of "${words[@]}")" "$command"
    done < <(all_commands)
    completed qorwfl -
    assert_same_lines "$(printf '%s\n' "${COMPREPLY[@]}")" "$(options_of)" "qorwfl"
}

@test "bash: the values of each option are those of the help" {
    local command option values
    local -a words
    while read -r command; do
        read -ra words <<<"$command"
        for option in --format --from --to; do
            values=$(values_of "$option" "${words[@]}")
            [[ -n $values ]] || continue
            completed qorwfl "${words[@]}" "$option" ''
            assert_same_lines "$(printf '%s\n' "${COMPREPLY[@]}")" "$values" "$command $option"
        done
    done < <(all_commands)
}

@test "bash: what was typed narrows the proposals" {
    completed qorwfl ex
    assert_completed export
    completed qorwfl config ex
    assert_completed explain
    completed qorwfl url explain --f
    assert_completed --format
    completed qorwfl url explain --format j
    assert_completed json
    completed qorwfl url explain --format = j
    assert_completed json
    completed qorwfl url explain --format =
    assert_completed "text json"
    completed qorwfl config explain --environment ''
    assert_completed ""
}

@test "bash: files are proposed where a file belongs" {
    touch review.json 'with blank.json'
    completed qorwfl export rev
    assert_completed review.json
    completed qorwfl export --config with
    assert_completed 'with blank.json'
    completed qorwfl config check rev
    assert_completed review.json
    completed qorwfl url explain rev
    assert_completed ""
}

@test "zsh and fish: every subcommand and every option with its values is there" {
    local command option values
    local -a words
    while read -r command; do
        read -ra words <<<"$command"
        grep -q "'${words[-1]}:" "$COMPLETIONS/_qorwfl" || fail "zsh does not know: $command"
        grep -q -- "-a ${words[-1]} -d" "$COMPLETIONS/qorwfl.fish" || fail "fish does not know: $command"
        while read -r option; do
            case $option in
                -?)
                    grep -q -- "[{,]${option}[,}]" "$COMPLETIONS/_qorwfl" || fail "zsh does not know: $command $option"
                    grep -q -- "-s ${option#-} " "$COMPLETIONS/qorwfl.fish" || fail "fish does not know: $command $option"
                    ;;
                *)
                    grep -Eq -- "['{,]${option}[[}]" "$COMPLETIONS/_qorwfl" || fail "zsh does not know: $command $option"
                    grep -q -- "-l ${option#--} " "$COMPLETIONS/qorwfl.fish" || fail "fish does not know: $command $option"
                    ;;
            esac
            values=$(values_of "$option" "${words[@]}" | paste -sd ' ')
            if [[ -n $values ]]; then
                grep -q -- "'$option\\[.*($values)'" "$COMPLETIONS/_qorwfl" || fail "zsh does not know: $option $values"
                grep -q -- "-l ${option#--} .*'$values'" "$COMPLETIONS/qorwfl.fish" ||
                    fail "fish does not know: $option $values"
            fi
        done < <(options_of "${words[@]}")
    done < <(all_commands)
}

@test "zsh takes its completion without an error" {
    command -v zsh >/dev/null || skip "zsh is not installed"
    zsh -n "$COMPLETIONS/_qorwfl"
}

@test "fish takes its completion without an error, and proposes the options of each subcommand" {
    command -v fish >/dev/null || skip "fish is not installed"
    fish -n "$COMPLETIONS/qorwfl.fish"
    local command proposed option
    local -a words
    while read -r command; do
        read -ra words <<<"$command"
        proposed=$(HOME=$BATS_TEST_TMPDIR fish -c "source '$COMPLETIONS/qorwfl.fish'; complete -C 'qorwfl $command --'" |
            cut -f 1)
        while read -r option; do
            [[ $option == -? ]] || grep -qx -- "$option" <<<"$proposed" || fail "not proposed: $command $option"
        done < <(options_of "${words[@]}")
    done < <(all_commands)
}
