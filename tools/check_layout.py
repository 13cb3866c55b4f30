#!/usr/bin/python3
"""Holds the layout of every source and header against .clang-format.

    check_layout.py [TREE]

Ends with 1 and the places where a file differs, and with 77 when clang-format is not there, or not
the one of Debian 12: other releases lay some lines out otherwise. `clang-format -i FILE` mends a file.
"""
import re
import shutil
import subprocess
import sys
from pathlib import Path

FOLDERS = ('benchmarks', 'src', 'tests', 'tools')
RELEASE = '14'
NOT_RUN = 77


def release_of(tool: str) -> str:
    text = subprocess.run([tool, '--version'], capture_output=True, text=True, check=True).stdout
    found = re.search(r'version (\d+)\.', text)
    return found[1] if found else ''


def main() -> int:
    root = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).resolve().parent.parent)
    tool = shutil.which('clang-format')
    if tool is None or release_of(tool) != RELEASE:
        print(f'NOT RUN: clang-format {RELEASE} is not installed.')
        return NOT_RUN
    files = sorted(path for folder in FOLDERS for path in (root / folder).rglob('*')
                   if path.suffix in ('.cpp', '.h'))
    if not files:
        print(f'FAILED: there is no source below {root}')
        return 1
    result = subprocess.run([tool, '--style=file', '--dry-run', '-Werror', *files],
                            capture_output=True, text=True, check=False)
    print(result.stderr, end='')
    print(f'{len(files)} files, layout {"differs" if result.returncode else "as agreed"}')
    return 1 if result.returncode else 0


if __name__ == '__main__':
    sys.exit(main())
