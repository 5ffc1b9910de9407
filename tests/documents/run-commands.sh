#!/usr/bin/env bash
# run-commands.sh SOURCES DOCUMENT WORK_FOLDER PREFIX PROGRAMS: runs the blocks of shell commands of a document, one behind
# the other in one shell, in a copy of the examples; a document of an example is run in that example's folder. The installed
# tree in PREFIX and the programs in PROGRAMS stand ready.
#
# "./dev" itself builds and tests everything, so here it is only asked whether it knows the command and the options.
set -euo pipefail
sources=$1 document=$2 work=$3 prefix=$4 programs=$5

rm -rf "$work"
mkdir -p "$work"
cp -r "$sources/examples" "$work"
cat >"$work/dev" <<EOF
#!/bin/sh
"$sources/dev" help | grep -q "^  \$1 " || { echo "./dev does not know \$1" >&2; exit 1; }
for option; do
    case \$option in
        --*) grep -qF -- "\"\$option\"" "$sources/dev" "$sources/bench/ratios.py" "$sources/fuzz/run.py" ||
            { echo "./dev \$1 does not know \$option" >&2; exit 1; } ;;
    esac
done
EOF
chmod +x "$work/dev"

awk '/^```sh$/ { inside = 1; next } /^```$/ { inside = 0 } inside' "$sources/$document" >"$work/commands.sh"
[[ -s $work/commands.sh ]] || { echo "no shell commands in $document" >&2; exit 1; }
folder=.
[[ $document != examples/*/* ]] || folder=$(dirname "$document")
cd "$work/$folder"
export CMAKE_GENERATOR=Ninja CMAKE_PREFIX_PATH=$prefix PATH=$programs:$PATH
bash -euo pipefail "$work/commands.sh"
