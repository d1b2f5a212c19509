#!/bin/bash
# control.sh start|stop|kill|restart|freeze: the fixture's own NetworkManager. Only inside run-beside-networkmanager.sh.
# To start one that runs, or to stop one that does not, is fine.
set -euo pipefail

dir=${NM_FIXTURE_DIR:?Run this inside run-beside-networkmanager.sh.}
# A file of our own: the daemon removes the one it writes late in its exit, when the next one may have written it anew.
pid_file=$dir/daemon.pid

bus_name_is_owned() {
  local answer
  answer=$(dbus-send --system --print-reply=literal --dest=org.freedesktop.DBus / \
    org.freedesktop.DBus.NameHasOwner string:org.freedesktop.NetworkManager 2>/dev/null) || return 1
  [[ $answer == *true* ]]
}

is_running() {
  [ -s "$pid_file" ] && grep -qs '^State:[[:space:]]*[^Z[:space:]]' "/proc/$(cat "$pid_file")/status"
}

# wait_until CONDITION MESSAGE: for 10 seconds at most.
wait_until() {
  for _ in {1..1000}; do
    ! "$1" || return 0
    sleep 0.01
  done
  echo "NetworkManager $2." >&2
  return 1
}

is_gone() { ! is_running && ! bus_name_is_owned; }

start() {
  ! is_running || return 0
  setsid NetworkManager --debug --config="$dir/etc/NetworkManager.conf" --state-file="$dir/state/NetworkManager.state" \
    >>"$dir/log/networkmanager.log" 2>&1 </dev/null &
  echo $! >"$pid_file"
  disown
  wait_until bus_name_is_owned "did not start"
  nm-online --quiet --timeout=10 || { echo "NetworkManager has no network." >&2; return 1; }
}

end() {
  ! is_running || kill "-$1" "$(cat "$pid_file")"
  wait_until is_gone "does not exit"
}

case ${1:-} in
  start) start ;;
  stop) end TERM ;;
  kill) end KILL ;;
  restart) end TERM; start ;;
  # It answers nothing any more, until it is killed.
  freeze) kill -STOP "$(cat "$pid_file")" ;;
  *) echo "Usage: $0 start|stop|kill|restart|freeze" >&2; exit 2 ;;
esac
