#!/bin/bash
# The customer's side of chain.sh, as the customer's own user, beside a keyring.
set -euo pipefail

client=$PROGRAMS/tarnwikctl

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

# expect TEXT COMMAND...: the command succeeds, and prints TEXT somewhere.
expect() {
  local text=$1 output
  shift
  output=$("$@") || fail "$* ended with status $?"
  [[ $output == *"$text"* ]] || fail "$* printed “$output”, not “$text”"
}

# field EXPRESSION: of the JSON on standard input.
field() {
  /usr/bin/python3 -c "import json, sys; value = json.load(sys.stdin)$1; print(value)"
}

in_terminal() {
  case $1 in
    sign-in) printf 'correct horse\n' | "$client" sign-in --email ada@example.com --server "$CHAIN_URL" >/dev/null ;;
    connect) expect "Connected through Exit." "$client" connect --wait 20 ;;
    disconnect) expect "Disconnected." "$client" disconnect ;;
    sign-out) expect "Signed out." "$client" sign-out ;;
  esac
}
in_window() {
  local answer
  echo "$1" >&"${WINDOW[1]}"
  read -r answer <&"${WINDOW[0]}" && [ "$answer" = done ] || fail "the window could not $1"
}
customer_does() { in_terminal "$@"; }
if [ -e "$PROGRAMS/tarnwik" ]; then
  coproc WINDOW { TARNWIK_PROGRAM=$PROGRAMS/tarnwik /usr/bin/python3 "$PROGRAMS/ui/chain_window.py"; }
  window=$WINDOW_PID
  customer_does() { in_window "$@"; }
fi

customer_does sign-in
expect "Exit" "$client" nodes
expect "Not configured" "$client" status

customer_does connect
expect "Connected" "$client" status
[ "$("$client" status --json | field "['vpn']['status']")" = 3 ] || fail "the status is not 3"

# The key in the keyring is the one whose public half the service recorded.
device=$("$client" devices --json)
id=$(field "[0]['id']" <<<"$device")
key=$(secret-tool lookup service Tarnwik account "tarnwik-device-$id-private-key")
(umask 077 && printf '%s' "$key" >"$CUSTOMER/key")
[ "$(wg pubkey <<<"$key")" = "$(field "[0]['public_key']" <<<"$device")" ] || fail "the keys are no pair"

# The saved connection says where the key is, and not what it is. While the application runs it tells its own user the
# key, as it tells NetworkManager.
fields=vpn.data
[ -n "${window:-}" ] || fields+=,vpn.secrets
saved=$(nmcli --show-secrets --terse --fields "$fields" connection show Tarnwik)
[[ $saved != *"$key"* ]] || fail "the saved connection holds the private key"
[[ $saved == *"tarnwik-device-$id-private-key"* ]] || fail "the saved connection does not name the key"

# A packet crosses the tunnel once the exit node knows who calls.
preshared=$(sed -n 's/.*"preshared_key":"\([^"]*\)".*/\1/p' <<<"${saved//\\/}" | head -1)
echo "$(wg pubkey <<<"$key") $preshared $(field "[0]['profiles'][0]['assigned_ip']" <<<"$device")" >"$CUSTOMER/peers"
for _ in {1..1000}; do
  [ ! -e "$CUSTOMER/is-known" ] || break
  sleep 0.01
done
[ -e "$CUSTOMER/is-known" ] || fail "the exit node does not know the customer"
ping -q -c 3 -i 0.2 -W 10 10.77.0.1 >/dev/null || fail "no packet crossed the tunnel"

customer_does disconnect
! ip link show twtun0 >/dev/null 2>&1 || fail "the tunnel device is still there"
customer_does sign-out
status=0
"$client" account 2>/dev/null || status=$?
[ $status = 3 ] || fail "the session did not end"

if [ -n "${window:-}" ]; then
  # It ends with its commands.
  exec {WINDOW[1]}>&-
  wait "$window" || fail "the window did not end well"
fi
