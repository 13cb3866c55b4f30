#!/usr/bin/python3
"""The program with its window, in a real window: started, used by keyboard, and left.

With NORVO_PICTURES=FOLDER it saves a picture of each step there.
"""
import os
import subprocess
import time
from pathlib import Path

from desktop import PATIENCE, Desktop, until
from disks import format_fat, copy_to_fat, delete_from_fat, empty_image, write_files
from harness import Case, main, need_tools
from pictures import make_jpegs
from served_file import ServedFile

BUNDLES = Path(os.environ.get('NORVO_BUNDLES', 'build/release/bundles'))
TITLE = 'Norvo Recovery for All Media'
MIB = 1 << 20


def setUpModule() -> None:
    need_tools('Xvfb', 'openbox', 'xdotool', 'import', 'mkfs.fat', 'mcopy', 'mdel')


def has_ended(process: subprocess.Popen[bytes]) -> bool:
    """Whether its main thread is gone, wherever the others are."""
    return Path(f'/proc/{process.pid}/stat').read_text().rpartition(') ')[2].startswith('Z')


def executable(edition: str) -> Path:
    return BUNDLES / f'Norvo {edition}.app/Contents/MacOS/Norvo {edition}'


class Window(Case):
    def card(self, count: int, size: int) -> tuple[Path, list[bytes]]:
        """A card whose pictures were deleted, and their contents."""
        photos = make_jpegs(count)
        files = write_files(self.folder / 'originals', photos)
        image = empty_image(self.folder / 'card.img', size)
        format_fat(image)
        copy_to_fat(image, files)
        delete_from_fat(image, [file.name for file in files])
        return image, [file.read_bytes() for file in files]

    def step(self, desktop: Desktop, name: str) -> None:
        folder = os.environ.get('NORVO_PICTURES')
        if folder:
            time.sleep(0.7)
            desktop.picture(Path(folder) / f'{name}.png')

    def choose_image_and_destination(self, desktop: Desktop, image: Path) -> None:
        desktop.wait_for_window(TITLE)
        self.step(desktop, '1-drives')
        desktop.key('alt+o')
        desktop.wait_for_window('Open Disk Image')
        desktop.type(str(image))
        desktop.key('Return')
        desktop.wait_for_window(TITLE)
        self.step(desktop, '2-image')
        desktop.key('alt+n')
        desktop.wait_for_window(f'{TITLE} - Photo Search')
        desktop.key('alt+w')
        desktop.wait_for_window('Choose a folder on another drive')
        self.step(desktop, '3-advice')
        desktop.key('Return')
        desktop.wait_for_window('Choose Destination Folder')
        desktop.type(str(self.destination))
        desktop.key('Return')
        desktop.wait_for_window(f'{TITLE} - Photo Search')
        self.step(desktop, '4-settings')

    def start_photo_search(self, desktop: Desktop, image: Path) -> subprocess.Popen[bytes]:
        """The program, which searches the image that it was started with."""
        self.destination.mkdir()
        program = desktop.start(executable('Spruce'), 'a', 'b', 'c', image)
        desktop.wait_for_window(TITLE)
        desktop.key('alt+n')
        desktop.wait_for_window(f'{TITLE} - Photo Search')
        desktop.key('alt+f')
        desktop.type(str(self.destination))
        desktop.key('alt+n')
        return program

    def recovered(self) -> list[bytes]:
        files = sorted((self.destination / 'Norvo Spruce Results').rglob('*.JPG'))
        return [file.read_bytes() for file in files]

    def test_deleted_pictures_come_back_by_keyboard_alone(self) -> None:
        image, originals = self.card(12, 64 * MIB)
        self.destination.mkdir()
        with Desktop() as desktop:
            program = desktop.start(executable('Spruce'), 'a', 'b', 'c')
            self.choose_image_and_destination(desktop, image)
            desktop.key('alt+n')
            # The notice where the files are ends the search.
            desktop.wait_for_window('The search has ended')
            self.step(desktop, '5-ended')
            desktop.key('Return')
            desktop.wait_for_window(f'{TITLE} - Photo Search')
            self.step(desktop, '6-results')
            found = self.recovered()
            for number, original in enumerate(originals):
                self.assertTrue(any(file.startswith(original) for file in found), number)
            desktop.key('alt+x')
            desktop.wait_for_box(TITLE)
            self.step(desktop, '7-leave')
            desktop.key('Escape')
            desktop.wait_for_window(f'{TITLE} - Photo Search')
            self.assertIsNone(program.poll())
            desktop.key('alt+x')
            desktop.wait_for_box(TITLE)
            desktop.key('Return')
            self.assertEqual(program.wait(PATIENCE), 0)

    def test_leaving_in_the_middle_of_a_search_ends_the_process_at_once(self) -> None:
        image, _ = self.card(2, 64 * MIB)
        with image.open('r+b') as stream:
            stream.truncate(1 << 42)
        with Desktop() as desktop:
            program = self.start_photo_search(desktop, image)
            until(lambda: len(self.recovered()) == 2, 'the pictures')
            desktop.key('alt+x')
            desktop.wait_for_box(TITLE)
            desktop.key('Return')
            self.assertEqual(program.wait(PATIENCE), 0)

    def test_leaving_a_search_whose_drive_does_not_answer_does_not_wait_for_it(self) -> None:
        image, _ = self.card(2, 64 * MIB)
        gate = self.folder / 'gate'
        served = ServedFile(self, image, self.folder / 'mount', '--gate', str(gate),
                            '--gate-offset', str(32 * MIB))
        with Desktop() as desktop:
            try:
                program = self.start_photo_search(desktop, served.path)
                until(Path(f'{gate}.reached').exists, 'a read that is not answered')
                desktop.key('alt+x')
                desktop.wait_for_box(TITLE)
                desktop.key('Return')
                # The system keeps the process until the reading thread's last call returns, and
                # would keep its windows as well.
                until(lambda: has_ended(program), 'the end of the program')
                until(lambda: not desktop.shows_window(TITLE), 'the end of the window')
            finally:
                gate.touch()
            self.assertEqual(program.wait(PATIENCE), 0)

    def copied_bundle(self, name: str, property_list: str | None) -> Path:
        """The executable of a bundle of this name, with this property list or without one."""
        bundle = self.folder / f'{name}.app/Contents'
        (bundle / 'MacOS').mkdir(parents=True)
        copy = bundle / 'MacOS' / name
        copy.write_bytes(executable('Spruce').read_bytes())
        copy.chmod(0o755)
        if property_list is not None:
            (bundle / 'Info.plist').write_text(property_list)
        return copy

    def test_a_bundle_that_is_no_edition_says_so(self) -> None:
        spruce = (BUNDLES / 'Norvo Spruce.app/Contents/Info.plist').read_text()
        bundles = {
            'Norvo Willow': spruce.replace('Norvo Spruce', 'Norvo Willow'),
            'Norvo Spruce': None,
            'Norvo Alder': spruce.replace('<key>CFBundleName</key>', '<key>Name</key>'),
        }
        with Desktop() as desktop:
            for name, property_list in bundles.items():
                with self.subTest(name):
                    program = desktop.start(self.copied_bundle(name, property_list), 'a', 'b', 'c')
                    desktop.wait_for_box('Norvo Recovery')
                    self.step(desktop, f'8-{name}')
                    desktop.key('Return')
                    self.assertEqual(program.wait(PATIENCE), 1)


if __name__ == '__main__':
    main()
