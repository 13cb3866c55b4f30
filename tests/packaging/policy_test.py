#!/usr/bin/python3
"""The policy for pkexec is one that polkit understands, and names exactly the seven executables.

NORVO_POLICY_FILE names the policy that the build wrote.
"""
import os
import shutil
import subprocess
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from outcome import main

DEFINITION = Path('/usr/share/polkit-1/policyconfig-1.dtd')
EDITIONS = ('Alder', 'Birch', 'Cedar', 'Larch', 'Maple', 'Rowan', 'Spruce')
EXEC = 'org.freedesktop.policykit.exec.'


def policy() -> Path:
    return Path(os.environ['NORVO_POLICY_FILE'])


class Policy(unittest.TestCase):
    def setUp(self) -> None:
        self.actions = ElementTree.parse(policy()).getroot().findall('action')

    def texts(self, path: str) -> list[str]:
        return [action.findtext(path) or '' for action in self.actions]

    def annotations(self, key: str) -> list[str]:
        return [note.text or '' for action in self.actions
                for note in action.findall('annotate') if note.get('key') == EXEC + key]

    def test_has_the_structure_that_polkit_defines(self) -> None:
        if shutil.which('xmllint') is None or not DEFINITION.exists():
            self.skipTest('xmllint and polkitd are needed; tools/install_packages test installs '
                          'them')
        result = subprocess.run(['xmllint', '--noout', '--nonet', '--dtdvalid', DEFINITION,
                                 policy()], capture_output=True, text=True, check=False)
        self.assertEqual((result.returncode, result.stderr), (0, ''))

    def test_allows_the_executable_of_each_edition_and_no_other(self) -> None:
        self.assertEqual(self.annotations('path'),
                         [f'/opt/norvo/Norvo {name}.app/Contents/MacOS/Norvo {name}'
                          for name in EDITIONS])
        self.assertEqual([action.get('id') for action in self.actions],
                         [f'org.norvo.recovery.{name.lower()}' for name in EDITIONS])

    def test_lets_the_window_appear(self) -> None:
        self.assertEqual(self.annotations('allow_gui'), ['true'] * len(EDITIONS))

    def test_always_asks_for_an_administrator(self) -> None:
        for session, answer in (('any', 'auth_admin'), ('inactive', 'auth_admin'),
                                ('active', 'auth_admin_keep')):
            self.assertEqual(self.texts(f'defaults/allow_{session}'), [answer] * len(EDITIONS))

    def test_says_which_program_asks_and_why(self) -> None:
        for name, message in zip(EDITIONS, self.texts('message')):
            self.assertIn(f'Norvo {name}', message)
            self.assertIn('password', message)
            self.assertNotIn('@', message)


if __name__ == '__main__':
    main()
