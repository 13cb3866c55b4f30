#!/usr/bin/python3
"""Deleted and formatted file systems give back every picture that lies in one piece."""
import random
import stat
from pathlib import Path

import disks
from disks import MIB
from harness import Case, Run, call, main, need_tools
from pictures import Picture, make_pictures

PICTURES: list[Picture] = []


def setUpModule() -> None:
    need_tools('mkfs.fat', 'mcopy', 'mdel', 'mdir', 'mkfs.ext4', 'debugfs')
    PICTURES.extend(make_pictures(400))
    PICTURES.extend(make_pictures(6, seed=2, largest=2400))


class DeletedFiles(Case):
    def setUp(self) -> None:
        super().setUp()
        self.image = disks.empty_image(self.folder / 'disk.img', 160 * MIB)

    def search_and_compare(self) -> Run:
        """Nothing that is in the image in one piece may be missing."""
        places = disks.find_places(self.image, PICTURES)
        print(f'{len(places)} of {len(PICTURES)} pictures lie in one piece', flush=True)
        self.assertGreater(len(places), len(PICTURES) * 3 // 4, 'the image is not as intended')
        run = self.search(self.image)
        self.assertEqual((run.status, run.outcome), (0, 'completed'), run.err)
        self.assertEqual([event['pass'] for event in run.of('pass')], ['GEN', 'THD'])
        self.check_tree(run)
        self.assertNotIn('Warning', run.err)
        self.assertEqual(disks.Recovered(run.files).missing(places), [])
        return run

    def fill_fat(self) -> list[str]:
        """Fills a small card so far that the last pictures must go into the gaps of deleted ones.

        Returns the names that are on it.
        """
        files = disks.write_files(self.folder / 'pictures', PICTURES)
        disks.empty_image(self.image, 44 * MIB)
        disks.format_fat(self.image)
        gaps = files[:300:15]
        room_in_gaps = sum(path.stat().st_size for path in gaps)
        ballast = self.folder / 'ballast.bin'
        needed = sum(path.stat().st_size for path in files) - room_in_gaps // 2
        ballast.write_bytes(random.Random(3).randbytes(disks.free_on_fat(self.image) - needed))
        disks.copy_to_fat(self.image, [ballast])
        disks.copy_to_fat(self.image, files[:300])
        disks.delete_from_fat(self.image, [path.name for path in gaps])
        disks.copy_to_fat(self.image, files[300:])
        return [ballast.name, *(path.name for path in files if path not in gaps)]

    def test_pictures_deleted_from_a_fat32_card_come_back(self) -> None:
        names = self.fill_fat()
        disks.delete_from_fat(self.image, names)
        self.search_and_compare()

    def test_pictures_of_a_formatted_fat32_card_come_back(self) -> None:
        self.fill_fat()
        disks.format_fat(self.image)
        self.search_and_compare()

    def make_ext4(self, source: Path | None) -> None:
        # Without nodiscard the image would be punched empty.
        options = ['-d', source] if source else []
        call('mkfs.ext4', '-q', '-F', '-E', 'nodiscard', *options, self.image)

    def test_pictures_deleted_from_an_ext4_disk_come_back(self) -> None:
        disks.write_files(self.folder / 'pictures', PICTURES)
        self.make_ext4(self.folder / 'pictures')
        commands = self.folder / 'commands'
        commands.write_text(''.join(f'rm /{picture.name}\n' for picture in PICTURES))
        call('debugfs', '-w', '-f', commands, self.image)
        self.assertNotIn('P10007', call('debugfs', '-R', 'ls /', self.image))
        self.search_and_compare()

    def test_pictures_of_a_formatted_ext4_disk_come_back(self) -> None:
        disks.write_files(self.folder / 'pictures', PICTURES)
        self.make_ext4(self.folder / 'pictures')
        self.make_ext4(None)
        self.search_and_compare()


class ResultsTree(Case):
    def setUp(self) -> None:
        super().setUp()
        self.image = self.folder / 'disk.img'
        self.places = disks.raw_image(self.image, PICTURES[:40])

    def test_folders_are_open_to_everybody_whatever_the_umask(self) -> None:
        run = self.search(self.image, umask=0o077)
        self.assertEqual(run.status, 0, run.err)
        folders = [path for path in self.destination.rglob('*') if path.is_dir()]
        self.assertGreater(len(folders), 5)
        for folder in [self.destination, *folders]:
            self.assertEqual(stat.S_IMODE(folder.stat().st_mode), 0o777, folder)

    def test_the_results_folder_bears_the_name_of_the_edition(self) -> None:
        run = self.search(self.image, '--edition', 'Norvo Maple 2')
        self.assertEqual(run.status, 0, run.err)
        self.check_tree(run, 'Norvo Maple 2')
        self.assertEqual([path.name for path in self.destination.iterdir()],
                         ['Norvo Maple 2 Results'])

    def test_the_general_pass_alone_makes_no_thorough_results(self) -> None:
        run = self.search(self.image, '--no-thorough')
        self.assertEqual([event['pass'] for event in run.of('pass')], ['GEN'])
        self.assertEqual(disks.Recovered(run.files).missing(self.places), [])
        folders = sorted(path.name for path in
                         (self.destination / 'Norvo Spruce Results/Photo Search').iterdir())
        self.assertEqual(folders, ['General Recovery Results'])

    def test_a_range_finds_what_begins_inside_it(self) -> None:
        first, last = self.places[10], self.places[20]
        run = self.search(self.image, '--no-thorough', '--start-sector', first.offset // 512,
                          '--end-sector', last.offset // 512)
        self.assertEqual(run.status, 0, run.err)
        recovered = disks.Recovered(run.files)
        self.assertEqual(recovered.missing(self.places[10:20]), [])
        self.assertEqual(len(run.files), 10)

    def test_a_second_search_replaces_the_results_of_the_first(self) -> None:
        self.search(self.image)
        before = {path: path.read_bytes() for path in self.destination.rglob('*')
                  if path.is_file()}
        for path in list(before)[::3]:
            path.write_bytes(b'left over' * 100000)
        run = self.search(self.image)
        self.assertEqual(run.status, 0, run.err)
        self.assertEqual({path: path.read_bytes() for path in run.files}, before)


if __name__ == '__main__':
    main()
