#!/usr/bin/python3
"""The icon of the bundles holds a picture of every size, and all of them show the same.

NORVO_ICON names it.
"""
import io
import os
import unittest
from pathlib import Path

from PIL import Image, ImageChops, ImageStat

PNG = {b'ic07': 128, b'ic08': 256, b'ic09': 512, b'ic10': 1024, b'ic11': 32, b'ic12': 64,
       b'ic13': 256, b'ic14': 512}
PLANES = {(b'is32', b's8mk'): 16, (b'il32', b'l8mk'): 32}


def entries(file: bytes) -> dict[bytes, bytes]:
    if file[:4] != b'icns' or int.from_bytes(file[4:8], 'big') != len(file):
        raise ValueError('this is no icon file, or not the whole of one')
    found: dict[bytes, bytes] = {}
    place = 8
    while place < len(file):
        length = int.from_bytes(file[place + 4:place + 8], 'big')
        found[file[place:place + 4]] = file[place + 8:place + length]
        place += length
    return found


def without_run_lengths(code: bytes) -> bytes:
    plain = bytearray()
    place = 0
    while place < len(code):
        count = code[place]
        if count < 128:
            plain += code[place + 1:place + count + 2]
            place += count + 2
        else:
            plain += code[place + 1:place + 2] * (count - 125)
            place += 2
    return bytes(plain)


class Icon(unittest.TestCase):
    def setUp(self) -> None:
        self.path = Path(os.environ['NORVO_ICON'])
        self.entries = entries(self.path.read_bytes())

    def picture(self, kind: bytes) -> Image.Image:
        return Image.open(io.BytesIO(self.entries[kind])).convert('RGBA')

    def test_holds_these_pictures_and_no_others(self) -> None:
        self.assertEqual(set(self.entries), set(PNG) | {kind for pair in PLANES for kind in pair})

    def test_each_picture_has_the_size_of_its_kind(self) -> None:
        for kind, size in PNG.items():
            with self.subTest(kind=kind):
                self.assertEqual(self.picture(kind).size, (size, size))

    def test_each_picture_shows_the_same(self) -> None:
        largest = self.picture(b'ic10')
        for kind, size in PNG.items():
            with self.subTest(kind=kind):
                expected = largest.resize((size, size), Image.Resampling.BOX)
                difference = ImageChops.difference(expected, self.picture(kind))
                self.assertLess(max(ImageStat.Stat(difference).mean), 6)

    def test_shows_something_on_a_clear_ground(self) -> None:
        largest = self.picture(b'ic10')
        self.assertEqual(largest.getpixel((0, 0))[3], 0)
        self.assertEqual(largest.getpixel((512, 110)), (10, 108, 116, 255))
        self.assertGreater(len(largest.getcolors(1 << 20)), 50)

    def test_old_pictures_have_their_colours_and_transparency(self) -> None:
        for (colours, mask), size in PLANES.items():
            with self.subTest(size=size):
                planes = without_run_lengths(self.entries[colours])
                self.assertEqual(len(planes), 3 * size * size)
                self.assertEqual(len(self.entries[mask]), size * size)

    def test_old_and_new_pictures_of_one_size_are_equal(self) -> None:
        new = self.picture(b'ic11')
        planes = without_run_lengths(self.entries[b'il32'])
        area = 32 * 32
        for place, component in enumerate(new.split()):
            old = (planes + self.entries[b'l8mk'])[place * area:(place + 1) * area]
            self.assertEqual(old, component.tobytes())

    def test_another_reader_finds_the_sizes(self) -> None:
        with Image.open(self.path) as icon:
            sizes = icon.info['sizes']
        self.assertEqual({width * scale for width, _, scale in sizes},
                         {16, 32, 64, 128, 256, 512, 1024})


if __name__ == '__main__':
    unittest.main(verbosity=2)
