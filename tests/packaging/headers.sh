#!/usr/bin/env bash
# headers.sh COMPILER STANDARD FOLDER: every header of the folder compiles by itself, also when included twice, without
# a warning, as that C++ standard.
set -euo pipefail
compiler=$1 standard=$2 folder=$3

read -ra dependencies < <(pkg-config --cflags xerces-c) || true
headers=("$folder"/*.h)
[[ -e ${headers[0]} ]] || { echo "no headers in $folder" >&2; exit 1; }

failed=0
for header in "${headers[@]}"; do
    name=$(basename "$header")
    if ! printf '#include <%s>\n#include <%s>\n' "$name" "$name" |
        "$compiler" -x c++ "-std=c++$standard" -fsyntax-only -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror \
            -I "$folder" "${dependencies[@]}" -; then
        printf '%s does not compile by itself as C++%s\n' "$name" "$standard" >&2
        failed=1
    fi
done
printf '%s headers compiled as C++%s\n' "${#headers[@]}" "$standard"
exit "$failed"
