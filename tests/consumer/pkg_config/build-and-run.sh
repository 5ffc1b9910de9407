#!/usr/bin/env bash
# build-and-run.sh COMPILER LIBRARY_FOLDER WORK_FOLDER [FLAG...]: a host that is built with pkg-config alone.
set -euo pipefail
compiler=$1 libraries=$2 work=$3
shift 3
here=$(dirname "${BASH_SOURCE[0]}")

export PKG_CONFIG_PATH=$libraries/pkgconfig
read -ra flags < <(pkg-config --cflags --libs qorwflinterop)
mkdir -p "$work"
"$compiler" -std=c++17 "$@" "$here/../main.cpp" -o "$work/consumer" "${flags[@]}"
LD_LIBRARY_PATH=$libraries "$work/consumer"
