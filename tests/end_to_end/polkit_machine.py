"""A machine within the machine, for tests of elevation: users, a system bus and polkit of its own.

Everything lies in private namespaces: other users of the machine see nothing of it, and it goes,
with every process in it, when the test ends.
"""
import os
import shutil
import subprocess
import sys
import time
from collections.abc import Callable
from dataclasses import dataclass
from pathlib import Path

from harness import call

POLKITD = Path('/usr/lib/polkit-1/polkitd')
PKEXEC = Path('/usr/bin/pkexec')
INSIDE = 'NORVO_INSIDE_MACHINE'
NAMESPACES = ['unshare', '--mount', '--pid', '--fork', '--kill-child', '--mount-proc',
              '--propagation', 'private']
PATIENCE = 60  # seconds
RULES = """
polkit.addRule(function(action, subject) {
  if (action.id.indexOf("org.norvo.recovery.") != 0) return polkit.Result.NOT_HANDLED;
  return subject.user == "norvo-allowed" ? polkit.Result.YES : polkit.Result.NO;
});
"""


@dataclass(frozen=True)
class User:
    name: str
    uid: int
    gid: int
    other_gid: int  # of a group that the user belongs to besides
    home: Path

    def start(self, command: list[object], **variables: str) -> subprocess.Popen[str]:
        """Starts a command as a login of this user would, with `variables` besides."""
        environment = {'PATH': '/usr/bin:/bin', 'HOME': str(self.home), 'LANG': 'C.UTF-8',
                       **variables}
        return subprocess.Popen([str(word) for word in command], user=self.uid, group=self.gid,
                                extra_groups=[self.other_gid], cwd=self.home, env=environment,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, text=True)


def enter() -> None:
    """Starts the calling file again inside, unless it is there; returns outside when that cannot
    be had."""
    if INSIDE in os.environ or os.geteuid() != 0 or shutil.which('unshare') is None:
        return
    if subprocess.run([*NAMESPACES, 'true'], capture_output=True, check=False).returncode != 0:
        return
    os.environ[INSIDE] = '1'
    os.execvp('unshare', [*NAMESPACES, sys.executable, *sys.argv])


def is_inside() -> bool:
    return INSIDE in os.environ


def wait_until(holds: Callable[[], bool], what: str) -> None:
    end = time.monotonic() + PATIENCE
    while not holds():
        if time.monotonic() > end:
            raise AssertionError(f'in vain: {what}')
        time.sleep(0.02)


def bind(source: Path, target: Path) -> None:
    call('mount', '--bind', source, target)


class Machine:
    """Everything that it makes lies in `folder`, which may be entered by everybody, in memory."""

    def __init__(self) -> None:
        for place in ('/run', '/dev/shm'):
            call('mount', '-t', 'tmpfs', 'tmpfs', place)
        self.folder = Path('/run/norvo')
        self.folder.mkdir()
        Path('/dev/shm').chmod(0o1777)
        self.allowed = self.user('norvo-allowed', 61001)
        self.refused = self.user('norvo-refused', 61002)
        self.install_users()

    def user(self, name: str, number: int) -> User:
        home = self.folder / name
        home.mkdir()
        os.chown(home, number, number)
        return User(name, number, number, number + 1000, home)

    def install_users(self) -> None:
        users = (self.allowed, self.refused)
        lines = {
            'passwd': [f'{u.name}:x:{u.uid}:{u.gid}::{u.home}:/bin/bash' for u in users],
            'shadow': [f'{u.name}:!:19000:0:99999:7:::' for u in users],
            'group': [line for u in users
                      for line in (f'{u.name}:x:{u.gid}:', f'{u.name}-2:x:{u.other_gid}:{u.name}')],
        }
        for name, added in lines.items():
            original = Path('/etc') / name
            copy = self.folder / name
            shutil.copy2(original, copy)
            shutil.chown(copy, original.stat().st_uid, original.stat().st_gid)
            with copy.open('a', encoding='utf-8') as file:
                file.write('\n'.join(added) + '\n')
            bind(copy, original)

    def start_polkit(self, policy: Path) -> None:
        """With the policy, and a rule that says yes to one user and no to the other."""
        actions = self.folder / 'actions'
        shutil.copytree('/usr/share/polkit-1/actions', actions)
        shutil.copy(policy, actions)
        bind(actions, Path('/usr/share/polkit-1/actions'))
        rules = self.folder / 'rules'
        rules.mkdir()
        (rules / '00-norvo.rules').write_text(RULES, encoding='utf-8')
        bind(rules, Path('/etc/polkit-1/rules.d'))
        Path('/run/dbus').mkdir()
        call('dbus-daemon', '--system', '--fork', '--nopidfile')
        self.polkit = subprocess.Popen([str(POLKITD), '--no-debug'], stdin=subprocess.DEVNULL,
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_until(self.has_polkit, 'waiting for polkit on the bus')

    def stop_polkit(self) -> None:
        self.polkit.terminate()
        self.polkit.wait(PATIENCE)

    @staticmethod
    def has_polkit() -> bool:
        answer = subprocess.run(
            ['dbus-send', '--system', '--print-reply=literal', '--dest=org.freedesktop.DBus',
             '/org/freedesktop/DBus', 'org.freedesktop.DBus.NameHasOwner',
             'string:org.freedesktop.PolicyKit1'], capture_output=True, text=True, check=False)
        return 'true' in answer.stdout


def processes_of(executable: Path) -> list[int]:
    """The processes that run `executable`."""
    found = []
    for folder in Path('/proc').iterdir():
        if not folder.name.isdigit():
            continue
        try:
            if os.readlink(folder / 'exe') == str(executable):
                found.append(int(folder.name))
        except OSError:
            continue
    return found


def status_of(pid: int) -> dict[str, str]:
    lines = Path(f'/proc/{pid}/status').read_text(encoding='utf-8').splitlines()
    return dict(line.split(':\t', 1) for line in lines if ':\t' in line)
