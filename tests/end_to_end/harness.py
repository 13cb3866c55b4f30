"""What the end-to-end tests share: fresh folders, runs of the program, checks of what it says.

The program's path comes in NORVO_RECOVER. A test that cannot run here is skipped with its reason;
main() then ends with 77, which ctest shows as a skipped test, unless another one failed.
"""
import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from collections.abc import Sequence
from dataclasses import dataclass, field
from pathlib import Path

from outcome import main as main  # so that a test needs one import

SECTOR = 512
PATIENCE = 120  # seconds after which a run hangs
RESULTS = Path('Norvo Spruce Results/Photo Search')
GENERAL = RESULTS / 'General Recovery Results'
THOROUGH = RESULTS / 'Omitted (recovered by Thorough Scan)'
LABELS = {
    'GEN': '( Currently performing Search based on: Norvo General Recovery Procedure )',
    'THD': '( Currently performing Search based on: Norvo Thorough Scanning Algorithm )',
}
UNABLE_TO_SAVE = ('Unable to continue saving recovered data.\n\nEither Destination Drive is '
                  'inaccessible or there is no free space available in drive to save recovered '
                  'data.')
KEYS = {
    'pass': {'pass': str, 'label': str},
    'file': {'pass': str, 'path': str, 'name': str, 'uid': str},
    'clear': {'notice': str},
    'message': {'text': str},
    'device_error': {'errno': int, 'permission': bool},
    'final': {'outcome': str},
}
Event = dict[str, object]


def program() -> Path:
    path = os.environ.get('NORVO_RECOVER')
    if not path:
        sys.exit('NORVO_RECOVER must name the program that is tested')
    return Path(path)


@dataclass
class Run:
    """One run of the program that has ended."""
    status: int
    out: str
    err: str
    events: list[Event] = field(default_factory=list)

    def of(self, kind: str) -> list[Event]:
        return [event for event in self.events if event['event'] == kind]

    @property
    def files(self) -> list[Path]:
        return [Path(str(event['path'])) for event in self.of('file')]

    @property
    def outcome(self) -> object:
        return self.events[-1].get('outcome') if self.events else None


def read_events(out: str) -> list[Event]:
    """The events of a run with --json; raises on anything else on standard output."""
    if out and not out.endswith('\n'):
        raise AssertionError(f'the last line is not complete: {out[-80:]!r}')
    return [json.loads(line) for line in out.splitlines()]


class Case(unittest.TestCase):
    """A test with a folder of its own, which is removed with all in it whatever happens."""
    maxDiff = 2000

    def setUp(self) -> None:
        self.folder = Path(tempfile.mkdtemp(prefix='norvo_end_to_end_'))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        # Other users run the program on what lies here.
        self.folder.chmod(0o755)
        self.destination = self.folder / 'destination'

    def command(self, *arguments: object) -> list[str]:
        return [str(program()), *map(str, arguments)]

    def run_program(self, *arguments: object, prefix: Sequence[str] = (), umask: int = -1) -> Run:
        """Runs the program; with --json the events of a search are read and checked."""
        result = subprocess.run([*prefix, *self.command(*arguments)], stdin=subprocess.DEVNULL,
                                capture_output=True, text=True, timeout=PATIENCE, umask=umask,
                                check=False)
        run = Run(result.returncode, result.stdout, result.stderr)
        self.check_end(run)
        if '--json' in arguments and not {'--list-drives', '--list-types'} & set(arguments):
            run.events = read_events(run.out)
            self.check_events(run.events)
        return run

    def search(self, device: Path, *arguments: object, umask: int = -1) -> Run:
        return self.run_program('--device', device, '--destination', self.destination, '--json',
                                *arguments, umask=umask)

    def check_end(self, run: Run) -> None:
        if run.status < 0:
            self.fail(f'the program died of signal {-run.status}: {run.err[-500:]}')

    def check_events(self, events: list[Event]) -> None:
        """Kinds, keys, types and order of the events of one search."""
        for event in events:
            kind = event.get('event')
            self.assertIn(kind, KEYS, event)
            expected = KEYS[str(kind)]
            self.assertEqual(set(event), {'event', *expected}, event)
            for key, kind_of_value in expected.items():
                self.assertIs(type(event[key]), kind_of_value, event)
        if not events:
            return
        kinds = [event['event'] for event in events]
        self.assertEqual(kinds.count('final'), 1, 'one final event per search')
        self.assertEqual(kinds[-1], 'final')
        self.assertEqual(kinds[0], 'pass')
        current = None
        for event in events:
            if event['event'] == 'pass':
                self.assertEqual(event['label'], LABELS[str(event['pass'])])
                self.assertNotEqual(event['pass'], current)
                current = event['pass']
            elif event['event'] == 'file':
                self.assertEqual(event['pass'], current)
        passes = [event['pass'] for event in events if event['event'] == 'pass']
        self.assertIn(passes, (['GEN'], ['GEN', 'THD']))

    def check_tree(self, run: Run, edition: str = 'Norvo Spruce') -> None:
        """What was reported is what lies below the destination, under the names it must have."""
        on_disk = {path for path in self.destination.rglob('*') if path.is_file()}
        self.assertEqual(set(run.files), on_disk)
        root = self.destination / f'{edition} Results' / 'Photo Search'
        folders = {'GEN': root / GENERAL.name, 'THD': root / THOROUGH.name}
        prefixes = {'GEN': 'GND', 'THD': 'THD'}
        counts = {'GEN': 0, 'THD': 0}
        for event in run.of('file'):
            code = str(event['pass'])
            counts[code] += 1
            path = Path(str(event['path']))
            extension = path.suffix[1:]
            name = f'{prefixes[code]}{counts[code]:05}.{extension}'
            self.assertEqual(path, folders[code] / extension / name)
            self.assertEqual((event['name'], event['uid']), (name, name))
        self.assertTrue(all(folder.is_dir() for folder in folders.values()))

    def assert_save_failed(self, run: Run) -> None:
        self.assertEqual(run.status, 1, run.err)
        self.assertEqual(run.outcome, 'save_failed')
        self.assertEqual([event['text'] for event in run.of('message')], ['\n' + UNABLE_TO_SAVE])
        self.assertIn(UNABLE_TO_SAVE, run.err)

    def assert_refused(self, run: Run, message: str) -> None:
        """Wrong usage: said on standard error, and nothing else happened."""
        self.assertEqual(run.status, 2, run.err)
        self.assertIn(message, run.err)
        self.assertEqual(run.out, '')
        self.assertFalse(self.destination.exists())


def is_root() -> bool:
    return os.geteuid() == 0


def need_root(what: str) -> None:
    if not is_root():
        raise unittest.SkipTest(f'{what} needs root')


def need_tools(*names: str) -> None:
    os.environ['PATH'] += ':/usr/sbin:/sbin'
    missing = [name for name in names if shutil.which(name) is None]
    if missing:
        raise unittest.SkipTest(f'not installed: {", ".join(missing)}; '
                                'tools/install_packages test installs them')


def call(*command: object) -> str:
    """Runs a tool that must succeed and returns what it says."""
    result = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL,
                            capture_output=True, text=True, timeout=PATIENCE, check=False)
    if result.returncode != 0:
        raise AssertionError(f'{command[0]} failed: {result.stderr or result.stdout}')
    return result.stdout

