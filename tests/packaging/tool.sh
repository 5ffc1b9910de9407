#!/usr/bin/env bash
# tool.sh PREFIX SOURCE_FOLDER: what comes with the command is where shells and man look for it, below a fresh
# installation.
set -euo pipefail
prefix=$1 source=$2

for page in "$source"/man/*.[15]; do
    cmp "$page" "$prefix/share/man/man${page##*.}/${page##*/}"
done
cmp "$source/completions/qorwfl.bash" "$prefix/share/bash-completion/completions/qorwfl"
cmp "$source/completions/_qorwfl" "$prefix/share/zsh/vendor-completions/_qorwfl"
cmp "$source/completions/qorwfl.fish" "$prefix/share/fish/vendor_completions.d/qorwfl.fish"
"$prefix/bin/qorwfl" --version
