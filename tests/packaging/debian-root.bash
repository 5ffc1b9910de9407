# A Debian root to try things in, for scripts that source this file. They set `root`, the folder of it, and need root's
# rights.
# shellcheck shell=bash

say() { printf '== %s\n' "$*"; }

# make_root SUITE MIRROR [OPTION...]: puts a bare root there. Without a mirror ('') debootstrap takes its own; options go to it.
make_root() {
    local suite=$1 from=()
    [[ -z $2 ]] || from=("$2")
    shift 2
    say "making a root with debootstrap"
    debootstrap --variant=minbase "$@" "$suite" "${root:?}" "${from[@]}"
}

# Names are looked up in there as they are here, there are processes to see, and packages start no services.
enter_root() {
    cp -L /etc/resolv.conf "$root/etc/resolv.conf"
    mountpoint -q "$root/proc" || mount -t proc proc "$root/proc" || say "without /proc, which cannot be mounted here"
    printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
    chmod +x "$root/usr/sbin/policy-rc.d"
}

leave_root() {
    if mountpoint -q "$root/proc"; then
        umount "$root/proc"
    fi
}

# Runs a command in there, with nothing of the environment of here.
inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C DEBIAN_FRONTEND=noninteractive "$@"; }

install_packages() { inside apt-get install -y -q --no-install-recommends "$@"; }
