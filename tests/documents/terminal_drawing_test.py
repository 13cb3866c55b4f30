#!/usr/bin/python3
"""docs/run.svg shows what norvo-recover prints: its command is run on the sample card."""
import html
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from documents import ROOT

PICTURE = ROOT / 'docs' / 'run.svg'
RECOVER = Path(os.environ['NORVO_RECOVER'])
NOT_RUN = 77


def drawn() -> list[str]:
    """The command in the first line, then what it prints."""
    return [html.unescape(text) for text in
            re.findall(r'<text [^>]*>([^<]*)</text>', PICTURE.read_text('utf-8'))]


class TerminalDrawing(unittest.TestCase):
    def test_it_shows_what_the_program_prints(self) -> None:
        prompt, *lines = drawn()
        command = shlex.split(prompt.removeprefix('$ '))
        self.assertEqual(command[0], RECOVER.name)
        progress = [line for line in lines if line.startswith('Sectors ')]
        with tempfile.TemporaryDirectory(prefix='norvo_drawing_') as folder:
            subprocess.run([ROOT / 'tools/make_sample_card.py', folder], check=True,
                           stdout=subprocess.DEVNULL)
            result = subprocess.run([RECOVER, *command[1:]], cwd=folder, capture_output=True,
                                    text=True, check=True)
        self.assertEqual(lines[len(progress):], result.stdout.splitlines())
        # How often it tells is a matter of speed; the beginning and the end are always told.
        told = result.stderr.splitlines()
        self.assertEqual(progress, [told[0], told[-1]])

    def test_it_is_drawn_by_the_tool(self) -> None:
        drawing = subprocess.run([ROOT / 'tools/draw_terminal.py'], input='\n'.join(drawn()),
                                 capture_output=True, text=True, check=True).stdout
        self.assertEqual(drawing, PICTURE.read_text('utf-8'), 'run tools/draw_terminal.py')


if __name__ == '__main__':
    if shutil.which('mkfs.fat', path='/usr/sbin:/usr/bin:/sbin:/bin') is None:
        print('NOT RUN: terminal_drawing_test: dosfstools are needed for the sample card')
        sys.exit(NOT_RUN)
    unittest.main()
