#!/usr/bin/python3
"""Nothing that is planted in the destination leads a write to another place."""
import os
import stat
from pathlib import Path

import disks
from harness import GENERAL, RESULTS, THOROUGH, Case, Run, main
from pictures import make_jpegs

FIRST_FILE = GENERAL / 'JPG' / 'GND00001.JPG'


class HostileDestination(Case):
    def setUp(self) -> None:
        super().setUp()
        self.image = self.folder / 'disk.img'
        self.places = disks.raw_image(self.image, make_jpegs(5))
        self.outside = self.folder / 'outside'
        self.outside.mkdir(mode=0o750)
        self.victim = self.outside / 'victim.jpg'
        self.victim.write_bytes(b'precious')
        self.before = self.state_outside()

    def state_outside(self) -> dict[Path, tuple[int, int, bytes]]:
        """Every name outside with its permissions, change time and content."""
        state = {}
        for path in [self.outside, *self.outside.rglob('*')]:
            status = path.lstat()
            content = path.read_bytes() if stat.S_ISREG(status.st_mode) else b''
            state[path] = (status.st_mode, status.st_mtime_ns, content)
        return state

    def place_of(self, relative: Path) -> Path:
        """Where something is planted: its folder is there already."""
        path = self.destination / relative
        path.parent.mkdir(parents=True, exist_ok=True)
        return path

    def assert_refused_to_write(self) -> Run:
        run = self.search(self.image)
        self.assert_save_failed(run)
        self.assertEqual(self.state_outside(), self.before)
        return run

    def test_a_link_at_any_folder_is_not_followed(self) -> None:
        for folder in (RESULTS.parent, RESULTS, GENERAL, GENERAL / 'JPG'):
            with self.subTest(folder=str(folder)):
                self.destination = self.folder / f'destination_{len(folder.parts)}'
                self.place_of(folder).symlink_to(self.outside)
                self.assertEqual(self.assert_refused_to_write().files, [])

    def test_a_link_at_the_file_is_not_followed(self) -> None:
        self.place_of(FIRST_FILE).symlink_to(self.victim)
        self.assertEqual(self.assert_refused_to_write().files, [])

    def test_a_link_to_nothing_makes_nothing(self) -> None:
        self.place_of(FIRST_FILE).symlink_to(self.outside / 'new.jpg')
        self.assertEqual(self.assert_refused_to_write().files, [])

    def test_a_second_name_of_a_file_is_not_written(self) -> None:
        os.link(self.victim, self.place_of(FIRST_FILE))
        self.before = self.state_outside()
        self.assertEqual(self.assert_refused_to_write().files, [])

    def test_a_pipe_at_the_file_neither_waits_nor_takes_data(self) -> None:
        os.mkfifo(self.place_of(FIRST_FILE))
        self.assertEqual(self.assert_refused_to_write().files, [])
        self.assertTrue(stat.S_ISFIFO((self.destination / FIRST_FILE).lstat().st_mode))

    def test_a_pipe_with_a_reader_takes_no_data(self) -> None:
        pipe = self.place_of(FIRST_FILE)
        os.mkfifo(pipe)
        reader = os.open(pipe, os.O_RDONLY | os.O_NONBLOCK)
        self.addCleanup(os.close, reader)
        self.assert_refused_to_write()
        self.assertEqual(os.read(reader, 1), b'')

    def test_a_folder_at_the_file_is_a_saving_failure(self) -> None:
        self.place_of(FIRST_FILE).mkdir()
        self.assertEqual(self.assert_refused_to_write().files, [])

    def test_a_file_at_a_folder_is_a_saving_failure(self) -> None:
        self.place_of(GENERAL / 'JPG').write_bytes(b'not a folder')
        self.assertEqual(self.assert_refused_to_write().files, [])

    def test_a_link_at_a_later_file_keeps_the_earlier_ones(self) -> None:
        self.place_of(GENERAL / 'JPG' / 'GND00003.JPG').symlink_to(self.victim)
        run = self.assert_refused_to_write()
        self.assertEqual(len(run.files), 2)
        self.assertEqual(disks.Recovered(run.files).missing(self.places[:2]), [])

    def test_a_link_at_the_thorough_results_keeps_the_general_ones(self) -> None:
        self.place_of(THOROUGH).symlink_to(self.outside)
        run = self.assert_refused_to_write()
        self.assertEqual([event['pass'] for event in run.of('pass')], ['GEN', 'THD'])
        self.assertEqual(disks.Recovered(run.files).missing(self.places), [])

    def test_the_destination_itself_may_be_a_link(self) -> None:
        real = self.folder / 'real'
        real.mkdir()
        self.destination.symlink_to(real)
        run = self.search(self.image)
        self.assertEqual(run.status, 0, run.err)
        self.assertEqual(disks.Recovered(run.files).missing(self.places), [])
        self.assertEqual(len(list(real.rglob('*.JPG'))), len(self.places))

    def test_a_destination_that_is_a_file_is_a_saving_failure(self) -> None:
        self.destination.write_bytes(b'precious')
        run = self.search(self.image)
        self.assert_save_failed(run)
        self.assertEqual(self.destination.read_bytes(), b'precious')

    def test_a_destination_that_may_not_be_written_is_a_saving_failure(self) -> None:
        if os.geteuid() == 0:
            self.destination = Path('/proc/norvo_destination')
        else:
            self.destination.mkdir(mode=0o555)
        run = self.search(self.image)
        self.assert_save_failed(run)


if __name__ == '__main__':
    main()
