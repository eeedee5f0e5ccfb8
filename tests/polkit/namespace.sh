#!/bin/bash
# namespace.sh HELPER POLICY COMMAND...   runs COMMAND as root on a system bus of its own with a real polkitd.
#
# All of it lives in private mount and process namespaces and is gone with the command; nothing of the machine changes.
#   - "polkit-tester" is an ordinary user, known in here only.
#   - /proc/sys/vm/drop_caches is an empty file that only root may write, so no cache is really dropped.
#   - $KESTRUNE_HELPER_PLACE holds HELPER and polkit knows POLICY, as after an installation; with HELPER "none" the
#     program is not installed.
set -euo pipefail
if [[ ${1-} != --inside ]]; then
  exec unshare --mount --pid --fork --kill-child --mount-proc "$0" --inside "$@"
fi
shift
helper=$1 policy=$2
shift 2
mount --make-rprivate /

mount -t tmpfs -o mode=755 tmpfs /run
mkdir -p /run/dbus /run/machine/actions /run/polkit-test
export TMPDIR=/run/polkit-test

passwd=/run/machine/passwd group=/run/machine/group
{ grep -v '^polkit-tester:' /etc/passwd; echo 'polkit-tester:x:23456:23456::/run/polkit-test/home:/bin/sh'; } >"$passwd"
{ grep -v '^polkit-tester:' /etc/group; echo 'polkit-tester:x:23456:'; } >"$group"
chmod 644 "$passwd" "$group"
mount --bind "$passwd" /etc/passwd
mount --bind "$group" /etc/group
install -d -o 23456 -g 23456 -m 700 /run/polkit-test/home

install -m 200 /dev/null /run/machine/drop_caches
mount --bind /run/machine/drop_caches /proc/sys/vm/drop_caches

actions=/usr/share/polkit-1/actions
cp "$actions"/org.freedesktop.policykit.policy /run/machine/actions
if [[ $helper != none ]]; then
  cp -- "$policy" /run/machine/actions
  # The folders that are missing on the way are made on a file system of this namespace.
  above=$(dirname -- "$KESTRUNE_HELPER_PLACE")
  until [[ -d $above ]]; do above=$(dirname -- "$above"); done
  install -D -m 755 -- "$helper" /run/machine/helper
  mount -t tmpfs -o mode=755 tmpfs "$above"
  install -D -m 755 -- /run/machine/helper "$KESTRUNE_HELPER_PLACE"
fi
mount --bind /run/machine/actions "$actions"
# No rule of this machine decides; administrators are those polkit knows without any.
mount -t tmpfs -o mode=755 tmpfs /etc/polkit-1/rules.d
if [[ -d /usr/share/polkit-1/rules.d ]]; then
  mount -t tmpfs -o mode=755 tmpfs /usr/share/polkit-1/rules.d
fi

# wait_for COMMAND...: until it succeeds, 10 s at most.
wait_for() {
  local tries
  for ((tries = 0; tries < 200; tries++)); do
    "$@" && return
    sleep 0.05
  done
  echo "namespace.sh: still not true after 10 s: $*" >&2
  exit 1
}

has_polkit() {
  gdbus call --system -d org.freedesktop.DBus -o /org/freedesktop/DBus -m org.freedesktop.DBus.NameHasOwner \
    org.freedesktop.PolicyKit1 2>/dev/null | grep -q true
}

for daemon in /usr/lib/polkit-1/polkitd /usr/libexec/polkitd none; do
  [[ -x $daemon ]] && break
done
[[ $daemon != none ]] || { echo 'namespace.sh: there is no polkitd here' >&2; exit 1; }
dbus-daemon --system --nofork --nopidfile >/run/machine/bus.log 2>&1 &
wait_for test -S /run/dbus/system_bus_socket
"$daemon" >/run/machine/polkitd.log 2>&1 &
wait_for has_polkit
"$@"
