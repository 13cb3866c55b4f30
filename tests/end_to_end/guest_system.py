"""The virtual machine as a person finds it: the program installed, a login, polkit, and sticks that
are mounted as a desktop does it."""
import json
import shutil
import time
from collections.abc import Callable
from pathlib import Path

from vm.machine import Answer, Command, Machine, Stick

PERSON = 'norvo-person'
BUNDLES = Path('/opt/norvo')
POLICIES = Path('/usr/share/polkit-1/actions')
RULES = Path('/etc/polkit-1/rules.d')
POLKITD = Path('/usr/lib/polkit-1/polkitd')
# Where the machine finds the folder that it shares with the host. Each write there takes a
# millisecond, so that no program saves there what it finds.
EXCHANGE = Path('/run/exchange')
PATIENCE = 120  # seconds
# The rule stands for the person who enters an administrator's password.
RULE = """
polkit.addRule(function(action, subject) {
  if (action.id.indexOf("org.norvo.recovery.") == 0 && subject.user == "%s") {
    return polkit.Result.YES;
  }
});
""" % PERSON
POLKIT_NAME = ['dbus-send', '--system', '--print-reply=literal', '--dest=org.freedesktop.DBus',
               '/org/freedesktop/DBus', 'org.freedesktop.DBus.NameHasOwner',
               'string:org.freedesktop.PolicyKit1']


def wait_until(holds: Callable[[], bool], what: str) -> None:
    end = time.monotonic() + PATIENCE
    while not holds():
        if time.monotonic() > end:
            raise AssertionError(f'in vain: {what}')
        time.sleep(0.1)


class GuestSystem:
    def __init__(self, machine: Machine, recover: Path) -> None:
        self.machine = machine
        self.recover = recover
        machine.call('useradd', '--create-home', '--shell', '/bin/sh', PERSON)

    def install(self, bundle: Path, executable: Path, policy: Path) -> None:
        """Puts the bundle where packages put it, with `executable` as its program."""
        target = BUNDLES / bundle.name
        self.machine.call('mkdir', '-p', BUNDLES)
        self.machine.call('cp', '-r', bundle, target)
        self.machine.call('cp', executable, self.program_of(bundle.name))
        self.machine.call('chown', '-R', 'root:root', BUNDLES)
        self.machine.call('cp', policy, POLICIES)
        self.write(RULES / '10-norvo.rules', RULE)

    @staticmethod
    def program_of(bundle: str) -> Path:
        return BUNDLES / bundle / 'Contents/MacOS' / bundle.removesuffix('.app')

    def write(self, path: Path, text: str) -> None:
        """Writes a file that everybody may read."""
        place = self.machine.exchange / 'written'
        place.write_text(text, encoding='utf-8')
        self.machine.call('install', '-m', '0644', EXCHANGE / place.name, path)

    def read(self, path: Path) -> str:
        return self.machine.call('cat', path)

    def exists(self, path: Path) -> bool:
        return self.machine.run('test', '-e', path).status == 0

    def start_polkit(self) -> Command:
        self.machine.call('mkdir', '-p', '/run/dbus')
        self.machine.call('dbus-daemon', '--system', '--fork', '--nopidfile')
        daemon = self.machine.begin([POLKITD, '--no-debug'], limit=3600)
        wait_until(lambda: 'true' in self.machine.run(*POLKIT_NAME).out, 'polkit on the bus')
        return daemon

    def plug_and_mount(self, stick: Stick) -> str:
        """Plugs the stick in and mounts its partition; returns the name of the disk."""
        disk = self.machine.plug(stick)
        folder = Path('/media') / stick.serial
        self.machine.call('mkdir', '-p', folder)
        self.machine.call('mount', '-o', f'uid={PERSON},nosuid,nodev', f'/dev/{disk}1', folder)
        return disk

    def pull_and_forget(self, stick: Stick) -> None:
        self.machine.pull(stick)
        self.forget(stick)

    def forget(self, stick: Stick) -> None:
        """Unmounts what is gone, as a desktop does."""
        self.machine.call('umount', '--lazy', f'/media/{stick.serial}')

    def drives(self, edition: str) -> list[dict[str, object]]:
        said = self.machine.call(self.recover, '--list-drives', '--edition', edition, '--json')
        return [json.loads(line) for line in said.splitlines()]

    def search(self, device: str, destination: Path) -> Command:
        return self.machine.begin([self.recover, '--device', device, '--destination', destination,
                                   '--json', '--quiet'])

    def count(self, folder: Path) -> int:
        """The photos below a folder that the General pass saved, the one in progress included."""
        return self.machine.run('find', folder, '-name', 'GND*').out.count('\n')

    def fetch(self, folder: Path) -> Path:
        """A copy of the machine's `folder` on the host."""
        target = self.machine.exchange / 'fetched'
        shutil.rmtree(target, ignore_errors=True)
        self.machine.call('cp', '-r', folder, EXCHANGE / target.name)
        return target

    def photos(self, folder: Path) -> list[Path]:
        """Copies of what count() counts, in the order in which it was found."""
        return sorted(self.fetch(folder).rglob('GND*'))

    def owners(self, folder: Path) -> set[str]:
        return set(self.machine.call('find', folder, '-printf', '%u:%g\n').split())

    def run_as_person(self, *command: object) -> Answer:
        return self.machine.run(*command, user=PERSON)
