#!/usr/bin/python3
"""The manual page of norvo-recover is well-formed and says what the program's own help says."""
import email.utils
import re
import subprocess
import unittest

from outcome import main
from recover_help import built, exit_statuses, needed, options

SECTIONS = ['NAME', 'SYNOPSIS', 'DESCRIPTION', 'OPTIONS', 'EDITIONS', 'OUTPUT', 'REPORT',
            'EXIT STATUS', 'FILES', 'EXAMPLES', 'SEE ALSO']


def rendered() -> str:
    """The page as a reader sees it, in lines that are long enough."""
    text = subprocess.run(
        [needed('mandoc'), '-T', 'ascii', '-O', 'width=1000', built('NORVO_MANUAL_PAGE')],
        capture_output=True, text=True, check=True, timeout=60).stdout
    return re.sub('.\b', '', text)


def section(name: str) -> str:
    return re.split(r'^(?=\S)', rendered().partition(f'\n{name}\n')[2], maxsplit=1,
                    flags=re.M)[0]


class ManualPage(unittest.TestCase):
    def test_man_has_nothing_to_warn_of(self) -> None:
        result = subprocess.run([needed('man'), '--warnings', '-l', built('NORVO_MANUAL_PAGE')],
                                capture_output=True, text=True, check=False, timeout=60)
        self.assertEqual((result.returncode, result.stderr), (0, ''))
        self.assertIn('norvo-recover', result.stdout)

    def test_mandoc_finds_no_fault_of_style(self) -> None:
        result = subprocess.run([needed('mandoc'), '-T', 'lint', built('NORVO_MANUAL_PAGE')],
                                capture_output=True, text=True, check=False, timeout=60)
        self.assertEqual((result.returncode, result.stdout + result.stderr), (0, ''))

    def test_has_the_sections_that_readers_look_for(self) -> None:
        self.assertEqual(re.findall(r'^[A-Z][A-Z ]+$', rendered(), re.M), SECTIONS)

    def test_bears_the_day_of_the_release(self) -> None:
        changelog = built('NORVO_CHANGELOG').read_text(encoding='utf-8')
        written = re.search(r'^ -- .*>  (.*)$', changelog, re.M)
        assert written is not None
        day = email.utils.parsedate_to_datetime(written[1]).date().isoformat()
        head = built('NORVO_MANUAL_PAGE').read_text(encoding='utf-8').splitlines()[0]
        self.assertIn(f' 1 {day} ', head)

    def test_leaves_no_list_out(self) -> None:
        self.assertNotRegex(rendered(), r'@\w+@')

    def test_explains_every_option_in_the_order_of_the_help(self) -> None:
        page = built('NORVO_MANUAL_PAGE').read_text(encoding='utf-8').replace(r'\-', '-')
        listed = page.partition('.SH OPTIONS\n')[2].partition('.SH')[0]
        explained = re.findall(r'^\.TP\n\\fB(--\S+)\\fR(?: \\fI(\S+)\\fR)?\n\w', listed, re.M)
        self.assertEqual(explained, list(options().items()))

    def test_names_no_option_that_the_program_lacks(self) -> None:
        named = set(re.findall(r'--[a-z][a-z-]*', rendered()))
        self.assertGreater(len(named), 0)
        self.assertEqual(named - set(options()), set())

    def test_explains_every_exit_status(self) -> None:
        explained = dict(re.findall(r'^ {7}(\d+) +(.*)$', section('EXIT STATUS'), re.M))
        self.assertEqual(explained, exit_statuses())
        self.assertIn('130', explained)

    def test_options_can_be_copied_from_it(self) -> None:
        """A hyphen that is typed is no other sign."""
        page = built('NORVO_MANUAL_PAGE').read_text(encoding='utf-8')
        for name in options():
            self.assertIn(name.replace('-', r'\-'), page)
            self.assertNotRegex(page, rf'{re.escape(name)}\b')


if __name__ == '__main__':
    main()
