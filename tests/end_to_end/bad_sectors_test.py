#!/usr/bin/python3
"""A card with sectors that cannot be read gives back every picture that has none of them."""
import os
import random

import disks
from harness import SECTOR, Case, main
from pictures import make_pictures
from served_file import ServedFile

PAGE_SECTORS = 8


class BadSectors(Case):
    def setUp(self) -> None:
        super().setUp()
        self.image = self.folder / 'disk.img'
        # Behind the last picture there is room for what shifts.
        self.places = disks.raw_image(self.image, make_pictures(150, seed=5), size=24 << 20)

    def serve(self, bad: list[int]) -> ServedFile:
        return ServedFile(self, self.image, self.folder / 'mount', '--bad-sectors',
                          ','.join(map(str, bad)))

    def search_and_compare(self, bad: list[int]) -> None:
        served = self.serve(bad)
        run = self.search(served.path, '--no-thorough')
        self.assertEqual((run.status, run.outcome), (0, 'completed'), run.err)
        whole = [place for place in self.places if not place.touches(bad)]
        self.assertLess(len(whole), len(self.places), 'a picture is hit')
        self.assertGreater(len(whole), len(self.places) // 2)
        recovered = disks.Recovered(run.files)
        self.assertEqual(recovered.missing(whole), [])
        hit = [place for place in self.places if place.touches(bad)]
        self.assertEqual(len(recovered.missing(hit)), len(hit), 'what is lost is lost')

    def test_one_bad_sector_costs_the_picture_that_it_lies_in(self) -> None:
        place = self.places[70]
        self.search_and_compare([place.offset // SECTOR + 3])

    def test_a_bad_first_sector_costs_one_picture(self) -> None:
        self.search_and_compare([self.places[0].offset // SECTOR])

    def test_scattered_bad_sectors_and_runs_cost_only_the_pictures_they_lie_in(self) -> None:
        rng = random.Random(7)
        end = self.places[-1].end // SECTOR
        single = [rng.randrange(end) for _ in range(12)]
        start = self.places[100].offset // SECTOR
        self.search_and_compare(sorted({*single, *range(start + 5, start + 45)}))

    def test_the_neighbours_of_a_bad_sector_in_its_page_are_not_lost(self) -> None:
        """The served file itself behaves as a device does: reads through the cache lose a page."""
        bad = next(place.offset // SECTOR - 1 for place in self.places[40:]
                   if place.offset // SECTOR % PAGE_SECTORS > 1)
        served = self.serve([bad])
        descriptor = os.open(served.path, os.O_RDONLY)
        self.addCleanup(os.close, descriptor)
        with self.assertRaises(OSError):
            os.pread(descriptor, SECTOR, (bad + 1) * SECTOR)
        neighbour = next(place for place in self.places if place.offset // SECTOR == bad + 1)
        run = self.search(served.path, '--no-thorough')
        self.assertEqual(disks.Recovered(run.files).missing([neighbour]), [])

    def test_a_device_that_cannot_be_read_at_all_ends_completed(self) -> None:
        image = disks.empty_image(self.folder / 'dead.img', 64 * SECTOR)
        served = ServedFile(self, image, self.folder / 'dead', '--bad-sectors',
                            ','.join(map(str, range(64))))
        run = self.search(served.path)
        self.assertEqual((run.status, run.outcome), (0, 'completed'), run.err)
        self.assertEqual(run.files, [])


if __name__ == '__main__':
    main()
