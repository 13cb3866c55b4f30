#!/usr/bin/python3
"""The examples of the manual page do what it says they do, on the sample card."""
import json
import os
import re
import subprocess
import sys
from pathlib import Path

from harness import PATIENCE, Case, call, main, need_tools
from recover_help import built

SCRIPT = Path(__file__).resolve().parents[3] / 'tools/make_sample_card.py'
GIBIBYTE = 1 << 30
# An image in the place of a card, which takes no administrator.
INSTEAD = {'sudo ': '', '/dev/sdb': 'card.img'}
# The sample card has no raw files. Where it is empty stand the openings of a type that the example
# asks for and of one that it does not.
RAW_OPENINGS = {60 << 20: b'II*\0\x10\0\0\0CR\2\0', 61 << 20: b'FUJIFILMCCD-RAW '}


def setUpModule() -> None:
    need_tools('mkfs.fat', 'mmd', 'mcopy', 'mdel', 'mdir')


def examples() -> list[str]:
    """The commands of each example, as they are typed."""
    page = built('NORVO_MANUAL_PAGE').read_text(encoding='utf-8')
    section = page.partition('.SH EXAMPLES\n')[2].partition('.SH')[0]
    found = re.findall(r'^\.RS\n(.*?)^\.RE$', section, re.M | re.S)
    return [text.replace(r'\-', '-').replace(r'\(ti', '~').replace(r'\e', '\\') for text in found]


class Examples(Case):
    def setUp(self) -> None:
        super().setUp()
        call(sys.executable, SCRIPT, self.folder)
        with open(self.folder / 'card.img', 'r+b') as card:
            for place, opening in RAW_OPENINGS.items():
                card.seek(place)
                self.assertEqual(card.read(512), bytes(512))
                card.seek(place)
                card.write(opening)

    def run_example(self, text: str) -> subprocess.CompletedProcess[str]:
        for original, here in INSTEAD.items():
            text = text.replace(original, here)
        path = f'{built("NORVO_RECOVER").parent}:/usr/bin:/bin'
        return subprocess.run(['/bin/sh', '-e', '-c', text], cwd=self.folder, check=False,
                              env={'PATH': path, 'HOME': str(self.folder)}, timeout=PATIENCE,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True)

    def results(self, folder: str) -> list[Path]:
        return [path for path in (self.folder / 'Recovered' / folder).rglob('*') if path.is_file()]

    def test_each_runs_to_its_end(self) -> None:
        drives, raw, audio = examples()
        run = self.run_example(drives)
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertIn('Saved in ', run.stdout)
        self.assertGreater(len(self.results('Norvo Spruce Results/Photo Search')), 20)

        run = self.run_example(raw)
        self.assertEqual(run.returncode, 0, run.stderr)
        found = self.results('Norvo Spruce Results/File Search')
        self.assertEqual({path.suffix for path in found}, {'.CR2'})
        self.assertNotIn('Thorough', run.stdout)

        os.truncate(self.folder / 'card.img', GIBIBYTE)
        run = self.run_example(audio)
        self.assertEqual((run.returncode, run.stdout), (0, ''), run.stderr)
        events = (self.folder / 'events.jsonl').read_text(encoding='utf-8').splitlines()
        self.assertEqual(json.loads(events[-1]), {'event': 'final', 'outcome': 'completed'})


if __name__ == '__main__':
    main()
