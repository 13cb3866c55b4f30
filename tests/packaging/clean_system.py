"""A system as its installer leaves it, in a folder, to install the package into.

It is made by debootstrap from the sources of packages that the running system uses, with what the
package depends on, and kept as an archive in the cache folder. Each test has a layer of its own over
the unpacked archive, in memory and in a mount namespace of the test's own.
"""
import fcntl
import hashlib
import os
import shutil
import stat
import subprocess
import sys
import tempfile
import time
from collections.abc import Iterator
from dataclasses import dataclass
from pathlib import Path

INSIDE = 'NORVO_INSIDE_NAMESPACE'
NAMESPACE = ['unshare', '--mount', '--propagation', 'private']
LONGEST_STEP = 600  # seconds, most of them for fetching packages
OLDEST = 7 * 24 * 3600  # seconds after which an archive is made again
PERSON = 1000
# Nobody needs what is installed here after a power cut.
ENVIRONMENT = {'PATH': '/usr/sbin:/usr/bin:/sbin:/bin', 'LANG': 'C.UTF-8', 'HOME': '/root',
               'DEBIAN_FRONTEND': 'noninteractive', 'DPKG_FORCE': 'unsafe-io'}
# Nobody starts services here.
NO_SERVICES = '#!/bin/sh\nexit 101\n'
# Of no use in what is only there to be depended on; the package itself is installed with them.
WITHOUT = 'etc/dpkg/dpkg.cfg.d/without-documents'
DOCUMENTS = ''.join(f'path-exclude=/usr/share/{kind}/*\n'
                    for kind in ('doc', 'help', 'info', 'locale', 'man'))
# What dpkg and apt note down for themselves.
NOTES = ('var/lib/dpkg', 'var/lib/apt', 'var/cache/apt', 'var/log/apt', 'var/log/dpkg.log')


class NotToBeHad(Exception):
    """Something that the test needs is not here, and why."""


def call(*command: object, environment: dict[str, str] | None = None) -> str:
    """Runs a tool; one that fails while the system is made means that it cannot be had."""
    try:
        result = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL,
                                capture_output=True, text=True, errors='replace',
                                env=environment, timeout=LONGEST_STEP, check=False)
    except subprocess.TimeoutExpired:
        raise NotToBeHad(f'{command[0]} does not end') from None
    if result.returncode != 0:
        said = (result.stderr.strip() or result.stdout.strip()).splitlines()
        raise NotToBeHad(f'{command[0]} failed: {said[-1] if said else result.returncode}')
    return result.stdout


def enter() -> None:
    """Starts the calling file again inside, unless it is there; returns outside when that cannot
    be had."""
    if INSIDE in os.environ or os.geteuid() != 0 or shutil.which('unshare') is None:
        return
    if subprocess.run([*NAMESPACE, 'true'], capture_output=True, check=False).returncode != 0:
        return
    os.environ[INSIDE] = '1'
    os.execvp('unshare', [*NAMESPACE, sys.executable, *sys.argv])


def is_inside() -> bool:
    return INSIDE in os.environ


@dataclass(frozen=True)
class Source:
    address: str
    suite: str
    component: str
    has_base: bool  # whether a whole system comes from there


def sources_of_this_system() -> list[Source]:
    """Where the running system has Debian's packages from."""
    said = call('apt-get', 'indextargets', '--format', '$(SITE) $(CODENAME) $(COMPONENT) $(LABEL)',
                'Identifier: Packages', 'Origin: Debian')
    fields = [line.split() for line in dict.fromkeys(said.splitlines())]
    found = [Source(site, suite, component, label == 'Debian' and '-' not in suite)
             for site, suite, component, label in fields]
    if not any(source.has_base for source in found):
        raise NotToBeHad('apt knows no source of Debian packages here')
    return found


def proxy_of_this_system() -> str:
    return call('apt-config', 'dump', '--format', '%v', 'Acquire::http::Proxy').strip()


class Root:
    """A folder with a system in it, and what is mounted there."""

    def __init__(self, root: Path) -> None:
        self.root = root
        self.mounted: list[Path] = []

    def command(self, *words: object, person: bool = False) -> list[str]:
        """The words of a command that runs inside, as root or as a person without any right."""
        who = [f'--userspec={PERSON}:{PERSON}', '--groups='] if person else []
        return ['chroot', *who, str(self.root), *map(str, words)]

    def run(self, *words: object, person: bool = False) -> str:
        return call(*self.command(*words, person=person), environment=ENVIRONMENT)

    def path(self, inside: str | Path) -> Path:
        return self.root / str(inside).lstrip('/')

    def mount(self, kind: str, source: str, inside: str) -> None:
        target = self.path(inside)
        target.mkdir(parents=True, exist_ok=True)
        how = ['--bind'] if kind == 'bind' else ['-t', kind]
        call('mount', *how, source, target)
        self.mounted.append(target)

    def unmount(self) -> None:
        while self.mounted:
            call('umount', self.mounted.pop())


