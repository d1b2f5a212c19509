#!/bin/bash
# as-ordinary-user.sh COMMAND [ARGUMENT...]: inside run-beside-networkmanager.sh, runs COMMAND as the user "nobody", with
# the test provider installed and a VPN connection of root's beside. Exits with 77 where there is no second user: the
# namespaces of an ordinary user have only one.
set -euo pipefail

grep -qE '^ *0 +0 +4294967295$' /proc/self/uid_map || {
  echo "SKIPPED: the namespaces of an ordinary user have no second user." >&2
  exit 77
}
setpriv --reuid=nobody --regid=nogroup --clear-groups test -x "$1" || {
  echo "SKIPPED: the user nobody cannot run $1." >&2
  exit 77
}
"$NM_FIXTURE_TOOLS/install-provider.sh"
echo secrets >"$NM_FIXTURE_DIR/provider-mode"
nmcli connection add type vpn con-name "Root's own" vpn-type example.tarnwik.client.tunnel autoconnect no \
  connection.permissions user:root >/dev/null
exec setpriv --reuid=nobody --regid=nogroup --clear-groups "$@"
