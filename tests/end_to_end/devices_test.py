#!/usr/bin/python3
"""Devices that cannot be opened, and devices of unusual sizes."""
import errno
import os
import shutil
from pathlib import Path

import disks
from harness import SECTOR, Case, Run, main, program
from pictures import make_jpegs

NOBODY = 65534


class DevicesThatCannotBeOpened(Case):
    def assert_open_failed(self, run: Run, reason: int, permission: bool) -> None:
        self.assertEqual(run.status, 3, run.err)
        self.assertEqual([event['event'] for event in run.events],
                         ['pass', 'device_error', 'final'])
        self.assertEqual(run.of('device_error')[0]['errno'], reason)
        self.assertEqual(run.of('device_error')[0]['permission'], permission)
        self.assertEqual(run.outcome, 'open_failed')
        self.assertFalse(self.destination.exists())
        self.assertIn(os.strerror(reason), run.err)

    def test_a_device_that_does_not_exist(self) -> None:
        run = self.search(self.folder / 'nothing')
        self.assert_open_failed(run, errno.ENOENT, permission=False)

    def test_a_range_of_a_device_that_does_not_exist(self) -> None:
        run = self.search(self.folder / 'nothing', '--start-sector=1', '--end-sector=2')
        self.assert_open_failed(run, errno.ENOENT, permission=False)

    def test_a_folder(self) -> None:
        self.assert_open_failed(self.search(self.folder), errno.EISDIR, permission=False)

    def test_a_pipe_does_not_wait_for_its_other_end(self) -> None:
        os.mkfifo(self.folder / 'pipe')
        run = self.search(self.folder / 'pipe')
        self.assert_open_failed(run, errno.ENOTBLK, permission=False)

    def test_a_character_device(self) -> None:
        run = self.search(Path('/dev/zero'))
        self.assert_open_failed(run, errno.ENOTBLK, permission=False)

    def test_a_device_without_permission(self) -> None:
        device = disks.empty_image(self.folder / 'disk.img', 1 << 20)
        device.chmod(0)
        arguments = ['--device', device, '--destination', self.destination, '--json']
        prefix = []
        if os.geteuid() == 0:
            # Root may read everything, so the program runs as somebody else, from where that
            # person can reach it.
            shutil.copytree(program().parent, self.folder / 'bin')
            prefix = ['setpriv', f'--reuid={NOBODY}', f'--regid={NOBODY}', '--clear-groups', 'env',
                      f'--chdir={self.folder}', '--']
            run = self.run_copy(prefix, arguments)
        else:
            run = self.run_program(*arguments)
        self.assert_open_failed(run, errno.EACCES, permission=True)

    def run_copy(self, prefix: list[str], arguments: list[object]) -> Run:
        original = os.environ['NORVO_RECOVER']
        os.environ['NORVO_RECOVER'] = str(self.folder / 'bin' / Path(original).name)
        try:
            return self.run_program(*arguments, prefix=prefix)
        finally:
            os.environ['NORVO_RECOVER'] = original


class UnusualSizes(Case):
    def assert_completed(self, run: Run) -> None:
        self.assertEqual((run.status, run.outcome), (0, 'completed'), run.err)
        self.assertEqual([event['pass'] for event in run.of('pass')], ['GEN', 'THD'])
        self.check_tree(run)

    def test_an_empty_device_runs_both_passes(self) -> None:
        run = self.search(disks.empty_image(self.folder / 'disk.img', 0))
        self.assert_completed(run)
        self.assertEqual(run.files, [])

    def test_a_device_shorter_than_a_sector_has_none(self) -> None:
        image = self.folder / 'disk.img'
        image.write_bytes(make_jpegs(1)[0].content[:SECTOR - 1])
        run = self.search(image)
        self.assert_completed(run)
        self.assertEqual(run.files, [])

    def test_the_bytes_behind_the_last_whole_sector_are_left_out(self) -> None:
        image = self.folder / 'disk.img'
        pictures = make_jpegs(2)
        places = disks.raw_image(image, pictures)
        with open(image, 'ab') as file:
            file.write(pictures[0].content[:SECTOR - 1])
        run = self.search(image)
        self.assert_completed(run)
        self.assertEqual(disks.Recovered(run.files).missing(places), [])
        self.assertEqual(len(run.files), 2)

    def test_a_device_of_one_sector_gives_that_sector_twice(self) -> None:
        image = self.folder / 'disk.img'
        sector = make_jpegs(1)[0].content[:SECTOR]
        image.write_bytes(sector)
        run = self.search(image)
        self.assert_completed(run)
        self.assertEqual([path.read_bytes() for path in run.files], [sector * 2])

    def test_people_get_a_table_and_the_place(self) -> None:
        image = self.folder / 'disk.img'
        disks.raw_image(image, make_jpegs(7))
        run = self.run_program('--device', image, '--destination', self.destination, '--quiet')
        self.assertEqual((run.status, run.err), (0, ''))
        self.assertRegex(run.out, r'General +JPG +7 ')
        self.assertIn(f'Saved in {self.destination}/Norvo Spruce Results/Photo Search', run.out)


if __name__ == '__main__':
    main()
