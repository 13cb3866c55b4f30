"""What norvo-recover says of itself: the measure for its manual page and completions."""
import os
import re
import shutil
import subprocess
import unittest
from pathlib import Path


def built(name: str) -> Path:
    """A file that the build made, by the variable in which the test is told of it."""
    return Path(os.environ[name])


def help_text() -> str:
    return subprocess.run([built('NORVO_RECOVER'), '--help'], capture_output=True, text=True,
                          check=True, timeout=60).stdout


def options() -> dict[str, str]:
    """The name of each option's value, empty where it takes none, by the option's name."""
    return {name: value or ''
            for name, value in re.findall(r'^  (--[a-z-]+)(?: (\S+))?  ', help_text(), re.M)}


def exit_statuses() -> dict[str, str]:
    listed = help_text().partition('Exit status:\n')[2]
    return dict(re.findall(r'^  (\d+) +(.*)$', listed, re.M))


def needed(program: str) -> str:
    """The path of a program that not every machine has."""
    path = shutil.which(program)
    if path is None:
        raise unittest.SkipTest(f'{program} is needed; tools/install_packages test installs it')
    return path
