#!/usr/bin/python3
"""Starting with the right to read drives, for real: pkexec, polkit, another user, a block device.

NORVO_PROBE names the program that starts as the one with the window does and reports its rights;
NORVO_POLICY the script that writes the policy.
"""
import errno
import os
import shutil
import signal
import socket
import subprocess
import unittest
from pathlib import Path

import polkit_machine
from harness import call, main, need_root, need_tools
from polkit_machine import (PATIENCE, PKEXEC, POLKITD, Machine, User, processes_of, status_of,
                            wait_until)
from probe_bundle import Bundle

BEGINNING = b'Norvo block device'
APPLICATION_STATUS = 42
NOBODY = '65534\t65534\t65534\t65534'
NO_CAPABILITY = '0000000000000000'
READING_CAPABILITY = '0000000000000004'
CAPABILITY_SETS = ('CapInh', 'CapPrm', 'CapEff', 'CapBnd', 'CapAmb')
EDITION = 'Norvo Alder'
# The request mark, then version and type, low byte first; the path follows.
MARK = b'NORQ'
PTRACE_ATTACH = 16
# What a process of the same person gets: tracing another one, and reading its environment.
LOOK_INTO = f"""
import ctypes, sys
libc = ctypes.CDLL(None, use_errno=True)
print(ctypes.get_errno() if libc.ptrace({PTRACE_ATTACH}, int(sys.argv[1]), 0, 0) else 0)
try:
    open('/proc/' + sys.argv[1] + '/environ', 'rb').close()
    print(0)
except OSError as error:
    print(error.errno)
"""
machine: Machine
device: Path
bundles: Path


def setUpModule() -> None:
    need_root('elevation')
    need_tools('unshare', 'mount', 'losetup', 'dbus-daemon', 'dbus-send', 'cmake')
    for tool in (PKEXEC, POLKITD):
        if not tool.exists():
            raise unittest.SkipTest(f'{tool} is not there; '
                                    'tools/install_packages test installs it')
    if not polkit_machine.is_inside():
        raise unittest.SkipTest('private namespaces cannot be had here')
    global machine, device, bundles
    machine = Machine()
    folder = machine.folder
    bundles = folder / 'bundles'
    bundles.mkdir()
    image = folder / 'image'
    image.write_bytes(BEGINNING.ljust(1 << 20, b'.'))
    try:
        device = Path(call('losetup', '--find', '--show', image).strip())
    except AssertionError as reason:
        raise unittest.SkipTest(f'no block device can be made of a file here: {reason}') from None
    # A device that is detached while it is open goes when it is closed, however this process ends.
    unittest.addModuleCleanup(os.close, os.open(device, os.O_RDONLY | os.O_CLOEXEC))
    call('losetup', '--detach', device)
    policy = folder / 'org.norvo.recovery.policy'
    call('cmake', f'-DFOLDER={bundles}', f'-DOUTPUT={policy}', '-P', os.environ['NORVO_POLICY'])
    machine.start_polkit(policy)
    unittest.addModuleCleanup(machine.stop_polkit)


class Elevation(unittest.TestCase):
    maxDiff = 3000

    def bundle(self, user: User, name: str = EDITION, executable: str = '') -> Bundle:
        bundle = Bundle(bundles, user, name, executable)
        self.addCleanup(bundle.remove)
        return bundle

    def assert_ends_silently(self, user: User, bundle: Bundle, **variables: str) -> None:
        process = user.start([bundle.executable], **variables)
        out, err = process.communicate(timeout=PATIENCE)
        self.assertEqual((process.returncode, out, err), (0, '', ''))

    def assert_rights(self, status: dict, ids: str, capability: str) -> None:
        self.assertEqual(status['Uid'], ids)
        self.assertEqual(status['Gid'], ids)
        self.assertEqual(status['NoNewPrivs'], '1')
        wanted = {name: NO_CAPABILITY for name in CAPABILITY_SETS}
        wanted['CapPrm'] = wanted['CapEff'] = capability
        self.assertEqual({name: status[name] for name in CAPABILITY_SETS}, wanted)

    def opener_of(self, window: int, bundle: Bundle) -> int:
        children = [pid for pid in bundle.running() if status_of(pid)['PPid'] == str(window)]
        self.assertEqual(len(children), 1, children)
        return children[0]


