"""Videos and sounds from a real encoder, and camera raw files from their formats' openings.

No encoder writes camera raw files; theirs are the opening bytes that the formats prescribe, with
noise behind them, as the sensor data of a raw file nearly is.
"""
import random
import subprocess
import tempfile
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path

from harness import SECTOR
from pictures import Picture

PICTURE_SIZE = '160x120'


@dataclass(frozen=True)
class Kind:
    """How the encoder is asked for a file, and the extension under which it comes back."""
    ending: str
    found_as: str
    options: str


H264 = '-c:v libx264 -preset ultrafast -pix_fmt yuv420p -c:a aac'
VIDEOS = (
    Kind('mp4', 'MP4', H264),
    Kind('mov', 'MOV', H264),
    Kind('3gp', '3GP', '-c:v mpeg4 -c:a aac -ar 16000'),
    Kind('avi', 'AVI', '-c:v mpeg4 -c:a libmp3lame'),
    Kind('mkv', 'MKV', H264),
    Kind('webm', 'WEBM', '-c:v libvpx -deadline realtime -cpu-used 8 -c:a libvorbis'),
    Kind('mpg', 'MPG', '-c:v mpeg2video -c:a mp2 -r 25'),
    Kind('ts', 'TS', H264),
    Kind('wmv', 'WMV', '-c:v wmv2 -c:a wmav2'),
    Kind('flv', 'FLV', '-c:v flv1 -c:a libmp3lame -ar 22050'),
)
SOUNDS = (
    Kind('mp3', 'MP3', '-c:a libmp3lame'),
    Kind('wav', 'WAV', '-c:a pcm_s16le'),
    Kind('flac', 'FLAC', '-c:a flac'),
    Kind('ogg', 'OGG', '-c:a libvorbis'),
    Kind('opus', 'OPUS', '-c:a libopus'),
    Kind('m4a', 'M4A', '-c:a aac'),
    Kind('aiff', 'AIF', '-c:a pcm_s16be'),
    Kind('wma', 'WMA', '-c:a wmav2'),
    Kind('au', 'AU', '-c:a pcm_s16be'),
)
RAW_OPENINGS = {
    'CR2': b'II*\0\x10\0\0\0CR\x02\0',
    'CRW': b'II\x1a\0\0\0HEAPCCDR\x02\0\x01\0',
    'CR3': b'\0\0\0\x18ftypcrx \0\0\0\x01crx isom',
    'RAF': b'FUJIFILMCCD-RAW 0201FF393101',
    'ORF': b'IIRO\x08\0\0\0',
    'RW2': b'IIU\0\x18\0\0\0\x88\xe7\x74\xd8',
    'X3F': b'FOVb\0\0\x02\0',
    'MRW': b'\0MRM\0\0\x88\x64\0PRD',
}


def encode(kind: Kind, number: int, with_picture: bool, folder: Path) -> Picture:
    seconds = 0.6 + number % 5 * 0.4
    name = f'{kind.ending}{number:05}.{kind.ending}'
    picture = ['-f', 'lavfi', '-i', f'testsrc2=size={PICTURE_SIZE}:rate=25,hue=h={number * 31}']
    sound = ['-f', 'lavfi', '-i', f'sine=frequency={300 + 37 * number}:sample_rate=44100']
    inputs = [*picture, *sound] if with_picture else sound
    # A length of zero comments differs from program to program; a title makes every file its own.
    command = ['ffmpeg', '-nostdin', '-v', 'error', '-threads', '1', *inputs, '-t', str(seconds),
               '-metadata', f'title=take {number}', *kind.options.split(), str(folder / name)]
    subprocess.run(command, check=True, capture_output=True, timeout=120)
    content = (folder / name).read_bytes()
    assert len(content) >= SECTOR, f'{name} fills a sector'
    return Picture(name, kind.found_as, content)


def make_media(kinds: tuple[Kind, ...], each: int, with_picture: bool) -> list[Picture]:
    """`each` files of every kind, in mixed order."""
    wanted = [(kind, number) for number in range(each) for kind in kinds]
    with tempfile.TemporaryDirectory(prefix='norvo_media_') as folder:
        with ThreadPoolExecutor(max_workers=2) as pool:
            return list(pool.map(lambda one: encode(*one, with_picture, Path(folder)), wanted))


def make_raw_files(each: int) -> list[Picture]:
    noise = random.Random(7)
    return [Picture(f'{ending}{number:05}.{ending}', ending,
                    opening + noise.randbytes(noise.randint(20_000, 400_000)))
            for number in range(each) for ending, opening in RAW_OPENINGS.items()]
