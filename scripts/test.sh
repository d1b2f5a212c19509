#!/usr/bin/env bash
# Runs every test: once as people debug it, then the unit and integration tests again under the sanitizers.
#
# usage: test.sh [PRESET...]    only these presets (debug, asan)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/build.sh

install_packages "${build_packages[@]}" "${test_packages[@]}"
export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1
export LSAN_OPTIONS=suppressions=$PWD/tests/support/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1

log=$(mktemp)
trap 'rm -f "$log"' EXIT
status=0
for preset in "${@:-debug asan}"; do
  for name in $preset; do
    build "$name"
    echo "Testing ($name)…"
    ctest --preset "$name" --output-on-failure 2>&1 | tee -a "$log" || status=1
  done
done

# What was skipped is said again at the end, where it is not overlooked.
skipped=$(grep -c '\*\*\*Skipped' "$log" || true)
if [ "$skipped" -gt 0 ]; then
  echo
  echo "SKIPPED: $skipped test programs could not run here:"
  grep '\*\*\*Skipped' "$log"
fi
total=$(sed -n 's/.* tests failed out of \([0-9]*\)$/\1/p' "$log" | awk '{sum += $1} END {print sum + 0}')
failed=$(sed -n 's/.*, \([0-9]*\) tests failed out of [0-9]*$/\1/p' "$log" | awk '{sum += $1} END {print sum + 0}')
echo
echo "$((total - failed - skipped)) passed, $failed failed, $skipped skipped"
exit $status
