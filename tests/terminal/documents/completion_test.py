#!/usr/bin/python3
"""The completions of norvo-recover, asked in the shells themselves.

Tab completes a word; Escape and a star put everything that can stand there into the line.
"""
import subprocess
import tempfile
import unittest
from pathlib import Path

import shells
from outcome import main
from recover_help import built, needed, options

EDITIONS = [f'Norvo {name}'
            for name in ('Alder', 'Birch', 'Cedar', 'Larch', 'Maple', 'Rowan', 'Spruce')]
MODES = ['photo', 'video', 'raw', 'audio']
ALL = '\033*'


def block_devices() -> set[str]:
    return {str(node) for node in Path('/dev').iterdir() if node.is_block_device()}


class InAFolder(unittest.TestCase):
    """The shell runs in a fresh folder that holds a disk image and a folder, Holiday Pictures."""

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name).resolve()
        (self.folder / 'card.img').touch()
        (self.folder / 'Holiday Pictures').mkdir()

    def until_the_end(self, shell: shells.Shell) -> shells.Shell:
        self.addCleanup(shell.close)
        return shell


class Bash(InAFolder):
    def shell(self) -> shells.Shell:
        needed('bash')
        return self.until_the_end(shells.bash(built('NORVO_BASH_COMPLETION'), self.folder))

    def test_completes_every_option(self) -> None:
        self.assertEqual(set(self.shell().arguments(ALL)), set(options()))

    def test_completes_an_option_by_its_first_letters(self) -> None:
        self.assertEqual(self.shell().arguments('--json --dest\t'), ['--json', '--destination'])

    def test_completes_the_search_types(self) -> None:
        shell = self.shell()
        self.assertEqual(set(shell.arguments(f'--mode {ALL}')), {'--mode', *MODES})
        self.assertEqual(shell.arguments('--mode ph\t--json'), ['--mode', 'photo', '--json'])

    def test_completes_behind_an_equals_sign(self) -> None:
        self.assertEqual(self.shell().arguments('--mode=v\t'), ['--mode=video'])

    def test_quotes_the_editions(self) -> None:
        shell = self.shell()
        self.assertEqual(set(shell.arguments(f'--edition {ALL}')), {'--edition', *EDITIONS})
        for typed in ('N\tB\t', 'Norvo\\ B\t', '"Norvo B\t', "'Norvo B\t"):
            with self.subTest(typed):
                self.assertEqual(shell.arguments(f'--edition {typed}'),
                                 ['--edition', 'Norvo Birch'])

    def test_completes_folders_alone_where_a_folder_is_wanted(self) -> None:
        shell = self.shell()
        for option, value in options().items():
            if value == 'DIR':
                with self.subTest(option):
                    self.assertEqual(shell.arguments(f'{option} {ALL}'),
                                     [option, 'Holiday Pictures'])

    def test_completes_files_where_a_file_is_wanted(self) -> None:
        shell = self.shell()
        for option, value in options().items():
            if value in ('PATH', 'FILE'):
                with self.subTest(option):
                    self.assertEqual(shell.arguments(f'{option} ca\t'), [option, 'card.img'])

    def test_offers_block_devices_before_anything_is_typed(self) -> None:
        words = self.shell().arguments(f'--device {ALL}')
        self.assertEqual(set(words[1:]) - {'start.bash'},
                         {*block_devices(), 'card.img', 'Holiday Pictures'})

    def test_proposes_nothing_for_a_number(self) -> None:
        self.assertEqual(self.shell().arguments('--start-sector ca\t'), ['--start-sector', 'ca'])

    def test_runs_nothing_that_was_typed(self) -> None:
        typed = "'$(touch made)"
        self.assertEqual(self.shell().arguments(f"--mode {typed}\t'"), ['--mode', typed[1:]])
        self.assertFalse((self.folder / 'made').exists())


class Zsh(InAFolder):
    def shell(self) -> shells.Shell:
        needed('zsh')
        return self.until_the_end(shells.zsh(built('NORVO_ZSH_COMPLETION'), self.folder))

    def test_understands_the_file(self) -> None:
        result = subprocess.run([needed('zsh'), '-n', built('NORVO_ZSH_COMPLETION')],
                                capture_output=True, text=True, check=False, timeout=60)
        self.assertEqual((result.returncode, result.stderr), (0, ''))

    def test_completes_every_option(self) -> None:
        self.assertEqual({word.rstrip('=') for word in self.shell().arguments(f'--{ALL}')},
                         set(options()))

    def test_completes_the_search_types(self) -> None:
        shell = self.shell()
        self.assertEqual(set(shell.arguments(f'--mode {ALL}')), {'--mode', *MODES})
        self.assertEqual(shell.arguments('--mode=v\t'), ['--mode=video'])

    def test_quotes_the_editions(self) -> None:
        shell = self.shell()
        self.assertEqual(set(shell.arguments(f'--edition {ALL}')), {'--edition', *EDITIONS})
        self.assertEqual(shell.arguments('--edition "Norvo B\t'), ['--edition', 'Norvo Birch'])

    def test_completes_files_and_folders(self) -> None:
        shell = self.shell()
        self.assertEqual(shell.arguments('--device ca\t'), ['--device', 'card.img'])
        self.assertEqual(shell.arguments('--destination \t'),
                         ['--destination', 'Holiday Pictures'])
        self.assertEqual({word.rstrip('/') for word in shell.arguments(f'--device {ALL}')},
                         {'--device', *block_devices(), 'card.img', 'Holiday Pictures'})


class Fish(InAFolder):
    def candidates(self, line: str) -> list[str]:
        """What fish proposes for the last word of `line`."""
        result = subprocess.run(
            [needed('fish'), '--no-config', '-c',
             f'source {built("NORVO_FISH_COMPLETION")}; complete -C "norvo-recover $argv"',
             '--', line],
            capture_output=True, text=True, check=True, timeout=60, cwd=self.folder,
            env={'HOME': str(self.folder), 'PATH': '/usr/bin:/bin', 'LC_ALL': 'C.UTF-8'})
        self.assertEqual(result.stderr, '')
        return [line.split('\t')[0] for line in result.stdout.splitlines()]

    def test_understands_the_file(self) -> None:
        result = subprocess.run([needed('fish'), '-n', built('NORVO_FISH_COMPLETION')],
                                capture_output=True, text=True, check=False, timeout=60)
        self.assertEqual((result.returncode, result.stderr), (0, ''))

    def test_completes_every_option(self) -> None:
        self.assertEqual({word.rstrip('=') for word in self.candidates('--')}, set(options()))

    def test_completes_the_closed_sets(self) -> None:
        self.assertEqual(set(self.candidates('--mode ')), set(MODES))
        self.assertEqual(set(self.candidates('--edition ')), set(EDITIONS))

    def test_completes_files_and_folders(self) -> None:
        self.assertIn('card.img', self.candidates('--device ca'))
        self.assertLessEqual(block_devices(), set(self.candidates('--device ')))
        self.assertEqual(self.candidates('--destination '), ['Holiday Pictures/'])


if __name__ == '__main__':
    main()
