#!/usr/bin/env bash
# build-and-run.sh COMPILER LIBRARY_FOLDER WORK_FOLDER [FLAG...]: hosts that are built with pkg-config alone, one with the
# records and URLs, one that works with documents itself.
set -euo pipefail
compiler=$1 libraries=$2 work=$3
shift 3
here=$(dirname "${BASH_SOURCE[0]}")

export PKG_CONFIG_PATH=$libraries/pkgconfig LD_LIBRARY_PATH=$libraries
mkdir -p "$work"

# build_and_run SOURCE MODULE [FLAG...]
build_and_run() {
    local source=$1 module=$2 flags
    shift 2
    read -ra flags < <(pkg-config --cflags --libs "$module")
    "$compiler" -std=c++17 "$@" "$here/../$source.cpp" -o "$work/$source" "${flags[@]}"
    "$work/$source"
}
build_and_run main qorwflinterop "$@"
build_and_run dom qorwflinterop-dom "$@"
if pkg-config --print-requires qorwflinterop | grep -q xerces; then
    echo "qorwflinterop asks for the development files of Xerces-C" >&2
    exit 1
fi
