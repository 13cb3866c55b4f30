#!/usr/bin/python3
"""Deleted videos, camera raw files and sounds come back from a card."""
import disks
from disks import MIB
from harness import Case, Run, main, need_tools
from media import SOUNDS, VIDEOS, make_media, make_raw_files
from pictures import Picture

FOLDERS = {'video': 'Video Search', 'raw': 'File Search', 'audio': 'Audio File Search'}
EDITION = 'Norvo Birch'  # the one that has every kind of search


def setUpModule() -> None:
    need_tools('mkfs.fat', 'mcopy', 'mdel', 'ffmpeg')


class MediaFiles(Case):
    def search_card(self, files: list[Picture], mode: str, *arguments: object) -> Run:
        """Puts the files on a card, deletes them and searches it."""
        self.image = disks.empty_image(self.folder / 'card.img', 96 * MIB)
        disks.format_fat(self.image)
        paths = disks.write_files(self.folder / 'files', files)
        disks.copy_to_fat(self.image, paths)
        disks.delete_from_fat(self.image, [path.name for path in paths])
        run = self.search(self.image, '--edition', EDITION, '--mode', mode, *arguments)
        self.assertEqual((run.status, run.outcome), (0, 'completed'), run.err)
        root = self.destination / f'{EDITION} Results' / FOLDERS[mode]
        for path in run.files:
            self.assertTrue(path.is_file(), path)
            self.assertIn(root, path.parents)
            self.assertEqual(path.parent.name, path.suffix[1:])
        return run

    def check_all_back(self, files: list[Picture], mode: str) -> None:
        run = self.search_card(files, mode)
        places = disks.find_places(self.image, files)
        print(f'{len(places)} of {len(files)} files lie in one piece', flush=True)
        self.assertEqual(len(places), len(files), 'an empty card takes files in one piece')
        self.assertEqual(disks.Recovered(run.files).missing(places), [])

    def test_deleted_videos_come_back(self) -> None:
        self.check_all_back(make_media(VIDEOS, 10, with_picture=True), 'video')

    def test_deleted_sounds_come_back(self) -> None:
        self.check_all_back(make_media(SOUNDS, 12, with_picture=False), 'audio')

    def test_deleted_camera_raw_files_come_back(self) -> None:
        self.check_all_back(make_raw_files(20), 'raw')

    def test_only_the_ticked_types_come_back(self) -> None:
        files = make_raw_files(3)
        run = self.search_card(files, 'raw', '--types', 'RAF,CRW')
        wanted = [file for file in files if file.found_as in ('RAF', 'CRW')]
        places = disks.find_places(self.image, wanted)
        self.assertEqual(len(places), 6)
        self.assertEqual(disks.Recovered(run.files).missing(places), [])
        self.assertEqual({path.suffix for path in run.files}, {'.RAF', '.CRW'})


if __name__ == '__main__':
    main()
