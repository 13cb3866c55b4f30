#!/usr/bin/python3
"""Draws the pictures of docs/architecture.md: the floors, and the road of a sector.

    draw_architecture.py [--dark] FOLDER     writes floors.svg and road.svg there

The floors are those that tools/check_house.py holds. The pictures follow the reader's light or dark
screen by themselves; --dark draws them dark for good, to look at them.
"""
import argparse
import sys
from dataclasses import dataclass
from pathlib import Path
from xml.sax.saxutils import escape

from check_house import MAY_INCLUDE

ROOMS = {
    'platform': 'systems and programs: qt, terminal, decoder, player, linux, macos',
    'app': 'entry point, edition, the controller that joins the rooms',
    'wizard': 'checks and texts of the window',
    'engine': 'the search itself',
    'storage': 'drive list, right to read',
    'results': 'lists of what was found',
    'sigdb': 'signature files, tables',
    'util': 'texts, numbers, files, alerts, running other programs',
}
LIGHT = {'paper': '#ffffff', 'ink': '#1d2125', 'quiet': '#5c6166', 'edge': '#aab2b5',
         'box': '#f3f6f6', 'accent': '#0b6b74', 'tint': '#dceaeb'}
DARK = {'paper': '#1c1f22', 'ink': '#e8eaec', 'quiet': '#a5abb0', 'edge': '#5b6369',
        'box': '#282c30', 'accent': '#5cc3cc', 'tint': '#1f3b3e'}
TITLE, TEXT = 15, 12


def rules(colours: dict[str, str]) -> str:
    c = colours
    return (f'.paper{{fill:{c["paper"]}}}.box{{fill:{c["box"]};stroke:{c["edge"]}}}'
            f'.wall{{fill:none;stroke:{c["accent"]};stroke-width:1.5;stroke-dasharray:6 4}}'
            f'.data{{fill:{c["tint"]};stroke:{c["accent"]}}}.title{{fill:{c["ink"]};font-weight:600}}'
            f'.text{{fill:{c["quiet"]}}}.arrow{{stroke:{c["accent"]};stroke-width:1.8;fill:none}}'
            f'.head{{fill:{c["accent"]}}}')


class Drawing:
    def __init__(self, width: int, height: int, label: str) -> None:
        self.width, self.height, self.label = width, height, label
        self.parts: list[str] = []

    def write(self, x: float, y: float, text: str, kind: str = 'text', anchor: str = 'start') -> None:
        size = TITLE if kind == 'title' else TEXT
        self.parts.append(f'<text class="{kind}" x="{x:g}" y="{y:g}" font-size="{size}" '
                          f'text-anchor="{anchor}">{escape(text)}</text>')

    def box(self, x: float, y: float, width: float, height: float, kind: str = 'box') -> None:
        self.parts.append(f'<rect class="{kind}" x="{x:g}" y="{y:g}" width="{width:g}" '
                          f'height="{height:g}" rx="7"/>')

    def card(self, x: float, y: float, width: float, title: str, *lines: str,
             kind: str = 'box') -> None:
        self.box(x, y, width, 30 + 17 * len(lines), kind)
        self.write(x + 12, y + 21, title, 'title')
        for number, line in enumerate(lines, start=1):
            self.write(x + 12, y + 21 + 17 * number, line)

    def arrow(self, *points: tuple[float, float]) -> None:
        path = 'M' + ' L'.join(f'{x:g} {y:g}' for x, y in points)
        self.parts.append(f'<path class="arrow" d="{path}" marker-end="url(#head)"/>')

    def svg(self, dark: bool) -> str:
        style = rules(DARK if dark else LIGHT)
        if not dark:
            style += f'@media (prefers-color-scheme:dark){{{rules(DARK)}}}'
        return '\n'.join([
            f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {self.width} {self.height}" '
            f'width="{self.width}" height="{self.height}" role="img" '
            f'font-family="system-ui, \'DejaVu Sans\', sans-serif">',
            f'<title>{escape(self.label)}</title>', f'<style>{style}</style>',
            '<defs><marker id="head" viewBox="0 0 10 10" refX="9" refY="5" markerWidth="7" '
            'markerHeight="7" orient="auto"><path class="head" d="M0 0 L10 5 L0 10 z"/></marker>'
            '</defs>',
            f'<rect class="paper" width="{self.width}" height="{self.height}" rx="10"/>',
            *self.parts, '</svg>', ''])


def floor_of(room: str) -> int:
    return 1 + max((floor_of(below) for below in MAY_INCLUDE[room]), default=0)


