#!/usr/bin/env bash
# Builds the client and shows its main job: sign in, choose an exit node, connect, look, disconnect, sign out.
#
# Everything runs on the demo's platform: service, keychain and VPN inside the program. Nothing on this computer or its
# network is changed but the demo's own folder below the user's data folder.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/build.sh

install_packages "${build_packages[@]}"
build release tarnwikctl
client=build/release/src/cli/tarnwikctl

show() {
  printf '\n$ tarnwikctl --demo %s\n' "$*"
  "$client" --demo "$@"
}

printf '\n$ echo demo | tarnwikctl --demo sign-in --email demo@tarnwik.example\n'
echo demo | "$client" --demo sign-in --email demo@tarnwik.example
show nodes
show connect --node 2
show status
show account
show disconnect
show sign-out

cat <<END

That was the demo. To try it yourself:

  $client --demo sign-in --email demo@tarnwik.example     (the password is: demo)
  $client --demo watch
  $client --help
END
