"""Checks the property lists of the macOS bundle as CMake writes them.

usage: check_property_lists.py INFO ENTITLEMENTS plain|set
"""

import plistlib
import sys
from pathlib import Path

BUNDLE = "example.tarnwik.client"
SETTINGS = {
    "TarnwikDefaultServerURL": "https://api.tarnwik.example",
    "TarnwikTunnelBundleIdentifier": f"{BUNDLE}.tunnel",
    "TarnwikKeychainAccessGroup": f"TEAM123456.{BUNDLE}",
}
INFO = {
    "CFBundleExecutable": "tarnwik",
    "CFBundleIconFile": "Tarnwik",
    "CFBundleIdentifier": BUNDLE,
    "CFBundleInfoDictionaryVersion": "6.0",
    "CFBundleName": "Tarnwik",
    "CFBundlePackageType": "APPL",
    "LSMinimumSystemVersion": "13.0",
    "NSHighResolutionCapable": True,
    "NSPrincipalClass": "NSApplication",
}
ENTITLEMENTS = {
    "com.apple.developer.networking.networkextension": ["packet-tunnel-provider"],
    "com.apple.security.app-sandbox": True,
    "com.apple.security.network.client": True,
}


def expect(file, actual, wanted):
    """What of `wanted` is missing in `actual` or differs there."""
    return [
        f"{file}: {key} is {actual.get(key)!r} rather than {value!r}"
        for key, value in wanted.items()
        if actual.get(key) != value or type(actual.get(key)) is not type(value)
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
    mistakes = expect("Info.plist", info, INFO) + expect("entitlements", entitlements, ENTITLEMENTS)
    # The system's parser of entitlements takes no comments.
    if b"<!--" in Path(entitlements_path).read_bytes():
        mistakes.append("entitlements: there is a comment")
    if any("@" in text or "${" in text or not text for text in texts(info) + texts(entitlements)):
        mistakes.append("a value was not filled in")

    groups = entitlements.get("keychain-access-groups", [])
    if kind == "set":
        mistakes += expect("Info.plist", info, SETTINGS)
        mistakes += expect("entitlements", entitlements, {
            "com.apple.developer.team-identifier": "TEAM123456",
            "com.apple.application-identifier": f"TEAM123456.{BUNDLE}",
            "keychain-access-groups": [SETTINGS["TarnwikKeychainAccessGroup"]],
        })
    else:
        # What nobody set must read as a reference that was not expanded, which the program takes for absent.
        mistakes += [f"Info.plist: {key} is {info.get(key)!r}" for key in SETTINGS if "$(" not in info.get(key, "")]
        if info.get("TarnwikKeychainAccessGroup") not in groups:
            mistakes.append("the program's access group is not the one that it is entitled to")
    for mistake in mistakes:
        print(mistake, file=sys.stderr)
    return 1 if mistakes else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
