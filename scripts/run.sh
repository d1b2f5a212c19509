#!/usr/bin/env bash
# Builds the application and starts it on the demo: a service, keychain, VPN and App Store inside the program. Nothing
# on this computer or its network is changed but the demo's own folder below the user's data folder.
#
# Where there is no display it starts a virtual one, does the whole job there as a person would, and leaves pictures.
#
# usage: run.sh [FOLDER]    where the pictures go (build/pictures)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/build.sh

install_packages "${build_packages[@]}"
build release
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "There is no display here, so the application runs on a virtual one."
  scripts/tour.sh "${1:-build/pictures}"
  echo "In this terminal: build/release/src/cli/tarnwikctl --demo sign-in --email demo@tarnwik.example (password: demo)"
  exit
fi
cat <<END
Tarnwik starts on the demo. Its account:

  Email     demo@tarnwik.example
  Password  demo

END
exec build/release/src/ui/app/tarnwik --demo
