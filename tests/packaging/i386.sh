#!/usr/bin/env bash
# i386.sh ROOT [--suite SUITE] [--mirror MIRROR] [--jobs N] [--packages "PACKAGE..."] [-- CTEST_ARGUMENT...]
#
# Builds the project for 32-bit Intel machines and runs its tests, in a Debian root of that kind, which the kernel of a 64-bit
# machine runs as well.
#
#   ROOT              the folder of the root; it is made where it is missing, with what is built in it in build/, and stays
#   --suite SUITE     what to put into the root: bookworm as a rule
#   --mirror MIRROR   where debootstrap gets it; without it, where debootstrap does by itself
#   --jobs N          so many compilers and tests at once
#   --packages "..."  what the tests need
#
# Needs root's rights. The sources are seen in there, read-only, as /src. "./dev variants i386" is the way to call this.
set -euo pipefail
sources=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

root='' suite=bookworm mirror='' jobs=$(nproc) packages=''
while (($# > 0)); do
    case $1 in
        --suite) suite=$2 && shift ;;
        --mirror) mirror=$2 && shift ;;
        --jobs) jobs=$2 && shift ;;
        --packages) packages=$2 && shift ;;
        --) shift && break ;;
        *) root=$1 ;;
    esac
    shift
done
[[ -n $root ]] || { sed -n '2,/^set/ { /^#/ s/^# \{0,1\}//p }' "${BASH_SOURCE[0]}" >&2; exit 2; }
((EUID == 0)) || { echo "i386.sh needs root's rights" >&2; exit 1; }

# shellcheck source=/dev/null
. "$sources/tests/packaging/debian-root.bash"

leave() {
    local place
    for place in src dev/pts; do
        if mountpoint -q "$root/$place"; then
            umount "$root/$place"
        fi
    done
    leave_root
}
trap leave EXIT

# A root that was not finished has no such file.
if [[ ! -e $root/is-complete ]]; then
    mkdir -p "$root"
    make_root "$suite" "$mirror" --arch=i386
    touch "$root/is-complete"
fi
enter_root
inside apt-get update -q
# shellcheck disable=SC2086  # one word for each package
install_packages $packages
mkdir -p "$root/src" "$root/build"
mountpoint -q "$root/dev/pts" || mount -t devpts devpts "$root/dev/pts"  # some tests need a terminal
if ! mountpoint -q "$root/src"; then
    mount --bind "$sources" "$root/src"
    mount -o remount,bind,ro "$root/src"
fi

say "building for 32 bits in $root/build"
inside linux32 cmake --preset release -S /src -B /build/release
inside linux32 cmake --build /build/release -j "$jobs"
say "running the tests"
inside linux32 ctest --test-dir /build/release --output-on-failure --no-tests=error -j "$jobs" -LE installed "$@"
