#!/usr/bin/env bash
# hardening.sh FILE...: every program and library of a release build is hardened: its relocations are read-only before it
# runs, its stack frames are guarded, its calls of the C library are the checked ones, and no stack is executable.
set -euo pipefail

failed=0
# expect FILE WHAT PATTERN: the text on standard input has the pattern.
expect() {
    if ! grep -Eq -- "$3"; then
        printf '%s has no %s\n' "$1" "$2" >&2
        failed=1
    fi
}

checked=0
for file in "$@"; do
    expect "$file" "read-only relocations" GNU_RELRO < <(readelf -lW "$file")
    expect "$file" "binding at its start" 'BIND_NOW|FLAGS_1.*NOW' < <(readelf -dW "$file")
    expect "$file" "stack that is not executable" 'GNU_STACK .* RW ' < <(readelf -lW "$file")
    expect "$file" "guarded stack frames" '__stack_chk_fail' < <(nm -D --undefined-only "$file")
    if nm -D --undefined-only "$file" | grep -Eq '__[^ @]+_chk(@|$)'; then
        checked=$((checked + 1))
    fi
done
# Where the compiler sees the size of every buffer, it leaves the plain call; so not each file needs to have one.
if ((checked == 0)); then
    echo "no file calls a checked function of the C library" >&2
    failed=1
fi
printf '%s files, %s of them with checked library calls\n' "$#" "$checked"
exit "$failed"
