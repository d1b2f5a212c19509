#!/usr/bin/env bash
# Checks what is written for macOS as far as a machine without it can. Nothing of it runs here.
#
# - Every Objective-C++ source goes through clang with ARC and all warnings as errors, over declarations of our own
#   (tests/support/apple); sources with one mistake each must be refused, so that this is known to find mistakes.
# - Every Swift source goes through a grammar of Swift, which npm brings.
# - What the Swift and the C side of the App Store's bridge say of their functions is compared.
# - The build for macOS is configured, and its property lists and rules are read.
# - package.sh runs with recorders in place of the Mac's programs.
#
# usage: check-macos.sh
set -euo pipefail
cd "$(dirname "$0")/.."

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
passed=0 failed=0

pass() { passed=$((passed + 1)); }
refuse() {
  echo "FAILED: $1" >&2
  [ ! -s "${2-}" ] || sed 's/^/  /' "$2" >&2
  failed=$((failed + 1))
}

mapfile -t sources < <(find src -name '*.mm' | sort)
compile=(clang++-19 -x objective-c++ -std=c++20 -fsyntax-only -fobjc-arc -fblocks -fobjc-runtime=macosx-13.0.0
  -Wall -Wextra -Wpedantic -Werror -Wnullable-to-nonnull-conversion -Wcompletion-handler -Wobjc-interface-ivars
  -isystem tests/support/apple -Isrc)

echo "Compiling the Objective-C++ sources…"
# BOOL is another type on each architecture.
for source in "${sources[@]}"; do
  for architecture in ARM64 X86_64; do
    if "${compile[@]}" -DSTAND_IN_$architecture "$source" 2>"$work/log"; then
      pass
    else
      refuse "$source ($architecture)" "$work/log"
    fi
  done
done

