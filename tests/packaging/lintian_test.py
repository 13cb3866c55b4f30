#!/usr/bin/python3
"""Debian's own checks find no fault in the package that it does not explain itself.

NORVO_PACKAGES names the folder of the package.
"""
import os
import shutil
import subprocess
import sys
from pathlib import Path

NOT_RUN = 77


def main() -> int:
    if shutil.which('lintian') is None:
        print('NOT RUN: lintian is needed; tools/install_packages test installs it')
        return NOT_RUN
    packages = list(Path(os.environ['NORVO_PACKAGES']).glob('*.deb'))
    if len(packages) != 1:
        print(f'one package is expected, found are {packages}')
        return 1
    result = subprocess.run(['lintian', '--no-cfg', '--allow-root', '--fail-on', 'error,warning',
                             packages[0]], check=False)
    return result.returncode


if __name__ == '__main__':
    sys.exit(main())
