#!/usr/bin/python3
"""Each script that measures speed still runs to its end: one round of the smallest sizes, whose
figures mean nothing."""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ['NORVO_BUILD'])
PATIENCE = 120
sys.path.insert(0, str(ROOT / 'tests/end_to_end'))
from outcome import main  # noqa: E402


class Benchmarks(unittest.TestCase):
    def output_of(self, script: str, *options: object) -> str:
        run = subprocess.run([sys.executable, ROOT / 'benchmarks' / script,
                              *(str(option) for option in options)], stdin=subprocess.DEVNULL,
                             capture_output=True, text=True, timeout=PATIENCE, check=False)
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
        return run.stdout

    def test_a_search_is_compared_with_plain_tools(self) -> None:
        out = self.output_of('measure.py', '--rounds', 1, '--smallest',
                             '--binary', BUILD / 'bin/norvo-recover')
        ratios = re.findall(r'^  (.+?)  +\d+\.\d\d   \(', out, re.M)
        self.assertEqual(ratios, ['noise, 20 signatures', 'noise, 200 signatures',
                                  'zeros, 20 signatures', 'zeros, 200 signatures',
                                  'noise and zeros', 'photos', 'videos, 200 signatures'])
        self.assertEqual(len(re.findall(r'^  sparse, .* \d+\.\d$', out, re.M)), 2)

    def test_the_decoders_are_compared_with_the_toolkit(self) -> None:
        out = self.output_of('measure_decoder.py', '--rounds', 1, '--smallest', '--build', BUILD)
        for kind in ('baseline', 'progressive'):
            self.assertRegex(out, rf'1-megapixels-{kind}\.jpg.* \d+\.\d')

    def test_the_window_is_compared_with_the_terminal(self) -> None:
        for tool in ('Xvfb', 'openbox', 'xdotool', 'xprop'):
            if shutil.which(tool) is None:
                self.skipTest(f'{tool} is needed for a screen')
        with tempfile.TemporaryDirectory(prefix='norvo_benchmarks_') as folder:
            # No other program makes this round too busy to count.
            out = self.output_of('measure_window.py', '--rounds', 1, '--photos', 3, '--empty', 0,
                                 '--others', 1000, '--build', BUILD,
                                 '--folder', Path(folder) / 'card')
        self.assertEqual(re.findall(r'^(\w[\w ]*?) +\d+\.\d\d s   to terminal \d', out, re.M),
                         ['terminal', 'window', 'window without decoder'])


if __name__ == '__main__':
    main()
