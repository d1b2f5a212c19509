#!/bin/bash
# with-desktop.sh [--system-bus] COMMAND...: runs COMMAND on a desktop of its own: a virtual screen with a window
# manager, and the bus through which screen readers see the programs' windows.
#
# Needs a session bus that nobody else uses, such as with-keyring.sh gives:
#
#   with-keyring.sh --no-service -- with-desktop.sh COMMAND...
#
# The screen is 1280 by 960 points. There is no system bus here, so that no test ever talks to the machine's own
# services; --system-bus is for those that bring one of their own. Every process is gone afterwards, even if this script
# is killed. Exit status 77, with the reason, where a program that this takes is not installed.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
system_bus=unix:path=/nonexistent
if [ "$1" = --system-bus ]; then
  system_bus=$DBUS_SYSTEM_BUS_ADDRESS
  shift
fi
launcher=/usr/libexec/at-spi-bus-launcher
for program in Xvfb openbox xdotool setpriv "$launcher" /usr/bin/python3; do
  command -v "$program" >/dev/null || { echo "SKIPPED: $program is not installed." >&2; exit 77; }
done
[ -n "${DBUS_SESSION_BUS_ADDRESS:-}" ] || { echo "with-desktop.sh: there is no session bus." >&2; exit 2; }

. "$here/../processes.sh" tarnwik-desktop

is_accessible() {
  dbus-send --session --print-reply=literal --dest=org.a11y.Bus /org/a11y/bus org.a11y.Bus.GetAddress | grep -q unix:
}

# The server takes a display number that is free, and tells it when it is ready.
in_background screen Xvfb -displayfd 3 -screen 0 1280x960x24 -nolisten tcp -noreset 3>"$world/display" </dev/null
until_true test -s "$world/display"
DISPLAY=:$(cat "$world/display")
export DISPLAY
unset WAYLAND_DISPLAY XAUTHORITY
# The keyboard's library hands texts without an end to strndup, as it may: too strict a sanitizer stops it.
[ -z "${ASAN_OPTIONS:-}" ] || export ASAN_OPTIONS=$ASAN_OPTIONS:strict_string_checks=0
export DBUS_SYSTEM_BUS_ADDRESS=$system_bus QT_QPA_PLATFORM=xcb

in_background windows openbox --sm-disable --config-file "$here/openbox.xml" </dev/null
in_background accessibility "$launcher" --launch-immediately </dev/null
until_true is_accessible
until_true xdotool get_num_desktops

status=0
"$@" || status=$?
exit $status
