#!/usr/bin/env bash
# readme.sh README PROGRAM: the first C++ block of the README is the program, line by line; the program itself is built
# and run by another test.
set -euo pipefail
readme=$1 program=$2

block=$(awk '/^```cpp$/ { inside = 1; next } /^```$/ { if (inside) { exit } } inside' "$readme")
[[ -n $block ]] || { echo "no C++ block in $readme" >&2; exit 1; }
diff -u "$program" <(printf '%s\n' "$block")
