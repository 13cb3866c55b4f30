#!/usr/bin/python3
"""Every picture of the sample card comes back."""
import subprocess
import sys
from pathlib import Path

from harness import Case, call, main, need_tools

SCRIPT = Path(__file__).resolve().parents[2] / 'tools/make_sample_card.py'


def setUpModule() -> None:
    need_tools('mkfs.fat', 'mmd', 'mcopy', 'mdel', 'mdir')


class SampleCard(Case):
    def compare(self) -> subprocess.CompletedProcess[str]:
        return subprocess.run([sys.executable, SCRIPT, self.folder, '--compare',
                               self.destination], capture_output=True, text=True, check=False)

    def test_every_picture_comes_back(self) -> None:
        call(sys.executable, SCRIPT, self.folder)
        card = self.folder / 'card.img'
        originals = sorted((self.folder / 'originals').iterdir())
        self.assertGreaterEqual(len(originals), 24)
        self.assertEqual(card.stat().st_size, 64 << 20)
        self.assertNotIn('NRV', call('mdir', '-b', '-/', '-i', card, '::'))

        run = self.search(card)
        self.assertEqual((run.status, run.outcome), (0, 'completed'), run.err)
        self.check_tree(run)
        recovered = [path.read_bytes() for path in run.files]
        for original in originals:
            content = original.read_bytes()
            self.assertTrue(any(file.startswith(content) for file in recovered), original.name)

        compared = self.compare()
        self.assertEqual(compared.returncode, 0, compared.stdout)
        self.assertIn(f'{len(originals)} of {len(originals)} deleted pictures', compared.stdout)
        run.files[3].unlink()
        compared = self.compare()
        self.assertEqual(compared.returncode, 1)
        self.assertIn('Not among them: ', compared.stdout)


if __name__ == '__main__':
    main()
