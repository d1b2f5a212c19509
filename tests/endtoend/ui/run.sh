#!/bin/bash
# run.sh TARNWIK TARNWIKCTL TARNWIK_SERVICE [PYTEST_OPTION...]: tests the application on a desktop of its own.
#
# Without options two halves of the tests run at a time, each on its own desktop, since much of what they do is waiting.
# With options, such as the name of a test file, there is but one run. Every process is gone afterwards, also when this
# script is terminated. Exit status 77, with the reason, where something that this takes is not installed. In the
# environment:
#
#   TARNWIK_TEST_RESULTS     a folder for files that list every test with its outcome, when there are no options
#   TARNWIK_TEST_SLOWNESS    how many times longer than usual everything may take (1)
#   TARNWIK_TEST_SANITIZED   1 where the program's memory says nothing about its use
#   TARNWIK_KEEP_STRUCTURE   1 to keep how the screens look now, see test_structure.py
#   TARNWIK_SOAK_ACTIONS     how much the random user does (200), and
#   TARNWIK_SOAK_SEED        in which order, see test_soak.py
set -eu

here=$(cd "$(dirname "$0")" && pwd)
tests=$(cd "$here/../.." && pwd)
[ $# -ge 3 ] || { echo "usage: run.sh TARNWIK TARNWIKCTL TARNWIK_SERVICE [PYTEST_OPTION...]" >&2; exit 2; }
TARNWIK_PROGRAM=$(realpath "$1") TARNWIKCTL_PROGRAM=$(realpath "$2") TARNWIK_SERVICE_PROGRAM=$(realpath "$3")
export TARNWIK_PROGRAM TARNWIKCTL_PROGRAM TARNWIK_SERVICE_PROGRAM
export TARNWIK_SEED=$tests/../packaging/seed.example.json PYTHONDONTWRITEBYTECODE=1
shift 3

for module in pytest gi; do
  /usr/bin/python3 -c "import $module" 2>/dev/null || { echo "SKIPPED: python3-$module is not installed." >&2; exit 77; }
done
for program in setpriv import; do
  command -v "$program" >/dev/null || { echo "SKIPPED: $program is not installed." >&2; exit 77; }
done
cd "$here"

TMPDIR=$(mktemp -d "${TMPDIR:-/tmp}/tarnwik-application.XXXXXX")
export TMPDIR
started=()
# descendants PROCESS: that process, and all that it and those have started.
descendants() {
  local child
  echo "$1"
  for child in $(cat "/proc/$1/task/"*/children 2>/dev/null); do
    descendants "$child"
  done
}
clean_up() {
  local process all=()
  for process in "${started[@]}"; do
    mapfile -t -O ${#all[@]} all < <(descendants "$process")
  done
  [ ${#all[@]} = 0 ] || kill -KILL "${all[@]}" 2>/dev/null || true
  wait
  rm -rf "$TMPDIR"
}
trap clean_up EXIT
trap 'exit 143' TERM INT HUP

# in_desktop PYTEST_OPTION...: becomes pytest.
in_desktop() {
  local with_parent=(setpriv --pdeathsig KILL)
  exec "${with_parent[@]}" "$tests/support/keyring/with-keyring.sh" --no-service -- \
    "${with_parent[@]}" "$tests/support/desktop/with-desktop.sh" \
    "${with_parent[@]}" /usr/bin/python3 -m pytest -p no:cacheprovider --basetemp="$TMPDIR/$BASHPID" -q --tb=short "$@"
}

if [ $# -gt 0 ]; then
  in_desktop "$@" &
  started+=($!)
else
  for half in 1 2; do
    options=()
    [ -z "${TARNWIK_TEST_RESULTS:-}" ] || options=("--junit-xml=$TARNWIK_TEST_RESULTS/application_test_$half.xml")
    TARNWIK_TEST_HALF=$half in_desktop "${options[@]}" >"$TMPDIR/$half.log" 2>&1 &
    started+=($!)
  done
fi
status=0
for index in "${!started[@]}"; do
  wait "${started[index]}" || status=$?
  log=$TMPDIR/$((index + 1)).log
  [ ! -e "$log" ] || cat "$log"
done
started=()
exit $status
