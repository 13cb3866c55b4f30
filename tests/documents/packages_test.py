#!/usr/bin/python3
"""docs/dependencies.md has a reason for each package that is installed, that CMake asks for, or that
the Debian package names; and what is compiled into the programs brings its licence along."""
import re
import unittest
from pathlib import Path

from documents import ROOT, documents

DEPENDENCIES = ROOT / 'docs' / 'dependencies.md'
DEBIAN = ROOT / 'packaging' / 'linux' / 'debian'
JSON_COPYRIGHT = Path('/usr/share/doc/nlohmann-json3-dev/copyright')


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


def named_by_the_package() -> set[str]:
    """What the Debian package depends on beside the libraries, and what it recommends."""
    text = (DEBIAN / 'package.cmake').read_text('utf-8')
    lists = re.findall(r'CPACK_DEBIAN_PACKAGE_(?:DEPENDS|RECOMMENDS)\s+"([^"]+)"', text)
    return {name.split()[0] for names in lists for name in re.split(r'[,|]', names)}


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

    def test_everything_that_the_debian_package_names_has_a_reason(self) -> None:
        packages = named_by_the_package()
        self.assertGreaterEqual(len(packages), 8)
        self.assertEqual(packages - named(), set())

    def test_a_library_of_headers_brings_its_licence_along(self) -> None:
        if not JSON_COPYRIGHT.exists():
            self.skipTest('nlohmann-json is not from a package here')
        ours = (DEBIAN / 'copyright').read_text('utf-8')
        theirs = JSON_COPYRIGHT.read_text('utf-8')
        for owner in re.findall(r'Files: (?:\*|include/.*)\nCopyright: (.*)', theirs):
            self.assertIn(owner, ours)
        for line in re.findall(r'^License: Expat\n((?: .*\n)+)', theirs, re.MULTILINE)[0].splitlines():
            self.assertIn(line, ours)

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
