"""Searches that a test does something to while they run."""
import re
import signal
import subprocess
import time
from collections.abc import Callable
from pathlib import Path

import disks
from harness import PATIENCE, SECTOR, Case, Run, read_events
from pictures import Picture, make_jpegs
from served_file import ServedFile


class RunningSearch(Case):
    def start(self, device: Path, *arguments: str) -> subprocess.Popen[str]:
        """Begins a search; what it says goes to files, so that nothing has to be read in time."""
        self.out, self.err = self.folder / 'out', self.folder / 'err'
        with open(self.out, 'w') as out, open(self.err, 'w') as err:
            search = subprocess.Popen(
                self.command('--device', device, '--destination', self.destination, '--quiet',
                             *arguments),
                stdin=subprocess.DEVNULL, stdout=out, stderr=err, text=True)
        self.addCleanup(search.wait)
        self.addCleanup(search.kill)
        return search

    def wait_until(self, condition: Callable[[], bool], search: subprocess.Popen[str]) -> None:
        deadline = time.monotonic() + PATIENCE
        while not condition():
            self.assertIsNone(search.poll(), 'the search ended early')
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.002)

    def stop(self, search: subprocess.Popen[str], number: signal.Signals) -> None:
        """Sends a signal and returns when its handler has run; the search may have ended then."""
        search.send_signal(number)
        deadline = time.monotonic() + PATIENCE
        while search.poll() is None and not handles_no_signal(search.pid):
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.002)

    def count(self, kind: str) -> int:
        return self.out.read_text('utf-8').count(f'{{"event":"{kind}"')

    def end(self, search: subprocess.Popen[str]) -> Run:
        """The whole run. Not how soon it ends tells that it was stopped, but what it says."""
        search.wait(PATIENCE)
        out = self.out.read_text('utf-8')
        run = Run(search.returncode, out, self.err.read_text('utf-8'), read_events(out))
        self.check_end(run)
        self.check_events(run.events)
        return run


def handles_no_signal(pid: int) -> bool:
    """Whether no signal is on its way and the main thread, which takes them, sleeps again."""
    status = Path(f'/proc/{pid}/status')
    pending = re.findall(r'^(?:SigPnd|ShdPnd):\s*(\w+)$', status.read_text(), re.MULTILINE)
    if any(int(signals, 16) for signals in pending):
        return False
    return re.search(r'^State:\s*S', status.read_text(), re.MULTILINE) is not None


class HeldSearch(RunningSearch):
    """A search that the device holds in the middle of the picture after `finished` others.

    Two threads of the program read ahead of the search, up to four blocks of 256 KiB: one can wait
    at the gate while the search has yet to see the blocks before it. So the held picture begins
    far before the gate.
    """
    finished = 24
    before_gate = 3 << 20

    def start_and_hold(self, *arguments: str) -> subprocess.Popen[str]:
        """The search, when it has told of all pictures before the one that it is held in."""
        first = make_jpegs(self.finished + 1)
        long = b''.join(f'{sector:08}'.encode() * (SECTOR // 8) for sector in range(8192))
        held = Picture('held.jpg', 'JPG', first.pop().content + long)
        image = self.folder / 'disk.img'
        self.places = disks.raw_image(image, [*first, held, *make_jpegs(5, seed=9)])
        self.gate = self.folder / 'gate'
        served = ServedFile(self, image, self.folder / 'mount', '--gate', str(self.gate),
                            '--gate-offset', str(self.places[-6].offset + self.before_gate))
        search = self.start(served.path, '--json', *arguments)
        # A process that reads there is not gone before it was answered, even when it is killed.
        self.addCleanup(self.let_go)
        self.wait_until(lambda: self.count('file') >= self.finished, search)
        return search

    def let_go(self) -> None:
        self.gate.touch()
