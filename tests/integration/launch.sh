#!/bin/bash
# launch.sh CMAKE BUILD: installs a build into a folder of its own, and starts it as a desktop's launcher does: over the
# session bus, on a screen of its own.
#
# Exit status 77, with the reason, where a program that this takes is not installed.
set -euo pipefail
identifier=example.tarnwik.client

support=$(cd "$(dirname "$0")/../support" && pwd)
if [ "$1" != --inside ]; then
  for program in gdbus xprop; do
    command -v "$program" >/dev/null || { echo "SKIPPED: $program is not installed." >&2; exit 77; }
  done
  exec "$support/keyring/with-keyring.sh" --no-service -- "$support/desktop/with-desktop.sh" "$0" --inside "$@"
fi

# The home folder is a new one from here on, and the bus takes its services from a folder there.
cmake=$2 build=$3
prefix=$HOME/prefix
entry=$prefix/share/applications/$identifier.desktop
unset DESTDIR
"$cmake" --install "$build" --prefix "$prefix" >"$HOME/log" 2>&1 || { cat "$HOME/log"; exit 1; }
cp "$prefix/share/dbus-1/services/$identifier.service" "$HOME/services"

# bus METHOD [ARGUMENT...]: asks the message bus itself.
bus() {
  local method=$1
  shift
  gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
    --method "org.freedesktop.DBus.$method" "$@"
}

# activate: what a launcher calls when its icon is clicked.
activate() {
  gdbus call --session --timeout 30 --dest $identifier --object-path "/${identifier//.//}" \
    --method org.freedesktop.Application.Activate '{}' >/dev/null
}

# wait_until NAME COMMAND...: the behaviour NAME holds once COMMAND succeeds, which may take 20 seconds.
wait_until() {
  local name=$1 left=200
  shift
  until "$@" >/dev/null 2>&1; do
    [ $((left -= 1)) -gt 0 ] || { echo "FAILED  $name"; exit 1; }
    sleep 0.1
  done
  echo "ok      $name"
}

is_shown() { window=$(xdotool search --onlyvisible --name '^Tarnwik$') && [ -n "$window" ]; }
is_active() { [ "$(xdotool getactivewindow)" = "$window" ]; }
is_minimised() { xprop -id "$window" WM_STATE | grep -q Iconic; }
# The entry's name, or the class that it names in its place.
belongs_to_the_entry() {
  xprop -id "$window" WM_CLASS | grep -qE "\"($identifier|$(sed -n 's/^StartupWMClass=//p' "$entry"))\""
}

bus ReloadConfig >/dev/null
bus UpdateActivationEnvironment "{'DISPLAY': '$DISPLAY', 'QT_QPA_PLATFORM': '$QT_QPA_PLATFORM', \
  'DBUS_SYSTEM_BUS_ADDRESS': '$DBUS_SYSTEM_BUS_ADDRESS', 'ASAN_OPTIONS': '${ASAN_OPTIONS:-}'}" >/dev/null
activate
process=$(bus GetConnectionUnixProcessID $identifier | grep -oE '[0-9]+,')
process=${process%,}
trap 'kill "$process"' EXIT
wait_until "activation starts the installed program" \
  [ "$(readlink "/proc/$process/exe")" = "$(realpath "$prefix/bin/tarnwik")" ]
wait_until "activation shows the window" is_shown
wait_until "the window belongs to the desktop entry" belongs_to_the_entry
wait_until "the window is the active one" is_active
xdotool windowminimize "$window"
wait_until "the window can be minimised" is_minimised
activate
wait_until "another activation raises the same window" is_active
wait_until "a start by hand leaves the window to the first one" timeout 20 "$prefix/bin/tarnwik"
