#!/bin/sh
# Shows the whole way of a workflow action: out to the workflow tool as a document, and back from its reply.
# Usage: demo.sh BIN_DIR, the folder with the programs qorwfl and urls. Fails as soon as a step does.
set -eu

if [ $# -ne 1 ]; then
    echo "usage: demo.sh BIN_DIR" >&2
    exit 2
fi
bin=$(cd "$1" && pwd)
cd "$(dirname "$0")"

heading() {
    printf '\n== %s\n\n' "$1"
}

# ISO-8859-1 text for a terminal that takes UTF-8.
show() {
    if command -v iconv >/dev/null; then
        iconv -f ISO-8859-1 -t UTF-8 "$1"
    else
        cat "$1"
    fi
}

out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
trap 'exit 1' HUP INT TERM

heading "The action of the PDM server (review.json)"
cat review.json

heading "The XPDL document for the workflow tool"
"$bin/qorwfl" export review.json --config QorWflActionManager >"$out/review.xpdl"
show "$out/review.xpdl"

heading "The workflow tool's reply (reply.xpdl), read back as a record"
"$bin/qorwfl" import reply.xpdl >"$out/reply.txt"
show "$out/reply.txt"

heading "The URLs of the reply, taken apart again"
BexMsgCatalogPath=. "$bin/urls" reply.xpdl >"$out/urls.txt"
show "$out/urls.txt"
