#!/usr/bin/env bash
# exports.sh LIBRARY LIST HEADER_FOLDER: the library shows exactly the symbols of the list, and every name in them is a
# name that the public headers know.
# exports.sh --regenerate LIBRARY LIST: writes the list, for changes of the interface that are meant.
set -euo pipefail

# What the library defines, in words. Weak symbols that belong to the standard library or to Xerces-C are left out: they
# are instantiations of templates, which the compiler adds as it sees fit.
exports() {
    nm -D --defined-only "$1" | awk '{ print $(NF - 1), $NF }' | c++filt | awk '{
        weak = $1 ~ /^[WwVvu]$/
        name = substr($0, length($1) + 2)
        owner = name
        sub(/\(.*/, "", owner)
        if (!(weak && owner ~ /(^| )(std|__gnu_cxx|xercesc[_0-9]*)::/)) { print name }
    }' | LC_ALL=C sort -u
}

# The names that a symbol consists of, `A::b(C) const` gives A and b.
names() {
    sed -E 's/^(typeinfo name|typeinfo|vtable|VTT) for //; s/\[abi:[[:alnum:]]+\]//g; s/\(.*//; s/::/\n/g' |
        sed -E 's/^~//; s/^operator.*/operator/' | LC_ALL=C sort -u
}

if [[ $1 == --regenerate ]]; then
    exports "$2" >"$3"
    exit
fi

library=$1 list=$2 headers=$3
[[ -s $list ]] || { echo "$list is missing or empty" >&2; exit 1; }
if ! diff -u "$list" <(exports "$library"); then
    echo "the symbols of $library differ from $list; if that is meant, build the target regenerate_exports" >&2
    exit 1
fi
failed=0
code=$(sed -E 's://.*::; /^ *(\/\*\*|\*)/d' "$headers"/*.h)
while read -r name; do
    if ! grep -qw -- "$name" <<<"$code"; then
        echo "$library shows $name, which no public header knows" >&2
        failed=1
    fi
done < <(names <"$list")
printf '%s symbols\n' "$(wc -l <"$list")"
exit "$failed"
