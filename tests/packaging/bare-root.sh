#!/usr/bin/env bash
# bare-root.sh PACKAGE_FOLDER [--suite SUITE] [--mirror MIRROR] [--base ROOT] [--keep]
#
# Installs the packages in a bare Debian root, as apt does with their dependencies, tries them there and removes them again:
# first the command alone, without any compiler; then hosts built with CMake and with pkg-config, and the sample host.
# Nothing of theirs may be left behind.
#
#   --suite SUITE    what to put into the root: bookworm as a rule
#   --mirror MIRROR  where debootstrap gets it; without it, where debootstrap does by itself
#   --base ROOT      a root that is there already: it is copied, debootstrap is not needed
#   --keep           the root stays, to look at
#
# Needs root's rights. The package folder is that of "./dev package".
set -euo pipefail
sources=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

packages='' suite=bookworm mirror='' base='' keep=0
while (($# > 0)); do
    case $1 in
        --suite) suite=$2 && shift ;;
        --mirror) mirror=$2 && shift ;;
        --base) base=$2 && shift ;;
        --keep) keep=1 ;;
        *) packages=$1 ;;
    esac
    shift
done
[[ -d $packages ]] || { sed -n '2,/^set/ { /^#/ s/^# \{0,1\}//p }' "${BASH_SOURCE[0]}" >&2; exit 2; }
((EUID == 0)) || { echo "bare-root.sh needs root's rights" >&2; exit 1; }

# shellcheck source=/dev/null
. "$sources/tests/packaging/debian-root.bash"

work=$(mktemp -d "${TMPDIR:-/tmp}/bare-root.XXXXXX")
root=$work/root
leave() {
    leave_root
    if ((keep)); then
        say "the root stays in $root"
    else
        rm -rf --one-file-system "$work"
    fi
}
trap leave EXIT

if [[ -n $base ]]; then
    say "copying $base"
    cp -a "$base" "$root"
else
    make_root "$suite" "$mirror"
fi
enter_root

mkdir "$root/try"
cp "$packages"/*.deb "$root/try"
cp -r "$sources/examples" "$sources/tests/consumer" "$root/try"
inside apt-get update -q
package() { (cd "$root" && printf '/%s' try/"$1"_*.deb); }
runtime=$(package libqorwflinterop1) development=$(package libqorwflinterop-dev) tool=$(package qorwfl)

# The names of the files that are there, but those that apt and dpkg keep for themselves.
all_files() { inside find / -xdev \( -path /proc -o -path /try -o -path /var/lib/dpkg -o -path /var/lib/apt -o \
    -path /var/cache -o -path /var/log -o -path /tmp -o -path /root \) -prune -o -print | sort; }

say "the command alone"
install_packages "$runtime" "$tool"
inside qorwfl --version
inside sh -c 'cd /try/examples && qorwfl export review.json --config QorWflActionManager > /try/review.xpdl &&
    grep -q "PRC-311-04" /try/review.xpdl && qorwfl import /try/review.xpdl | grep -q "name=\"Review housing\""'
inside ldconfig -p | grep -q libQorWflInteropUtil.so.1
say "removing it"
inside apt-get purge -y -q qorwfl libqorwflinterop1

say "what hosts are built with"
install_packages g++ cmake ninja-build pkg-config libsqlite3-dev sqlite3 libxerces-c-dev
before=$(all_files)

say "the development files"
install_packages "$runtime" "$tool" "$development"

say "a host with CMake"
inside sh -c 'cmake -G Ninja -S /try/consumer/find_package -B /try/cmake && cmake --build /try/cmake && /try/cmake/consumer' >/dev/null
say "a host without Xerces-C on its include path"
inside sh -c 'cmake -G Ninja -S /try/consumer/without_xerces -B /try/without && cmake --build /try/without &&
    /try/without/consumer' >/dev/null
say "hosts with pkg-config"
inside bash /try/consumer/pkg_config/build-and-run.sh g++ "$(inside gcc -print-multiarch | sed 's:^:/usr/lib/:')" \
    /try/pkg_config >/dev/null
say "the sample host"
inside sh -c 'cmake -G Ninja -S /try/examples/host -B /try/host && cmake --build /try/host' >/dev/null
inside bash /try/consumer/host/end-to-end.sh /try/host/host /try/examples/host /try/host-work

say "the runtime package cannot go while others need it"
if inside dpkg --remove libqorwflinterop1 >/dev/null 2>&1; then
    echo "libqorwflinterop1 was removed from under the other packages" >&2
    exit 1
fi

say "removing everything"
inside apt-get purge -y -q qorwfl libqorwflinterop-dev libqorwflinterop1
left=$(diff <(printf '%s\n' "$before") <(all_files) || true)
if [[ -n $left ]]; then
    printf 'what was there before and what is there now differ:\n%s\n' "$left" >&2
    exit 1
fi
if inside ldconfig -p | grep -E 'libQorWflInteropUtil|libBexFramework'; then
    echo "the libraries above are still known to the loader" >&2
    exit 1
fi
say "installed, tried and removed; nothing is left"
