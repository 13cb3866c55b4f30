#!/usr/bin/python3
"""The seven bundles say of themselves what macOS wants to know, and what they say is there.

NORVO_BUNDLES names their folder.
"""
import os
import plistlib
import re
import unittest
from pathlib import Path
from typing import Any

EDITIONS = ('Alder', 'Birch', 'Cedar', 'Larch', 'Maple', 'Rowan', 'Spruce')
BUNDLES = Path(os.environ['NORVO_BUNDLES'])
# Without its text for a person the system refuses an access instead of asking for it.
USAGE_TEXTS = {f'NS{place}UsageDescription'
               for place in ('RemovableVolumes', 'NetworkVolumes', 'DesktopFolder',
                             'DocumentsFolder', 'DownloadsFolder')}


def contents(edition: str) -> Path:
    return BUNDLES / f'Norvo {edition}.app' / 'Contents'


def properties(edition: str) -> dict[str, Any]:
    with open(contents(edition) / 'Info.plist', 'rb') as file:
        return plistlib.load(file, fmt=plistlib.FMT_XML)


class Bundles(unittest.TestCase):
    def test_are_those_of_the_editions(self) -> None:
        self.assertEqual(sorted(path.name for path in BUNDLES.iterdir()),
                         [f'Norvo {edition}.app' for edition in EDITIONS])

    def test_bear_their_folders_name(self) -> None:
        for edition in EDITIONS:
            for key in ('CFBundleName', 'CFBundleDisplayName', 'CFBundleExecutable'):
                with self.subTest(edition=edition, key=key):
                    self.assertEqual(properties(edition)[key], f'Norvo {edition}')

    def test_can_be_told_apart_by_an_identifier_that_a_shell_takes_as_it_stands(self) -> None:
        identifiers = [properties(edition)['CFBundleIdentifier'] for edition in EDITIONS]
        self.assertEqual(len(set(identifiers)), len(EDITIONS))
        for edition, identifier in zip(EDITIONS, identifiers):
            self.assertRegex(identifier, r'\A[A-Za-z0-9.-]+\Z')
            self.assertTrue(identifier.endswith(f'.{edition}'))

    def test_say_what_they_are(self) -> None:
        for edition in EDITIONS:
            with self.subTest(edition=edition):
                found = properties(edition)
                self.assertEqual(
                    {key: found.get(key) for key in (
                        'CFBundlePackageType', 'CFBundleInfoDictionaryVersion',
                        'CFBundleDevelopmentRegion', 'CFBundleShortVersionString',
                        'CFBundleVersion', 'CFBundleSupportedPlatforms', 'LSMinimumSystemVersion',
                        'LSApplicationCategoryType', 'NSPrincipalClass',
                        'NSHighResolutionCapable')},
                    {'CFBundlePackageType': 'APPL', 'CFBundleInfoDictionaryVersion': '6.0',
                     'CFBundleDevelopmentRegion': 'en',
                     'CFBundleShortVersionString': os.environ['NORVO_VERSION'],
                     'CFBundleVersion': os.environ['NORVO_VERSION'],
                     'CFBundleSupportedPlatforms': ['MacOSX'],
                     'LSMinimumSystemVersion': os.environ['NORVO_OLDEST_MACOS'],
                     'LSApplicationCategoryType': 'public.app-category.utilities',
                     'NSPrincipalClass': 'NSApplication', 'NSHighResolutionCapable': True})

    def test_explain_each_access_that_the_system_asks_a_person_for(self) -> None:
        for edition in EDITIONS:
            texts = {key: text for key, text in properties(edition).items()
                     if key.endswith('UsageDescription')}
            self.assertEqual(set(texts), USAGE_TEXTS)
            for key, text in texts.items():
                with self.subTest(edition=edition, key=key):
                    self.assertRegex(text, r'\ANorvo Recovery [^@]+\.\Z')

    def test_hold_the_files_that_they_name(self) -> None:
        for edition in EDITIONS:
            with self.subTest(edition=edition):
                found = properties(edition)
                programs = contents(edition) / 'MacOS'
                for name in (found['CFBundleExecutable'], 'norvo-decoder', 'norvo-player'):
                    self.assertTrue(os.access(programs / name, os.X_OK), name)
                icon = contents(edition) / 'Resources' / found['CFBundleIconFile']
                self.assertEqual(icon.read_bytes(), Path(os.environ['NORVO_ICON']).read_bytes())

    def test_leave_no_name_of_the_build_in_their_lists(self) -> None:
        for edition in EDITIONS:
            text = (contents(edition) / 'Info.plist').read_text(encoding='utf-8')
            self.assertIsNone(re.search(r'@\w*@|<string></string>', text))


if __name__ == '__main__':
    unittest.main(verbosity=2)
