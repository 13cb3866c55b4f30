#!/usr/bin/python3
"""Makes the pictures that the decoder tests read, each with an encoder that is not ours.

    make_pictures.py FOLDER

All show the same four fields: red, green / blue, yellow. Formats without an encoder here are
written by hand and read back by an independent reader where there is one.
"""
import io
import shutil
import string
import struct
import subprocess
import sys
import zlib
from pathlib import Path

from PIL import Image, ImageChops

SIZE = (320, 200)
COLOURS = ((220, 30, 30), (30, 200, 40), (40, 60, 220), (230, 220, 40))
EXIF_ORIENTATION = 0x0112


def fields(size: tuple[int, int] = SIZE, mode: str = 'RGB') -> Image.Image:
    """Upper left red, upper right green, lower left blue, lower right yellow."""
    picture = Image.new('RGB', size)
    middle = (size[0] // 2, size[1] // 2)
    for i, colour in enumerate(COLOURS):
        left, top = (i % 2) * middle[0], (i // 2) * middle[1]
        picture.paste(colour, (left, top, size[0], size[1]))
        if i == 1:
            picture.paste(COLOURS[2], (0, middle[1], size[0], size[1]))
    return picture.convert(mode)


def noisy(size: tuple[int, int] = SIZE) -> Image.Image:
    """Fields with a fine pattern, so that compressed data is spread over the file."""
    picture = fields(size)
    noise = Image.effect_noise(size, 40).convert('RGB')
    return Image.blend(picture, noise, 0.25)


def jpeg_bytes(picture: Image.Image, **options: object) -> bytes:
    stream = io.BytesIO()
    picture.save(stream, 'JPEG', **options)
    return stream.getvalue()


def exif_block(orientation: int, thumbnail: bytes = b'') -> bytes:
    """A big-endian Exif block with an orientation and, in its second directory, a thumbnail."""
    first = struct.pack('>HHHIHHI', 1, EXIF_ORIENTATION, 3, 1, orientation, 0, 26 if thumbnail else 0)
    block = b'MM\0*' + struct.pack('>I', 8) + first
    if thumbnail:
        second = struct.pack('>H', 2) + struct.pack('>HHII', 0x0201, 4, 1, 56)
        second += struct.pack('>HHII', 0x0202, 4, 1, len(thumbnail)) + struct.pack('>I', 0)
        block += second + thumbnail
    return b'Exif\0\0' + block


def stored_for(orientation: int) -> Image.Image:
    """What a camera held this way stores of the upright fields."""
    turns = {2: Image.FLIP_LEFT_RIGHT, 3: Image.ROTATE_180, 4: Image.FLIP_TOP_BOTTOM,
             5: Image.TRANSPOSE, 6: Image.ROTATE_90, 7: Image.TRANSVERSE, 8: Image.ROTATE_270}
    upright = fields()
    return upright.transpose(turns[orientation]) if orientation in turns else upright


def write_jpegs(folder: Path) -> None:
    (folder / 'baseline.jpg').write_bytes(jpeg_bytes(fields(), quality=92))
    (folder / 'noisy.jpg').write_bytes(jpeg_bytes(noisy(), quality=92))
    (folder / 'progressive.jpg').write_bytes(jpeg_bytes(noisy(), quality=92, progressive=True))
    (folder / 'grey.jpg').write_bytes(jpeg_bytes(fields(mode='L'), quality=92))
    (folder / 'inks.jpg').write_bytes(jpeg_bytes(fields(mode='CMYK'), quality=92))
    (folder / 'tiny.jpg').write_bytes(jpeg_bytes(fields((3, 2)), quality=92, subsampling=0))
    for orientation in range(1, 9):
        (folder / f'orientation{orientation}.jpg').write_bytes(
            jpeg_bytes(stored_for(orientation), quality=92, exif=exif_block(orientation)))
    thumbnail = jpeg_bytes(fields((160, 100)), quality=92)
    (folder / 'thumbnail.jpg').write_bytes(
        jpeg_bytes(noisy((1600, 1000)), quality=92, exif=exif_block(1, thumbnail)))


def write_plain(folder: Path) -> None:
    fields().save(folder / 'rgb.png')
    fields(mode='P').save(folder / 'palette.png')
    fields(mode='I').point(lambda v: v * 257).convert('I;16').save(folder / 'grey16.png')
    noisy().save(folder / 'noisy.png')
    transparent = fields(mode='RGBA')
    transparent.putalpha(Image.new('L', SIZE, 128))
    transparent.save(folder / 'transparent.png')
    fields().save(folder / 'rgb.gif')
    fields().save(folder / 'rgb.bmp')
    fields().resize((128, 128)).save(folder / 'rgb.ico', sizes=[(16, 16), (128, 128)])
    fields().resize((128, 128)).save(folder / 'rgb.icns')
    fields().save(folder / 'rgb.ppm')
    fields(mode='L').save(folder / 'grey.pgm')
    fields(mode='1').save(folder / 'bits.pbm')
    # The encoder takes white for ink.
    ImageChops.invert(fields(mode='1')).save(folder / 'bits.xbm')
    write_xpm(folder / 'rgb.xpm', fields())
    write_mng(folder / 'rgb.mng', (folder / 'noisy.png').read_bytes())
    fields().save(folder / 'rgb.tga')
    fields().save(folder / 'plain.tif')
    noisy().save(folder / 'packed.tif', compression='tiff_lzw')
    stored_for(6).save(folder / 'turned.tif', tiffinfo={EXIF_ORIENTATION: 6})
    fields().save(folder / 'rgb.webp', quality=92)
    noisy().save(folder / 'lossless.webp', lossless=True)


def write_xpm(path: Path, picture: Image.Image) -> None:
    """A program's text with a table of its colours, two letters each."""
    colours = sorted({pixel for _, pixel in picture.getcolors(1 << 16)})
    letters = string.ascii_letters
    names = {colour: letters[i // len(letters)] + letters[i % len(letters)]
             for i, colour in enumerate(colours)}
    width, height = picture.size
    lines = [f'{width} {height} {len(colours)} 2']
    lines += ['%s c #%02X%02X%02X' % (names[colour], *colour) for colour in colours]
    lines += [''.join(names[picture.getpixel((x, y))] for x in range(width))
              for y in range(height)]
    path.write_text('/* XPM */\nstatic char *rgb[] = {\n' +
                    ',\n'.join(f'"{line}"' for line in lines) + '\n};\n')


def write_mng(path: Path, png: bytes) -> None:
    """One picture between the animation's own begin and end."""
    def chunk(kind: bytes, data: bytes = b'') -> bytes:
        return struct.pack('>I', len(data)) + kind + data + struct.pack('>I', zlib.crc32(kind + data))

    size = png[16:24]  # the width and height of IHDR
    header = chunk(b'MHDR', size + struct.pack('>IIIII', 1, 1, 1, 0, 1))
    path.write_bytes(b'\x8aMNG\r\n\x1a\n' + header + png[8:] + chunk(b'MEND'))


def write_modern(folder: Path) -> None:
    noisy().save(folder / 'rgb.jp2', irreversible=False)
    fields().save(folder / 'stream.j2k')
    source = folder / 'rgb.png'
    large = folder / 'large.png'
    noisy((1280, 800)).save(large)
    for name, options in (('rgb.heic', ['-q', '90', source]), ('rgb.avif', ['-A', '-q', '90', source]),
                          ('thumbnail.heic', ['-q', '60', '-t', '400', large])):
        run('heif-enc', *options, '-o', folder / name)
    run('cjxl', source, folder / 'rgb.jxl', '-d', '0', '-e', '3')
    run('cjxl', large, folder / 'large.jxl', '-d', '2', '-e', '3', '-p')
    large.unlink()


def run(*command: object) -> None:
    subprocess.run([str(word) for word in command], check=True, stdin=subprocess.DEVNULL,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=120)


def packed_row(row: bytes) -> bytes:
    """Runs as the layered format has them: 128 bytes at most."""
    out = bytearray()
    at = 0
    while at < len(row):
        length = 1
        while length < 128 and at + length < len(row) and row[at + length] == row[at]:
            length += 1
        if length > 1:
            out += bytes((257 - length, row[at]))
        else:
            out += bytes((0, row[at]))
        at += length
    return bytes(out)


def layered(picture: Image.Image, mode: int, runs: bool, large: bool, thumbnail: bytes = b'') -> bytes:
    """A PSD (or, if `large`, PSB) file without layers."""
    planes = picture.split()
    head = b'8BPS' + struct.pack('>H6xHIIHH', 2 if large else 1, len(planes), picture.height,
                                 picture.width, 8, mode)
    resources = b''
    if thumbnail:
        data = struct.pack('>IIIIIIHH', 1, 160, 100, 480, 48000, len(thumbnail), 24, 1) + thumbnail
        resources = b'8BIM' + struct.pack('>HHI', 1036, 0, len(data)) + data + b'\0' * (len(data) % 2)
    sections = struct.pack('>I', 0) + struct.pack('>I', len(resources)) + resources
    sections += struct.pack('>Q' if large else '>I', 0)
    rows = [plane.tobytes()[y * picture.width:(y + 1) * picture.width]
            for plane in planes for y in range(picture.height)]
    if runs:
        packed = [packed_row(row) for row in rows]
        lengths = b''.join(struct.pack('>I' if large else '>H', len(row)) for row in packed)
        return head + sections + struct.pack('>H', 1) + lengths + b''.join(packed)
    return head + sections + struct.pack('>H', 0) + b''.join(rows)


def write_layered(folder: Path) -> None:
    inks = fields(mode='CMYK')
    # The format stores what the inks leave of the light.
    light = Image.merge('CMYK', [plane.point(lambda v: 255 - v) for plane in inks.split()])
    thumbnail = jpeg_bytes(fields((160, 100)), quality=92)
    for name, content in (('plain.psd', layered(fields(), 3, False, False)),
                          ('runs.psd', layered(fields(), 3, True, False)),
                          ('grey.psd', layered(fields(mode='L'), 1, True, False)),
                          ('inks.psd', layered(light, 4, True, False)),
                          ('thumbnail.psd', layered(noisy(), 3, False, False, thumbnail)),
                          ('large.psb', layered(fields(), 3, True, True))):
        (folder / name).write_bytes(content)
    for name in ('plain.psd', 'runs.psd'):
        if Image.open(folder / name).convert('RGB').tobytes() != fields().tobytes():
            raise SystemExit(f'{name} is read differently by another reader')


def entry(tag: int, kind: int, *values: int) -> tuple[int, int, tuple[int, ...]]:
    return tag, kind, values


def raw_file(orientation: int) -> bytes:
    """A camera raw file (DNG) with a JPEG preview and an uncompressed sensor picture."""
    preview = jpeg_bytes(stored_for(orientation), quality=92)
    width, height = 640, 400
    sensor = bytes(range(256)) * (width * height * 2 // 256)
    size_of = {1: 1, 2: 1, 3: 2, 4: 4}
    pack = {1: 'B', 2: 'B', 3: 'H', 4: 'I'}

    def directory(at: int, entries: list[tuple[int, int, tuple[int, ...]]]) -> bytes:
        table, extra = b'', b''
        extra_at = at + 2 + 12 * len(entries) + 4
        for tag, kind, values in sorted(entries):
            data = struct.pack(f'<{len(values)}{pack[kind]}', *values)
            if len(data) > 4:
                place = extra_at + len(extra)
                extra += data + b'\0' * (len(data) % 2)
                data = struct.pack('<I', place)
            table += struct.pack('<HHI', tag, kind, len(values)) + data.ljust(4, b'\0')
        return struct.pack('<H', len(entries)) + table + struct.pack('<I', 0) + extra

    sub_at, preview_at = 512, 1024
    sensor_at = preview_at + len(preview) + len(preview) % 2
    main = directory(8, [
        entry(0xFE, 4, 1), entry(0x100, 4, SIZE[0]), entry(0x101, 4, SIZE[1]),
        entry(0x102, 3, 8, 8, 8), entry(0x103, 3, 7), entry(0x106, 3, 6),
        entry(0x10F, 2, *b'Maker\0'), entry(0x110, 2, *b'Model\0'),
        entry(0x111, 4, preview_at), entry(0x112, 3, orientation), entry(0x115, 3, 3),
        entry(0x116, 4, SIZE[1]), entry(0x117, 4, len(preview)), entry(0x11C, 3, 1),
        entry(0x14A, 4, sub_at), entry(0xC612, 1, 1, 4, 0, 0), entry(0xC613, 1, 1, 1, 0, 0),
        entry(0xC614, 2, *b'Maker Model\0')])
    sub = directory(sub_at, [
        entry(0xFE, 4, 0), entry(0x100, 4, width), entry(0x101, 4, height), entry(0x102, 3, 16),
        entry(0x103, 3, 1), entry(0x106, 3, 32803), entry(0x111, 4, sensor_at), entry(0x115, 3, 1),
        entry(0x116, 4, height), entry(0x117, 4, len(sensor)), entry(0x11C, 3, 1),
        entry(0x828D, 3, 2, 2), entry(0x828E, 1, 0, 1, 1, 2)])
    content = b'II*\0' + struct.pack('<I', 8) + main
    content = content.ljust(sub_at, b'\0') + sub
    return (content.ljust(preview_at, b'\0') + preview).ljust(sensor_at, b'\0') + sensor


def main() -> None:
    folder = Path(sys.argv[1])
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    write_jpegs(folder)
    write_plain(folder)
    write_modern(folder)
    write_layered(folder)
    for orientation in (1, 6):
        (folder / f'orientation{orientation}.dng').write_bytes(raw_file(orientation))
    print(f'{sum(1 for _ in folder.iterdir())} pictures in {folder}')


if __name__ == '__main__':
    main()
