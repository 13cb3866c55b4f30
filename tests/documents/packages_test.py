#!/usr/bin/python3
"""docs/dependencies.md has a reason for each package that is installed and each that CMake asks for."""
import re
import unittest
from pathlib import Path

from documents import ROOT, documents

DEPENDENCIES = ROOT / 'docs' / 'dependencies.md'


def named() -> set[str]:
    """All that stands in backticks in a table that has a reason beside it."""
    found: set[str] = set()
    for line in DEPENDENCIES.read_text('utf-8').splitlines():
        cells = [cell.strip() for cell in line.strip('|').split('|')]
        if line.startswith('|') and len(cells) >= 3 and len(cells[-1]) > 10:
            found |= set(re.findall(r'`([^`]+)`', cells[0] + cells[1]))
    return found


def installed() -> set[str]:
    text = (ROOT / 'tools' / 'install_packages').read_text('utf-8')
    sets = re.findall(r'^\w+_set=\(\n(.*?)^\)', text, re.MULTILINE | re.DOTALL)
    words = re.sub(r'#.*', '', '\n'.join(sets)).split()
    return {word for word in words if not word.startswith('"$')}


def asked_for() -> dict[str, Path]:
    found: dict[str, Path] = {}
    folders = [path for path in ROOT.iterdir() if path.is_dir() and path.name not in
               ('build', '.git')]
    listings = [ROOT / 'CMakeLists.txt', *(path for folder in folders for path in folder.rglob('*')
                if path.name == 'CMakeLists.txt' or path.suffix == '.cmake')]
    for listing in listings:
        text = re.sub(r'#.*', '', listing.read_text('utf-8'))
        for package, components in re.findall(
                r'find_package\((\w+)[^)]*?(?:COMPONENTS\s+([\w\s]+))?\)', text):
            names = ([f'{package} {component}' for component in components.split()
                      if component.isalnum()] or [package])
            found |= dict.fromkeys(names, listing)
        for module in re.findall(r'pkg_check_modules\(\w+ .*?([\w.+-]+)\)', text):
            found[module] = listing
        for name in re.findall(r'find_(?:library|program)\(\w+ (?:NAMES )?"?([\w.-]+)', text):
            found[name] = listing
    return found


class Packages(unittest.TestCase):
    def test_every_installed_package_has_a_reason(self) -> None:
        packages = installed()
        self.assertGreater(len(packages), 30)
        self.assertEqual(packages - named(), set())

    def test_everything_that_cmake_asks_for_has_a_reason(self) -> None:
        wanted = asked_for()
        self.assertGreater(len(wanted), 10)
        missing = {name: str(listing.relative_to(ROOT)) for name, listing in wanted.items()
                   if name not in named()}
        self.assertEqual(missing, {})

    def test_the_list_is_a_document(self) -> None:
        self.assertIn(DEPENDENCIES, documents())


if __name__ == '__main__':
    unittest.main()
