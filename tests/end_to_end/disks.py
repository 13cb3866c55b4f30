"""Disk images with pictures in them, and what must come back from them."""
import re
from collections import defaultdict
from collections.abc import Iterable
from dataclasses import dataclass
from pathlib import Path

from harness import SECTOR, call
from pictures import Picture

MIB = 1 << 20


@dataclass(frozen=True)
class Place:
    """Where a picture lies in one piece in an image, from `offset` on."""
    picture: Picture
    offset: int

    @property
    def end(self) -> int:
        return self.offset + len(self.picture.content)

    def touches(self, sectors: Iterable[int]) -> bool:
        return any(self.offset // SECTOR <= sector <= (self.end - 1) // SECTOR
                   for sector in sectors)


def write_files(folder: Path, pictures: Iterable[Picture]) -> list[Path]:
    folder.mkdir(parents=True, exist_ok=True)
    paths = []
    for picture in pictures:
        path = folder / picture.name
        path.write_bytes(picture.content)
        paths.append(path)
    return paths


def empty_image(path: Path, size: int) -> Path:
    with open(path, 'wb') as file:
        file.truncate(size)
    return path


def format_fat(image: Path, sectors_per_cluster: int = 1) -> None:
    call('mkfs.fat', '-F', '32', '-s', sectors_per_cluster, '-n', 'CARD', image)


def copy_to_fat(image: Path, files: list[Path], folder: str = '') -> None:
    call('mcopy', '-i', image, *files, f'::{folder}')


def delete_from_fat(image: Path, names: list[str]) -> None:
    call('mdel', '-i', image, *[f'::{name}' for name in names])


def free_on_fat(image: Path) -> int:
    """Bytes, as the tools count them."""
    match = re.search(r'([\d ]+) bytes free', call('mdir', '-i', image))
    assert match, 'mdir says how much is free'
    return int(match.group(1).replace(' ', ''))


def raw_image(path: Path, pictures: Iterable[Picture], size: int = 0) -> list[Place]:
    """An image without a file system: the pictures one after the other, each on a new sector."""
    places = []
    with open(path, 'wb') as file:
        for picture in pictures:
            places.append(Place(picture, file.tell()))
            file.write(picture.content)
            file.write(bytes(-file.tell() % SECTOR))
        file.truncate(max(size, file.tell()))
    return places


def find_places(image: Path, pictures: Iterable[Picture]) -> list[Place]:
    """The pictures that lie in the image in one piece and on a sector, found by their bytes."""
    content = image.read_bytes()
    by_sector = defaultdict(list)
    empty = bytes(SECTOR)
    for offset in range(0, len(content), SECTOR):
        sector = content[offset:offset + SECTOR]
        if sector != empty:
            by_sector[sector].append(offset)
    places = []
    for picture in pictures:
        assert len(picture.content) >= SECTOR, 'the smallest pictures fill a sector'
        for offset in by_sector[picture.content[:SECTOR]]:
            if content.startswith(picture.content, offset):
                places.append(Place(picture, offset))
                break
    return places


class Recovered:
    """Recovered files, looked up by extension and beginning."""

    def __init__(self, files: Iterable[Path]) -> None:
        self.by_start: dict[tuple[str, bytes], list[Path]] = defaultdict(list)
        for path in files:
            with open(path, 'rb') as file:
                self.by_start[path.suffix, file.read(SECTOR)].append(path)

    def find(self, picture: Picture) -> Path | None:
        """A file of the right type that begins with the whole picture."""
        content = picture.content
        for path in self.by_start.get((f'.{picture.found_as}', content[:SECTOR]), []):
            with open(path, 'rb') as file:
                if file.read(len(content)) == content:
                    return path
        return None

    def missing(self, places: Iterable[Place]) -> list[str]:
        return [f'{place.picture.name} at sector {place.offset // SECTOR}'
                for place in places if self.find(place.picture) is None]


def differing_files(first: Path, second: Path) -> list[str]:
    """The relative names that two trees do not share, or whose contents differ."""
    names = {path.relative_to(root) for root in (first, second)
             for path in root.rglob('*') if path.is_file()}
    return sorted(str(name) for name in names
                  if not (first / name).is_file() or not (second / name).is_file()
                  or (first / name).read_bytes() != (second / name).read_bytes())


