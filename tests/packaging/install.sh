#!/usr/bin/env bash
# install.sh CMAKE BUILD_FOLDER PREFIX: a fresh installation, with nothing left of an earlier one.
set -euo pipefail
cmake=$1 build=$2 prefix=$3

rm -rf "$prefix"
"$cmake" --install "$build" --prefix "$prefix"
