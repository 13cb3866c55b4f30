"""The kernel that the virtual machine runs, and the first files that it sees.

The kernel is Debian's own, from its package; it is fetched once and kept in a cache folder. What
was fetched lies there with nothing but the modules that the machine needs.
"""
import fcntl
import platform
import re
import shutil
import subprocess
import tempfile
from collections.abc import Sequence
from dataclasses import dataclass
from pathlib import Path

PACKAGE = 'linux-image-amd64'
# What the kernel does not know by itself, in the order in which it is asked for: a way to the host,
# its file system, a built-in disk, and sticks with the file system of cards.
MODULES = ('virtio_pci', 'virtio_console', 'virtio_blk', '9pnet_virtio', '9p', 'overlay',
           'xhci_pci', 'usb_storage', 'sd_mod', 'vfat', 'nls_cp437', 'nls_ascii', 'nls_utf8')
FIRST_PROGRAM = Path(__file__).with_name('first_program.sh')
BUSYBOX = Path('/bin/busybox')
LONGEST_STEP = 300  # seconds, most of them for fetching 70 MB


class NotToBeHad(Exception):
    """Something that the machine needs is not here, and why."""


@dataclass(frozen=True)
class Kernel:
    image: Path
    modules: list[Path]  # in the order in which they are loaded


def call(*command: object, folder: Path | None = None, given: bytes | None = None) -> bytes:
    try:
        result = subprocess.run([str(word) for word in command], input=given, cwd=folder,
                                capture_output=True, timeout=LONGEST_STEP, check=False)
    except subprocess.TimeoutExpired:
        raise NotToBeHad(f'{command[0]} does not end') from None
    if result.returncode != 0:
        said = result.stderr.decode(errors='replace').strip().splitlines()
        raise NotToBeHad(f'{command[0]} failed: {said[-1] if said else result.returncode}')
    return result.stdout


def newest_package() -> str:
    """The package behind the one that always stands for the current kernel."""
    said = call('apt-cache', 'depends', PACKAGE).decode()
    match = re.search(r'Depends: (linux-image-\S+)', said)
    if not match:
        raise NotToBeHad(f'the package lists do not know {PACKAGE}; apt-get update renews them')
    return match.group(1)


def modules_of(root: Path) -> list[Path]:
    """MODULES and what they need, in the order in which they are loaded."""
    version = next((root / 'lib/modules').iterdir()).name
    call('depmod', '-b', root, version)
    files: dict[Path, None] = {}
    for name in MODULES:
        said = call('modprobe', '-d', root, '-S', version, '--show-depends', name).decode()
        for line in said.splitlines():
            kind, _, rest = line.partition(' ')
            if kind == 'insmod':
                files[Path(rest.split()[0])] = None
    return list(files)


def fetch(target: Path) -> None:
    with tempfile.TemporaryDirectory(prefix='unpacking_', dir=target.parent) as place:
        folder = Path(place)
        call('apt-get', 'download', newest_package(), folder=folder)
        package = next(folder.glob('*.deb'))
        root = folder / 'root'
        call('dpkg-deb', '--extract', package, root)
        kept = folder / 'kept'
        kept.mkdir()
        shutil.copy(next((root / 'boot').glob('vmlinuz-*')), kept / 'vmlinuz')
        for number, module in enumerate(modules_of(root)):
            shutil.copy(module, kept / f'{number:02}-{module.name}')
        (kept / 'modules').write_text(' '.join(MODULES), 'ascii')
        shutil.rmtree(target, ignore_errors=True)
        kept.rename(target)


def kernel_in(cache: Path) -> Kernel:
    """The kernel from the cache folder, fetched when it is not there."""
    if platform.machine() != 'x86_64':
        raise NotToBeHad('the virtual machine is made for x86-64 only')
    cache.mkdir(parents=True, exist_ok=True)
    folder = cache / 'kernel'
    with open(cache / 'lock', 'w') as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        note = folder / 'modules'
        if not note.exists() or note.read_text('ascii') != ' '.join(MODULES):
            fetch(folder)
    return Kernel(folder / 'vmlinuz', sorted(folder.glob('*.ko')))


def pack_first_files(kernel: Kernel, archive: Path, programs: Sequence[Path] = (BUSYBOX,)) -> None:
    """The archive from which the kernel starts: the first program, its shell and the modules."""
    with tempfile.TemporaryDirectory(prefix='packing_', dir=archive.parent) as place:
        root = Path(place)
        for name in ('bin', 'modules', 'proc', 'sys', 'dev', 'host', 'written', 'root'):
            (root / name).mkdir()
        for program in programs:
            shutil.copy(program, root / 'bin')
        for module in kernel.modules:
            shutil.copy(module, root / 'modules')
        shutil.copy(FIRST_PROGRAM, root / 'init')
        (root / 'init').chmod(0o755)
        names = '\0'.join(str(path.relative_to(root)) for path in sorted(root.rglob('*')))
        archive.write_bytes(call('cpio', '--create', '--format=newc', '--null', '--quiet',
                                 folder=root, given=names.encode() + b'\0'))
