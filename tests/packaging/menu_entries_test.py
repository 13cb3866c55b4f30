#!/usr/bin/python3
"""Menu entries, what catalogues say about them, and icons satisfy their own validators.

NORVO_SHARE names the folder in which the build puts them.
"""
import os
import shutil
import struct
import subprocess
import unittest
from pathlib import Path

from outcome import main

EDITIONS = ('alder', 'birch', 'cedar', 'larch', 'maple', 'rowan', 'spruce')
SIZES = (16, 24, 32, 48, 64, 128, 256, 512)


def share() -> Path:
    return Path(os.environ['NORVO_SHARE'])


def identifiers() -> list[str]:
    return [f'org.norvo.recovery.{edition}' for edition in EDITIONS]


def ihdr(picture: bytes) -> tuple[int, ...]:
    """Width and height of a PNG, which stand behind its signature and the first chunk's head."""
    return struct.unpack('>II', picture[16:24])


class MenuEntries(unittest.TestCase):
    def validate(self, package: str, *command: str | Path) -> None:
        if shutil.which(str(command[0])) is None:
            self.skipTest(f'{package} is needed; tools/install_packages test installs it')
        result = subprocess.run(command, capture_output=True, text=True, check=False)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)

    def test_desktops_understand_every_entry(self) -> None:
        files = sorted((share() / 'applications').iterdir())
        self.assertEqual([file.name for file in files],
                         [f'{name}.desktop' for name in identifiers()])
        for file in files:
            self.validate('desktop-file-utils', 'desktop-file-validate', '--warn-kde', file)

    def test_catalogues_understand_every_description(self) -> None:
        files = sorted((share() / 'metainfo').iterdir())
        self.assertEqual([file.name for file in files],
                         [f'{name}.metainfo.xml' for name in identifiers()])
        for file in files:
            self.validate('appstream', 'appstreamcli', 'validate', '--no-net', '--strict',
                          '--pedantic', file)

    def test_every_edition_has_an_icon_of_its_own_in_every_size(self) -> None:
        if shutil.which('rsvg-convert') is None:
            self.skipTest('librsvg2-bin is needed; tools/install_packages test installs it')
        icons = share() / 'icons/hicolor'
        for size in SIZES:
            pictures = [(icons / f'{size}x{size}/apps/{name}.png').read_bytes()
                        for name in identifiers()]
            self.assertEqual(len(set(pictures)), len(EDITIONS))
            for picture in pictures:
                self.assertEqual(ihdr(picture), (size, size))


if __name__ == '__main__':
    main()
