#!/usr/bin/env bash
# Stands in for every program of a Mac that package.sh calls: writes down how it was called ($RECORD), and leaves behind
# as much as the script needs to go on.
set -euo pipefail
name=${0##*/}
echo "$name $*" >>"$RECORD"
# Where the call leads to.
last=${*: -1}
case "$name $*" in
  'uname -m') echo arm64 ;;
  'uname '*) echo Darwin ;;
  'brew --prefix') echo "$HOMEBREW" ;;
  'brew --prefix '*) echo "$HOMEBREW/opt/$last" ;;
  'xcrun --sdk macosx --show-sdk-path') echo /MacOSX.sdk ;;
  'plutil '*) echo example.tarnwik.client.tunnel ;;
  'cmake --build '*)
    mkdir -p "$last/src/ui/app/tarnwik.app/Contents/MacOS"
    touch "$last/src/ui/app/tarnwik.app/Contents/MacOS/"{tarnwik,tarnwikctl}
    ;;
  'ditto -c '*) touch "$last" ;;
  'ditto '*) /bin/cp -R "${*: -2:1}" "$last" ;;
  'cp -X '*) /bin/cp "${@:2}" ;;
  'macdeployqt '*)
    mkdir -p "$1/Contents/PlugIns/platforms" "$1/Contents/Frameworks/QtCore.framework"
    touch "$1/Contents/PlugIns/platforms/libqcocoa.dylib" "$1/Contents/Frameworks/libicu.dylib"
    ;;
esac
