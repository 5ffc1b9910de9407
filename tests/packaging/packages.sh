#!/usr/bin/env bash
# packages.sh FOLDER: the three packages in the folder have the names, the dependencies and the files that they should have,
# and lintian finds no error in them where it is installed.
set -euo pipefail
folder=$1

failed=0
complain() {
    printf '%s\n' "$*" >&2
    failed=1
}

# The one package file of a name.
package_file() {
    local found=("$folder/$1"_*.deb)
    [[ ${#found[@]} == 1 && -e ${found[0]} ]] || { echo "not one package $1 in $folder" >&2; exit 1; }
    printf '%s\n' "${found[0]}"
}

# field PACKAGE FIELD PATTERN: a field of the control file has the pattern.
field() {
    local value
    value=$(dpkg-deb -f "$1" "$2")
    grep -Eq -- "$3" <<<"$value" || complain "$(basename "$1"): $2 is '$value', which lacks '$3'"
}

# files PACKAGE PATTERN...: each pattern is that of a file (or link) in the package.
files() {
    local package=$1 list pattern
    shift
    list=$(dpkg-deb -c "$package" | awk '{ print $6 }')
    for pattern in "$@"; do
        grep -Eq -- "^\./$pattern\$" <<<"$list" || complain "$(basename "$package"): no file $pattern"
    done
}

runtime=$(package_file libqorwflinterop1)
development=$(package_file libqorwflinterop-dev)
tool=$(package_file qorwfl)
version=$(dpkg-deb -f "$runtime" Version)
exactly="libqorwflinterop1 \(= ${version//./\\.}\)"
library='usr/lib/[a-z0-9_-]+-linux-gnu[a-z0-9_]*'

field "$runtime" Depends 'libxerces-c3\.2'
field "$runtime" Depends 'libstdc\+\+6'
files "$runtime" "$library/libBexFramework\.so\.1" "$library/libQorWflInteropUtil\.so\.1" \
    "$library/libBexFramework\.so\.$version" "$library/libQorWflInteropUtil\.so\.$version"
for control in shlibs triggers; do
    dpkg-deb -I "$runtime" "$control" >/dev/null || complain "$(basename "$runtime"): no control file $control"
done

field "$development" Depends "$exactly"
field "$development" Depends 'libxerces-c-dev'
files "$development" "$library/libBexFramework\.so" "$library/libQorWflInteropUtil\.so" \
    usr/include/qorwflinterop/QorWflUrlUtil.h "$library/cmake/QorWflInterop/QorWflInteropConfig\.cmake" \
    "$library/cmake/QorWflInterop/QorWflInteropConfigVersion\.cmake" "$library/pkgconfig/qorwflinterop\.pc"

field "$tool" Depends "$exactly"
files "$tool" usr/bin/qorwfl

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for package in "$runtime" "$development" "$tool"; do
    name=$(dpkg-deb -f "$package" Package)
    files "$package" "usr/share/doc/$name/copyright" "usr/share/doc/$name/changelog\.gz"
    dpkg-deb -x "$package" "$work/$name"
done
# No file is in two packages, no library or program looks for others in a place of its own, nothing tells where it was built.
twice=$(for name in "$work"/*; do (cd "$name" && find . ! -type d); done | sort | uniq -d)
[[ -z $twice ]] || complain "in two packages: $twice"
while IFS= read -r file; do
    if readelf -d "$file" 2>/dev/null | grep -Eq 'RPATH|RUNPATH'; then
        complain "$file has a search path of its own"
    fi
done < <(find "$work" -type f \( -name '*.so.*' -o -path '*/bin/*' \))
if grep -rlF -- "$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)" "$work" >&2; then
    complain "the files above hold the path of the sources"
fi

if command -v lintian >/dev/null; then
    # One package holds both libraries, which are of use together only; and CPack's scripts call ldconfig themselves.
    as_root=()
    ((EUID != 0)) || as_root=(--allow-root)
    lintian "${as_root[@]}" --fail-on error \
        --suppress-tags package-name-doesnt-match-sonames,maintscript-calls-ldconfig \
        "$runtime" "$development" "$tool" || complain "lintian finds errors"
fi

((failed != 0)) || printf 'the packages are as they should be: %s\n' "$(basename -a "$runtime" "$development" "$tool" | xargs)"
exit "$failed"
