"""When a search began and ended, and what it took of the processors, as the kernel tells it."""
import contextlib
import ctypes
import os
import select
import struct
import threading
import time
from pathlib import Path

OPENED = 0x20
CLOSED = 0x08 | 0x10  # after writing, after reading
EVENT = struct.Struct('iIII')  # watch, mask, cookie, length of the name
PATIENCE = 600  # seconds that a search may take


class SearchWatch:
    """Used with `with`, around a search of a card that nobody else opens. A search opens the card
    for each of its passes: it lasts from the first opening after begin() to the last closing. The
    kernel tells of these, so that the watch takes next to nothing of the processors."""

    def __init__(self, card: Path) -> None:
        libc = ctypes.CDLL(None, use_errno=True)
        self.queue = libc.inotify_init1(os.O_CLOEXEC | os.O_NONBLOCK)
        watch = libc.inotify_add_watch(self.queue, os.fsencode(card), OPENED | CLOSED)
        if self.queue < 0 or watch < 0:
            raise OSError(ctypes.get_errno(), 'the card cannot be watched')
        self.lock = threading.Lock()
        self.pids: dict[str, int] = {}
        self.begun = False
        self.openings = self.closings = 0
        self.opened = self.closed = 0.0
        self.busy_at_opening = self.busy_at_closing = 0.0
        self.at_opening: dict[str, float] = {}
        self.at_closing: dict[str, float] = {}
        self.left = threading.Event()
        self.thread = threading.Thread(target=self.run)

    def __enter__(self) -> 'SearchWatch':
        self.thread.start()
        return self

    def __exit__(self, *_: object) -> None:
        self.left.set()
        self.thread.join()
        os.close(self.queue)

    def count(self, name: str, pid: int) -> None:
        """From now on the process's time on the processors is told under this name, and that of its
        children under 'decoder'."""
        with self.lock:
            self.pids[name] = pid

    def begin(self) -> None:
        """The next opening of the card is the search's."""
        with self.lock:
            self.begun = True

    def run(self) -> None:
        while not self.left.is_set():
            if not select.select([self.queue], [], [], 0.2)[0]:
                continue
            now = time.monotonic()
            events = os.read(self.queue, 4096)
            with self.lock:
                for _, mask, _, _ in EVENT.iter_unpack(events):
                    self.take(mask, now)

    def take(self, mask: int, now: float) -> None:
        if not self.begun:
            return
        if mask & OPENED:
            self.openings += 1
            if self.openings == 1:
                self.opened, self.at_opening = now, self.processor_seconds()
                self.busy_at_opening = busy_seconds()
        elif mask & CLOSED:
            self.closings += 1
            self.closed, self.at_closing = now, self.processor_seconds()
            self.busy_at_closing = busy_seconds()

    def processor_seconds(self) -> dict[str, float]:
        seconds: dict[str, float] = {}
        for name, pid in self.pids.items():
            own, of_children = times_of(pid)
            seconds[name] = own
            of_children += sum(times_of(child)[0] for child in children_of(pid))
            seconds['decoder'] = seconds.get('decoder', 0) + of_children
        return seconds

    def wait_for_end(self) -> None:
        """Until the card has been closed for a second."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            with self.lock:
                if 0 < self.openings == self.closings and self.closed < time.monotonic() - 1:
                    return
            time.sleep(0.2)
        raise AssertionError('waited in vain for the end of the search')

    def seconds(self) -> float:
        """How long the search took. It has ended."""
        with self.lock:
            if not 0 < self.openings == self.closings:
                raise AssertionError('no whole search was seen')
            return self.closed - self.opened

    def processors(self) -> dict[str, float]:
        """The seconds on the processors during the search."""
        with self.lock:
            # What is counted since a later moment began with the search.
            return {name: at_end - self.at_opening.get(name, 0)
                    for name, at_end in self.at_closing.items()}

    def others(self) -> float:
        """The share of the machine's processors that went to what does not belong to the search."""
        ours = sum(self.processors().values())
        busy = self.busy_at_closing - self.busy_at_opening
        return max(0, busy - ours) / (self.seconds() * (os.cpu_count() or 1))


def busy_seconds() -> float:
    """Of all processors together, since the machine has started."""
    user, nice, system, _, _, interrupts, soft_interrupts, stolen = (
        int(one) for one in Path('/proc/stat').read_text().split()[1:9])
    busy = user + nice + system + interrupts + soft_interrupts + stolen
    return busy / os.sysconf('SC_CLK_TCK')


def wait_for_idle_processors(share: float, end: float) -> None:
    """Until less than this share of the processors was busy for a second, at the latest till `end`
    on the monotonic clock."""
    while time.monotonic() < end:
        before = busy_seconds()
        time.sleep(1)
        if busy_seconds() - before < share * (os.cpu_count() or 1):
            return


def children_of(pid: int) -> list[int]:
    """Those of every thread."""
    children: list[int] = []
    for thread in Path(f'/proc/{pid}/task').glob('*/children'):
        with contextlib.suppress(OSError):  # a thread that has just ended
            children += [int(child) for child in thread.read_text().split()]
    return children


def times_of(pid: int) -> tuple[float, float]:
    """Of the process, and of its children that have ended: seconds on the processors."""
    try:
        behind_name = Path(f'/proc/{pid}/stat').read_text().rpartition(')')[2].split()
    except OSError:
        return 0, 0
    user, system, children_user, children_system = (int(one) for one in behind_name[11:15])
    second = os.sysconf('SC_CLK_TCK')
    return (user + system) / second, (children_user + children_system) / second
