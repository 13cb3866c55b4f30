#!/usr/bin/python3
"""The drive list of the program is what the system says about its own drives."""
import json
import os
import sys
from collections import Counter
from pathlib import Path

import disks
from disks import MIB
from harness import Case, Event, Run, call, main, need_root, need_tools

FIELDS = {'event': str, 'device': str, 'identifier': str, 'volume': str, 'file_system': str,
          'size': str, 'parent_disk': str, 'sectors': int}
HEADINGS = ['Identifier', 'Volume', 'File System', 'Size', 'Parent Disk', 'Sectors']
LSBLK = '/usr/bin/lsblk'
# Runs the rest of its command line with the ends of children ignored.
IGNORING_CHILDREN = ('import os, signal, sys; signal.signal(signal.SIGCHLD, signal.SIG_IGN); '
                     'os.execv(sys.argv[1], sys.argv[1:])')
HIDDEN = ('/private/', '/System/Volumes/')


def setUpModule() -> None:
    need_tools(LSBLK)


def devices() -> dict[str, dict[str, object]]:
    """What lsblk says about each device, by its kernel's name and in its order."""
    text = call(LSBLK, '--json', '--bytes', '--list', '-o', 'KNAME,TYPE,SIZE,MOUNTPOINTS')
    found: dict[str, dict[str, object]] = {}
    for device in json.loads(text)['blockdevices']:
        found.setdefault(device['kname'], device)
    return found


def mount_paths(device: dict[str, object]) -> list[str]:
    paths = device['mountpoints']
    assert isinstance(paths, list)
    return [path for path in paths if path and path.startswith('/')]


class DriveCase(Case):
    def list_drives(self, *arguments: object) -> tuple[Run, list[Event]]:
        run = self.run_program('--list-drives', *arguments)
        self.assertEqual(run.status, 0, run.err)
        drives = [json.loads(line) for line in run.out.splitlines()] if '--json' in arguments else []
        for drive in drives:
            self.assertEqual({key: type(value) for key, value in drive.items()}, FIELDS)
        if not run.out:
            self.assertIn('drive is mounted', run.err)
        return run, drives


class DriveList(DriveCase):
    def test_each_drive_is_a_mounted_device_of_this_machine(self) -> None:
        known = devices()
        _, drives = self.list_drives('--json')
        names = [str(drive['identifier']) for drive in drives]
        self.assertEqual(len(names), len(set(names)), 'a volume is listed once')
        for drive in drives:
            device = known[str(drive['identifier'])]
            self.assertEqual(drive['sectors'], int(str(device['size'])) // 512)
            self.assertEqual(drive['device'], f'/dev/{drive["identifier"]}')
            self.assertIn(drive['parent_disk'], known)
            self.assertTrue(mount_paths(device), f'{drive} is mounted')
            self.assertNotIn(device['type'], ('loop', 'rom'))

    def test_each_mounted_partition_and_disk_of_this_machine_is_listed(self) -> None:
        _, drives = self.list_drives('--json')
        names = {drive['identifier'] for drive in drives}
        counts = Counter(path for device in devices().values() for path in set(mount_paths(device)))
        shared = {path for path, count in counts.items() if count > 1}
        for name, device in devices().items():
            paths = mount_paths(device)
            # What lies on a loop device is a disk image; plain disks and partitions say all here.
            if device['type'] not in ('disk', 'part') or name.startswith(('loop', 'sr')):
                continue
            shown = [path for path in paths if not any(part in path for part in HIDDEN)]
            # Of what is mounted over each other one is seen; which one, other tests say.
            if any(path not in shared for path in shown):
                self.assertIn(name, names)

    def test_editions_for_removable_media_list_a_part_of_that(self) -> None:
        _, all_drives = self.list_drives('--json', '--edition', 'Norvo Rowan')
        for edition in ('Alder', 'Birch', 'Cedar', 'Larch', 'Maple'):
            _, drives = self.list_drives('--json', '--edition', f'Norvo {edition}')
            self.assertEqual([drive for drive in all_drives if drive in drives], drives)

    def test_the_table_has_a_line_for_each_drive_below_its_headings(self) -> None:
        run, _ = self.list_drives()
        _, drives = self.list_drives('--json')
        if not drives:
            self.assertEqual(run.out, '')
            return
        heading, *lines = run.out.splitlines()
        self.assertEqual([name for name in HEADINGS if name in heading], HEADINGS)
        self.assertEqual([line.split()[0] for line in lines],
                         [drive['identifier'] for drive in drives])
        self.assertEqual([int(line.split()[-1]) for line in lines],
                         [drive['sectors'] for drive in drives])

    def test_a_program_of_the_same_name_on_the_search_path_is_not_run(self) -> None:
        trap = self.folder / 'lsblk'
        trace = self.folder / 'was-run'
        trap.write_text(f'#!/bin/sh\ntouch "{trace}"\n', 'ascii')
        trap.chmod(0o755)
        expected = self.list_drives('--json')[1]
        old_path = os.environ['PATH']
        self.addCleanup(os.environ.__setitem__, 'PATH', old_path)
        os.environ['PATH'] = f'{self.folder}:{old_path}'
        _, drives = self.list_drives('--json')
        self.assertFalse(trace.exists())
        self.assertEqual(drives, expected)

    def test_who_ignores_the_ends_of_children_gets_the_same_list(self) -> None:
        _, expected = self.list_drives('--json')
        run = self.run_program('--list-drives', '--json',
                               prefix=(sys.executable, '-c', IGNORING_CHILDREN))
        self.assertEqual([json.loads(line) for line in run.out.splitlines()], expected, run.err)


class DiskImage(DriveCase):
    def test_a_mounted_disk_image_is_not_listed(self) -> None:
        need_root('a mounted disk image')
        need_tools('losetup', 'mount', 'umount', 'mkfs.ext4')
        image = disks.empty_image(self.folder / 'disk.img', 16 * MIB)
        call('mkfs.ext4', '-q', '-F', image)
        try:
            device = call('losetup', '--find', '--show', image).strip()
        except AssertionError as reason:
            self.skipTest(f'no block device can be made of a file here: {reason}')
        self.addCleanup(call, 'losetup', '--detach', device)
        folder = self.folder / 'mounted'
        folder.mkdir()
        call('mount', device, folder)
        self.addCleanup(call, 'umount', folder)
        name = Path(device).name
        self.assertEqual(mount_paths(devices()[name]), [str(folder)])
        _, drives = self.list_drives('--json')
        self.assertNotIn(name, [drive['identifier'] for drive in drives])


if __name__ == '__main__':
    main()