class AnAllowedPerson(Elevation):
    def setUp(self) -> None:
        self.person = machine.allowed
        self.app = self.bundle(self.person)

    def start(self, *paths: object, packets: list[bytes] | None = None) -> dict:
        self.app.plan([device, *paths], packets or [])
        self.assert_ends_silently(self.person, self.app)
        report = self.app.report()
        self.assertIn(report['pid'], self.app.running(), 'the first process waits for nobody')
        return report

    def session(self) -> Path:
        folder = Path('/run/user') / str(self.person.uid)
        folder.mkdir(parents=True)
        self.addCleanup(shutil.rmtree, folder)
        for name in ('bus', 'wayland-1', 'wayland-0'):
            with socket.socket(socket.AF_UNIX) as listener:
                listener.bind(str(folder / name))
        for place in (folder, *folder.iterdir()):
            os.chown(place, self.person.uid, self.person.gid)
        folder.chmod(0o700)
        return folder

    def test_gets_a_window_with_the_person_s_identity_and_no_capability(self) -> None:
        report = self.start()
        ids = '\t'.join([str(self.person.uid)] * 4)
        self.assertEqual(report['arguments'], ['a', 'b', 'c'])
        self.assert_rights(report['status'], ids, NO_CAPABILITY)
        self.assertEqual(set(report['status']['Groups'].split()),
                         {str(self.person.gid), str(self.person.other_gid)})
        self.assertEqual(report['becoming_root'], errno.EPERM)
        self.assertEqual(report['secret_file'], errno.EACCES)

    def test_is_at_home_and_in_the_own_session(self) -> None:
        runtime = self.session()
        report = self.start()
        self.assertEqual(report['folder'], str(self.person.home))
        wanted = {'HOME': str(self.person.home), 'USER': self.person.name,
                  'LOGNAME': self.person.name, 'SHELL': '/bin/bash', 'LANG': 'C.UTF-8',
                  'XDG_RUNTIME_DIR': str(runtime),
                  'DBUS_SESSION_BUS_ADDRESS': f'unix:path={runtime}/bus',
                  'WAYLAND_DISPLAY': 'wayland-0'}
        found = report['environment']
        self.assertEqual({name: found.get(name) for name in wanted}, wanted)
        self.assertNotIn('PKEXEC_UID', found)

    def test_may_have_a_shell_that_the_system_does_not_list(self) -> None:
        self.app.plan([], [])
        self.assert_ends_silently(self.person, self.app, SHELL='/nowhere/sh')
        self.assertEqual(self.app.report()['environment']['SHELL'], '/bin/bash')

    def test_without_a_session_gets_no_variables_of_one(self) -> None:
        found = self.start()['environment']
        for name in ('XDG_RUNTIME_DIR', 'DBUS_SESSION_BUS_ADDRESS', 'WAYLAND_DISPLAY'):
            self.assertNotIn(name, found)

    def test_reads_a_device_through_the_opener_only_and_cannot_write_it(self) -> None:
        report = self.start()
        self.assertEqual(report['alone'][str(device)], errno.EACCES)
        opened = report['opener'][str(device)]
        self.assertEqual((opened['error'], opened['got']), (0, 512))
        self.assertTrue(BEGINNING.startswith(opened['bytes'].encode()), opened)
        self.assertEqual(opened['descriptor'],
                         {'access': os.O_RDONLY, 'close_on_exec': True,
                          'write_error': errno.EBADF, 'reopen_error': errno.EACCES})
        self.assertTrue(device.read_bytes().startswith(BEGINNING))

    def test_is_refused_everything_but_block_devices(self) -> None:
        secret = machine.folder / 'secret'
        secret.write_text('of root', encoding='utf-8')
        secret.chmod(0o600)
        link = Path('/dev/shm/link')
        link.symlink_to(device)
        folder_link = Path('/dev/shm/folder')
        folder_link.symlink_to('/dev')
        hidden = Path('/dev/shm/file')
        hidden.write_text('of root', encoding='utf-8')
        hidden.chmod(0o600)
        for path in (link, folder_link, hidden):
            self.addCleanup(path.unlink)
        dotted = f'/dev/../dev/{device.name}'
        refused = {secret: errno.EACCES, '/etc/shadow': errno.EACCES, link: errno.ELOOP,
                   folder_link / device.name: errno.ELOOP, hidden: errno.ENOTBLK,
                   '/dev/mem': errno.ENOTBLK, '/dev/null': errno.ENOTBLK, dotted: errno.EACCES,
                   f'/dev//{device.name}': errno.EACCES, '/dev/norvo-nothing': errno.ENOENT}
        if not Path('/dev/mem').exists():
            del refused['/dev/mem']
        report = self.start(*refused)
        found = {str(path): report['opener'][str(path)]['error'] for path in refused}
        self.assertEqual(found, {str(path): error for path, error in refused.items()})
        self.assertEqual(report['opener'][str(device)]['error'], 0)

    def test_opens_disk_images_alone(self) -> None:
        image = self.app.files / 'image'
        image.write_bytes(b'an image of the person\'s own'.ljust(512))
        report = self.start(image)
        self.assertEqual(report['opener'][str(image)]['error'], 0)
        self.assertEqual(report['opener'][str(image)]['bytes'], 'an image of the ')

    def test_cannot_confuse_the_opener_by_other_packets(self) -> None:
        path = str(device).encode()
        good = MARK + b'\1\0\1\0' + path
        strange = [MARK + b'\1\0\2\0' + path, MARK + b'\2\0\1\0' + path, b'X', path,
                   MARK + b'\1\0\1\0', good + b'x' * 5000, good + b'\0', b'\0' * 8]
        report = self.start(packets=strange * 3 + [good])
        self.assertEqual(len(report['packets']), len(strange) * 3 + 1)
        for packet, answer in zip(strange * 3, report['packets']):
            wanted = errno.EACCES if packet == good + b'\0' else errno.EPROTO
            self.assertEqual(answer, {'error': wanted, 'descriptor': False}, packet[:20])
        self.assertEqual(report['packets'][-1], {'error': 0, 'descriptor': True})
        opener = self.opener_of(report['pid'], self.app)
        self.assertEqual(sorted(map(int, os.listdir(f'/proc/{opener}/fd')))[:3], [0, 1, 2])
        self.assertEqual(len(os.listdir(f'/proc/{opener}/fd')), 4, 'no descriptor piles up')

    def test_has_an_opener_that_is_nobody_and_can_only_read(self) -> None:
        report = self.start()
        status = status_of(self.opener_of(report['pid'], self.app))
        self.assert_rights(status, NOBODY, READING_CAPABILITY)
        self.assertEqual(status['Groups'].strip(), '')

    def look_into(self, pid: int) -> list[int]:
        process = self.person.start(['/usr/bin/python3', '-c', LOOK_INTO, pid])
        out, err = process.communicate(timeout=PATIENCE)
        self.assertEqual(err, '')
        return [int(error) for error in out.split()]

    def test_cannot_look_into_either_process(self) -> None:
        report = self.start()
        for pid in (report['pid'], self.opener_of(report['pid'], self.app)):
            self.assertEqual(self.look_into(pid), [errno.EPERM, errno.EACCES])
        ordinary = self.person.start(['/usr/bin/sleep', '60'])
        self.addCleanup(ordinary.communicate)
        self.addCleanup(ordinary.kill)
        wait_until(lambda: processes_of(Path('/usr/bin/sleep')) == [ordinary.pid], 'a sleeper')
        self.assertEqual(self.look_into(ordinary.pid)[1], 0, 'the look works elsewhere')

    def test_gets_an_error_from_an_opener_that_died(self) -> None:
        report = self.start()
        os.kill(self.opener_of(report['pid'], self.app), 9)
        self.assertEqual(self.app.final_report(), {str(device): {'error': errno.EIO}})

    def test_leaves_no_process_when_the_window_ends(self) -> None:
        report = self.start()
        self.opener_of(report['pid'], self.app)
        self.app.wait_for_end()
        self.assertEqual(self.app.running(), [])

    def test_leaves_no_opener_when_the_window_is_killed(self) -> None:
        report = self.start()
        os.kill(report['pid'], 9)
        wait_until(lambda: not self.app.running(), 'waiting for the end of all processes')

    def test_starts_nothing_from_a_bundle_under_another_name(self) -> None:
        renamed = self.bundle(self.person, name='Norvo Birch', executable='Norvo Cedar')
        self.assert_ends_silently(self.person, renamed)
        wait_until(lambda: not renamed.running(), 'waiting for the end of all processes')
        self.assertFalse(renamed.report_file.exists())


