#!/usr/bin/python3
"""Every command of every document is run in a fresh copy of the tree, in the order of reading.

The copy builds with ./run as a newcomer does. Commands of cmake and ctest are not run again in it,
as building everything takes too long: their presets, targets and tests are looked up in the build
that this test belongs to (NORVO_BUILD). What cannot be run here stands in known_commands.py.

`./run` is run twice: where there is no screen, and on one that shows the window.
"""
import contextlib
import json
import os
import re
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path
from unittest import mock

import documents
from documents import ROOT, Command
from known_commands import ELSEWHERE, INSTEAD

sys.path.insert(0, str(ROOT / 'tests/end_to_end'))
import outcome  # noqa: E402
from desktop import Desktop  # noqa: E402

BUILD = Path(os.environ['NORVO_BUILD'])
PATIENCE = 1500  # seconds for one command; ./run builds the program
TITLE = 'Norvo Recovery for All Media'
PROGRAMS = '/usr/sbin:/usr/bin:/sbin:/bin'


def key_of(command: Command) -> str | None:
    """The line of ELSEWHERE that the command belongs to."""
    for key in ELSEWHERE:
        if (command.text == key or command.place.startswith(f'{key}:')
                or (key.endswith(' ...') and command.text.startswith(key[:-3]))):
            return key
    return None


def as_run_here(text: str) -> str:
    for key, parts in INSTEAD:
        if key in text:
            for old, new in parts.items():
                text = text.replace(old, new)
            return text
    return text


def of_build_tools(text: str) -> bool:
    return bool(re.match(r'(cmake|ctest) -', text))


def listed_tests(*arguments: str) -> list[str]:
    """The names of the build's tests that ctest selects. ctest is called in a folder of its own, as
    it would empty the log of the run to which this test belongs."""
    with tempfile.TemporaryDirectory(prefix='norvo_ctest_') as folder:
        Path(folder, 'CTestTestfile.cmake').write_text(f'subdirs("{BUILD}")\n', 'utf-8')
        listed = subprocess.run(['ctest', '--test-dir', folder, '-N', *arguments],
                                capture_output=True, text=True, check=False).stdout
    return re.findall(r'^ *Test +#\d+: (\S+)$', listed, re.MULTILINE)


def listed_files(tree: Path, *choice: str) -> list[str] | None:
    """Files of the tree that git lists; None where there is no git."""
    if shutil.which('git') is None:
        return None
    listed = subprocess.run(['git', '-C', tree, 'ls-files', '-z', *choice],
                            capture_output=True, text=True, check=False)
    return [name for name in listed.stdout.split('\0') if name] if listed.returncode == 0 else None


