#!/usr/bin/python3
"""A destination without room ends the search with a message; what was finished stays whole."""

import disks
from harness import Case, call, main, need_root, need_tools
from pictures import make_jpegs


def setUpModule() -> None:
    need_root('mounting a small destination')
    need_tools('mount', 'umount')


class FullDestination(Case):
    def setUp(self) -> None:
        super().setUp()
        self.image = self.folder / 'disk.img'
        self.places = disks.raw_image(self.image, make_jpegs(400))
        self.destination.mkdir()
        call('mount', '-t', 'tmpfs', '-o', 'size=2m', 'norvo_test', self.destination)
        self.addCleanup(call, 'umount', self.destination)

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
        with open(self.destination / 'ballast', 'wb', buffering=0) as ballast:
            try:
                while ballast.write(bytes(4096)):
                    pass
            except OSError:
                pass
        run = self.search(self.image)
        self.assert_save_failed(run)
        self.assertEqual(run.files, [])


if __name__ == '__main__':
    main()
