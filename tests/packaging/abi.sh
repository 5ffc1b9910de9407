#!/usr/bin/env bash
# abi.sh CMAKE COMPILER SOURCE_FOLDER WORK_FOLDER: what programs built against the two libraries rely on, the layout of the
# public classes, their virtual functions, enumerators and the types of functions, is what abi-LIBRARY.xml describes.
# abi.sh --regenerate CMAKE COMPILER SOURCE_FOLDER WORK_FOLDER: writes the descriptions, for changes that are meant.
#
# The libraries are built once more, in the work folder, without optimization and with all that a debugger may want to know:
# of classes that only hosts derive from, the compiler would tell no more than their names. Other compilers describe the
# same types in other words; with them the test is skipped (status 77).
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

regenerate=0
if [[ $1 == --regenerate ]]; then
    regenerate=1
    shift
fi
cmake=$1 compiler=$2 sources=$3 work=$4

version=$("$compiler" --version)
kind="${version%%$'\n'*}, $("$compiler" -dumpmachine)"
if ! command -v abidw >/dev/null || ! command -v abidiff >/dev/null; then
    echo "skipped: there are no abidw and abidiff here; the package abigail-tools has them"
    ((regenerate)) && exit 1
    exit 77
fi
if [[ $("$compiler" -dumpversion) != 12 || $version != *'Free Software Foundation'* || $kind != *x86_64-linux* ]]; then
    printf 'skipped: the descriptions are those of g++ 12 on x86-64, and this is %s\n' "$kind"
    ((regenerate)) && exit 1
    exit 77
fi

"$cmake" -G Ninja -S "$sources" -B "$work" -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_FLAGS=-femit-class-debug-always -DQORWFL_BUILD_TESTS=OFF -DQORWFL_BUILD_TOOL=OFF >/dev/null
"$cmake" --build "$work" >/dev/null
"$cmake" --install "$work" --prefix "$work/prefix" --component development >/dev/null

# describe LIBRARY: without the places of the sources, which say nothing about the interface, and without what is the same
# for everything in it.
describe() {
    abidw --suppressions "$here/abi.supp" --headers-dir "$work/prefix/include/qorwflinterop" --drop-private-types \
        --drop-undefined-syms --exported-interfaces-only --no-corpus-path --no-show-locs --no-comp-dir-path \
        --no-elf-needed --no-parameter-names --type-id-style hash "$work/lib/lib$1.so" |
        sed -E "s/ (visibility='default'|visibility='default-visibility'|binding='global'|binding='global-binding')//g
            s:(<abi-instr .*)path='[^']*/((BexFramework|QorWorkflowInterop)/[^']*)':\1path='\2':"
}

failed=0
for library in BexFramework QorWflInteropUtil; do
    described=$here/abi-$library.xml now=$work/abi-$library.xml
    describe "$library" >"$now"
    # abidiff finds no fault with a description of nothing.
    grep -q "<function-decl .*elf-symbol-id=" "$now" || { echo "$library: nothing is described" >&2; exit 1; }
    if ((regenerate)); then
        cp "$now" "$described"
    elif ! abidiff "$described" "$now"; then
        echo "the interface of $library differs from $described; if that is meant, build the target regenerate_abi" >&2
        failed=1
    fi
done
exit "$failed"