def copy_of_tree(tree: Path, target: Path) -> None:
    """What a clone holds, or all but builds where there is no git. A file that was not added yet is
    copied, too, and named: work in progress shall pass. Where CI is set only what was added counts,
    so that a file that was forgotten is missed."""
    names = listed_files(tree, '--cached')
    if names is None:
        shutil.copytree(tree, target, ignore=shutil.ignore_patterns('build', '.git'), symlinks=True)
        return
    new = listed_files(tree, '--others', '--exclude-standard') or []
    if new:
        left = 'left out' if os.environ.get('CI') else 'copied'
        print(f'not added to git, and {left}:', *new, sep='\n  ', file=sys.stderr)
    for name in names if os.environ.get('CI') else names + new:
        if (tree / name).exists():
            (target / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(tree / name, target / name, follow_symlinks=False)


class BuildTools:
    """Whether commands of cmake and ctest name what exists."""

    def __init__(self) -> None:
        presets = json.loads((ROOT / 'CMakePresets.json').read_text('utf-8'))
        self.presets = {kind: {preset['name'] for preset in presets[f'{kind}Presets']
                               if not preset.get('hidden')}
                        for kind in ('configure', 'build', 'test')}

    def fault(self, text: str) -> str | None:
        for part in re.split(r'\s*&&\s*', text):
            words = shlex.split(part)
            if words[0] in ('cmake', 'ctest') and (fault := self.fault_of(words)):
                return fault
        return None

    def fault_of(self, words: list[str]) -> str | None:
        kind = ('test' if words[0] == 'ctest' else 'build' if '--build' in words else 'configure')
        if '--preset' not in words:
            return None
        preset = words[words.index('--preset') + 1]
        if preset not in self.presets[kind]:
            return f'there is no {kind} preset "{preset}"'
        if kind == 'build' and '--target' in words:
            return self.missing_targets(words[words.index('--target') + 1:])
        if kind == 'test':
            rest = [word for word in words[1:] if word not in ('--preset', preset, '-V')]
            return None if listed_tests(*rest) else 'it selects no test'
        return None

    def missing_targets(self, targets: list[str]) -> str | None:
        for target in targets:
            known = subprocess.run(['ninja', '-C', BUILD, '-t', 'query', target],
                                   capture_output=True, check=False)
            if known.returncode != 0:
                return f'there is no target "{target}"'
        return None


class FreshCopy:
    """The tree in a new folder, with what the documents suppose to be there: a card's image under
    the names that they use. `norvo-recover` alone is the one that ./run builds."""

    def __init__(self, folder: Path) -> None:
        self.tree = folder / 'norvo-recovery'
        self.home = folder / 'home'
        self.home.mkdir()
        copy_of_tree(ROOT, self.tree)
        programs = self.tree / 'build' / 'release' / 'bin'
        self.environment = {
            **{key: value for key, value in os.environ.items()
               if key not in ('DISPLAY', 'WAYLAND_DISPLAY')},
            'HOME': str(self.home),
            'CCACHE_DIR': os.environ.get('CCACHE_DIR', str(Path.home() / '.cache' / 'ccache')),
            'PATH': f'{programs}:{PROGRAMS}'}

    def run(self, text: str) -> tuple[int, str]:
        result = subprocess.run(['bash', '-e', '-o', 'pipefail', '-c', text], cwd=self.tree,
                                env=self.environment, stdin=subprocess.DEVNULL, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False,
                                timeout=PATIENCE)
        if re.search(r'Running 0 tests', result.stdout):
            return 1, result.stdout + '\nno test has this name'
        return result.returncode, result.stdout

    def run_with_screen(self) -> str | None:
        """What ./run said when it ended without having shown the window; None when it showed it,
        and then it is ended."""
        with Desktop() as desktop, tempfile.TemporaryFile('w+') as said:
            # Not the desktop's own folder for what runs: the compiler's cache leaves something there.
            screen = {'DISPLAY': desktop.environment['DISPLAY'], 'QT_QPA_PLATFORM': 'xcb',
                      'XDG_RUNTIME_DIR': str(self.home)}
            shown = subprocess.Popen(['./run'], cwd=self.tree, stdin=subprocess.DEVNULL, stdout=said,
                                     stderr=subprocess.STDOUT, start_new_session=True,
                                     env={**self.environment, **screen})
            end = time.monotonic() + PATIENCE
            try:
                while not (is_shown := desktop.shows_window(TITLE)):
                    if shown.poll() is not None or time.monotonic() > end:
                        break
                    time.sleep(0.5)
            finally:
                with contextlib.suppress(ProcessLookupError):
                    os.killpg(shown.pid, signal.SIGKILL)
                shown.wait()
            said.seek(0)
            return None if is_shown else said.read()

    def furnish(self) -> None:
        """After ./run: the images, and those programs of the full build that ./run does not make."""
        for name in ('card.img', 'some.img'):
            os.link(self.tree / 'build/sample/card.img', self.tree / name)
        for program in (BUILD / 'bin').iterdir():
            mine = self.tree / 'build/release/bin' / program.name
            if not mine.exists():
                mine.symlink_to(program)


class Copies(unittest.TestCase):
    def copied(self, surroundings: dict[str, str]) -> list[str]:
        """What is copied of a tree in which one file was added and the other one was not."""
        if shutil.which('git') is None:
            self.skipTest('git is needed')
        with (tempfile.TemporaryDirectory(prefix='norvo_copy_') as folder,
              mock.patch.dict(os.environ, surroundings)):
            tree, target = Path(folder, 'tree'), Path(folder, 'copy')
            tree.mkdir()
            for name in ('added', 'forgotten'):
                (tree / name).touch()
            subprocess.run(['git', 'init', '-q', tree], check=True)
            subprocess.run(['git', '-C', tree, 'add', 'added'], check=True)
            copy_of_tree(tree, target)
            return sorted(path.name for path in target.iterdir())

    def test_work_in_progress_is_copied(self) -> None:
        self.assertEqual(self.copied({'CI': ''}), ['added', 'forgotten'])

    def test_a_file_that_was_forgotten_is_missed_where_changes_are_checked(self) -> None:
        self.assertEqual(self.copied({'CI': 'true'}), ['added'])


class Commands(unittest.TestCase):
    def test_there_are_commands(self) -> None:
        found = {command.text for command in documents.commands()}
        self.assertIn('./run', found)
        self.assertGreater(len(found), 10)

    def test_a_listing_that_is_no_command_says_what_it_is(self) -> None:
        for document in documents.documents():
            for block in documents.blocks(document):
                self.assertNotEqual(block.language, '', f'{block.place}: the fence names no '
                                    'language ("sh" for commands, "text" for what is none)')

    def test_the_list_of_commands_that_are_not_run_is_not_out_of_date(self) -> None:
        used = {key_of(command) for command in documents.commands()}
        for key, reason in ELSEWHERE.items():
            self.assertIn(key, used, f'known_commands.py: "{key}" stands in no document any more')
            self.assertTrue(reason)

    def test_each_test_that_runs_a_command_exists(self) -> None:
        tests = listed_tests()
        for reason in ELSEWHERE.values():
            for name in re.findall(r'\b\w+_(?:test|replay)\b', reason):
                self.assertIn(name, tests, f'known_commands.py: there is no {name}')

    def test_every_program_that_is_called_within_a_sentence_is_seen(self) -> None:
        for document in documents.documents():
            for code in documents.inline_code(document):
                words = code.text.split()
                if len(words) > 1 and shutil.which(words[0], path=PROGRAMS):
                    self.assertTrue(documents.INLINE_COMMAND.match(code.text),
                                    f'{code.place}: documents.py does not know "{words[0]}"')

    def test_a_device_is_read_as_administrator(self) -> None:
        for command in documents.commands():
            if re.search(r'(--device |if=)/dev/', command.text):
                self.assertTrue(command.text.startswith('sudo '), f'{command.place}: {command.text}')

    def test_commands_of_the_build_name_what_exists(self) -> None:
        tools = BuildTools()
        for command in documents.commands():
            if of_build_tools(command.text) and key_of(command) is None:
                with self.subTest(command.place):
                    self.assertIsNone(tools.fault(command.text), command.text)

    def show_window(self, copy: FreshCopy) -> None:
        for tool in ('Xvfb', 'openbox', 'xdotool', 'xprop'):
            if shutil.which(tool) is None:
                self.skipTest(f'{tool} is needed for a screen')
        said = copy.run_with_screen()
        self.assertIsNone(said, f'./run showed no window:\n{said}')

    def test_every_other_command_works_in_a_fresh_copy(self) -> None:
        with tempfile.TemporaryDirectory(prefix='norvo_documents_') as folder:
            copy = FreshCopy(Path(folder))
            status, output = copy.run('./run')
            self.assertEqual(status, 0, output)
            cache = (copy.tree / 'build/release/CMakeCache.txt').read_text('utf-8')
            self.assertIn('NORVO_WERROR:BOOL=OFF', cache, 'a new compiler may warn of more')
            with self.subTest('./run with a screen'):
                self.show_window(copy)
            copy.furnish()
            done = {'./run'}
            for command in documents.commands():
                known = key_of(command) is not None or of_build_tools(command.text)
                if known or command.text in done:
                    continue
                done.add(command.text)
                with self.subTest(command.place):
                    status, output = copy.run(as_run_here(command.text))
                    self.assertEqual(status, 0, f'{command.place}: {command.text}\n{output}')
            print('run in a fresh copy:', *sorted(done), sep='\n  ', file=sys.stderr)


if __name__ == '__main__':
    outcome.main()
