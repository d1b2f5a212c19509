#!/usr/bin/env bash
# Checks the source without running it: formatting, and clang-tidy and qmllint with every warning an error.
#
# usage: lint.sh [FILE...]    only these C++ sources, named from the project's folder
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/build.sh

install_packages "${build_packages[@]}" "${test_packages[@]}" "${lint_packages[@]}"
# clang-tidy reads the compilation database, and the headers that the build makes.
build debug

if [ $# -gt 0 ]; then
  sources=("$@")
else
  # But for those that no compiler should take.
  mapfile -t sources < <(git ls-files -co --exclude-standard \
    'src/*.cpp' 'tests/*.cpp' 'bench/*.cpp' 'packaging/*.cpp' ':!tests/macos/broken')
fi
mapfile -t headers < <(git ls-files -co --exclude-standard 'src/*.h' 'tests/*.h')
for source in "${sources[@]}"; do
  grep -qF "$PWD/$source\"" build/debug/compile_commands.json || { echo "Nothing compiles $source." >&2; exit 1; }
done

echo "Checking the formatting…"
clang-format-19 --dry-run -Werror "${sources[@]}" "${headers[@]}"

echo "Checking the code (clang-tidy)…"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
printf '%s\0' "${sources[@]}" | xargs -0 -n 4 -P "$(nproc)" clang-tidy-19 -p build/debug --quiet >"$log" 2>&1 ||
  { grep -vE 'warnings? generated|Processing file' "$log" >&2; exit 1; }

echo "Checking the QML…"
# The modules are checked as the build lays them out, since only there each finds its own types.
mapfile -t screens < <(find build/debug/qml -name '*.qml' | sort; git ls-files -co --exclude-standard 'tests/*.qml')
/usr/lib/qt6/bin/qmllint -I build/debug/qml "${screens[@]}" >"$log" 2>&1 || { cat "$log" >&2; exit 1; }

echo "Checking the scripts…"
git ls-files -coz --exclude-standard '*.sh' '.ci/run' | xargs -0 -n 1 bash -n
echo "Nothing to complain about."
