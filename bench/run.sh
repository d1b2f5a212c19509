#!/usr/bin/env bash
# Measures what docs/performance.md tells, and prints it. Wants an idle machine.
#
# usage: run.sh [models|terminal|windows|build]...    only these; without a word all, which takes about 25 minutes
#
# In the environment: TARNWIK_BENCH_ROUNDS, how often each window is opened (9), and TARNWIK_BENCH_IDLE_SECONDS, how
# long each is then watched doing nothing (60). A look whether all goes well takes 1 and 5.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/build.sh

support=tests/support
release=build/bench

measure_models() {
  $release/bench/tarnwik_bench --benchmark_repetitions=9 --benchmark_report_aggregates_only=true 2>/dev/null |
    grep -E 'median|^Benchmark'
}

# The terminal client and its peers ask the same daemon: a real one, in namespaces of its own.
measure_terminal() {
  $support/networkmanager/run-beside-networkmanager.sh \
    /usr/bin/python3 bench/terminal.py $release/src/cli/tarnwikctl $release/src/service/server/tarnwik-service
}

measure_windows() {
  $support/keyring/with-keyring.sh --no-service -- $support/desktop/with-desktop.sh \
    /usr/bin/python3 bench/window.py $release
}

# What is installed, from nothing: the configuration counts too.
measure_build() {
  local folder
  folder=$(mktemp -d)
  local TIMEFORMAT="clean build with $(nproc) cores: %R s, of which processor %U s"
  time { cmake --preset release -B "$folder" && cmake --build "$folder"; } >"$folder/log" 2>&1 ||
    { cat "$folder/log" >&2; rm -rf "$folder"; return 1; }
  rm -rf "$folder"
}

install_packages "${build_packages[@]}" "${test_packages[@]}" "${bench_packages[@]}"
build bench tarnwik tarnwikctl tarnwik-service tarnwik_bare_window tarnwik_bench
[ $# -gt 0 ] || set -- models terminal windows build
for what in "$@"; do
  "measure_$what"
  echo
done
