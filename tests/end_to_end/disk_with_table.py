"""Disks with a partition table, as they are sold: one partition that fills them."""
import struct
from pathlib import Path

from disks import MIB
from harness import SECTOR

FIRST_SECTOR = MIB // SECTOR
FAT32 = 0x0C
# Cylinder, head and sector of places that cannot be told in them.
FAR_AWAY = b'\xfe\xff\xff'
TABLE_AT = 446


def partition_table(sectors: int) -> bytes:
    entry = struct.pack('<B3sB3sII', 0, FAR_AWAY, FAT32, FAR_AWAY, FIRST_SECTOR, sectors)
    return bytes(TABLE_AT) + entry.ljust(64, b'\0') + b'\x55\xaa'


def disk_of(partition: Path, disk: Path) -> Path:
    """A disk with the image `partition` as its first partition."""
    content = partition.read_bytes()
    assert len(content) % SECTOR == 0
    with open(disk, 'wb') as file:
        file.write(partition_table(len(content) // SECTOR))
        file.seek(FIRST_SECTOR * SECTOR)
        file.write(content)
    return disk
