"""Checks the property lists of the macOS bundle as CMake writes them: every key, and no other.

usage: check_property_lists.py INFO ENTITLEMENTS plain|set
"""

import plistlib
import re
import sys
from pathlib import Path

BUNDLE = "example.tarnwik.client"
TEAM = "TEAM123456"
PROJECT = Path(__file__).parent.parent.parent / "CMakeLists.txt"
VERSION = re.search(r"^project\(Tarnwik VERSION (\S+)", PROJECT.read_text(), re.MULTILINE)[1]
SETTINGS = {
    "TarnwikDefaultServerURL": "https://api.tarnwik.example",
    "TarnwikTunnelBundleIdentifier": f"{BUNDLE}.tunnel",
    "TarnwikKeychainAccessGroup": f"{TEAM}.{BUNDLE}",
}
INFO = {
    "CFBundleDevelopmentRegion": "en",
    "CFBundleDisplayName": "Tarnwik",
    "CFBundleExecutable": "tarnwik",
    "CFBundleIconFile": "Tarnwik",
    "CFBundleIdentifier": BUNDLE,
    "CFBundleInfoDictionaryVersion": "6.0",
    "CFBundleName": "Tarnwik",
    "CFBundlePackageType": "APPL",
    "CFBundleShortVersionString": VERSION,
    "CFBundleSupportedPlatforms": ["MacOSX"],
    "CFBundleVersion": VERSION,
    "LSApplicationCategoryType": "public.app-category.utilities",
    "LSMinimumSystemVersion": "13.0",
    "NSHighResolutionCapable": True,
    "NSPrincipalClass": "NSApplication",
    "NSSupportsAutomaticGraphicsSwitching": True,
}
ENTITLEMENTS = {
    "com.apple.security.app-sandbox": True,
    "com.apple.security.cs.allow-jit": True,
    "com.apple.security.network.client": True,
}


def expect(file, actual, wanted):
    """Where `actual` is another than `wanted`."""
    return [
        f"{file}: {key} is {actual.get(key)!r} rather than {wanted.get(key)!r}"
        for key in sorted(actual.keys() | wanted.keys())
        if actual.get(key) != wanted.get(key) or type(actual.get(key)) is not type(wanted.get(key))
    ]


def texts(value):
    if isinstance(value, dict):
        return [text for entry in value.values() for text in texts(entry)]
    if isinstance(value, list):
        return [text for entry in value for text in texts(entry)]
    return [value] if isinstance(value, str) else []


def main(info_path, entitlements_path, kind):
    info = plistlib.loads(Path(info_path).read_bytes())
    entitlements = plistlib.loads(Path(entitlements_path).read_bytes())
    if kind == "set":
        settings, team, tunnel = SETTINGS, TEAM, "packet-tunnel-provider-systemextension"
    else:
        # What nobody set must read as a reference that was not expanded, which the program takes for absent.
        settings = {
            "TarnwikDefaultServerURL": "$(TARNWIK_DEFAULT_SERVER_URL)",
            "TarnwikTunnelBundleIdentifier": "$(TARNWIK_TUNNEL_BUNDLE_IDENTIFIER)",
            "TarnwikKeychainAccessGroup": "$(TARNWIK_KEYCHAIN_ACCESS_GROUP)",
        }
        team, tunnel = "$(TARNWIK_TEAM_IDENTIFIER)", "packet-tunnel-provider"
    mistakes = expect("Info.plist", info, INFO | settings) + expect("entitlements", entitlements, ENTITLEMENTS | {
        "com.apple.application-identifier": f"{team}.{BUNDLE}",
        "com.apple.developer.networking.networkextension": [tunnel],
        "com.apple.developer.team-identifier": team,
        # The program's own.
        "keychain-access-groups": [settings["TarnwikKeychainAccessGroup"]],
    })
    # The system's parser of entitlements takes no comments.
    if b"<!--" in Path(entitlements_path).read_bytes():
        mistakes.append("entitlements: there is a comment")
    if any("@" in text or "${" in text or not text for text in texts(info) + texts(entitlements)):
        mistakes.append("a value was not filled in")
    for mistake in mistakes:
        print(mistake, file=sys.stderr)
    return 1 if mistakes else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
