#!/usr/bin/python3
"""The printed help is complete, its page numbers are right, and no heading and no text that ends a
section stands alone."""
import os
import re
import shutil
import subprocess
import sys
import unicodedata
import unittest
from pathlib import Path

from documents import ROOT, section

HELP = Path(os.environ['NORVO_HELP'])
DOCUMENTS = [ROOT / 'docs' / 'users-guide.md', ROOT / 'docs' / 'limits.md']
MOST_BYTES = 3 << 20
BELOW_NO_PICTURE = 100  # points from the edge of the paper; a picture is higher than the rest
NOT_RUN = 77


def headings() -> list[str]:
    return [line.lstrip('# ') for document in DOCUMENTS
            for line in document.read_text('utf-8').splitlines() if re.match(r'#{1,3} ', line)]


def last_texts() -> set[str]:
    """The last paragraph or entry of each section, as it is printed but for page numbers."""
    found = set()
    for document in DOCUMENTS:
        for part in re.split(r'^#+ .*$', document.read_text('utf-8'), flags=re.MULTILINE):
            last = re.split(r'\n\n|\n(?=- |\d+\. )', part.strip())[-1]
            last = re.sub(r'\[([^\]]*)\]\([^)]*\)', r'\1', last)
            found.add(plain(re.sub(r'^- |[*`]', '', last)))
    return found


def plain(text: str) -> str:
    return re.sub(r'\s+', ' ', text).strip()


class PrintedHelp(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        text = subprocess.run(['pdftotext', '-layout', HELP, '-'], capture_output=True, text=True,
                              check=True).stdout
        text = unicodedata.normalize('NFKC', text)  # fonts draw some pairs of letters as one
        cls.pages = [page.splitlines() for page in text.split('\f')[:-1]]
        boxes = subprocess.run(['pdftotext', '-bbox', HELP, '-'], capture_output=True, text=True,
                               check=True).stdout
        cls.tops = [float(top) for top in
                    re.findall(r'<page [^>]*>\s*<word [^>]*yMin="([\d.]+)"', boxes)]

    def test_every_page_holds_something(self) -> None:
        self.assertGreater(len(self.pages), 5)
        for number, page in enumerate(self.pages, start=1):
            self.assertGreater(len([line for line in page if line.strip()]), 3, f'page {number}')

    def test_the_contents_tell_the_right_pages(self) -> None:
        entries = re.findall(r'- \[([^\]]+)\]', section(DOCUMENTS[0], 'Contents'))
        self.assertGreater(len(entries), 10)
        contents = next(page for page in self.pages if 'Contents' in map(str.strip, page))
        for entry in entries:
            found = [re.search(rf'{re.escape(entry)}\s+(\d+)$', line) for line in contents]
            (number,) = [int(match.group(1)) for match in found if match]
            lines = [line.strip() for line in self.pages[number - 1]]
            self.assertIn(entry, lines, f'not on page {number}')

    def test_every_other_page_number_is_right(self) -> None:
        text = plain(' '.join(line for page in self.pages for line in page))
        references = re.findall(r'((?:\S+ ){8})\(page (\d+)\)', text)
        self.assertGreater(len(references), 2)
        for before, number in references:
            lines = {line.strip() for line in self.pages[int(number) - 1]} & set(headings())
            self.assertTrue(any(plain(before).endswith(line) for line in lines),
                            f'{before}(page {number})')

    def test_no_heading_is_the_last_line_of_a_page(self) -> None:
        for number, page in enumerate(self.pages, start=1):
            lines = [line.strip() for line in page if line.strip()]
            self.assertNotIn(lines[-2], headings(), f'page {number}')  # the footer stands below

    def test_no_page_begins_with_the_last_text_of_a_section_alone(self) -> None:
        for number, page in enumerate(self.pages, start=1):
            lines = [line.strip() for line in page if line.strip()]
            ends = [at for at, line in enumerate(lines) if line in headings()] or [len(lines) - 1]
            text = re.sub(r' \(page \d+\)', '', plain(' '.join(lines[:ends[0]])))
            alone = (text != '' and text.removeprefix('•').strip() in last_texts()
                     and self.tops[number - 1] < BELOW_NO_PICTURE)
            self.assertFalse(alone, f'page {number}: {text}')

    def test_every_picture_is_printed(self) -> None:
        pictures = re.findall(r'!\[[^\]]*\]\(', ''.join(path.read_text('utf-8') for path in DOCUMENTS))
        listed = subprocess.run(['pdfimages', '-list', HELP], capture_output=True, text=True,
                                check=True).stdout.splitlines()[2:]
        self.assertEqual(len([line for line in listed if line.split()[2] == 'image']), len(pictures))

    def test_it_is_small_enough_to_be_opened_anywhere(self) -> None:
        self.assertLess(HELP.stat().st_size, MOST_BYTES)


if __name__ == '__main__':
    if shutil.which('pdftotext') is None:
        print('NOT RUN: printed_help_test: pdftotext is not there')
        sys.exit(NOT_RUN)
    unittest.main()
