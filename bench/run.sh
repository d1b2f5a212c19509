#!/usr/bin/env bash
# Measures what docs/performance.md tells, and prints it. Takes about two minutes, and wants an idle machine.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/build.sh

install_packages "${build_packages[@]}" "${test_packages[@]}"
build bench tarnwik_bench tarnwikctl tarnwik-service

build/bench/bench/tarnwik_bench --benchmark_repetitions=9 --benchmark_report_aggregates_only=true 2>/dev/null |
  grep -E 'median|^Benchmark'
echo
# The terminal client and its peers ask the same daemon: a real one, in namespaces of its own.
tests/support/networkmanager/run-beside-networkmanager.sh \
  /usr/bin/python3 bench/terminal.py build/bench/src/cli/tarnwikctl build/bench/src/service/server/tarnwik-service
