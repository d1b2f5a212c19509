#!/usr/bin/env bash
# Takes pictures of every screen in every state, light and dark, wide and smallest, once and twice the pixels.
#
# usage: take.sh [STATE...]    into build/pictures, with the program of build/debug
set -euo pipefail
cd "$(dirname "$0")/../../.."
export QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software LC_ALL=C.UTF-8
for factor in 1 2; do
  QT_SCALE_FACTOR=$factor build/debug/tests/ui/pictures/screens_pictures build/pictures "$@"
done
echo "The pictures lie in $PWD/build/pictures."
