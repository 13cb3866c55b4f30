#!/usr/bin/python3
"""Finds test files and folders that no CMakeLists.txt mentions, so that none is left out of ctest.

    check_registration.py [TESTS_FOLDER]

Ends with 1 and names every one.
"""
import re
import sys
from pathlib import Path


def is_test(path: Path) -> bool:
    stem = path.stem
    if path.suffix == '.cpp':
        return stem.endswith('_test')
    return path.suffix == '.py' and (stem.startswith('test_') or stem.endswith('_test'))


def without_comments(listing: str) -> str:
    return re.sub(r'#.*', '', listing)


def is_registered(path: Path, tests: Path) -> bool:
    """Whether the CMakeLists.txt of the file's folder or of one above names it."""
    for folder in path.parents:
        listing = folder / 'CMakeLists.txt'
        if listing.exists():
            text = without_comments(listing.read_text(encoding='utf-8'))
            names = {str(path.relative_to(folder)), str(path.relative_to(folder).with_suffix(''))}
            if any(re.search(rf'(?<![\w/.-]){re.escape(name)}(?![\w/-])', text) for name in names):
                return True
        if folder == tests:
            return False
    return False


def is_added(folder: Path, tests: Path) -> bool:
    """Whether the CMakeLists.txt of a folder above adds this one."""
    for above in folder.parents:
        listing = above / 'CMakeLists.txt'
        if listing.exists():
            text = without_comments(listing.read_text(encoding='utf-8'))
            name = re.escape(str(folder.relative_to(above)))
            if re.search(rf'add_subdirectory\(\s*"?{name}"?[\s)]', text):
                return True
        if above == tests.parent:
            return False
    return False


def main() -> int:
    tests = (Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__)).resolve()
    if tests.is_file():
        tests = tests.parent
    found = sorted(path for path in tests.rglob('*') if is_test(path))
    forgotten = [path for path in found if not is_registered(path, tests)]
    folders = [path.parent for path in sorted(tests.rglob('CMakeLists.txt'))]
    left_out = [folder for folder in folders if not is_added(folder, tests)]
    for path in forgotten:
        print(f'{path.relative_to(tests)} is in no CMakeLists.txt: it would never run')
    for folder in left_out:
        print(f'{folder.name}/ is added by no CMakeLists.txt: its tests would never run')
    print(f'{len(found)} test files, {len(forgotten)} of them not registered')
    return 1 if forgotten or left_out or not found else 0


if __name__ == '__main__':
    sys.exit(main())
