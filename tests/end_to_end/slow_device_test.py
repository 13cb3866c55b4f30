#!/usr/bin/python3
"""Searching a slow device takes no longer than reading it."""
import itertools
import statistics
import subprocess
import time
from collections.abc import Callable
from pathlib import Path

import disks
from disks import MIB
from harness import Case, main
from pictures import make_jpegs
from served_file import ServedFile

BYTES_PER_SECOND = 100_000_000
ROUNDS = 3
# A sanity check, so that a busy machine does not fail it; the benchmarks measure.
MOST_TIMES_AS_LONG = 1.25
ATTEMPTS = 3


def median_time(work: Callable[[], object]) -> float:
    times = []
    for _ in range(ROUNDS):
        start = time.monotonic()
        work()
        times.append(time.monotonic() - start)
    return statistics.median(times)


class SlowDevice(Case):
    def test_the_search_takes_as_long_as_reading(self) -> None:
        image = self.folder / 'disk.img'
        places = disks.raw_image(image, make_jpegs(60, side=900), size=48 * MIB)
        served = ServedFile(self, image, self.folder / 'mount', '--bytes-per-second',
                            str(BYTES_PER_SECOND))

        def read() -> None:
            subprocess.run(['cat', served.path], stdout=subprocess.DEVNULL, check=True)

        # As people do, into a new folder: emptying the files of the last search takes its time.
        destinations = (self.destination / str(number) for number in itertools.count())

        def search() -> Path:
            destination = next(destinations)
            subprocess.run(self.command('--device', served.path, '--destination', destination,
                                        '--no-thorough', '--quiet'),
                           stdout=subprocess.DEVNULL, check=True)
            return destination

        self.assertEqual(disks.Recovered(search().rglob('*.JPG')).missing(places), [])
        for _ in range(ATTEMPTS):
            reading, searching = median_time(read), median_time(search)
            print(f'reading {reading:.2f} s, searching {searching:.2f} s', flush=True)
            self.assertGreater(reading, 48 * MIB / BYTES_PER_SECOND * 0.9, 'the device is slow')
            if searching <= reading * MOST_TIMES_AS_LONG:
                return
        self.fail(f'searching takes {searching / reading:.2f} times as long as reading')


if __name__ == '__main__':
    main()