def floors() -> Drawing:
    width, left, height, gap = 860, 70, 62, 14
    count = max(map(floor_of, MAY_INCLUDE))
    drawing = Drawing(width, 50 + count * (height + gap), 'The floors of the source tree')
    drawing.write(20, 28, 'Floor', 'text')
    drawing.write(left, 28, 'What a room includes lies below it, or in the same room.')
    for floor in range(count, 0, -1):
        rooms = [room for room in ROOMS if floor_of(room) == floor]
        top = 42 + (count - floor) * (height + gap)
        drawing.write(36, top + height / 2 + 5, str(floor), 'title', 'middle')
        room_width = (width - left - 20 - gap * (len(rooms) - 1)) / len(rooms)
        for number, room in enumerate(rooms):
            x = left + number * (room_width + gap)
            drawing.box(x, top, room_width, height, 'data' if room == 'engine' else 'box')
            drawing.write(x + 12, top + 25, f'{room}/', 'title')
            drawing.write(x + 12, top + 46, ROOMS[room])
    return drawing


@dataclass(frozen=True)
class Step:
    title: str
    lines: tuple[str, ...]


ROAD = [
    Step('BlockPipeline', ('512 sectors at a time, two threads,', 'a mark on each that may matter')),
    Step('SectorReader', ('blocks in order; sector by sector', 'where the device is in trouble')),
    Step('ScanPass, HeaderMatcher', ('marked sectors against the table,', 'in its order')),
    Step('PhotoScan or RawFileScan', ('what begins, goes on, ends',)),
    Step('RecoveredFile, OutputTree', ('one write per block, below the', 'destination, through no link')),
    Step('ScanResults, ScanOperations', ('each finished file, before the next', 'sector; what is shown of it')),
]


def road() -> Drawing:
    """The program in the middle; the device and what is saved on its left, decoding on its right."""
    left, middle, right, side = 20, 362, 790, 232
    width, wall, elbow = 284, 344, 300
    drawing = Drawing(1042, 572, 'The processes, and the road of a sector through them')
    drawing.box(wall, 20, width + 36, 532, 'wall')
    drawing.write(middle, 46, 'Window, with the person\'s rights', 'title')
    drawing.write(middle, 65, 'or norvo-recover, in a terminal')
    top = 80
    middles = []
    for number, step in enumerate(ROAD):
        drawing.card(middle, top, width, step.title, *step.lines)
        height = 30 + 17 * len(step.lines)
        middles.append(top + height / 2)
        if number + 1 < len(ROAD):
            drawing.arrow((middle + width / 2, top + height), (middle + width / 2, top + height + 18))
        top += height + 18
    first, saving, showing = middles[0], middles[-2], middles[-1]

    drawing.card(left, 24, side, 'The searched device', 'opened for reading only', kind='data')
    drawing.arrow((left + side, 47), (elbow, 47), (elbow, first - 12), (middle, first - 12))
    drawing.write(left + side + 5, 40, 'sectors')
    drawing.card(left, 136, side, 'Device opener', 'the user nobody, with one right:',
                 'to open devices for reading')
    drawing.arrow((left + side / 2, 136), (left + side / 2, 71))
    drawing.arrow((left + side, 168), (elbow, 168), (elbow, first + 12), (middle, first + 12))
    drawing.write(left + side + 5, 185, 'a descriptor')

    drawing.card(left, saving - 24, side, 'The destination', 'files of the person', kind='data')
    drawing.arrow((middle, saving), (left + side, saving))
    drawing.card(right, showing - 98, side, 'norvo-decoder, several', 'pictures; can compute and',
                 'allocate, and nothing else')
    drawing.card(right, showing - 16, side, 'norvo-player', 'a fresh one for each movie; reads', 'that '
                 'and the system\'s libraries')
    bend = right - 22
    drawing.arrow((middle + width, showing), (bend, showing), (bend, showing - 66),
                  (right, showing - 66))
    drawing.arrow((bend, showing), (bend, showing + 16), (right, showing + 16))
    beside = wall + width + 36 + 6
    drawing.write(beside, showing - 7, 'a descriptor in,')
    drawing.write(beside, showing + 16, 'pixels out')
    return drawing


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument('--dark', action='store_true')
    parser.add_argument('folder', type=Path)
    arguments = parser.parse_args()
    arguments.folder.mkdir(parents=True, exist_ok=True)
    for name, drawing in (('floors', floors()), ('road', road())):
        (arguments.folder / f'{name}.svg').write_text(drawing.svg(arguments.dark), 'utf-8')
    return 0


if __name__ == '__main__':
    sys.exit(main())
