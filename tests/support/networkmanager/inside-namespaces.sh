#!/bin/bash
# The part of run-beside-networkmanager.sh that runs inside the namespaces: private folders, a link, the bus, the daemon.
set -euo pipefail

dir=$NM_FIXTURE_DIR
mkdir -p "$dir"/{bus/policies,etc/system-connections,log,run,services,state}
ln -s etc/system-connections "$dir/connections"
chmod 755 "$dir" "$dir/bus"
chmod 700 "$dir/etc/system-connections"

# The kernel's view of this namespace alone, read-only: the daemon then sees our links only and waits for no udev.
mount -t sysfs -o ro,nosuid,nodev,noexec sysfs /sys
mount -t tmpfs -o mode=755 tmpfs /run
mkdir -p /run/NetworkManager /run/netns /run/wireguard

# The daemon's folders are compiled in, so ours are laid over them.
mount --bind "$dir/run" /run/NetworkManager
mount --bind "$dir/state" /var/lib/NetworkManager
mount --bind "$dir/etc" /etc/NetworkManager
mount --bind "$dir/services" /usr/lib/NetworkManager/VPN
mount -t tmpfs tmpfs /usr/lib/NetworkManager/conf.d
mount -t tmpfs tmpfs /usr/lib/NetworkManager/system-connections

cat >"$dir/etc/NetworkManager.conf" <<CONF
[main]
plugins=keyfile
auth-polkit=false
dhcp=internal
dns=none
hostname-mode=none
rc-manager=unmanaged
systemd-resolved=false
no-auto-default=*
configure-and-quit=no

[connectivity]
enabled=false

[logging]
level=INFO
audit=false

[keyfile]
unmanaged-devices=interface-name:uplink-peer;interface-name:lo
CONF

# A VPN needs a network to run over: one end of a virtual cable, whose other end stands for the world.
ip link set lo up
ip link add uplink type veth peer name uplink-peer
ip link set uplink-peer up
cat >"$dir/etc/system-connections/uplink.nmconnection" <<CONF
[connection]
id=uplink
uuid=11111111-1111-4111-8111-111111111111
type=ethernet
interface-name=uplink
autoconnect=true

[ipv4]
method=manual
address1=192.0.2.10/24
gateway=192.0.2.1

[ipv6]
method=disabled
CONF
chmod 600 "$dir/etc/system-connections/uplink.nmconnection"

# A system bus like the distribution's, with NetworkManager's own policy and those of the providers that are installed.
cat >"$dir/bus/system.conf" <<CONF
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
  "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <listen>unix:path=$dir/bus/socket</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <deny own="*"/>
    <deny send_type="method_call"/>
    <allow send_type="signal"/>
    <allow send_requested_reply="true" send_type="method_return"/>
    <allow send_requested_reply="true" send_type="error"/>
    <allow receive_type="method_call"/>
    <allow receive_type="method_return"/>
    <allow receive_type="error"/>
    <allow receive_type="signal"/>
    <allow send_destination="org.freedesktop.DBus" send_interface="org.freedesktop.DBus"/>
    <allow send_destination="org.freedesktop.DBus" send_interface="org.freedesktop.DBus.Introspectable"/>
    <allow send_destination="org.freedesktop.DBus" send_interface="org.freedesktop.DBus.Properties"/>
  </policy>
  <include>/usr/share/dbus-1/system.d/org.freedesktop.NetworkManager.conf</include>
  <includedir>$dir/bus/policies</includedir>
</busconfig>
CONF
export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$dir/bus/socket
dbus-daemon --config-file="$dir/bus/system.conf" --nofork --nopidfile --nosyslog >>"$dir/log/bus.log" 2>&1 &
for _ in {1..500}; do
  [ ! -S "$dir/bus/socket" ] || break
  sleep 0.01
done

"$NM_FIXTURE_TOOLS/control.sh" start
status=0
"$@" || status=$?
"$NM_FIXTURE_TOOLS/control.sh" stop || true
exit $status
