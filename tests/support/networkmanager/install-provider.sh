#!/bin/bash
# install-provider.sh [SERVICE]: makes the test provider known to the fixture's NetworkManager as the VPN service SERVICE
# (by default example.tarnwik.client.tunnel). Only inside run-beside-networkmanager.sh, as root.
#
# What the provider does is read from $NM_FIXTURE_DIR/provider-mode at each of its calls; see test-provider.py.
set -euo pipefail

dir=${NM_FIXTURE_DIR:?Run this inside run-beside-networkmanager.sh.}
service=${1:-example.tarnwik.client.tunnel}
tools=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

# The daemon starts its services with an environment of its own.
launcher=$dir/provider-$service
cat >"$launcher" <<SCRIPT
#!/bin/sh
export NM_FIXTURE_DIR='$dir'
exec /usr/bin/python3 -B '$tools/test-provider.py' --service '$service' "\$@"
SCRIPT
chmod 755 "$launcher"

cat >"$dir/bus/policies/$service.conf" <<CONF
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
  "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <policy user="root">
    <allow own_prefix="$service"/>
    <allow send_destination="$service"/>
  </policy>
</busconfig>
CONF
dbus-send --system --print-reply --dest=org.freedesktop.DBus / org.freedesktop.DBus.ReloadConfig >/dev/null

# The daemon looks at the file as soon as it is there, so it appears complete.
cat >"$dir/$service.name" <<CONF
[VPN Connection]
name=$service
service=$service
program=$launcher
supports-multiple-connections=false
CONF
mv "$dir/$service.name" "$dir/services/nm-$service.name"
