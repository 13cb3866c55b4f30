#!/usr/bin/python3
"""norvo-recover is installed with all that it needs, its manual page and its completions."""
import subprocess
import tempfile
import unittest
from pathlib import Path

from outcome import main
from recover_help import built, needed


class Installation(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.prefix = Path(folder.name)
        subprocess.run([built('NORVO_CMAKE'), '--install', built('NORVO_BUILD'), '--prefix',
                        self.prefix, '--component', 'norvo-recover'],
                       capture_output=True, check=True, timeout=120)

    def test_holds_these_files_and_no_others(self) -> None:
        files = {str(path.relative_to(self.prefix)) for path in self.prefix.rglob('*')
                 if path.is_file()}
        signatures = {path for path in files if path.endswith('.dll')}
        self.assertEqual({str(Path(path).parent) for path in signatures},
                         {'share/norvo-recovery/signatures'})
        self.assertEqual(files - signatures,
                         {'bin/norvo-recover', 'share/man/man1/norvo-recover.1',
                          'share/bash-completion/completions/norvo-recover',
                          'share/zsh/vendor-completions/_norvo-recover',
                          'share/fish/vendor_completions.d/norvo-recover.fish'})

    def test_finds_its_signature_files(self) -> None:
        result = subprocess.run([self.prefix / 'bin/norvo-recover', '--list-types', '--mode',
                                 'raw'], capture_output=True, text=True, check=True, timeout=60)
        self.assertIn('CR2', result.stdout)

    def test_man_finds_the_page(self) -> None:
        result = subprocess.run([needed('man'), '-M', self.prefix / 'share/man', '1',
                                 'norvo-recover'],
                                capture_output=True, text=True, check=True, timeout=60)
        self.assertIn('norvo-recover', result.stdout)


if __name__ == '__main__':
    main()
