#!/usr/bin/env bash
# Runs every test: once as people debug it, once more under the sanitizers, and the checks of what is written for macOS.
#
# usage: test.sh [PRESET...]    only these presets (debug, asan)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/build.sh

[ $# -gt 0 ] || set -- debug asan
install_packages "${build_packages[@]}" "${test_packages[@]}"
export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1
export UBSAN_OPTIONS=print_stacktrace=1

log=$(mktemp)
trap 'rm -f "$log"' EXIT
total=0 failed=0 skipped=() status=0
for preset in "$@"; do
  build "$preset"
  echo "Testing ($preset)…"
  ctest --preset "$preset" | tee "$log" || status=1
  read -r bad all < <(sed -nE 's/.*, ([0-9]+) tests failed out of ([0-9]+)$/\1 \2/p' "$log")
  total=$((total + all)) failed=$((failed + bad))
  # Programs that could not run at all, and single tests of those that could: each says why.
  mapfile -t reasons < <(grep -hE '^SKIPPED: |^[^ ]+: Skipped$' -A1 "build/$preset/Testing/Temporary/LastTest.log" |
    sed -nE 's/^SKIPPED: //p; /: Skipped$/{n;p}' | sort -u)
  skipped+=("${reasons[@]/#/$preset: }")
done

scripts/check-macos.sh | tee "$log" || status=1
read -r good bad < <(sed -nE 's/^macOS: ([0-9]+) passed, ([0-9]+) failed.*/\1 \2/p' "$log")
total=$((total + good + bad)) failed=$((failed + bad))
mapfile -t reasons < <(sed -n 's/^SKIPPED: //p' "$log")
skipped+=("${reasons[@]/#/macOS: }")

# Said again at the end, where it is not overlooked.
echo
for reason in "${skipped[@]}"; do
  echo "NOT TESTED: $reason"
done
echo "$((total - failed)) passed, $failed failed, ${#skipped[@]} skipped"
exit $status