echo "Compiling what must be refused…"
for source in tests/macos/broken/*.mm; do
  expected=$(sed -n '1s|^// expected-error: ||p' "$source")
  if "${compile[@]}" "$source" 2>"$work/log"; then
    refuse "$source was accepted"
  elif [ -n "$expected" ] && [ "$(grep -c ' error: ' "$work/log")" = 1 ] &&
    grep -qF " error: $expected" "$work/log"; then
    pass
  else
    refuse "$source was refused for another reason than “$expected”" "$work/log"
  fi
done

echo "Comparing the names that are used and declared…"
names() { grep -ohE '\b(kSec|errSec|NEVPN|NETunnel|NSApplication)[A-Za-z]*' "$@" | sort -u; }
names "${sources[@]}" src/platform/macos/native/*.h >"$work/used"
names -r tests/support/apple >"$work/declared"
# Those that only a declaration needs: bases, and the values beside the one that is used.
needed='NEVPNManager|NEVPNConnection|NEVPNStatus|NSApplicationActivationPolicy(Accessory|Prohibited)?'
comm -23 "$work/used" "$work/declared" >"$work/log"
if [ -s "$work/log" ]; then refuse "used, but not declared" "$work/log"; else pass; fi
comm -13 "$work/used" "$work/declared" | grep -vxE "$needed" >"$work/log" || true
if [ -s "$work/log" ]; then refuse "declared, but not used" "$work/log"; else pass; fi
# So that the sources compile here and there alike.
if grep -rnE '#(include|import) [<"]Q' src/platform/macos/native >"$work/log"; then
  refuse "Qt has no place there" "$work/log"
else
  pass
fi

# What Linux alone has, also where the file is for every platform.
linux_functions='pipe2|accept4|eventfd|signalfd|explicit_bzero'
calls_of_linux() {
  grep -rnwE "$linux_functions" --include='*.cpp' --include='*.h' "$1" | grep -v '^src/platform/linux/'
}
if calls_of_linux src >"$work/log"; then refuse "macOS has no such function" "$work/log"; else pass; fi
if calls_of_linux tests/macos/broken >"$work/log"; then pass; else refuse "a function of Linux alone was accepted"; fi

echo "Comparing both sides of the bridge to Swift…"
bridge=src/platform/macos/storekit/StoreKitBridge
compare_bridge() { python3 tests/macos/check_bridge.py $bridge.h "$1" 2>"$work/log"; }
if compare_bridge $bridge.swift; then pass; else refuse "$bridge.h and $bridge.swift" "$work/log"; fi
# A name, a parameter's kind, a parameter too few, another result, another callback.
for mistake in 's/"store_sync"/"store_synch"/' 's/: UInt64,$/: Int,/' 's/, _ count: Int,/,/' \
  's/^(\) )-> UnsafeMutableRawPointer \{/\1{/' 's/(UnsafePointer<CChar>\?)\) -> Void/\1, Int) -> Void/'; do
  sed -E "$mistake" $bridge.swift >"$work/bridge.swift"
  if cmp -s $bridge.swift "$work/bridge.swift"; then
    refuse "no mistake was made: $mistake"
  elif compare_bridge "$work/bridge.swift"; then
    refuse "a bridge with a mistake was accepted: $mistake"
  else
    pass
  fi
done

echo "Parsing the Swift sources…"
parsers=${XDG_CACHE_HOME:-$HOME/.cache}/tarnwik-checks/$(sha256sum tests/macos/swift/package-lock.json | cut -c1-16)
install_parsers() {
  [ ! -d "$parsers" ] || return 0
  command -v npm >/dev/null || { echo "there is no npm" >"$work/log"; return 1; }
  rm -rf "$parsers.new"
  mkdir -p "$parsers.new"
  cp tests/macos/swift/package.json tests/macos/swift/package-lock.json "$parsers.new"
  # No package runs anything while it is installed: the parsers bring their binaries with them.
  (cd "$parsers.new" && timeout 50 npm ci --ignore-scripts --no-audit --no-fund) >"$work/log" 2>&1 &&
    mv -T "$parsers.new" "$parsers"
}
with_parsers() { NODE_PATH=$parsers/node_modules node "$@" >"$work/log" 2>&1; }
parse() { with_parsers tests/macos/swift/parse.js "$@"; }
mapfile -t swift < <(find src -name '*.swift' | sort)
skipped=()
if ! install_parsers || ! with_parsers -e 'require("tree-sitter"); require("tree-sitter-swift")'; then
  reason=$(grep -m 1 -iE 'error|no npm' "$work/log" || true)
  skipped+=("the Swift sources were not parsed, for want of a parser: $reason")
else
  for source in "${swift[@]}"; do
    if parse "$source"; then pass; else refuse "$source" "$work/log"; fi
  done
  for source in tests/macos/broken/*.swift; do
    if parse "$source"; then refuse "$source was accepted"; else pass; fi
  done
fi

echo "Configuring the build for macOS…"
libraries=$(find /usr/lib -path '*/cmake/Qt6/Qt6Config.cmake' -print -quit)
libraries=${libraries%/cmake/Qt6/Qt6Config.cmake}
configure() {
  cmake -G Ninja -S . -B "$work/$1" -DCMAKE_PROJECT_INCLUDE="$PWD/tests/macos/darwin.cmake" \
    -DCMAKE_SYSTEM_NAME=Darwin -DCMAKE_OSX_DEPLOYMENT_TARGET=13.0 -DTARNWIK_TESTS=OFF \
    -DCMAKE_CXX_COMPILER=/usr/bin/clang++-19 -DCMAKE_CXX_COMPILER_FORCED=ON \
    -DCMAKE_OBJCXX_COMPILER=/usr/bin/clang++-19 -DCMAKE_OBJCXX_COMPILER_FORCED=ON \
    -DCMAKE_Swift_COMPILER=/bin/true -DCMAKE_Swift_COMPILER_FORCED=ON -DCMAKE_INSTALL_NAME_TOOL=/bin/true \
    -DCMAKE_INSTALL_LIBDIR=lib -DCMAKE_PREFIX_PATH="$libraries;/usr" \
    -DCMAKE_LIBRARY_ARCHITECTURE="${libraries##*/}" \
    -DCMAKE_HAVE_LIBC_PTHREAD=1 -DHAVE_STDATOMIC=1 "${@:2}" >"$work/log" 2>&1
}
sdk=$work/MacOSX.sdk
mkdir "$sdk"
set_all=(-DTARNWIK_DEFAULT_SERVER_URL=https://api.tarnwik.example -DTARNWIK_TEAM_IDENTIFIER=TEAM123456
  -DTARNWIK_TUNNEL_BUNDLE_IDENTIFIER=example.tarnwik.client.tunnel
  -DTARNWIK_KEYCHAIN_ACCESS_GROUP=TEAM123456.example.tarnwik.client
  -DTARNWIK_TUNNEL_ENTITLEMENT=packet-tunnel-provider-systemextension -DCMAKE_OSX_ARCHITECTURES=arm64)
