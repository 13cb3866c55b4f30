#!/usr/bin/python3
"""A destination that takes files and refuses every change of permissions, as drives do that were
mounted for somebody else.

As a program with a folder and a mountpoint it is that destination until it is unmounted.
"""
import errno
import os
import subprocess
import sys
from pathlib import Path

import disks
from harness import Case, RESULTS, call, main
from pictures import make_jpegs
from served_file import why_not_here

STATUS = ('st_mode', 'st_nlink', 'st_size', 'st_uid', 'st_gid', 'st_mtime', 'st_ctime', 'st_atime')


class Stubborn:
    """The operations of a file system that keeps everything in `folder`."""

    def __init__(self, folder: str) -> None:
        self.folder = folder

    def __call__(self, operation: str, path: str, *arguments: object) -> object:
        if operation not in vars(Stubborn):
            raise OSError(errno.ENOSYS, '')
        return getattr(self, operation)(self.folder + path, *arguments)

    def chmod(self, path: str, mode: int) -> int:
        raise OSError(errno.EPERM, '')

    def getattr(self, path: str, handle: int | None = None) -> dict[str, float]:
        status = os.lstat(path)
        return {name: getattr(status, name) for name in STATUS}

    def mkdir(self, path: str, mode: int) -> int:
        os.mkdir(path, mode)
        return 0

    def create(self, path: str, mode: int, info: object = None) -> int:
        return os.open(path, os.O_RDWR | os.O_CREAT, mode)

    def open(self, path: str, flags: int) -> int:
        return os.open(path, flags)

    def read(self, path: str, size: int, offset: int, handle: int) -> bytes:
        return os.pread(handle, size, offset)

    def write(self, path: str, data: bytes, offset: int, handle: int) -> int:
        return os.pwrite(handle, data, offset)

    def truncate(self, path: str, length: int, handle: int | None = None) -> int:
        os.truncate(path, length)
        return 0

    def release(self, path: str, handle: int) -> int:
        os.close(handle)
        return 0

    def readdir(self, path: str, handle: int) -> list[str]:
        return ['.', '..', *os.listdir(path)]


class StubbornDestination(Case):
    def setUp(self) -> None:
        super().setUp()
        reason = why_not_here()
        if reason:
            self.skipTest(reason)
        self.kept = self.folder / 'kept'
        self.kept.mkdir()
        self.destination.mkdir()
        server = subprocess.Popen([sys.executable, __file__, self.kept, self.destination],
                                  stdin=subprocess.DEVNULL)
        self.addCleanup(server.wait)
        self.addCleanup(call, 'fusermount3', '-uz', self.destination)
        while not self.destination.is_mount():
            if server.poll() is not None:
                self.skipTest('no file system can be served here')

    def test_takes_everything_that_was_found(self) -> None:
        image = self.folder / 'disk.img'
        places = disks.raw_image(image, make_jpegs(3))
        with self.assertRaises(PermissionError):
            self.destination.chmod(0o777)
        run = self.search(image)
        self.assertEqual(run.status, 0)
        self.assertEqual(disks.Recovered(run.files).missing(places), [])
        self.assertTrue((self.kept / RESULTS).is_dir())


def serve() -> None:
    import fusepy
    fusepy.FUSE(Stubborn(sys.argv[1]), sys.argv[2], foreground=True, raw_fi=False)


if __name__ == '__main__':
    serve() if len(sys.argv) == 3 and not sys.argv[1].startswith('-') else main()
