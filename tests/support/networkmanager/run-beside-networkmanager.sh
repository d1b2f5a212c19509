#!/bin/bash
# run-beside-networkmanager.sh COMMAND [ARGUMENT...]
#
# Runs COMMAND beside a real NetworkManager of its own: in private network, mount, host-name and process namespaces, on a
# private system bus, with an empty set of connections, an empty folder of VPN services and one working network link.
# Neither the machine's own NetworkManager nor its network is touched, and nothing is left behind. Works as root, and as
# an ordinary user where the kernel lets users make namespaces. Several may run at a time.
#
# COMMAND runs as root of the namespaces. It finds:
#   DBUS_SYSTEM_BUS_ADDRESS   the private bus
#   NM_FIXTURE_DIR            a folder of this run: connections/ (the keyfiles), services/ (VPN services), log/
#   NM_FIXTURE_TOOLS          the folder of this script: control.sh, install-provider.sh
#
# Exits with COMMAND's status, or with 77 and the reason where the machine cannot carry the fixture.
# NM_FIXTURE_KEEP=1 in the environment keeps the folder, for a look at the logs.
set -euo pipefail

tools=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
export PATH=$PATH:/usr/sbin:/sbin

skip() {
  echo "SKIPPED: $*" >&2
  exit 77
}

[ $# -gt 0 ] || { echo "Usage: $0 COMMAND [ARGUMENT...]" >&2; exit 2; }
for program in NetworkManager nm-online dbus-daemon dbus-send unshare ip setsid; do
  command -v "$program" >/dev/null || skip "$program is not installed."
done
/usr/bin/python3 -c 'import gi' 2>/dev/null || skip "python3-gi is not installed."
[ -c /dev/net/tun ] || skip "there is no /dev/net/tun."

namespaces=(--net --uts --mount --pid --fork --kill-child --propagation private --mount-proc)
[ "$(id -u)" = 0 ] || namespaces=(--user --map-root-user "${namespaces[@]}")
reason=$(unshare "${namespaces[@]}" mount -t sysfs -o ro sysfs /sys 2>&1) || skip "no namespaces here: $reason"

NM_FIXTURE_DIR=$(mktemp -d /tmp/networkmanager-fixture.XXXXXX)
export NM_FIXTURE_DIR NM_FIXTURE_TOOLS=$tools
[ -n "${NM_FIXTURE_KEEP:-}" ] || trap 'rm -rf "$NM_FIXTURE_DIR"' EXIT

# Not exec: the folder is to be removed afterwards.
status=0
unshare "${namespaces[@]}" bash "$tools/inside-namespaces.sh" "$@" || status=$?
exit $status
