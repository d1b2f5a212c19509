#!/usr/bin/env bash
# Takes the pictures in the README anew: the application and, in a real terminal, tarnwikctl; both on the demo and on a
# virtual display.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/build.sh

install_packages "${build_packages[@]}" "${picture_packages[@]}"
scripts/tour.sh build/pictures
mkdir -p docs/pictures
for shown in "connect 5-connected" "account 9-bought"; do
  read -r name step <<<"$shown"
  cp "build/pictures/$step.png" "docs/pictures/$name.png"
  cp "build/pictures/$step-dark.png" "docs/pictures/$name-dark.png"
done

build release tarnwikctl
world=$(mktemp -d)
started=()
trap 'kill "${started[@]}" 2>/dev/null || true; rm -rf "$world"' EXIT
cat >"$world/job" <<END
export PATH="$PWD/build/release/src/cli:\$PATH" XDG_DATA_HOME="$world/data"
show() { printf '\n\033[1;34m\$\033[0m'; printf ' %q' "\$@"; echo; "\$@"; }
printf '\033[1;34m\$\033[0m tarnwikctl --demo sign-in --email demo@tarnwik.example\nPassword: \n'
echo demo | tarnwikctl --demo sign-in --email demo@tarnwik.example
show tarnwikctl --demo nodes
show tarnwikctl --demo connect --node Rotterdam\ 1
sleep 3
show tarnwikctl --demo status
show tarnwikctl --demo disconnect
touch $world/done
sleep 60
END

Xvfb :97 -screen 0 1400x1200x24 >/dev/null 2>&1 &
started+=($!)
sleep 1
DISPLAY=:97 xterm -geometry 78x27 -fa 'DejaVu Sans Mono' -fs 13 -bg '#1E1E20' -fg '#E6E6EA' -b 16 +sb \
  -T tarnwikctl -e bash "$world/job" &
started+=($!)
for _ in {1..300}; do
  [ ! -e "$world/done" ] || break
  sleep 0.1
done
sleep 0.5
DISPLAY=:97 import -window tarnwikctl docs/pictures/terminal.png
echo "docs/pictures/terminal.png"
