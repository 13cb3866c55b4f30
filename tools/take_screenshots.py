#!/usr/bin/python3
"""Saves pictures of every screen and dialog: light and dark, at 100 and 200 percent, and small.

    take_screenshots.py [--build BUILD] [--only NAME] FOLDER
    take_screenshots.py [--build BUILD] --documents       renews the pictures in docs/screens

Needs the target window_showcase; no display. Look at the pictures after each change of the window.
"""
import argparse
import os
import subprocess
import sys
import tempfile
from pathlib import Path

from PIL import Image

from sample_pictures import pictures

ROOT = Path(__file__).resolve().parent.parent
DOCUMENTS = ROOT / 'docs' / 'screens'
# Name, palette, scale factor, window size.
SETS = [
    ('light', 'light', 1, (1080, 720)),
    ('dark', 'dark', 1, (1080, 720)),
    ('light-200', 'light', 2, (1080, 720)),
    ('dark-200', 'dark', 2, (1080, 720)),
    ('small', 'light', 1, (900, 600)),
]


def draw_photos(folder: Path) -> None:
    """Photos for the gallery; among them upright ones, one that breaks off and one that is none."""
    folder.mkdir(parents=True, exist_ok=True)
    for number, picture in enumerate(pictures([(600, 400), (480, 640), (640, 360)] * 6)):
        picture.save(folder / f'{number:02}.jpg', quality=85)
    whole = (folder / '08.jpg').read_bytes()
    (folder / '08.jpg').write_bytes(whole[:len(whole) * 6 // 10])
    (folder / '05-broken.jpg').write_bytes(b'\xff\xd8\xff\xe0 no picture')


def take(showcase: Path, photos: Path, folder: Path, palette: str, scale: int,
         size: tuple[int, int]) -> None:
    folder.mkdir(parents=True, exist_ok=True)
    environment = {**os.environ, 'QT_QPA_PLATFORM': 'offscreen', 'QT_SCALE_FACTOR': str(scale)}
    subprocess.run([showcase, palette, photos, folder, *map(str, size)], env=environment,
                   check=True, timeout=120)


def take_sets(showcase: Path, folder: Path, only: str | None) -> None:
    photos = folder / 'photos'
    if not photos.exists():
        draw_photos(photos)
    for name, palette, scale, size in SETS:
        if only in (None, name):
            take(showcase, photos, folder / name, palette, scale, size)
            print(folder / name)


def renew_documents(showcase: Path) -> None:
    """Takes the pictures of the documents again; the name of a dark one ends in _dark."""
    with tempfile.TemporaryDirectory(prefix='norvo_screens_') as folder:
        for palette in ('light', 'dark'):
            take_sets(showcase, Path(folder), palette)
        for picture in sorted(DOCUMENTS.glob('*.png')):
            palette = 'dark' if picture.stem.endswith('_dark') else 'light'
            taken = Path(folder, palette, picture.stem.removesuffix('_dark') + '.png')
            Image.open(taken).convert('RGB').save(picture, optimize=True)
            print(picture)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument('--build', type=Path, default=ROOT / 'build' / 'release')
    parser.add_argument('--only', choices=[name for name, *_ in SETS])
    parser.add_argument('--documents', action='store_true')
    parser.add_argument('folder', type=Path, nargs='?')
    arguments = parser.parse_args()
    if arguments.documents == (arguments.folder is not None):
        parser.error('give a folder or --documents')
    showcase = arguments.build / 'bin' / 'window_showcase'
    if not showcase.exists():
        print(f'{showcase} is not there; build the target window_showcase')
        return 1
    if arguments.documents:
        renew_documents(showcase)
    else:
        take_sets(showcase, arguments.folder, arguments.only)
    return 0


if __name__ == '__main__':
    sys.exit(main())