check_lists() {
  python3 tests/macos/check_property_lists.py "$1/Info.plist" "$1/tarnwik.entitlements" "$2" 2>"$work/log"
}
for kind in plain set; do
  settings=(-DCMAKE_OSX_SYSROOT="$sdk")
  [ $kind = plain ] || settings+=("${set_all[@]}")
  if ! configure $kind "${settings[@]}"; then
    refuse "the build for macOS cannot be configured ($kind)" "$work/log"
  elif check_lists "$work/$kind/packaging/macos" $kind; then
    pass
  else
    refuse "the property lists ($kind)" "$work/log"
  fi
done
# What must not be there counts as well: a debugger's entitlement, say.
mkdir "$work/lists"
cp "$work/set/packaging/macos/Info.plist" "$work/lists"
sed 's|^</dict>|<key>com.apple.security.get-task-allow</key><true/>&|' \
  "$work/set/packaging/macos/tarnwik.entitlements" >"$work/lists/tarnwik.entitlements"
if check_lists "$work/lists" set; then refuse "an entitlement too many was accepted"; else pass; fi

# What lies in the bundle beside the program. The extension comes only with package.sh.
grep ' COMMAND = .*Tarnwik.icns .*Contents' "$work/set/build.ninja" >"$work/log" || true
if grep -q '/tarnwik.app/Contents/Resources/Tarnwik.icns ' "$work/log" &&
  grep -q '/tarnwik.app/Contents/MacOS/tarnwikctl' "$work/log" && ! grep -q PlugIns "$work/set/build.ninja"; then
  pass
else
  refuse "the bundle's contents" "$work/log"
fi
# Each program looks for Swift's runtime in the SDK; and without one the build ends at once rather than there.
grep -A8 '^build src/.*: CXX_EXECUTABLE_LINKER__' "$work/set/build.ninja" | grep 'LINK_PATH = ' >"$work/log" || true
if [ "$(grep -cF -- "-L$sdk/usr/lib/swift " "$work/log")" = 2 ]; then
  pass
else
  refuse "Swift's runtime" "$work/log"
fi
if configure without || ! grep -q 'Where does the SDK lie' "$work/log"; then
  refuse "a build without an SDK" "$work/log"
else
  pass
fi
# Swift's compiler makes its own library, for the architecture and release that were asked for, and links nothing else.
grep -A1 '^rule Swift_.*_LINKER_' "$work/set/CMakeFiles/rules.ninja" >"$work/log" || true
if [ "$(grep -c '^rule' "$work/log")" = 1 ] && grep -q '^rule .*__tarnwik_storekit_bridge_' "$work/log" &&
  grep -q 'command = .* -target arm64-apple-macosx13\.0 ' "$work/log"; then
  pass
else
  refuse "the rules for Swift" "$work/log"
fi

echo "Running package.sh with recorders…"
bash -n packaging/macos/package.sh
if python3 tests/macos/check_package.py >"$work/log" 2>&1; then
  passed=$((passed + $(sed -nE 's/^Ran ([0-9]+) tests? .*/\1/p' "$work/log")))
else
  refuse "packaging/macos/package.sh" "$work/log"
fi

for reason in "${skipped[@]}"; do
  echo "SKIPPED: $reason"
done
echo "macOS: $passed passed, $failed failed, ${#skipped[@]} skipped"
[ $failed = 0 ]
