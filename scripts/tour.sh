#!/usr/bin/env bash
# Does the whole job in the application, as a person at the keyboard would, on a virtual screen and in a demo world of
# its own: sign in, choose an exit node, connect, watch usage move, disconnect, buy a plan, sign out. Every step is
# checked with tarnwikctl, which sees the same world, and leaves a picture.
#
# usage: tour.sh FOLDER    where the pictures go
set -euo pipefail
folder=$(realpath -m "${1:?usage: tour.sh FOLDER}")
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/build.sh

if [ -z "${TARNWIK_TOUR_BUS:-}" ]; then
  install_packages "${build_packages[@]}" "${desktop_packages[@]}"
  build release tarnwik tarnwikctl
  # A message bus that nobody else uses: the desktop of whoever runs this sees nothing of it.
  TARNWIK_TOUR_BUS=1 exec dbus-run-session -- "$0" "$folder"
fi

client=build/release/src/cli/tarnwikctl
world=$(mktemp -d)
started=()
trap 'kill "${started[@]}" 2>/dev/null || true; rm -rf "$world"' EXIT
mkdir -p "$folder"
export XDG_DATA_HOME=$world/data XDG_CONFIG_HOME=$world/config XDG_STATE_HOME=$world/state XDG_CACHE_HOME=$world/cache
export XDG_RUNTIME_DIR=$world QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY

Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp 3>"$world/display" >/dev/null 2>&1 &
started+=($!)
until [ -s "$world/display" ]; do sleep 0.05; done
DISPLAY=:$(cat "$world/display")
export DISPLAY
openbox >/dev/null 2>&1 &
started+=($!)

# until_true COMMAND...: waits until COMMAND succeeds, for 20 seconds at most.
until_true() {
  local left=200
  until "$@" >/dev/null 2>&1; do
    [ $((left -= 1)) -gt 0 ] || { echo "Waited in vain: $*" >&2; cat "$world/log" >&2; return 1; }
    sleep 0.1
  done
}
until_true xdotool get_num_desktops

# status KEY: what tarnwikctl tells under KEY.
status() {
  "$client" --demo --json status 2>/dev/null | python3 -c '
import functools, json, sys
value = functools.reduce(lambda object, key: (object or {}).get(key), sys.argv[1].split("."), json.load(sys.stdin))
print(value)' "$1"
}

# expect WHAT KEY VALUE: waits until tarnwikctl tells VALUE under KEY.
expect() {
  for _ in {1..150}; do
    [ "$(status "$2")" != "$3" ] || { echo "  $1"; return 0; }
    sleep 0.1
  done
  echo "  $1: not so, $2 is $(status "$2")." >&2
  return 1
}

keys() { xdotool key --clearmodifiers --delay 60 "$@"; }

# picture NAME [SECONDS]: what the window shows, once it has been drawn.
picture() {
  sleep "${2:-0.6}"
  import -window "$window" "$folder/$1.png"
}

# scheme NUMBER: tells the program what the desktop's settings would: 1 is dark, 2 light.
scheme() {
  dbus-send --session --type=signal /org/freedesktop/portal/desktop \
    org.freedesktop.portal.Settings.SettingChanged \
    string:org.freedesktop.appearance string:color-scheme variant:uint32:"$1"
}

echo "The whole job, in the application:"
build/release/src/ui/app/tarnwik --demo >"$world/log" 2>&1 &
started+=($!)
has_window() { window=$(xdotool search --onlyvisible --name '^Tarnwik$') && [ -n "$window" ]; }
has_focus() { xdotool windowfocus "$window" && [ "$(xdotool getwindowfocus)" = "$window" ]; }
until_true has_window
until_true has_focus
picture 1-sign-in
xdotool type --delay 20 demo@tarnwik.example
keys Tab
xdotool type --delay 20 demo
keys Return
expect "signed in" signed_in True
picture 2-disconnected

# From the start of the window to the exit node's picker, and to the second node of its list.
keys Tab Tab Tab Tab Tab Tab Down
picture 3-node-chosen
keys ctrl+shift+c
picture 4-connecting 0.2
expect "connected" vpn.label Connected
"$client" --demo status | grep -q "Through *Rotterdam 1" && echo "  through Rotterdam 1"
used=$(status account.used_bytes)
picture 5-connected
scheme 1
picture 5-connected-dark
scheme 2
for _ in {1..300}; do
  [ "$(status account.used_bytes)" -le "$used" ] || break
  sleep 0.1
done
[ "$(status account.used_bytes)" -gt "$used" ] && echo "  usage moves"
keys ctrl+r
picture 6-usage
keys ctrl+shift+d
expect "disconnected" vpn.label Disconnected
picture 7-disconnected

keys ctrl+2
sleep 1
picture 8-account
# To the first plan's button.
keys Tab Tab Tab Tab Tab Tab space
expect "bought the monthly plan" account.plan_gb 500
sleep 1
picture 9-bought
scheme 1
picture 9-bought-dark
scheme 2
keys ctrl+3
picture 10-settings
keys Tab Tab Tab Tab Tab Tab Tab space
expect "signed out" signed_in False
picture 11-signed-out
[ ! -s "$world/log" ] || { echo "The program complained:" >&2; cat "$world/log" >&2; }
echo "A picture of each step: $folder"
