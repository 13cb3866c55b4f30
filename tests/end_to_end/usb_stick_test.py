#!/usr/bin/python3
"""A USB stick in a virtual machine: listed, searched by an ordinary person, pulled and put back.

NORVO_BUNDLES names the folder with the bundles, NORVO_POLICY the policy for where packages put
them, NORVO_WINDOW the program with the window that is clicked by itself, and NORVO_VM_CACHE the
folder in which the machine's kernel is kept.
"""
import errno
import json
import os
import shutil
import sys
import tempfile
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

import disks
from disk_with_table import disk_of
from disks import MIB, Place
from guest_system import PERSON, POLKITD, GuestSystem, wait_until
from harness import Case, Run, main, need_root, need_tools, program, read_events
from pictures import Picture, make_jpegs
from vm.kernel import NotToBeHad
from vm.machine import Answer, Machine, Stick

EDITION = 'Norvo Larch'
ALL_DRIVES = 'Norvo Spruce'
# Slow enough that a search is still at its beginning when the first pictures are there.
SLOW = 500_000
PICTURES = 60
FEW = 8
OPEN_FAILED = 3
NO_CAPABILITY = '0000000000000000'
folder: Path
machine: Machine
system: GuestSystem
pictures: list[Picture]
places: list[Place]


def make_disk(name: str, files: list[Picture], size: int = 40 * MIB) -> Path:
    """A disk whose only partition had the pictures on it until they were deleted."""
    partition = disks.empty_image(folder / 'partition', size)
    disks.format_fat(partition)
    if files:
        disks.copy_to_fat(partition, disks.write_files(folder / 'pictures', files))
        disks.delete_from_fat(partition, [picture.name for picture in files])
    return disk_of(partition, folder / name)


def setUpModule() -> None:
    # The machine's first user changes files that only root may read here.
    need_root('a virtual machine on the files of this one')
    need_tools('mkfs.fat', 'mcopy', 'mdel', 'dbus-daemon', 'dbus-send', 'pkexec', 'pgrep',
               'useradd', str(POLKITD))
    global folder, machine, system, pictures, places
    folder = Path(tempfile.mkdtemp(prefix='norvo_usb_stick_'))
    unittest.addModuleCleanup(shutil.rmtree, folder, ignore_errors=True)
    folder.chmod(0o755)
    pictures = make_jpegs(PICTURES, side=900)
    places = disks.find_places(make_disk('stick', pictures), pictures)
    assert len(places) == PICTURES, 'each picture lies on the stick in one piece'
    begin = time.monotonic()
    try:
        machine = Machine(folder, Path(os.environ['NORVO_VM_CACHE']), make_disk('built-in', []))
    except NotToBeHad as reason:
        raise unittest.SkipTest(f'no virtual machine can be had here: {reason}') from None
    unittest.addModuleCleanup(machine.end)
    system = GuestSystem(machine, program())
    bundle = Path(os.environ['NORVO_BUNDLES']) / f'{EDITION}.app'
    system.install(bundle, Path(os.environ['NORVO_WINDOW']), Path(os.environ['NORVO_POLICY']))
    system.start_polkit()
    machine.call('mkdir', '/built-in')
    machine.call('mount', '/dev/vda1', '/built-in')
    print(f'The machine is ready after {time.monotonic() - begin:.0f} s', flush=True)


