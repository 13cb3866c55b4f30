#!/usr/bin/python3
"""Serves a disk image as a file with the faults of a real device: bad sectors, slowness.

As a program it serves until it is unmounted; ServedFile starts and ends it for a test.
"""
import argparse
import errno
import os
import subprocess
import sys
import threading
import time
import unittest
from pathlib import Path

SECTOR = 512
FILE_NAME = '/device'
ENOUGH_SECONDS = 20
OPERATIONS = {'init', 'destroy', 'getattr', 'open', 'release', 'read'}


class Served:
    """The operations of a file system with one file in it."""

    def __init__(self, options: argparse.Namespace) -> None:
        self.image = os.open(options.image, os.O_RDONLY)
        self.bad = {int(sector) for sector in options.bad_sectors.split(',') if sector}
        self.rate = options.bytes_per_second
        self.gate, self.gate_offset = options.gate, options.gate_offset
        self.one_at_a_time = threading.Lock()
        self.free_at = 0.0

    def __call__(self, operation: str, *arguments: object) -> object:
        if operation not in OPERATIONS:
            raise OSError(errno.ENOSYS, '')
        return getattr(self, operation)(*arguments)

    def init(self, path: str) -> None:
        pass

    def destroy(self, path: str) -> None:
        pass

    def getattr(self, path: str, handle: object = None) -> dict[str, float]:
        if path == '/':
            return {'st_mode': 0o040755, 'st_nlink': 2}
        if path != FILE_NAME:
            raise OSError(errno.ENOENT, '')
        return {'st_mode': 0o100644, 'st_nlink': 1, 'st_size': os.fstat(self.image).st_size}

    def open(self, path: str, flags: int) -> int:
        return 0

    def release(self, path: str, handle: int) -> int:
        return 0

    def read(self, path: str, size: int, offset: int, handle: int) -> bytes:
        if self.bad and not self.bad.isdisjoint(range(offset // SECTOR,
                                                      (offset + size - 1) // SECTOR + 1)):
            raise OSError(errno.EIO, '')
        if self.gate and offset + size > self.gate_offset:
            Path(f'{self.gate}.reached').touch()
            while not os.path.exists(self.gate):
                time.sleep(0.005)
        if self.rate:
            self.wait_for(size)
        return os.pread(self.image, size, offset)

    def wait_for(self, size: int) -> None:
        """Lets the device be busy with one request after the other."""
        with self.one_at_a_time:
            self.free_at = max(self.free_at, time.monotonic()) + size / self.rate
            free_at = self.free_at
        time.sleep(max(0.0, free_at - time.monotonic()))


def why_not_here() -> str | None:
    """Why no file can be served here; None when one can."""
    if not os.access('/dev/fuse', os.R_OK | os.W_OK):
        return '/dev/fuse is not there or not for this user'
    try:
        import fusepy  # noqa: F401
    except (ImportError, OSError):
        return 'python3-fusepy is not installed; tools/install_packages test installs it'
    return None


class ServedFile:
    """`image` under `mountpoint`, with the options of the program below."""

    def __init__(self, case: unittest.TestCase, image: Path, mountpoint: Path,
                 *options: str) -> None:
        reason = why_not_here()
        if reason:
            raise unittest.SkipTest(reason)
        mountpoint.mkdir()
        self.mountpoint = mountpoint
        self.path = mountpoint / FILE_NAME[1:]
        self.server = subprocess.Popen([sys.executable, __file__, image, mountpoint, *options],
                                       stdin=subprocess.DEVNULL, stderr=subprocess.PIPE)
        case.addCleanup(self.end)
        deadline = time.monotonic() + ENOUGH_SECONDS
        while not self.path.exists():
            if self.server.poll() is not None:
                assert self.server.stderr
                reason = self.server.stderr.read().decode(errors='replace')
                raise unittest.SkipTest(f'no file system can be served here: {reason}')
            if time.monotonic() > deadline:
                raise AssertionError('the served file does not appear')
            time.sleep(0.01)

    def end(self) -> None:
        if self.server.poll() is None:
            for command in (['umount', '-l'], ['fusermount3', '-uz'], ['fusermount', '-uz']):
                try:
                    if subprocess.run([*command, self.mountpoint], capture_output=True,
                                      check=False).returncode == 0:
                        break
                except FileNotFoundError:
                    continue
            try:
                self.server.wait(ENOUGH_SECONDS)
            except subprocess.TimeoutExpired:
                self.server.kill()
                self.server.wait()
        if self.server.stderr:
            self.server.stderr.close()


def main() -> None:
    import fusepy
    parser = argparse.ArgumentParser(description='Serves a disk image with faults.')
    parser.add_argument('image')
    parser.add_argument('mountpoint')
    parser.add_argument('--bad-sectors', default='', help='numbers with commas between them')
    parser.add_argument('--bytes-per-second', type=int, default=0)
    parser.add_argument('--gate', help='reads past --gate-offset wait until this file is there, '
                        'and make one of this name and .reached; nothing is read ahead, or what is '
                        'asked for would wait for that as well')
    parser.add_argument('--gate-offset', type=int, default=0)
    options = parser.parse_args()
    fusepy.FUSE(Served(options), options.mountpoint, foreground=True, raw_fi=False, ro=True,
                direct_io=bool(options.gate))


if __name__ == '__main__':
    main()
