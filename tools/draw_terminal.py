#!/usr/bin/env python3
"""Draws what a program printed as a picture of a terminal: text on standard input, SVG on
standard output. The picture in the README is made with it."""

import html
import sys

CHARACTER_WIDTH = 8.4
LINE_HEIGHT = 20
MARGIN = 20
BAR = 32


def main() -> None:
    lines = sys.stdin.read().rstrip("\n").split("\n")
    width = int(max(map(len, lines)) * CHARACTER_WIDTH) + 2 * MARGIN
    height = len(lines) * LINE_HEIGHT + 2 * MARGIN + BAR
    print(f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
          f'viewBox="0 0 {width} {height}">')
    print(f'<rect width="{width}" height="{height}" rx="10" fill="#1d2330"/>')
    for i, colour in enumerate(("#e0645c", "#e3b341", "#57ab5a")):
        print(f'<circle cx="{MARGIN + 4 + i * 20}" cy="{BAR // 2 + 4}" r="6" fill="{colour}"/>')
    print('<g font-family="DejaVu Sans Mono, Menlo, Consolas, monospace" font-size="14" '
          'fill="#dfe4ee" xml:space="preserve">')
    for i, line in enumerate(lines):
        y = BAR + MARGIN + i * LINE_HEIGHT + 8
        fill = ' fill="#8bc6ff"' if line.startswith("$") else ""
        length = f' textLength="{len(line) * CHARACTER_WIDTH:.1f}"' if line else ""
        print(f'<text x="{MARGIN}" y="{y}"{fill}{length} lengthAdjust="spacingAndGlyphs">'
              f'{html.escape(line)}</text>')
    print("</g></svg>")


if __name__ == "__main__":
    main()
