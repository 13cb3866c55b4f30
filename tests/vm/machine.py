"""A virtual machine with this machine's files and with USB sticks that are plugged and pulled.

Its processor is emulated, so that it runs wherever the emulator does. It reads the files of the
host as they are and writes in memory only; what it and the host share is the folder /run/exchange,
which is `exchange` here. Commands run in it as root or as one of its users.
"""
import itertools
import json
import os
import shutil
import socket
import subprocess
import time
from collections.abc import Mapping, Sequence
from dataclasses import dataclass
from pathlib import Path

from vm import kernel
from vm.kernel import NotToBeHad
from vm.monitor import Monitor

EMULATOR = 'qemu-system-x86_64'
# The emulator dies with the test, however that ends.
TIED = ['setpriv', '--pdeathsig', 'KILL']
TOOLS = {EMULATOR: 'qemu-system-x86', 'busybox': 'busybox-static', 'cpio': 'cpio',
         'modprobe': 'kmod', 'udevadm': 'udev', 'setpriv': 'util-linux', 'apt-get': 'apt',
         'dpkg-deb': 'dpkg'}
MEMORY = '1536M'
PROCESSORS = 2
LONGEST_BOOT = 180  # seconds; a quarter of that is much already
LONGEST_COMMAND = 120
LONGEST_END = 30
# Waiting for an answer ends after the command's own limit.
GRACE = 20
SHARED = 'local,security_model=none,multidevs=remap'
SECOND_PROGRAM = Path(__file__).resolve().with_name('second_program.sh')


@dataclass(frozen=True)
class Answer:
    """How a command in the machine ended."""
    status: int
    out: str
    err: str


@dataclass(frozen=True)
class Stick:
    """A USB stick; its serial number is how it is known on both sides."""
    serial: str
    image: Path
    claims_removable: bool = True
    bytes_per_second: int = 0  # as fast as it can be


