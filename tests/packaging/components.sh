#!/usr/bin/env bash
# components.sh CMAKE BUILD_FOLDER PREFIX WORK_FOLDER: the components together are the whole installation, no file belongs to
# two of them, and each holds what it is for.
set -euo pipefail
cmake=$1 build=$2 prefix=$3 work=$4

files() { (cd "$1" && find . ! -type d | LC_ALL=C sort); }

rm -rf "$work"
components=(runtime development)
[[ ! -e $prefix/bin/qorwfl ]] || components+=(tool)
for component in "${components[@]}"; do
    "$cmake" --install "$build" --prefix "$work/$component" --component "$component" >/dev/null
done
# A file in two components would stand twice in the list on the right.
diff <(files "$prefix") <(for component in "${components[@]}"; do files "$work/$component"; done | LC_ALL=C sort)

# only COMPONENT PATTERN: all files of the component have the pattern.
only() {
    if files "$work/$1" | grep -Ev -- "$2"; then
        printf 'the files above have no place in the component %s\n' "$1" >&2
        exit 1
    fi
}
only runtime '^\./[^ ]*/lib[[:alpha:]]+\.so\.[0-9.]+$'
only development '\.(h|cmake|pc)$|/lib[[:alpha:]]+\.so$'
[[ ! -e $work/tool ]] || only tool '^\./(bin/qorwfl|share/.*)$'