class StickCase(Case):
    def stick(self, serial: str, **how: object) -> Stick:
        """Its image is a copy, so that no test sees what the one before did to it."""
        image = folder / f'stick-{serial}'
        shutil.copy(folder / 'stick', image)
        return Stick(serial, image, **how)

    def plug(self, stick: Stick) -> str:
        disk = system.plug_and_mount(stick)
        self.addCleanup(self.unplug, stick)
        return disk

    def unplug(self, stick: Stick) -> None:
        if machine.name_of(stick):
            system.pull_and_forget(stick)

    def identifiers(self, edition: str = EDITION) -> list[object]:
        return [drive['identifier'] for drive in system.drives(edition)]

    def expected_drive(self, disk: str) -> dict[str, object]:
        return {'event': 'drive', 'device': f'/dev/{disk}1', 'identifier': f'{disk}1',
                'volume': 'CARD', 'file_system': 'MS-DOS (FAT32)', 'size': '40.00  MB ',
                'parent_disk': disk, 'sectors': 40 * MIB // 512}

    def assert_cut_short(self, found: list[Path]) -> None:
        """The first pictures of the stick, each of them whole; only the last one may be cut."""
        self.assertGreaterEqual(len(found), FEW)
        self.assertLess(len(found), PICTURES, 'the stick was pulled in the middle')
        for path, place in zip(found[:-1], places):
            self.assertTrue(path.read_bytes().startswith(place.picture.content), path)
        last = found[-1].read_bytes()
        self.assertEqual(last[:512], places[len(found) - 1].picture.content[:512])


class DriveList(StickCase):
    def test_a_stick_is_listed_with_what_people_know_it_by(self) -> None:
        disk = self.plug(self.stick('HOLIDAYS'))
        self.assertEqual(system.drives(EDITION), [self.expected_drive(disk)])

    def test_a_stick_that_claims_to_be_fixed_is_listed_beside_it(self) -> None:
        first = self.plug(self.stick('HOLIDAYS'))
        second = self.plug(self.stick('FIXED', claims_removable=False))
        claims = machine.call('lsblk', '--noheadings', '--nodeps', '-o', 'RM,HOTPLUG',
                              f'/dev/{second}')
        self.assertEqual(claims.split(), ['0', '1'])
        self.assertEqual(system.drives(EDITION),
                         [self.expected_drive(first), self.expected_drive(second)])

    def test_the_built_in_disk_is_listed_by_editions_for_all_drives_only(self) -> None:
        disk = self.plug(self.stick('HOLIDAYS'))
        self.assertEqual(self.identifiers(), [f'{disk}1'])
        self.assertEqual(set(self.identifiers(ALL_DRIVES)), {f'{disk}1', 'vda1'})

    def test_the_table_names_the_stick(self) -> None:
        disk = self.plug(self.stick('HOLIDAYS'))
        said = machine.call(program(), '--list-drives', '--edition', EDITION)
        heading, line = said.splitlines()
        self.assertEqual(heading.split()[:2], ['Identifier', 'Volume'])
        self.assertEqual(line.split()[:2], [f'{disk}1', 'CARD'])
        self.assertIn('40.00  MB', line)


class Pulled(StickCase):
    def setUp(self) -> None:
        super().setUp()
        self.results = Path('/srv') / self._testMethodName

    def begin_and_pull(self, stick: Stick) -> Answer:
        """Pulls the stick as soon as a few pictures are there."""
        disk = self.plug(stick)
        search = system.search(f'/dev/{disk}1', self.results)
        wait_until(lambda: system.count(self.results) >= FEW, 'waiting for the first pictures')
        machine.pull(stick)
        self.addCleanup(system.forget, stick)
        pulled = time.monotonic()
        answer = search.end()
        print(f'it ended {time.monotonic() - pulled:.1f} s after the stick was pulled', flush=True)
        return answer

    def test_the_search_ends_and_what_was_found_stays(self) -> None:
        answer = self.begin_and_pull(self.stick('PULLED', bytes_per_second=SLOW))
        run = Run(answer.status, answer.out, answer.err, read_events(answer.out))
        self.check_events(run.events)
        self.assertEqual((run.status, run.outcome), (OPEN_FAILED, 'open_failed'), run.err)
        self.assertEqual([event['errno'] for event in run.of('device_error')], [errno.ENOENT])
        self.assertIn(os.strerror(errno.ENOENT), run.err)
        found = system.photos(self.results)
        self.assertEqual([path.name for path in run.files], [path.name for path in found])
        self.assert_cut_short(found)

    def test_it_is_not_listed_until_it_is_plugged_in_again(self) -> None:
        stick = self.stick('AGAIN')
        disk = self.plug(stick)
        self.assertEqual(self.identifiers(), [f'{disk}1'])
        machine.pull(stick)
        # The machine takes its time to notice.
        wait_until(lambda: self.identifiers() == [], 'the stick is gone from the list')
        system.forget(stick)
        self.assertEqual(self.identifiers(), [])
        again = self.plug(stick)
        self.assertEqual(system.drives(EDITION), [self.expected_drive(again)])

    def test_after_it_is_plugged_in_again_all_pictures_come_back(self) -> None:
        stick = self.stick('TWICE', bytes_per_second=SLOW)
        self.begin_and_pull(stick)
        whole = Stick(stick.serial, stick.image)
        disk = self.plug(whole)
        results = self.results / 'again'
        answer = system.search(f'/dev/{disk}1', results).end()
        self.assertEqual(answer.status, 0, answer.err)
        self.assertEqual(disks.Recovered(system.photos(results)).missing(places), [])


class AnOrdinaryPerson(StickCase):
    """Starts the program with its window, which asks for the right to read drives."""

    def setUp(self) -> None:
        super().setUp()
        self.app = system.program_of(f'{EDITION}.app')
        self.home = Path('/home') / PERSON
        self.destination = self.home / self._testMethodName
        system.run_as_person('mkdir', self.destination)
        self.report_file = self.destination.with_suffix('.json')

    def start(self, disk: str, dialog: str, button: str) -> None:
        plan = {'report': str(self.report_file), 'drive': f'{disk}1',
                'destination': str(self.destination), 'final_dialog': dialog,
                'final_button': button}
        system.write(self.app.parents[1] / 'Resources/plan.json', json.dumps(plan))
        answer = system.run_as_person(self.app)
        self.assertEqual((answer.status, answer.out, answer.err), (0, '', ''))

    def report(self) -> dict:
        wait_until(lambda: system.exists(self.report_file), 'the report of the window')
        report = json.loads(system.read(self.report_file))
        wait_until(lambda: not self.is_running(), 'the end of the window and its opener')
        return report

    def is_running(self) -> bool:
        return machine.run('pgrep', '--full', str(self.app)).status == 0

    def test_gets_all_pictures_back_by_the_opener_alone(self) -> None:
        disk = self.plug(self.stick('PERSON'))
        self.start(disk, 'SaveFile_Info', 'OK_Btn')
        report = self.report()
        number = machine.call('id', '--user', PERSON).strip()
        self.assertEqual(report['status']['Uid'], '\t'.join([number] * 4))
        for kind in ('CapInh', 'CapPrm', 'CapEff', 'CapBnd', 'CapAmb'):
            self.assertEqual(report['status'][kind], NO_CAPABILITY)
        self.assertEqual(report['alone'], errno.EACCES)
        self.assertEqual([row[:2] for row in report['drives']], [[f'{disk}1', 'CARD']])
        self.assertEqual((report['chosen'], report['ended'], report['alerts']), (True, True, []))
        self.assertEqual(disks.Recovered(system.photos(self.destination)).missing(places), [])
        self.assertEqual(report['shown'], PICTURES)
        self.assertEqual(system.owners(self.destination), {f'{PERSON}:{PERSON}'})

    def test_sees_why_the_search_ends_when_the_stick_is_pulled(self) -> None:
        stick = self.stick('PULLEDTOO', bytes_per_second=SLOW)
        self.start(self.plug(stick), 'alert', 'OK')
        wait_until(lambda: system.count(self.destination) >= FEW, 'waiting for the first pictures')
        machine.pull(stick)
        self.addCleanup(system.forget, stick)
        report = self.report()
        self.assertTrue(report['ended'])
        self.assertEqual(report['alerts'], ['Device Access Error'])
        self.assert_cut_short(system.photos(self.destination))


if __name__ == '__main__':
    main()