class Machine:
    """Running from its making to end(). `folder` is for its sockets and its console's output, and
    `disk` the image of its built-in disk."""

    def __init__(self, folder: Path, cache: Path, disk: Path) -> None:
        need_tools()
        self.folder = folder
        self.exchange = folder / 'exchange'
        self.exchange.mkdir()
        self.console = folder / 'console'
        self.numbers = itertools.count()
        self.answers: dict[int, Answer] = {}
        self.unread = b''
        self.emulator: subprocess.Popen[str] | None = None
        self.monitor: Monitor | None = None
        image = kernel.kernel_in(cache)
        archive = folder / 'first-files'
        kernel.pack_first_files(image, archive)
        self.line = socket.socket(socket.AF_UNIX)
        try:
            self.start(image.image, archive, disk)
        except BaseException:
            self.kill()
            raise

    def start(self, image: Path, archive: Path, disk: Path) -> None:
        command = [
            *TIED, EMULATOR, '-nodefaults', '-no-user-config', '-display', 'none', '-no-reboot',
            '-accel', 'tcg,thread=multi', '-cpu', 'Nehalem', '-smp', str(PROCESSORS),
            '-m', MEMORY, '-kernel', str(image), '-initrd', str(archive),
            '-append', 'console=ttyS0 quiet panic=-1 mitigations=off random.trust_cpu=on '
                       f'norvo.agent={SECOND_PROGRAM}',
            '-serial', f'file:{self.console}',
            '-qmp', f'unix:{self.folder}/monitor,server=on,wait=off',
            '-device', 'virtio-serial-pci',
            '-chardev', f'socket,id=agent,path={self.folder}/agent,server=on,wait=off',
            '-device', 'virtserialport,chardev=agent,name=norvo.agent',
            '-fsdev', f'{SHARED},id=host,path=/,readonly=on',
            '-device', 'virtio-9p-pci,fsdev=host,mount_tag=host',
            '-fsdev', f'{SHARED},id=exchange,path={self.exchange}',
            '-device', 'virtio-9p-pci,fsdev=exchange,mount_tag=exchange',
            '-blockdev', f'driver=raw,node-name=disk,file.driver=file,file.filename={disk}',
            '-device', 'virtio-blk-pci,drive=disk',
            '-device', 'qemu-xhci,id=usb',
        ]
        with open(self.folder / 'emulator', 'w') as said:
            self.emulator = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=said,
                                             stderr=said, text=True)
        end = time.monotonic() + LONGEST_BOOT
        self.connect(end)
        self.ready_after = float(str(self.next_message(end)['ready']))

    def connect(self, end: float) -> None:
        while True:
            try:
                self.line.connect(str(self.folder / 'agent'))
                break
            except (FileNotFoundError, ConnectionRefusedError):
                self.check_running()
                if time.monotonic() > end:
                    raise AssertionError('the emulator offers no way to the machine') from None
                time.sleep(0.05)
        self.monitor = Monitor(self.folder / 'monitor')

    def check_running(self) -> None:
        assert self.emulator
        if self.emulator.poll() is not None:
            said = (self.folder / 'emulator').read_text(errors='replace')
            raise AssertionError(f'the emulator ended with {self.emulator.returncode}: '
                                 f'{said[-500:]}{self.last_words()}')

    def last_words(self) -> str:
        """What the machine wrote on its console at last."""
        try:
            lines = self.console.read_text(errors='replace').strip().splitlines()
        except FileNotFoundError:
            return ''
        return '\nThe last lines of its console:\n' + '\n'.join(lines[-15:])

    def next_message(self, end: float) -> dict[str, object]:
        while b'\n' not in self.unread:
            self.check_running()
            if time.monotonic() > end:
                raise AssertionError('the machine does not answer' + self.last_words())
            self.line.settimeout(1)
            try:
                self.unread += self.line.recv(1 << 16)
            except TimeoutError:
                continue
        line, self.unread = self.unread.split(b'\n', 1)
        return json.loads(line)

    def begin(self, command: Sequence[object], user: str = '', limit: float = LONGEST_COMMAND,
              environment: Mapping[str, str] | None = None) -> 'Command':
        """Starts a command and goes on."""
        number = next(self.numbers)
        request: dict[str, object] = {'number': number, 'limit': limit,
                                      'command': [str(word) for word in command],
                                      'environment': dict(environment or {})}
        if user:
            request['user'] = user
        self.line.settimeout(GRACE)
        self.line.sendall(json.dumps(request).encode() + b'\n')
        return Command(self, number, limit)

    def run(self, *command: object, user: str = '', limit: float = LONGEST_COMMAND) -> Answer:
        return self.begin(command, user=user, limit=limit).end()

    def call(self, *command: object, user: str = '') -> str:
        """Runs a command that must succeed, and returns what it says."""
        answer = self.run(*command, user=user)
        if answer.status != 0:
            raise AssertionError(f'{" ".join(map(str, command))} ended with {answer.status}: '
                                 f'{answer.err or answer.out}')
        return answer.out

    def plug(self, stick: Stick) -> str:
        """Plugs the stick in, and returns the name that the machine gives it."""
        assert self.monitor
        limits = {'bps-read': stick.bytes_per_second} if stick.bytes_per_second else {}
        self.monitor.order('object-add', **{'qom-type': 'throttle-group', 'limits': limits,
                                            'id': f'speed-{stick.serial}'})
        self.monitor.order('blockdev-add', **{
            'driver': 'throttle', 'node-name': f'image-{stick.serial}',
            'throttle-group': f'speed-{stick.serial}',
            'file': {'driver': 'raw', 'file': {'driver': 'file', 'filename': str(stick.image)}}})
        self.monitor.order('device_add', driver='usb-storage', bus='usb.0', id=stick.serial,
                           drive=f'image-{stick.serial}', serial=stick.serial,
                           removable=stick.claims_removable)
        end = time.monotonic() + LONGEST_COMMAND
        while time.monotonic() < end:
            self.call('udevadm', 'settle', '--timeout=20')
            name = self.name_of(stick)
            if name:
                # Of the partition something may still have been on its way.
                self.call('udevadm', 'settle', '--timeout=20')
                return name
            time.sleep(0.2)
        raise AssertionError(f'the machine does not see {stick.serial}')

    def name_of(self, stick: Stick) -> str:
        """The disk's name in the machine; empty when it is not plugged in."""
        said = self.call('lsblk', '--json', '--nodeps', '--output', 'NAME,SERIAL,SIZE')
        for disk in json.loads(said)['blockdevices']:
            # The node is there a moment before the size.
            if disk['serial'] == stick.serial and disk['size'] != '0B':
                return str(disk['name'])
        return ''

    def pull(self, stick: Stick) -> None:
        """Pulls the stick, whatever the machine does with it."""
        assert self.monitor
        self.monitor.order('device_del', id=stick.serial)
        self.monitor.wait_for_removal(stick.serial)
        self.monitor.order('blockdev-del', **{'node-name': f'image-{stick.serial}'})
        self.monitor.order('object-del', id=f'speed-{stick.serial}')

    def end(self) -> None:
        """Switches the machine off."""
        if self.emulator and self.emulator.poll() is None:
            try:
                self.line.sendall(b'{}\n')
                self.emulator.wait(LONGEST_END)
            except (OSError, subprocess.TimeoutExpired):
                pass
        self.kill()

    def kill(self) -> None:
        if self.emulator and self.emulator.poll() is None:
            self.emulator.kill()
            self.emulator.wait()
        if self.monitor:
            self.monitor.close()
            self.monitor = None
        self.line.close()


@dataclass
class Command:
    """A command that was begun in the machine."""
    machine: Machine
    number: int
    limit: float

    def end(self) -> Answer:
        """Waits for its end."""
        deadline = time.monotonic() + self.limit + GRACE
        answers = self.machine.answers
        while self.number not in answers:
            message = self.machine.next_message(deadline)
            answers[int(str(message['number']))] = Answer(
                int(str(message['status'])), str(message['out']), str(message['err']))
        return answers.pop(self.number)


def need_tools() -> None:
    os.environ['PATH'] += ':/usr/sbin:/sbin'
    missing = [package for tool, package in TOOLS.items() if shutil.which(tool) is None]
    if missing:
        raise NotToBeHad(f'not installed: {", ".join(missing)}; '
                         'tools/install_packages test installs them')
