#!/usr/bin/python3
"""A real block device gives what its image gives, and is not the place for the results."""
import errno
from pathlib import Path

import disks
from disks import MIB
from harness import Case, call, main, need_root, need_tools
from pictures import make_pictures

WARNING = 'Warning: the destination lies on the device that is searched.'


def setUpModule() -> None:
    need_root('a block device')
    need_tools('losetup', 'mount', 'umount', 'mkfs.fat', 'mcopy', 'mdel', 'mkfs.ext4')


class BlockDevice(Case):
    def attach(self, image: Path, *options: str) -> Path:
        try:
            device = Path(call('losetup', '--find', '--show', *options, image).strip())
        except AssertionError as reason:
            self.skipTest(f'no block device can be made of a file here: {reason}')
        self.addCleanup(call, 'losetup', '--detach', device)
        return device

    def test_a_device_gives_what_its_image_gives(self) -> None:
        image = disks.empty_image(self.folder / 'card.img', 48 * MIB)
        pictures = list(make_pictures(150))
        files = disks.write_files(self.folder / 'pictures', pictures)
        disks.format_fat(image)
        disks.copy_to_fat(image, files)
        disks.delete_from_fat(image, [file.name for file in files])
        places = disks.find_places(image, pictures)
        self.assertEqual(len(places), len(pictures))

        from_image = self.search(image)
        self.assertEqual((from_image.status, from_image.outcome), (0, 'completed'))
        first = self.destination
        self.destination = self.folder / 'from_device'
        from_device = self.search(self.attach(image))
        self.assertEqual((from_device.status, from_device.outcome), (0, 'completed'))
        self.check_tree(from_device)
        self.assertNotIn('Warning', from_device.err)
        self.assertEqual(disks.Recovered(from_device.files).missing(places), [])
        self.assertEqual(disks.differing_files(first, self.destination), [])

    def mounted(self) -> tuple[Path, Path]:
        """A device with a file system, and where that is mounted."""
        image = disks.empty_image(self.folder / 'disk.img', 32 * MIB)
        call('mkfs.ext4', '-q', '-F', image)
        device = self.attach(image)
        folder = self.folder / 'mounted'
        folder.mkdir()
        call('mount', device, folder)
        self.addCleanup(call, 'umount', folder)
        return device, folder

    def test_a_destination_on_the_device_is_warned_of(self) -> None:
        device, folder = self.mounted()
        # A short range: what is saved on the device would be found again further on.
        few = ('--start-sector', '0', '--end-sector', '16')
        for destination in (folder, folder / 'not' / 'there' / 'yet'):
            self.destination = destination
            run = self.search(device, *few)
            self.assertEqual(run.status, 0, run.err)
            self.assertEqual(run.err.count(WARNING), 1, run.err)
        self.destination = self.folder / 'elsewhere'
        run = self.search(device, *few)
        self.assertEqual(run.status, 0, run.err)
        self.assertNotIn('Warning', run.err)

    def test_a_report_on_the_device_is_refused(self) -> None:
        device, folder = self.mounted()
        for report in (folder / 'report.xml', folder / 'not' / 'there' / 'yet.csv'):
            self.assert_refused(self.run_program('--device', device, '--destination',
                                                 self.destination, '--report', report),
                                'would lie on the device that is searched')
        self.assertEqual([path.name for path in folder.iterdir()], ['lost+found'])

    def test_a_link_to_the_device_and_a_link_to_the_destination_do_not_hide_it(self) -> None:
        device, folder = self.mounted()
        (self.folder / 'card').symlink_to(device)
        self.destination = self.folder / 'pictures'
        self.destination.symlink_to(folder)
        run = self.search(self.folder / 'card', '--start-sector', '0', '--end-sector', '16')
        self.assertEqual(run.err.count(WARNING), 1, run.err)

    def test_a_drive_without_a_medium_is_told_from_one_without_photos(self) -> None:
        nothing = self.folder / 'nothing'
        nothing.touch()
        run = self.search(self.attach(nothing))
        self.assertEqual((run.status, run.outcome), (3, 'open_failed'), run.err)
        self.assertEqual([event['errno'] for event in run.of('device_error')], [errno.ENOMEDIUM])
        self.assertIn('No medium found', run.err)
        self.assertFalse(self.destination.exists())

    def test_the_device_is_not_written(self) -> None:
        image = self.folder / 'card.img'
        disks.raw_image(image, make_pictures(20), size=8 * MIB)
        before = image.read_bytes()
        for options in ((), ('--read-only',)):
            device = self.attach(image, *options)
            run = self.search(device)
            self.assertEqual((run.status, run.outcome), (0, 'completed'), run.err)
            call('blockdev', '--flushbufs', device)
            self.assertEqual(image.read_bytes(), before)


if __name__ == '__main__':
    main()
