#!/bin/bash
# The Debian package, built in the folder $1, of version $2: held to lintian, then installed, started, upgraded and
# removed in a Debian of its own. Run in the project's folder, as root, with a network.
set -euo pipefail

folder=$1
version=$2
work=$(mktemp -d /tmp/kestrune-debian-XXXXXX)
root=$work/root
display=""
trap '[[ -z $display ]] || kill "$display"; rm -rf --one-file-system -- "$work"' EXIT

fail() {
  printf 'FAILED: %s\n' "$*" >&2
  exit 1
}

# Runs a command inside, with processes and mounts of its own.
inside() {
  unshare --mount --pid --fork --kill-child bash -c \
    'mount -t proc proc "$0/proc" && exec chroot "$0" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
      DEBIAN_FRONTEND=noninteractive HOME=/root DISPLAY=:'"${number:-}"' "$@"' "$root" "$@"
}

install_inside() {
  cp -- "$1" "$root/tmp/kestrune.deb"
  inside apt-get -qq install -y --no-install-recommends /tmp/kestrune.deb >"$work/apt.log" 2>&1 ||
    fail "apt could not install $1: $(tail -n 3 "$work/apt.log")"
}

((EUID == 0)) || fail "this test makes a Debian of its own and needs to be run as root"

packaging/linux/deb.sh "$folder"
packaging/linux/deb.sh "$folder" "$version.1"
first=$folder/kestrune_$version-1_$(dpkg --print-architecture).deb
second=$folder/kestrune_$version.1-1_$(dpkg --print-architecture).deb

lintian --allow-root --fail-on error -- "$first" || fail "lintian objects to $first"
[[ -z $(dpkg-deb --ctrl-tarfile "$first" | tar -t | grep -E 'inst|prerm|postrm|conffiles') ]] ||
  fail "the package runs scripts of its own or has configuration files"

debootstrap --variant=minbase bookworm "$root" >"$work/debootstrap.log" 2>&1 ||
  fail "no Debian could be set up, which needs the network: $(tail -n 1 "$work/debootstrap.log")"
cp /etc/resolv.conf "$root/etc/"
inside apt-get -qq update || fail "the package lists could not be fetched, which needs the network"

install_inside "$first"
listed=$(inside kestrune --dump-menu) || fail "the menu could not be printed"
[[ $listed == *"Quit Kestrune"* ]] || fail "the menu is not the program's: $listed"

exec {numbers}<> <(:)
Xvfb -displayfd "$numbers" -screen 0 1280x800x24 -noreset >/dev/null 2>&1 &
display=$!
read -r -t 20 -u "$numbers" number || fail "the display server did not start"
inside timeout 60 kestrune >"$work/start.log" 2>&1 &
started=$!
DISPLAY=:$number timeout 50 xdotool search --sync --onlyvisible --name '^Kestrune$' >/dev/null ||
  fail "the program showed no window: $(cat "$work/start.log")"
kill "$started"

install_inside "$second"
[[ $(inside dpkg-query -W -f '${Version}' kestrune) == "$version.1-1" ]] || fail "the package was not upgraded"
inside kestrune --dump-menu >/dev/null || fail "the upgraded program does not start"

inside dpkg --purge kestrune >/dev/null
left=$(find "$root" -xdev -path "$root/tmp" -prune -o -path "$root/root" -prune -o -path "$root/proc" -prune -o \
  -iname '*kestrune*' -print)
[[ -z $left ]] || fail "the removed package left this behind: $left"
printf 'Installed, started, upgraded and removed: %s\n' "$first"
