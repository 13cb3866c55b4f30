#!/usr/bin/python3
"""A destination without room ends the search with a message; what was finished stays whole.

A report without room costs only itself.
"""
from pathlib import Path

import disks
from dfxml_rules import read_report, read_report_of_a_broken_search
from harness import Case, call, main, need_root, need_tools
from pictures import make_jpegs


def setUpModule() -> None:
    need_root('mounting a small destination')
    need_tools('mount', 'umount')


class SmallDrive(Case):
    def mount(self, folder: Path, size: str) -> None:
        folder.mkdir()
        call('mount', '-t', 'tmpfs', '-o', f'size={size}', 'norvo_test', folder)
        self.addCleanup(call, 'umount', folder)

    def fill(self, folder: Path) -> None:
        with open(folder / 'ballast', 'wb', buffering=0) as ballast:
            try:
                while ballast.write(bytes(4096)):
                    pass
            except OSError:
                pass


class FullDestination(SmallDrive):
    def setUp(self) -> None:
        super().setUp()
        self.image = self.folder / 'disk.img'
        self.places = disks.raw_image(self.image, make_jpegs(400))
        self.mount(self.destination, '2m')

    def test_the_failure_is_said_and_finished_files_are_whole(self) -> None:
        self.assertGreater(sum(len(place.picture.content) for place in self.places), 3 << 20)
        run = self.search(self.image)
        self.assert_save_failed(run)
        self.assertEqual([event['pass'] for event in run.of('pass')], ['GEN'])
        self.assertGreater(len(run.files), 10)
        for place, path in zip(self.places, run.files):
            following = self.image.read_bytes()[place.offset:][:path.stat().st_size]
            self.assertEqual(path.read_bytes(), following, path)
        recovered = disks.Recovered(run.files)
        self.assertEqual(recovered.missing(self.places[:len(run.files)]), [])

    def test_people_read_the_message_once(self) -> None:
        run = self.run_program('--device', self.image, '--destination', self.destination)
        self.assertEqual(run.status, 1)
        self.assertEqual(run.err.count('Unable to continue saving recovered data.'), 1)

    def test_a_destination_without_any_room_ends_the_same_way(self) -> None:
        self.fill(self.destination)
        run = self.search(self.image)
        self.assert_save_failed(run)
        self.assertEqual(run.files, [])

    def test_a_report_of_it_is_whole(self) -> None:
        report = self.folder / 'report.xml'
        run = self.search(self.image, '--report', report)
        self.assert_save_failed(run)
        self.assertEqual([self.destination / file.filename
                          for file in read_report(report.read_bytes())], run.files)


class FullReportDrive(SmallDrive):
    LOST = 'could not be written any further: No space left on device.'

    def setUp(self) -> None:
        super().setUp()
        self.image = self.folder / 'disk.img'
        self.places = disks.raw_image(self.image, make_jpegs(60))
        self.drive = self.folder / 'small'
        self.mount(self.drive, '16k')

    def test_the_search_goes_on_and_the_loss_is_said(self) -> None:
        report = self.drive / 'report.xml'
        run = self.search(self.image, '--report', report)
        self.assertEqual((run.status, run.outcome), (1, 'completed'), run.err)
        self.assertEqual(run.err.count(self.LOST), 1, run.err)
        self.assertEqual(disks.Recovered(run.files).missing(self.places), [])
        left = report.read_text('utf-8')
        self.assertTrue(left.endswith('</fileobject>\n'), 'whole pieces only, and no end')
        told = [self.destination / file.filename for file in read_report_of_a_broken_search(left)]
        self.assertGreater(len(told), 10)
        self.assertLess(len(told), len(run.files))
        self.assertEqual(told, run.files[:len(told)])

    def test_a_report_that_cannot_be_begun_is_refused(self) -> None:
        self.fill(self.drive)
        report = self.drive / 'report.xml'
        self.assert_refused(self.run_program('--device', self.image, '--destination',
                                             self.destination, '--report', report),
                            'cannot be written: No space left on device.')
        self.assertFalse(report.exists())


if __name__ == '__main__':
    main()
