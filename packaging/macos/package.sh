#!/usr/bin/env bash
# Builds the application for macOS, with all that it needs inside its bundle, and signs it. On a Mac only; docs/macos.md
# tells what must be installed, and what has never been tried.
#
# usage: package.sh [OPTION...]
#   --architecture NAME        arm64 or x86_64; this machine's by default
#   --build FOLDER             where to build; build/macos by default
#   --server URL               the service's address, for people who have not signed in
#   --team TEAM                the developer team's identifier
#   --identity NAME            sign with this certificate; without it the bundle is signed for this machine alone and
#                              has no entitlements
#   --extension FILE.appex     the packet-tunnel extension, signed already
#   --profile FILE             the provisioning profile that grants the entitlements; --identity needs one
#   --installer-identity NAME  make an installer package for the App Store, signed with this certificate
#   --notarize PROFILE         have the bundle notarized, with the credentials that notarytool keeps under this name:
#                              for a Developer ID, and not for the App Store
#
# Every run starts afresh: nothing that an earlier one was told, or made, comes into the bundle.
set -euo pipefail
cd "$(dirname "$0")/../.."

fail() {
  echo "$1" >&2
  exit 1
}

architecture=$(uname -m) build=build/macos server='' team='' identity=- extension='' profile='' installer='' notary=''
while [ $# -gt 0 ]; do
  [ $# -ge 2 ] || fail "$1 needs a value; see the head of this file."
  case $1 in
    --architecture) architecture=$2 ;;
    --build) build=$2 ;;
    --server) server=$2 ;;
    --team) team=$2 ;;
    --identity) identity=$2 ;;
    --extension) extension=$2 ;;
    --profile) profile=$2 ;;
    --installer-identity) installer=$2 ;;
    --notarize) notary=$2 ;;
    *) fail "There is no option $1; see the head of this file." ;;
  esac
  shift 2
done
[ "$(uname)" = Darwin ] || fail "This runs on macOS only."
[ "$identity" = - ] || [ -n "$team" ] || fail "A signature with entitlements needs --team."
# The system ends a program that claims what no profile grants.
[ "$identity" = - ] || [ -n "$profile" ] || fail "A signature with entitlements needs --profile."
[ "$identity" != - ] || [ -z "$notary$installer" ] || fail "What is given to others needs --identity."
[ -z "$notary" ] || [ -z "$installer" ] || fail "The App Store's package is not notarized: choose one of the two."
if [ -n "$extension" ]; then
  # The application finds the extension by this name, and shares the keychain group with it.
  tunnel=$(plutil -extract CFBundleIdentifier raw "$extension/Contents/Info.plist")
fi

# Homebrew links most of what it has into one folder, Qt's parts among it, and some libraries nowhere.
homebrew=$(brew --prefix)
llvm=$(brew --prefix llvm@19)
for name in icu4c openssl@3 sqlite; do
  PKG_CONFIG_PATH="$(brew --prefix "$name")/lib/pkgconfig:${PKG_CONFIG_PATH-}"
done
export PKG_CONFIG_PATH
sdk=$(xcrun --sdk macosx --show-sdk-path)

settings=(
  -DCMAKE_BUILD_TYPE=Release -DTARNWIK_TESTS=OFF
  -DCMAKE_OSX_ARCHITECTURES="$architecture"
  -DCMAKE_OSX_SYSROOT="$sdk"
  -DCMAKE_CXX_COMPILER="$llvm/bin/clang++" -DCMAKE_OBJCXX_COMPILER="$llvm/bin/clang++"
  -DCMAKE_PREFIX_PATH="$homebrew;$(brew --prefix openssl@3)"
)
[ -z "$server" ] || settings+=(-DTARNWIK_DEFAULT_SERVER_URL="$server")
[ -z "$extension" ] || settings+=(-DTARNWIK_TUNNEL_BUNDLE_IDENTIFIER="$tunnel")
[ -z "$team" ] || settings+=(-DTARNWIK_TEAM_IDENTIFIER="$team"
                            -DTARNWIK_KEYCHAIN_ACCESS_GROUP="$team.example.tarnwik.client")
# What a profile for a Developer ID grants.
[ -z "$notary" ] || settings+=(-DTARNWIK_TUNNEL_ENTITLEMENT=packet-tunnel-provider-systemextension)
built=$build/src/ui/app/tarnwik.app
rm -rf "$built"
cmake --fresh -G Ninja -S . -B "$build" "${settings[@]}"
cmake --build "$build"

echo "Putting Qt and the other libraries into the bundle…"
product=$build/product
bundle=$product/Tarnwik.app
rm -rf "$product"
mkdir -p "$product"
ditto "$built" "$bundle"
deploying=("-executable=$bundle/Contents/MacOS/tarnwikctl")
if [ "$identity" != - ]; then
  # With entitlements it would need a profile and a container of its own: it would be stopped as it starts.
  rm "$bundle/Contents/MacOS/tarnwikctl"
  deploying=()
fi
[ -z "$installer" ] || deploying+=(-appstore-compliant)
# An empty array is an error to the system's own old bash under “set -u”.
"$homebrew/bin/macdeployqt" "$bundle" -qmldir=src/ui ${deploying[@]+"${deploying[@]}"}
# Both without what the system wrote beside a downloaded file: the App Store takes no quarantined one.
[ -z "$profile" ] || cp -X "$profile" "$bundle/Contents/embedded.provisionprofile"
if [ -n "$extension" ]; then
  # Only now, so that nobody looks for Qt in it, and whole: its signature covers its links too.
  embedded=$bundle/Contents/PlugIns/$(basename "$extension")
  mkdir -p "$bundle/Contents/PlugIns"
  ditto --noqtn "$extension" "$embedded"
  codesign --verify --strict --verbose=2 "$embedded"
fi

echo "Signing…"
# From the inside out, since each signature covers those within. The extension keeps its own.
sign() {
  codesign --force --timestamp --options runtime --sign "$identity" "$@"
}
if [ "$identity" = - ]; then
  sign() {
    codesign --force --sign - "$@"
  }
fi
entitlements=()
[ "$identity" = - ] || entitlements=(--entitlements "$build/packaging/macos/tarnwik.entitlements")
while IFS= read -r -d '' library; do
  sign "$library"
done < <(find "$bundle/Contents/PlugIns" "$bundle/Contents/Frameworks" -name '*.appex' -prune -o \
         -type f -name '*.dylib' -print0)
while IFS= read -r -d '' framework; do
  sign "$framework"
done < <(find "$bundle/Contents/Frameworks" -maxdepth 1 -name '*.framework' -print0)
[ "$identity" != - ] ||
  sign --identifier example.tarnwik.client.tarnwikctl "$bundle/Contents/MacOS/tarnwikctl"
sign ${entitlements[@]+"${entitlements[@]}"} "$bundle"
codesign --verify --deep --strict --verbose=2 "$bundle"

if [ -n "$installer" ]; then
  productbuild --component "$bundle" /Applications --sign "$installer" "$product/Tarnwik.pkg"
  echo "$product/Tarnwik.pkg"
fi
if [ -n "$notary" ]; then
  echo "Having it notarized…"
  ditto -c -k --keepParent "$bundle" "$product/Tarnwik.zip"
  xcrun notarytool submit "$product/Tarnwik.zip" --keychain-profile "$notary" --wait
  xcrun stapler staple "$bundle"
  spctl --assess --type execute --verbose "$bundle"
  # Once more, now with the ticket inside.
  rm "$product/Tarnwik.zip"
  ditto -c -k --keepParent "$bundle" "$product/Tarnwik.zip"
fi
echo "$bundle"
