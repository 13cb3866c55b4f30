"""Distinct pictures of many kinds and sizes from a real encoder, the same ones every time."""
import io
import random
from collections.abc import Callable, Iterator
from dataclasses import dataclass

from PIL import Image


@dataclass(frozen=True)
class Picture:
    """One picture file; `found_as` is the extension under which it must come back."""
    name: str
    found_as: str
    content: bytes


def draw(rng: random.Random, size: tuple[int, int], mode: str = 'RGB') -> Image.Image:
    """Soft colours with a little noise, so that every encoder has something to do."""
    cells = (max(2, size[0] // 24), max(2, size[1] // 24))
    soft = Image.frombytes('RGB', cells, rng.randbytes(cells[0] * cells[1] * 3))
    noise = Image.frombytes('RGB', (64, 64), rng.randbytes(64 * 64 * 3))
    picture = Image.blend(soft.resize(size, Image.BICUBIC), noise.resize(size, Image.BICUBIC), 0.2)
    return picture.convert(mode)


def encode(image: Image.Image, kind: str, **settings: object) -> bytes:
    content = io.BytesIO()
    image.save(content, kind, **settings)
    return content.getvalue()


def camera_notes(number: int) -> bytes:
    notes = Image.Exif()
    notes[0x010F] = 'Norvo'
    notes[0x0110] = f'Camera {number}'
    return notes.tobytes()


def with_exif_first(jpeg: bytes) -> bytes:
    """As cameras write it: the Exif part directly after the start, no JFIF part before it."""
    if jpeg[2:4] != b'\xff\xe0':
        return jpeg
    length = int.from_bytes(jpeg[4:6], 'big')
    return jpeg[:2] + jpeg[4 + length:]


def jpeg(rng: random.Random, number: int, size: tuple[int, int]) -> bytes:
    kind = number % 5
    if kind == 0:
        return encode(draw(rng, size), 'JPEG', quality=85)
    if kind == 1:
        return with_exif_first(encode(draw(rng, size), 'JPEG', quality=92,
                                      exif=camera_notes(number)))
    if kind == 2:
        return encode(draw(rng, size), 'JPEG', quality=75, progressive=True)
    if kind == 3:
        return encode(draw(rng, size, 'CMYK'), 'JPEG', quality=90)
    return encode(draw(rng, size, 'L'), 'JPEG', quality=80, optimize=True)


def png(rng: random.Random, number: int, size: tuple[int, int]) -> bytes:
    return encode(draw(rng, size, ('RGB', 'RGBA', 'L', 'P', '1')[number % 5]), 'PNG')


def gif(rng: random.Random, number: int, size: tuple[int, int]) -> bytes:
    first = draw(rng, size, 'P')
    if number % 3:
        return encode(first, 'GIF')
    return encode(first, 'GIF', save_all=True, append_images=[draw(rng, size, 'P')], duration=80)


def bmp(rng: random.Random, number: int, size: tuple[int, int]) -> bytes:
    return encode(draw(rng, size, ('RGB', 'L', '1', 'RGBA')[number % 4]), 'BMP')


def tiff(rng: random.Random, number: int, size: tuple[int, int]) -> bytes:
    if number % 4 == 3:
        return encode(draw(rng, size), 'TIFF', save_all=True, append_images=[draw(rng, size)])
    compression = ('raw', 'tiff_lzw', 'tiff_adobe_deflate')[number % 4]
    return encode(draw(rng, size), 'TIFF', compression=compression)


def webp(rng: random.Random, number: int, size: tuple[int, int]) -> bytes:
    kind = number % 4
    if kind == 0:
        return encode(draw(rng, size), 'WEBP', quality=80)
    if kind == 1:
        return encode(draw(rng, size), 'WEBP', lossless=True, method=0)
    if kind == 2:
        return encode(draw(rng, size), 'WEBP', quality=60, exif=camera_notes(number))
    return encode(draw(rng, size), 'WEBP', save_all=True, append_images=[draw(rng, size)])


Encoder = Callable[[random.Random, int, tuple[int, int]], bytes]
# Ending of the name, extension after the search, encoder, how many of every twenty.
KINDS: list[tuple[str, str, Encoder, int]] = [
    ('jpg', 'JPG', jpeg, 9), ('png', 'PNG', png, 3), ('gif', 'GIF', gif, 2),
    ('bmp', 'BMP', bmp, 2), ('tif', 'TIF', tiff, 2), ('webp', 'WEBP', webp, 2),
]


def make_pictures(count: int, seed: int = 1, largest: int = 360) -> Iterator[Picture]:
    """`count` pictures of up to `largest` points a side, their kinds mixed."""
    rng = random.Random(seed)
    kinds = [kind for kind in KINDS for _ in range(kind[3])]
    for number in range(count):
        if number % len(kinds) == 0:
            rng.shuffle(kinds)
        ending, found_as, encoder, _ = kinds[number % len(kinds)]
        size = (rng.randrange(40, largest), rng.randrange(40, largest))
        content = encoder(rng, number, size)
        yield Picture(f'P{seed}{number:04}.{ending}', found_as, content)


def make_jpegs(count: int, seed: int = 1, side: int = 200) -> list[Picture]:
    """`count` JPEG pictures of one size in points; their files differ in size a little."""
    rng = random.Random(seed)
    return [Picture(f'J{number:04}.jpg', 'JPG', jpeg(rng, 0, (side, side)))
            for number in range(count)]
