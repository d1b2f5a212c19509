#!/bin/bash
# with-keyring.sh [OPTION...] -- COMMAND...: runs COMMAND beside a real gnome-keyring on a session bus of its own.
#
#   --password TEXT    of the login keyring, which is there and unlocked (the default, "tarnwik")
#   --locked           that keyring is locked, and has not been opened since the daemon started; it holds the item
#                      of service "Tarnwik", account "from-before", with the data "secret"
#   --empty            there is no keyring yet
#   --no-service       nothing but the bus
#   --no-bus           not even that
#   --prompter ANSWER  a person answers the keyring's questions (prompter.py); may be given several times
#   --headless         the desktop's prompter is installed, but cannot start, as in a session without a display
#
# COMMAND finds the processes of bus and keyring in TARNWIK_BUS_PID and TARNWIK_KEYRING_PID, and a line for every
# question that the person was asked in the file TARNWIK_PROMPTER_LOG. Home and runtime folder are private and gone
# afterwards, and so is every process, even if this script is killed. Exit status 77, with the reason, where a program
# that this takes is not installed.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
password=tarnwik state=unlocked answers=() headless=
while [ "$1" != -- ]; do
  case $1 in
    --password) password=$2; shift ;;
    --locked | --empty | --no-service | --no-bus) state=${1#--} ;;
    --headless) headless=1 ;;
    --prompter) answers+=("$2"); shift ;;
    *) echo "with-keyring.sh: unknown option $1" >&2; exit 2 ;;
  esac
  shift
done
shift

for program in gnome-keyring-daemon dbus-daemon dbus-send secret-tool setpriv /usr/bin/python3; do
  command -v "$program" >/dev/null || { echo "SKIPPED: $program is not installed." >&2; exit 77; }
done
if [ ${#answers[@]} -gt 0 ] && ! /usr/bin/python3 -c 'import gi; gi.require_version("Gcr", "3")' 2>/dev/null; then
  echo "SKIPPED: python3-gi and gir1.2-gcr-3 are not installed." >&2
  exit 77
fi

. "$here/../processes.sh" tarnwik-keyring
home=$world

mkdir -p "$home/run" "$home/.local/share/keyrings" "$home/services"
chmod 700 "$home/run"
export HOME=$home XDG_RUNTIME_DIR=$home/run XDG_DATA_HOME=$home/.local/share XDG_CONFIG_HOME=$home/.config \
  XDG_CACHE_HOME=$home/.cache
unset GNOME_KEYRING_CONTROL GNOME_KEYRING_TEST_PROMPTER SECRET_SERVICE_BUS_NAME SECRET_BACKEND DISPLAY WAYLAND_DISPLAY \
  DBUS_SESSION_BUS_ADDRESS

is_owned() {
  dbus-send --session --print-reply=literal --dest=org.freedesktop.DBus / org.freedesktop.DBus.NameHasOwner \
    "string:$1" | grep -q true
}

start_keyring() {
  in_background keyring gnome-keyring-daemon --foreground --components=secrets "$@" \
    < <(printf '%s' "$password")
  export TARNWIK_KEYRING_PID=$!
  until_true is_owned org.freedesktop.secrets
}

if [ $state != no-bus ]; then
  # Without the system's service folders, so that no other Secret Service and no other prompter is ever started.
  [ -z "$headless" ] || printf '[D-BUS Service]\nName=%s\nExec=/bin/false\n' org.gnome.keyring.SystemPrompter \
    >"$home/services/org.gnome.keyring.SystemPrompter.service"
  cat >"$home/session.conf" <<CONF
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type><listen>unix:path=$home/run/bus</listen><auth>EXTERNAL</auth>
  <servicedir>$home/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
  </policy>
</busconfig>
CONF
  in_background bus dbus-daemon --config-file="$home/session.conf" --nofork --nopidfile </dev/null
  export TARNWIK_BUS_PID=$!
  export DBUS_SESSION_BUS_ADDRESS=unix:path=$home/run/bus
  until_true test -S "$home/run/bus"
fi

case $state in
  unlocked) start_keyring --unlock ;;
  empty) start_keyring ;;
  locked)
    start_keyring --unlock
    printf secret | secret-tool store --label="Stored before" service Tarnwik account from-before
    kill "$TARNWIK_KEYRING_PID"
    wait "$TARNWIK_KEYRING_PID" 2>/dev/null || true
    unset "started[-1]"
    start_keyring
    ;;
esac

export TARNWIK_PROMPTER_LOG=$home/prompter
if [ ${#answers[@]} -gt 0 ]; then
  in_background prompter /usr/bin/python3 "$here/prompter.py" --log "$TARNWIK_PROMPTER_LOG" \
    "${answers[@]}" </dev/null
  until_true test -e "$TARNWIK_PROMPTER_LOG"
fi

status=0
"$@" || status=$?
exit $status
