#!/bin/bash
# chain.sh TARNWIKCTL TARNWIK_SERVICE [TARNWIK]: the program's main job with every part real. Inside
# run-beside-networkmanager.sh. The customer works in the terminal, or in the window of TARNWIK.
#
# A customer signs in at a service process, and connects: a device is registered whose private key lies in a Secret
# Service, NetworkManager starts a VPN service with it, and packets cross the tunnel to a peer in another network
# namespace. Then all of it is taken down again.
set -euo pipefail

tests=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
world=$NM_FIXTURE_DIR

# until_true CONDITION...: waits until the command succeeds, for 10 seconds at most.
until_true() {
  for _ in {1..1000}; do
    ! "$@" || return 0
    sleep 0.01
  done
  echo "FAILED: waited in vain for: $*" >&2
  return 1
}

for program in wireguard-go wg ping nmcli; do
  command -v "$program" >/dev/null || { echo "SKIPPED: $program is not installed." >&2; exit 77; }
done

# The client runs as an ordinary user where there is one: from copies, since that user may not reach the build.
cp "$1" "$world/tarnwikctl"
cp "$2" "$world/tarnwik-service"
cp -r "$tests/support/keyring" "$tests/support/processes.sh" "$world/"
cp "$tests/endtoend/chain-customer.sh" "$world/"
desktop=()
if [ $# = 3 ]; then
  cp "$3" "$world/tarnwik"
  cp -r "$tests/support/desktop" "$tests/endtoend/ui" "$world/"
  cp "$tests/endtoend/chain_window.py" "$world/ui/"
  desktop=("$world/desktop/with-desktop.sh" --system-bus)
fi
as_customer=()
if grep -qE '^ *0 +0 +4294967295$' /proc/self/uid_map; then
  as_customer=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
fi

# The exit node: a namespace of its own at the other end of the cable, with a WireGuard interface.
ip netns add exit-node
ip link set uplink-peer netns exit-node
ip -n exit-node address add 192.0.2.1/24 dev uplink-peer
ip -n exit-node link set uplink-peer up
ip -n exit-node link set lo up
(umask 077 && wg genkey >"$world/node.key")
ip netns exec exit-node env LOG_LEVEL=error wireguard-go --foreground wgexit >>"$world/log/exit-node.log" 2>&1 &
exit_node=$!
until_true test -S /run/wireguard/wgexit.sock
ip netns exec exit-node wg set wgexit listen-port 51820 private-key "$world/node.key"
ip -n exit-node address add 10.77.0.1/24 dev wgexit
ip -n exit-node link set wgexit up
nm-online --quiet --timeout=10

# The service, which knows one customer and that node.
cat >"$world/seed.json" <<SEED
{
  "accounts": [{
    "password": "correct horse",
    "account": {"id": 1, "email": "ada@example.com", "role": "customer", "status": "active",
      "subscription_status": "active", "service_enabled": true, "plan_gb": 100, "quota_bytes": 107374182400,
      "used_bytes": 0, "monthly_price_cents": 499, "billing_provider": "none", "billing_portal_url": ""}
  }],
  "nodes": [{
    "node": {"id": 3, "name": "Exit", "provider": "Test", "region": "Next door", "status": "online",
      "runtime": "container", "endpoint": "192.0.2.1", "awg_enabled": true, "has_ipv6": false},
    "tunnel": {"public_key": "$(wg pubkey <"$world/node.key")", "endpoint": "192.0.2.1:51820", "dns": [], "mtu": 1400,
      "ipv4_pool": "10.77.0.0/24", "allowed_ips": ["10.77.0.0/24"], "persistent_keepalive": 5,
      "preshared_keys": true, "amneziawg": {}}
  }]
}
SEED
"$world/tarnwik-service" --port 0 --seed "$world/seed.json" >"$world/log/service.log" 2>&1 &
service=$!
until_true grep -q '^Listening on ' "$world/log/service.log"
url=$(sed -n 's/^Listening on //p' "$world/log/service.log")

"$NM_FIXTURE_TOOLS/install-provider.sh"
echo wg >"$world/provider-mode"

# The customer tells the exit node who calls, as the service of a real node would.
mkdir -m 777 "$world/customer"
mkfifo -m 666 "$world/customer/peers"
(
  while read -r public_key preshared_key address; do
    printf '%s' "$preshared_key" >"$world/preshared"
    ip netns exec exit-node wg set wgexit peer "$public_key" preshared-key "$world/preshared" allowed-ips "$address/32"
    touch "$world/customer/is-known"
  done <"$world/customer/peers"
) &

status=0
CHAIN_URL=$url PROGRAMS=$world CUSTOMER=$world/customer \
  "${as_customer[@]}" "$world/keyring/with-keyring.sh" -- "${desktop[@]}" "$world/chain-customer.sh" || status=$?

# What only root may look at: the saved connection is there, and the private key was written nowhere.
if [ $status = 0 ]; then
  grep -q '^client_private_key-flags=1$' "$world"/connections/Tarnwik*.nmconnection
  if grep -rqF "$(cat "$world/customer/key")" "$world"/{connections/,state,log,run,seed.json}; then
    echo "FAILED: the private key was written to a file." >&2
    status=1
  fi
fi

kill "$service" "$exit_node"
wait "$service" "$exit_node" 2>/dev/null || true
[ $status != 0 ] || echo "The chain holds."
exit $status
