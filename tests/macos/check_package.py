"""Runs packaging/macos/package.sh with a recorder in place of each of the Mac's programs, and reads what it would do.

usage: check_package.py
"""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).parent
SCRIPT = HERE.parent.parent / "packaging/macos/package.sh"
PROGRAMS = "brew cmake codesign cp ditto plutil productbuild spctl uname xcrun".split()
SIGNED = ["--team", "TEAM123456", "--identity", "Apple Distribution: Tarnwik"]


class Package(unittest.TestCase):
    def setUp(self):
        self._folder = tempfile.TemporaryDirectory()
        self.addCleanup(self._folder.cleanup)
        self.work = Path(self._folder.name)
        self.build = self.work / "build"
        self.bundle = self.build / "product/Tarnwik.app"
        self.contents = self.bundle / "Contents"
        homebrew = self.work / "homebrew"
        tools = self.work / "tools"
        (homebrew / "bin").mkdir(parents=True)
        tools.mkdir()
        for program in [tools / name for name in PROGRAMS] + [homebrew / "bin/macdeployqt"]:
            program.symlink_to(HERE / "recorder.sh")
        self.environment = os.environ | {
            "PATH": f"{tools}:{os.environ['PATH']}", "RECORD": str(self.work / "record"), "HOMEBREW": str(homebrew)}

        self.profile = self.work / "Tarnwik.provisionprofile"
        self.profile.write_text("profile")
        # As a framework within an extension is: its signature covers the link.
        self.extension = self.work / "Tunnel.appex"
        version = self.extension / "Contents/Frameworks/Tunnel.framework/Versions"
        (version / "A").mkdir(parents=True)
        (version / "A/libtunnel.dylib").write_text("code")
        (version / "Current").symlink_to("A")
        self.profiled = SIGNED + ["--profile", self.profile]
        self.extended = ["--extension", self.extension]

    def run_script(self, *options):
        record = self.work / "record"
        record.write_text("")
        self.result = subprocess.run([SCRIPT, "--build", self.build, *options], env=self.environment, text=True,
                                     capture_output=True, timeout=60, check=False)
        self.calls = record.read_text().replace(str(self.work), "WORK").splitlines()
        return self.result.returncode

    def package(self, *options):
        self.assertEqual(self.run_script(*options), 0, self.result.stderr)

    def refuse(self, *options):
        self.assertNotEqual(self.run_script(*options), 0)
        self.assertFalse([call for call in self.calls if call.startswith("cmake")])
        return self.result.stderr

    def call(self, start):
        """The one call that begins so."""
        found = [call for call in self.calls if call.startswith(start)]
        self.assertEqual(len(found), 1, f"{start}: {found}")
        return found[0]

    def test_configures_with_what_Homebrew_and_Xcode_tell(self):
        self.package()
        configure = self.call("cmake --fresh ")
        self.assertIn(" -DCMAKE_OSX_SYSROOT=/MacOSX.sdk ", configure)
        self.assertIn(" -DCMAKE_PREFIX_PATH=WORK/homebrew;WORK/homebrew/opt/openssl@3", configure)
        self.assertIn(" -DCMAKE_CXX_COMPILER=WORK/homebrew/opt/llvm@19/bin/clang++ ", configure)
        self.assertNotIn("TARNWIK_TEAM", configure)

    def test_keeps_nothing_of_an_earlier_run(self):
        self.package("--server", "https://api.tarnwik.example", *self.extended, *self.profiled)
        self.assertIn("api.tarnwik.example", self.call("cmake --fresh "))
        built = self.build / "src/ui/app/tarnwik.app/Contents"
        old = [built / "PlugIns/Old.appex", self.contents / "Old"]
        for folder in old:
            folder.mkdir(parents=True)
        self.package()
        settings = self.call("cmake --fresh ")
        for left in "SERVER", "TUNNEL", "TEAM", "KEYCHAIN":
            self.assertNotIn(f"TARNWIK_{left}", settings)
        self.assertFalse([path for path in old if path.exists()])
        self.assertFalse([path for path in self.contents.rglob("*")
                          if path.name in {"Old.appex", "Tunnel.appex", "embedded.provisionprofile"}])

    def test_embeds_the_extension_after_Qt_and_signs_from_the_inside_out(self):
        self.package(*self.extended, *self.profiled)
        self.assertIn(" -DTARNWIK_TUNNEL_BUNDLE_IDENTIFIER=example.tarnwik.client.tunnel", self.call("cmake --fresh "))
        contents = "WORK/build/product/Tarnwik.app/Contents"
        sign = "codesign --force --timestamp --options runtime --sign Apple Distribution: Tarnwik"
        deploy = self.calls.index(self.call("macdeployqt "))
        after = self.calls[deploy:]
        libraries = slice(4, 6)
        self.assertEqual(sorted(after[libraries]), [
            f"{sign} {contents}/Frameworks/libicu.dylib", f"{sign} {contents}/PlugIns/platforms/libqcocoa.dylib"])
        del after[libraries]
        self.assertEqual(after, [
            "macdeployqt WORK/build/product/Tarnwik.app -qmldir=src/ui",
            f"cp -X WORK/Tarnwik.provisionprofile {contents}/embedded.provisionprofile",
            f"ditto --noqtn WORK/Tunnel.appex {contents}/PlugIns/Tunnel.appex",
            f"codesign --verify --strict --verbose=2 {contents}/PlugIns/Tunnel.appex",
            f"{sign} {contents}/Frameworks/QtCore.framework",
            f"{sign} --entitlements WORK/build/packaging/macos/tarnwik.entitlements WORK/build/product/Tarnwik.app",
            "codesign --verify --deep --strict --verbose=2 WORK/build/product/Tarnwik.app",
        ])
        embedded = self.contents / "PlugIns/Tunnel.appex/Contents/Frameworks/Tunnel.framework/Versions/Current"
        self.assertTrue(embedded.is_symlink())
        self.assertFalse((self.contents / "MacOS/tarnwikctl").exists())

    def test_signs_for_this_machine_alone_without_entitlements(self):
        self.package()
        self.assertTrue((self.contents / "MacOS/tarnwikctl").exists())
        self.assertIn("-executable=WORK/build/product/Tarnwik.app/Contents/MacOS/tarnwikctl", self.call("macdeployqt "))
        signatures = [call for call in self.calls if call.startswith("codesign --force")]
        self.assertEqual(len(signatures), 5)
        self.assertTrue(all(call.startswith("codesign --force --sign - ") for call in signatures))
        self.assertFalse([call for call in signatures if "--entitlements" in call])

    def test_deploys_for_the_app_store_without_what_it_refuses(self):
        self.package(*self.profiled)
        self.assertNotIn("-appstore-compliant", self.call("macdeployqt "))
        self.package(*self.profiled, "--installer-identity", "Installer")
        self.assertIn(" -appstore-compliant", self.call("macdeployqt "))
        self.assertIn(" --sign Installer ", self.call("productbuild --component "))
        self.assertNotIn("TARNWIK_TUNNEL_ENTITLEMENT", self.call("cmake --fresh "))

    def test_notarizes_with_the_entitlement_of_a_Developer_ID(self):
        self.package(*self.profiled, "--notarize", "notary")
        self.assertIn(" -DTARNWIK_TUNNEL_ENTITLEMENT=packet-tunnel-provider-systemextension",
                      self.call("cmake --fresh "))
        verify = self.calls.index(self.call("codesign --verify --deep"))
        archive = "ditto -c -k --keepParent WORK/build/product/Tarnwik.app WORK/build/product/Tarnwik.zip"
        self.assertEqual(self.calls[verify + 1:], [
            archive,
            "xcrun notarytool submit WORK/build/product/Tarnwik.zip --keychain-profile notary --wait",
            "xcrun stapler staple WORK/build/product/Tarnwik.app",
            "spctl --assess --type execute --verbose WORK/build/product/Tarnwik.app",
            archive,
        ])

    def test_refuses_what_could_not_start(self):
        self.assertIn("--profile", self.refuse(*SIGNED))
        self.assertIn("--team", self.refuse("--identity", "Somebody", "--profile", self.profile))
        self.assertIn("--identity", self.refuse("--notarize", "notary"))
        self.assertIn("--identity", self.refuse("--installer-identity", "Installer"))
        self.assertIn("choose one",
                      self.refuse(*self.profiled, "--notarize", "notary", "--installer-identity", "Installer"))


if __name__ == "__main__":
    unittest.main()