class CleanSystem(Root):
    """A layer over the system in `base`, which stays as it is."""

    def __init__(self, base: Path) -> None:
        self.base = base
        self.layer = Path(tempfile.mkdtemp(prefix='layer_', dir=base.parent))
        super().__init__(self.layer / 'root')
        call('mount', '-t', 'tmpfs', '-o', 'mode=755', 'tmpfs', self.layer)
        for name in ('root', 'changed', 'work'):
            (self.layer / name).mkdir()
        call('mount', '-t', 'overlay', 'overlay', '-o',
             f'lowerdir={base},upperdir={self.layer}/changed,workdir={self.layer}/work', self.root)
        self.mount('proc', 'proc', 'proc')

    def remove(self) -> None:
        self.unmount()
        call('umount', self.root)
        call('umount', self.layer)
        self.layer.rmdir()

    def changes(self) -> dict[str, tuple[str, str]]:
        """What every path that is not as in the base was and is; the notes of dpkg and apt left
        out. Nothing may be mounted for a bus, a display and the like."""
        return dict(self.changes_below(''))

    def changes_below(self, folder: str) -> Iterator[tuple[str, tuple[str, str]]]:
        changed = set(os.listdir(self.layer / 'changed' / folder))
        names = [set(os.listdir(root / folder)) if (root / folder).is_dir() else set()
                 for root in (self.base, self.root)]
        for name in sorted(changed | (names[0] ^ names[1])):
            path = os.path.join(folder, name)
            if path in NOTES:
                continue
            what = described(self.base / path), described(self.root / path)
            if what[0] != what[1]:
                yield path, what
            upper = self.layer / 'changed' / path
            if upper.is_dir() and not upper.is_symlink():
                yield from self.changes_below(path)


def described(path: Path) -> str:
    """Kind, rights, owner and content; empty for a path that is not there."""
    try:
        status = path.lstat()
    except (FileNotFoundError, NotADirectoryError):
        return ''
    who = f'{stat.filemode(status.st_mode)} {status.st_uid}:{status.st_gid}'
    if stat.S_ISLNK(status.st_mode):
        return f'{who} {os.readlink(path)}'
    if not stat.S_ISREG(status.st_mode):
        return who
    with path.open('rb') as stream:
        return f'{who} {hashlib.file_digest(stream, "blake2b").hexdigest()}'


def install_needed(system: Root, sources: list[Source], proxy: str, needed: str) -> None:
    system.path('usr/sbin/policy-rc.d').write_text(NO_SERVICES, 'utf-8')
    system.path('usr/sbin/policy-rc.d').chmod(0o755)
    system.path('etc/apt/sources.list').write_text(''.join(
        f'deb {source.address} {source.suite} {source.component}\n' for source in sources), 'utf-8')
    if proxy:
        system.path('etc/apt/apt.conf.d/01proxy').write_text(
            f'Acquire::http::Proxy "{proxy}";\n', 'utf-8')
    without = system.path(WITHOUT)
    without.write_text(DOCUMENTS, 'utf-8')
    system.mount('proc', 'proc', 'proc')
    system.run('apt-get', '-q', 'update')
    system.run('apt-get', '-qy', 'satisfy', '--no-install-recommends', needed)
    system.run('apt-get', 'clean')
    system.run('useradd', '--uid', PERSON, '--create-home', 'person')
    system.unmount()
    without.unlink()


def make_system(folder: Path, sources: list[Source], needed: str) -> None:
    """A clean system with the packages `needed`, written as dependencies are."""
    base = next(source for source in sources if source.has_base)
    proxy = proxy_of_this_system()
    environment = dict(os.environ, DPKG_FORCE='unsafe-io')
    if proxy:
        environment['http_proxy'] = proxy
    call('debootstrap', '--variant=minbase', base.suite, folder, base.address,
         environment=environment)
    system = Root(folder)
    try:
        install_needed(system, sources, proxy, needed)
    finally:
        system.unmount()


def pack(folder: Path, archive: Path) -> None:
    unfinished = archive.with_suffix('.unfinished')
    call('tar', '--create', '--file', unfinished, '--directory', folder, '.')
    unfinished.rename(archive)


def unpacked_system(cache: Path, needed: str) -> Path:
    """A folder of the caller's own with a clean system in it, to be removed by the caller."""
    cache.mkdir(parents=True, exist_ok=True)
    archive = cache / 'system.tar'
    note = cache / 'made_of'
    folder = Path(tempfile.mkdtemp(prefix='system_', dir=cache))
    folder.chmod(0o755)
    try:
        with open(cache / 'lock', 'w') as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            sources = sources_of_this_system()
            made_of = f'{sources} {needed}'
            if (archive.exists() and note.exists() and note.read_text('utf-8') == made_of
                    and time.time() - archive.stat().st_mtime < OLDEST):
                call('tar', '--extract', '--file', archive, '--directory', folder)
            else:
                make_system(folder, sources, needed)
                pack(folder, archive)
                note.write_text(made_of, 'utf-8')
    except NotToBeHad:
        shutil.rmtree(folder)
        raise
    return folder