class ARefusedPerson(Elevation):
    def test_sees_the_program_end_and_nothing_else(self) -> None:
        app = self.bundle(machine.refused)
        self.assert_ends_silently(machine.refused, app)
        wait_until(lambda: not app.running(), 'waiting for the end of all processes')
        self.assertFalse(app.report_file.exists())

    def test_with_four_arguments_runs_with_the_own_rights(self) -> None:
        person = machine.refused
        app = self.bundle(person)
        app.plan([device], [])
        app.proceed()
        process = person.start([app.executable, 'x', 'y', 'z'])
        self.assertEqual(process.communicate(timeout=PATIENCE), ('', ''))
        self.assertEqual(process.returncode, APPLICATION_STATUS)
        report = app.report()
        self.assertEqual(report['arguments'], ['x', 'y', 'z'])
        self.assertEqual(report['opener'][str(device)], {'error': errno.EACCES})


class Root(Elevation):
    def start(self, app: Bundle, *arguments: str, **variables: str) -> int:
        app.plan([device], [])
        environment = {'PATH': '/usr/bin:/bin', 'HOME': '/root', **variables}
        process = subprocess.run([app.executable, *arguments], stdin=subprocess.DEVNULL,
                                 capture_output=True, env=environment, timeout=PATIENCE, check=False)
        self.assertEqual((process.stdout, process.stderr), (b'', b''))
        return process.returncode

    def test_without_a_person_relaunches_directly_and_stays_root(self) -> None:
        app = self.bundle(machine.refused)
        self.assertEqual(self.start(app), 0)
        report = app.report()
        self.assertEqual(report['arguments'], ['a', 'b', 'c'])
        self.assertEqual(report['status']['Uid'], '0\t0\t0\t0')
        self.assertEqual(report['opener'][str(device)]['error'], 0)
        self.assertEqual(app.final_report()[str(device)]['error'], 0)

    def test_for_a_person_gives_every_right_up_and_returns_the_status(self) -> None:
        person = machine.refused
        other = str(machine.allowed.uid)
        tries = ({'PKEXEC_UID': str(person.uid)}, {'SUDO_UID': str(person.uid)},
                 {'PKEXEC_UID': str(person.uid), 'SUDO_UID': other})
        for number, variables in enumerate(tries):
            with self.subTest(variables):
                app = self.bundle(person, name=f'{EDITION} {number}')
                app.proceed()
                status = self.start(app, 'a', 'b', 'c', **variables)
                self.assertEqual(status, APPLICATION_STATUS)
                report = app.report()
                self.assert_rights(report['status'], '\t'.join([str(person.uid)] * 4),
                                   NO_CAPABILITY)
                self.assertEqual(report['opener'][str(device)]['error'], 0)

    def test_through_sudo_relaunches_for_the_person_who_used_it(self) -> None:
        person = machine.refused
        app = self.bundle(person)
        sudo = {'SUDO_UID': str(person.uid), 'SUDO_GID': str(person.gid),
                'SUDO_USER': person.name, 'SUDO_COMMAND': str(app.executable)}
        kept = {'DISPLAY': ':7', 'XAUTHORITY': str(person.home / '.Xauthority')}
        self.assertEqual(self.start(app, **sudo, **kept), 0)
        report = app.report()
        self.assertEqual(report['arguments'], ['a', 'b', 'c'])
        self.assert_rights(report['status'], '\t'.join([str(person.uid)] * 4), NO_CAPABILITY)
        found = report['environment']
        self.assertEqual({name: found.get(name) for name in kept}, kept)
        self.assertEqual(found['HOME'], str(person.home))
        self.assertEqual([name for name in found if name.startswith('SUDO_')], [])

    def test_hears_of_the_ends_of_children_whoever_started_it(self) -> None:
        app = self.bundle(machine.refused)
        app.plan([], [])
        subprocess.run([app.executable], stdin=subprocess.DEVNULL, timeout=PATIENCE, check=True,
                       env={}, preexec_fn=lambda: signal.signal(signal.SIGCHLD, signal.SIG_IGN))
        ignored = int(app.report()['status']['SigIgn'], 16)
        self.assertFalse(ignored & 1 << signal.SIGCHLD - 1)

    def test_through_sudo_by_root_stays_root(self) -> None:
        app = self.bundle(machine.refused)
        self.assertEqual(self.start(app, SUDO_UID='0'), 0)
        self.assertEqual(app.report()['status']['Uid'], '0\t0\t0\t0')

    def test_for_somebody_unknown_does_not_run(self) -> None:
        app = self.bundle(machine.allowed)
        strange = ('', '-1', '61001x', ' 61001', '4294967295', '59999', '99999999999')
        for variables in ({'PKEXEC_UID': '0'}, *({name: number} for number in strange
                                                 for name in ('PKEXEC_UID', 'SUDO_UID'))):
            with self.subTest(variables):
                self.assertEqual(self.start(app, 'a', 'b', 'c', **variables), 1)
                self.assertFalse(app.report_file.exists())

    def test_keeps_nothing_open_that_was_open_before(self) -> None:
        person = machine.refused
        app = self.bundle(person)
        app.plan([device], [])
        secret = app.files / 'opened by root'
        with secret.open('w', encoding='utf-8') as file:
            process = subprocess.Popen([app.executable, 'a', 'b', 'c'], stdin=subprocess.DEVNULL,
                                       stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                       env={'PATH': '/usr/bin:/bin',
                                            'PKEXEC_UID': str(person.uid)},
                                       pass_fds=[file.fileno()])
        window = app.report()['pid']
        opener = self.opener_of(window, app)
        self.assertEqual(self.files_of(opener)[:3], ['/dev/null'] * 3)
        for pid in (window, opener):
            self.assertNotIn(str(secret), self.files_of(pid))
        app.proceed()
        self.assertEqual(process.communicate(timeout=PATIENCE), (b'', b''))

    @staticmethod
    def files_of(pid: int) -> list[str]:
        """What a process has open, by descriptor."""
        folder = Path(f'/proc/{pid}/fd')
        return [os.readlink(folder / name) for name in sorted(os.listdir(folder), key=int)]


if __name__ == '__main__':
    polkit_machine.enter()
    main()
