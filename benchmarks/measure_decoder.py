#!/usr/bin/python3
"""How many thumbnails a second the decoder pool makes, against the toolkit's reader in the same
process, in the same rounds. A ratio of 1.00 means that the other process costs nothing.

    cmake --build build/release --target decoder_benchmark norvo-decoder
    benchmarks/measure_decoder.py
"""
import argparse
import subprocess
import tempfile
from pathlib import Path

from PIL import Image

ROOT = Path(__file__).resolve().parent.parent
SIZES = {'12': (4000, 3000), '24': (6000, 4000)}
SMALLEST = {'1': (1200, 900)}


def photo(size: tuple[int, int]) -> Image.Image:
    """As much detail as a camera's picture: noise of several sizes over a gradient."""
    picture = Image.linear_gradient('L').resize(size).convert('RGB')
    for cells in (8, 64, 1):
        small = (size[0] // cells, size[1] // cells)
        noise = Image.effect_noise(small, 60).resize(size, Image.BICUBIC).convert('RGB')
        picture = Image.blend(picture, noise, 0.2)
    return picture


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('--rounds', type=int, default=7)
    parser.add_argument('--build', type=Path, default=ROOT / 'build/release')
    parser.add_argument('--smallest', action='store_true',
                        help='one size that shows that it runs; the figures mean nothing')
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix='norvo-measure-') as name:
        files = []
        for megapixels, size in (SMALLEST if arguments.smallest else SIZES).items():
            for progressive in (False, True):
                kind = 'progressive' if progressive else 'baseline'
                path = Path(name) / f'{megapixels}-megapixels-{kind}.jpg'
                photo(size).save(path, quality=90, progressive=progressive)
                files.append(str(path))
        binary = arguments.build / 'bin'
        print('Thumbnails of 100 pixels per second, medians, and the ratio of the pool')
        subprocess.run([binary / 'decoder_benchmark', binary / 'norvo-decoder',
                        str(arguments.rounds), *files], check=True)


if __name__ == '__main__':
    main()
