#!/usr/bin/python3
"""Makes a memory card image whose pictures were deleted, or compares what came back of them.

    make_sample_card.py FOLDER                     FOLDER/card.img and FOLDER/originals
    make_sample_card.py FOLDER --compare RESULTS   how many of them are below RESULTS

The card has the file system of cameras, made with the usual tools. The same bytes every time.
"""
import argparse
import os
import shutil
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

from PIL import Image

import sample_pictures

CARD_BYTES = 64 << 20
TAKEN = 1717243200  # 1 June 2024, noon
LARGE, MIDDLE, SMALL = (1600, 1200), (1200, 900), (640, 480)
# Extension on the card, extension under which the search finds it, size, settings of the encoder.
KINDS: list[tuple[str, str, tuple[int, int], dict[str, object]]] = [
    *[('JPG', 'JPG', LARGE, {'quality': 90})] * 5,
    ('PNG', 'PNG', MIDDLE, {}),
    *[('JPG', 'JPG', LARGE, {'quality': 93, 'subsampling': 0})] * 5,
    ('WEBP', 'WEBP', LARGE, {'quality': 90}),
    *[('JPG', 'JPG', MIDDLE, {'quality': 95, 'progressive': True})] * 4,
    ('TIF', 'TIF', MIDDLE, {'compression': 'tiff_lzw'}),
    ('GIF', 'GIF', SMALL, {}),
    ('BMP', 'BMP', MIDDLE, {}),
    *[('JPG', 'JPG', LARGE, {'quality': 88})] * 4,
    ('PNG', 'PNG', SMALL, {}),
    ('JP2', 'JP2', MIDDLE, {'quality_layers': [12]}),
    ('TGA', 'TGA', SMALL, {}),
    ('PCX', 'PCX', SMALL, {}),
    ('JPG', 'JPG', LARGE, {'quality': 90}),
]


def exif(number: int) -> Image.Exif:
    """What a camera notes about a picture."""
    notes = Image.Exif()
    notes[0x010E] = f'Sample picture {number}'
    notes[0x010F] = 'Norvo'
    notes[0x0110] = 'Sample camera'
    notes[0x0112] = 1
    notes[0x0132] = f'2024:06:01 12:{number:02}:00'
    return notes


def draw_originals(folder: Path) -> list[Path]:
    """The pictures as files, in the order in which they are taken."""
    folder.mkdir(parents=True)
    files = []
    images = sample_pictures.pictures([size for _, _, size, _ in KINDS])
    for number, ((extension, _, _, settings), image) in enumerate(zip(KINDS, images), start=1):
        path = folder / f'NRV_{number:04}.{extension}'
        if extension in ('JPG', 'WEBP'):
            settings = {**settings, 'exif': exif(number)}
        image.save(path, **settings)
        os.utime(path, (TAKEN + 60 * number,) * 2)
        files.append(path)
    return files


def make_card(card: Path, files: list[Path]) -> None:
    """Formats the card, copies the files to it and deletes them there."""
    environment = {**os.environ, 'SOURCE_DATE_EPOCH': str(TAKEN), 'MTOOLS_SKIP_CHECK': '1',
                   'TZ': 'UTC', 'PATH': os.environ['PATH'] + ':/usr/sbin:/sbin'}

    def call(*command: str | Path) -> None:
        subprocess.run(command, check=True, env=environment, stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL)

    with open(card, 'wb') as file:
        file.truncate(CARD_BYTES)
    call('mkfs.fat', '--invariant', '-F', '32', '-s', '1', '-n', 'SAMPLE', card)
    call('mmd', '-i', card, '::DCIM', '::DCIM/100NORVO')
    call('mcopy', '-m', '-i', card, *files, '::DCIM/100NORVO/')
    call('mdel', '-i', card, *[f'::DCIM/100NORVO/{file.name}' for file in files])


def is_current(card: Path) -> bool:
    """Whether the card is there and was made by these scripts as they are."""
    scripts = [Path(__file__), Path(sample_pictures.__file__)]
    return card.exists() and all(card.stat().st_mtime > s.stat().st_mtime for s in scripts)


def make(folder: Path) -> int:
    card, originals = folder / 'card.img', folder / 'originals'
    if is_current(card):
        print(f'It is there: {len(KINDS)} pictures, taken and deleted.')
        return 0
    folder.mkdir(parents=True, exist_ok=True)
    unfinished = folder / 'card.unfinished'
    unfinished.unlink(missing_ok=True)
    shutil.rmtree(originals, ignore_errors=True)
    files = draw_originals(originals)
    make_card(unfinished, files)
    unfinished.replace(card)
    megabytes = sum(file.stat().st_size for file in files) / 1e6
    print(f'Took {len(files)} pictures ({megabytes:.1f} MB) and deleted all of them.')
    return 0


def compare(folder: Path, results: Path) -> int:
    """Counts the originals that a recovered file of the right type begins with."""
    recovered = defaultdict(list)
    for path in results.rglob('*'):
        if path.is_file():
            recovered[path.suffix].append(path)
    missing = []
    for original in sorted((folder / 'originals').iterdir()):
        content = original.read_bytes()
        suffix = next(f'.{found}' for kind, found, _, _ in KINDS if original.suffix == f'.{kind}')
        if not any(begins_with(path, content) for path in recovered[suffix]):
            missing.append(original.name)
    total = len(KINDS)
    print(f'{total - len(missing)} of {total} deleted pictures came back, every byte of them.')
    for name in missing:
        print(f'Not among them: {name}')
    return 1 if missing else 0


def begins_with(path: Path, content: bytes) -> bool:
    with open(path, 'rb') as file:
        return file.read(512) == content[:512] and file.read(len(content) - 512) == content[512:]


def main() -> int:
    parser = argparse.ArgumentParser(description='Makes the sample card.')
    parser.add_argument('folder', type=Path)
    parser.add_argument('--compare', type=Path, metavar='RESULTS')
    arguments = parser.parse_args()
    if arguments.compare:
        return compare(arguments.folder, arguments.compare)
    return make(arguments.folder)


if __name__ == '__main__':
    sys.exit(main())
