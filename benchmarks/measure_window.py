#!/usr/bin/python3
"""What the open window, and the pictures in it, cost a search: the same photo search in the
terminal, in the window, and in a window that has no decoder.

    measure_window.py [--build BUILD] [--rounds N] [--photos N] [--empty GIB] [--folder FOLDER]

Needs the targets norvo-recover and norvo_bundles, Xvfb, openbox and xdotool. Every round does each
search once. docs/speed.md says what the figures mean.

A search lasts from the first opening of the card for it to the last closing, both passes included.
Starting the program, the clicks before and the notice after the search are not in it. Fewer than 2000 photos are
on the card, as a search in the window pauses after the 2000th.
"""
import argparse
import os
import shutil
import statistics
import subprocess
import sys
import time
from collections.abc import Callable
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path[:0] = [str(ROOT / 'tests/end_to_end'), str(ROOT / 'tools')]
from desktop import Desktop  # noqa: E402
from sample_pictures import pictures  # noqa: E402
from search_watch import SearchWatch, wait_for_idle_processors  # noqa: E402

TITLE = 'Norvo Recovery for All Media'
EDITION = 'Norvo Spruce'
SECTOR = 512
BETWEEN = 512 << 10  # bytes of other data behind each photo
MOST_PHOTOS = 1999

Kind = tuple[Callable[[Path, Path, Path], SearchWatch], Path]


def make_card(path: Path, photos: int, empty: int) -> None:
    """Photos with data between them that begins no file, and a large empty rest, which is not
    stored."""
    files = []
    sizes = [(1600, 1200), (1200, 1600)] * 8
    for number, picture in enumerate(pictures(sizes[:photos])):
        name = path.with_name(f'{number}.jpg')
        picture.save(name, quality=88)
        files.append(name.read_bytes())
        name.unlink()
    with path.open('wb') as card:
        for number in range(photos):
            photo = files[number % len(files)]
            card.write(photo + bytes(-len(photo) % SECTOR))
            card.write(os.urandom(BETWEEN // 64).replace(b'\xff', b'\x01') * 64)
        card.truncate(card.tell() + empty)


def in_terminal(program: Path, card: Path, destination: Path) -> SearchWatch:
    with SearchWatch(card) as watch:
        watch.begin()
        # As the window does: the kernel may share the processors out by session.
        search = subprocess.Popen([program, '--device', card, '--destination', destination,
                                   '--quiet'], stdout=subprocess.DEVNULL, start_new_session=True)
        watch.count('program', search.pid)
        if search.wait() != 0:
            raise AssertionError('the search failed')
        watch.wait_for_end()
    return watch


def in_window(bundle: Path, card: Path, destination: Path) -> SearchWatch:
    destination.mkdir()
    with Desktop() as desktop, SearchWatch(card) as watch:
        window = desktop.start(bundle / f'Contents/MacOS/{EDITION}', 'a', 'b', 'c', card)
        watch.count('program', window.pid)
        watch.count('screen', desktop.processes[0].pid)
        desktop.wait_for_window(TITLE)
        desktop.key('alt+n')
        desktop.wait_for_window(f'{TITLE} - Photo Search')
        desktop.key('alt+f')
        desktop.type(str(destination))
        watch.begin()
        desktop.tool('key', 'alt+n')
        # Nothing looks at the screen during the search: that would take a processor from it.
        watch.wait_for_end()
        desktop.wait_for_window('The search has ended')
    return watch


def without_decoder(bundle: Path, folder: Path) -> Path:
    """A copy of the bundle that cannot make pictures, so that its window shows the stand-ins."""
    copy = folder / 'without-decoder' / bundle.name
    shutil.copytree(bundle, copy)
    (copy / 'Contents/MacOS/norvo-decoder').unlink()
    return copy


def measured_round(kinds: dict[str, Kind], card: Path, photos: int, share: float,
                   end: float) -> dict[str, SearchWatch]:
    measured = {}
    for name, (search, program) in kinds.items():
        wait_for_idle_processors(share, end)
        destination = card.with_name('found')
        measured[name] = search(program, card, destination)
        found = sum(path.is_file() for path in destination.rglob('*'))
        if found != photos:
            raise AssertionError(f'{name}: found {found} of {photos} photos')
        shutil.rmtree(destination)
    return measured


def report(rounds: list[dict[str, SearchWatch]]) -> None:
    for name in rounds[0]:
        watches = [one[name] for one in rounds]
        ratios = [one[name].seconds() / one['terminal'].seconds() for one in rounds]
        median = statistics.median(watch.seconds() for watch in watches)
        print(f'{name:24} {median:6.2f} s   to terminal '
              f'{statistics.median(ratios):.2f}  ({", ".join(f"{one:.2f}" for one in ratios)})')
        for part in watches[0].processors():
            used = statistics.median(watch.processors()[part] for watch in watches)
            print(f'    processors, {part:12} {used:6.2f} s')


def main() -> None:
    options = argparse.ArgumentParser(description=(__doc__ or '').split('\n', maxsplit=1)[0])
    options.add_argument('--build', type=Path, default=ROOT / 'build/release')
    options.add_argument('--rounds', type=int, default=5)
    options.add_argument('--photos', type=int, default=1999)
    options.add_argument('--empty', type=int, default=24, help='GiB of zeros behind the photos')
    options.add_argument('--others', type=int, default=10, metavar='PERCENT',
                         help='of the processors, that a round may lose to other programs')
    options.add_argument('--minutes', type=float, default=10, help='after which no round begins')
    options.add_argument('--folder', type=Path, default=Path('/dev/shm/norvo-measure-window'))
    chosen = options.parse_args()
    if not 0 < chosen.photos <= MOST_PHOTOS:
        options.error(f'from 1 to {MOST_PHOTOS} photos')
    bundle = chosen.build / 'bundles' / f'{EDITION}.app'
    shutil.rmtree(chosen.folder, ignore_errors=True)
    chosen.folder.mkdir(parents=True)
    try:
        card = chosen.folder / 'card.img'
        make_card(card, chosen.photos, chosen.empty << 30)
        kinds: dict[str, Kind] = {
            'terminal': (in_terminal, chosen.build / 'bin/norvo-recover'),
            'window': (in_window, bundle),
            'window without decoder': (in_window, without_decoder(bundle, chosen.folder))}
        quiet: list[dict[str, SearchWatch]] = []
        end = time.monotonic() + chosen.minutes * 60
        while len(quiet) < chosen.rounds and time.monotonic() < end:
            one = measured_round(kinds, card, chosen.photos, chosen.others / 100, end)
            others = max(watch.others() for watch in one.values())
            kept = others * 100 <= chosen.others
            print(f'others had up to {others:4.0%}, load {os.getloadavg()[0]:4.1f}: '
                  f'{"kept" if kept else "dropped"}', flush=True)
            if kept:
                quiet.append(one)
        if not quiet:
            sys.exit('no round was quiet enough')
        report(quiet)
    finally:
        shutil.rmtree(chosen.folder)


if __name__ == '__main__':
    main()
