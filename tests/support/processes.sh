# For scripts that run a command beside processes of their own: sourced with the prefix of a temporary folder's name.
# Makes that folder, $world. When the script ends, whatever ends it, its processes end, the last one first, and the
# folder is gone.
#
#   . processes.sh NAME

world=$(mktemp -d "${TMPDIR:-/tmp}/$1.XXXXXX")
started=()
clean_up() {
  local index
  for ((index = ${#started[@]} - 1; index >= 0; index--)); do
    kill "${started[index]}" 2>/dev/null || true
    wait "${started[index]}" 2>/dev/null || true
  done
  rm -rf "$world"
}
trap clean_up EXIT
trap 'exit 143' TERM INT HUP

# in_background NAME COMMAND...: starts COMMAND, which writes into $world/NAME.log.
in_background() {
  local log=$world/$1.log
  shift
  setpriv --pdeathsig KILL "$@" >>"$log" 2>&1 <&0 &
  started+=($!)
}

# until_true COMMAND...: waits until COMMAND succeeds, for 10 seconds at most.
until_true() {
  local left=1000
  until "$@" >/dev/null 2>&1; do
    [ $((left -= 1)) -gt 0 ] || { echo "${0##*/}: waited in vain for: $*" >&2; cat "$world"/*.log >&2; exit 1; }
    sleep 0.01
  done
}
