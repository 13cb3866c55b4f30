#!/usr/bin/python3
"""Libraries come into a bundle for all of its programs, and signatures are made from the inside out.

The tools of macOS are stand-ins that write down how they were called.
"""
import os
import plistlib
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
SCRIPTS = ROOT / 'packaging' / 'macos'
ENTITLEMENTS = SCRIPTS / 'norvo-recovery.entitlements'
CERTIFICATE = 'Developer ID Application: Somebody (TEAM)'
STAND_IN = """#!/bin/sh
for word; do printf '%s\\n' "$word"; done >> '{calls}'
echo >> '{calls}'
exit {status}
"""


class Scripts(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.bundle = self.folder / 'Norvo Spruce.app'
        for file in ('MacOS/Norvo Spruce', 'MacOS/norvo-decoder', 'MacOS/norvo-player',
                     'Frameworks/QtCore.framework/Versions/A/QtCore', 'Frameworks/libraw.dylib',
                     'PlugIns/platforms/libqcocoa.dylib', 'Resources/SPRExt2.dll'):
            path = self.bundle / 'Contents' / file
            path.parent.mkdir(parents=True, exist_ok=True)
            path.touch()

    def run_script(self, name: str, status: int = 0, **values: str) -> int:
        tool = self.folder / 'tool'
        tool.write_text(STAND_IN.format(calls=self.folder / 'calls', status=status))
        tool.chmod(0o755)
        definitions = [f'-D{key}={value}' for key, value in
                       {'BUNDLE': str(self.bundle), 'MACDEPLOYQT': str(tool),
                        'CODESIGN': str(tool), **values}.items()]
        return subprocess.run([os.environ['NORVO_CMAKE'], *definitions, '-P', SCRIPTS / name],
                              capture_output=True, check=False, timeout=60).returncode

    def calls(self) -> list[list[str]]:
        text = (self.folder / 'calls').read_text(encoding='utf-8')
        return [call.splitlines() for call in text.split('\n\n') if call]

    def within(self, *parts: str) -> str:
        return str(self.bundle.joinpath('Contents', *parts))


class Deploying(Scripts):
    def test_brings_the_libraries_of_every_program(self) -> None:
        self.assertEqual(self.run_script('deploy_bundle.cmake'), 0)
        self.assertEqual(self.calls(),
                         [[str(self.bundle),
                           f'-executable={self.within("MacOS", "norvo-decoder")}',
                           f'-executable={self.within("MacOS", "norvo-player")}']])

    def test_fails_when_the_tool_fails_or_there_is_no_bundle(self) -> None:
        self.assertNotEqual(self.run_script('deploy_bundle.cmake', status=1), 0)
        self.assertNotEqual(self.run_script('deploy_bundle.cmake', BUNDLE=str(self.folder)), 0)


class Signing(Scripts):
    def test_goes_from_the_inside_out(self) -> None:
        self.assertEqual(self.run_script('sign_bundle.cmake', IDENTITY=CERTIFICATE), 0)
        self.assertEqual([call[-1] for call in self.calls()],
                         [self.within('Frameworks', 'libraw.dylib'),
                          self.within('Frameworks', 'QtCore.framework'),
                          self.within('PlugIns', 'platforms', 'libqcocoa.dylib'),
                          self.within('MacOS', 'norvo-decoder'),
                          self.within('MacOS', 'norvo-player'),
                          str(self.bundle), str(self.bundle)])
        self.assertEqual(self.calls()[-1][:-1], ['--verify', '--strict', '--deep'])

    def test_gives_the_hardened_runtime_to_programs_and_a_time_stamp_to_all(self) -> None:
        self.run_script('sign_bundle.cmake', IDENTITY=CERTIFICATE)
        common = ['--force', '--sign', CERTIFICATE, '--timestamp']
        hardened = [*common, '--options', 'runtime', '--entitlements', str(ENTITLEMENTS)]
        self.assertEqual([call[:-1] for call in self.calls()[:-1]], [common] * 3 + [hardened] * 3)

    def test_for_this_machine_alone_needs_no_certificate(self) -> None:
        self.assertEqual(self.run_script('sign_bundle.cmake'), 0)
        self.assertEqual({tuple(call[:-1]) for call in self.calls()[:-1]},
                         {('--force', '--sign', '-')})

    def test_stops_at_the_first_signature_that_fails(self) -> None:
        self.assertNotEqual(self.run_script('sign_bundle.cmake', status=1), 0)
        self.assertEqual(len(self.calls()), 1)


class Entitlements(unittest.TestCase):
    def setUp(self) -> None:
        with open(ENTITLEMENTS, 'rb') as file:
            self.entitlements = plistlib.load(file, fmt=plistlib.FMT_XML)

    def test_take_no_exception_from_the_hardened_runtime(self) -> None:
        self.assertEqual(set(self.entitlements.values()), {False})

    def test_do_not_ask_for_the_sandbox_in_which_no_right_can_be_had(self) -> None:
        self.assertIs(self.entitlements['com.apple.security.app-sandbox'], False)

    def test_have_no_comment_which_some_systems_reject(self) -> None:
        self.assertNotIn('<!--', ENTITLEMENTS.read_text(encoding='utf-8'))

    def test_are_explained_one_by_one(self) -> None:
        document = (ROOT / 'docs' / 'macos.md').read_text(encoding='utf-8')
        for key in self.entitlements:
            self.assertIn(f'`{key}`', document)


if __name__ == '__main__':
    unittest.main(verbosity=2)
