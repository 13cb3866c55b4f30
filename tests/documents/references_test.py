#!/usr/bin/python3
"""What the documents point to is there: links, pictures, files, and the messages of the window."""
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

import documents
from documents import ROOT

LINK = re.compile(r'\[(?:[^\[\]]|\[[^\]]*\]\([^)]*\))*\]\(([^)\s]+)\)')
PICTURE = re.compile(r'!\[[^\]]*\]\(([^)\s]+)\)')
PATH = re.compile(r'[\w.<>*-]+(?:/[\w.<>*-]+)*/?')
SOURCE_SUFFIXES = {'.h', '.cpp', '.py', '.md', '.txt', '.cmake', '.css', '.svg'}


def tree_files() -> list[Path]:
    return [path for path in ROOT.rglob('*') if path.is_file()
            and not {'build', '.git', '__pycache__'} & set(path.relative_to(ROOT).parts[:-1])]


class Links(unittest.TestCase):
    def check(self, document: Path, address: str) -> None:
        if re.match(r'\w+:', address):
            return
        name, _, anchor = address.partition('#')
        target = (document.parent / name).resolve() if name else document
        place = f'{document.relative_to(ROOT)}: {address}'
        self.assertTrue(target.exists(), f'{place} does not exist')
        self.assertTrue(target.is_relative_to(ROOT), f'{place} leaves the tree')
        if anchor:
            self.assertIn(anchor, documents.anchors(target), f'{place}: no such heading')

    def test_every_link_leads_somewhere(self) -> None:
        count = 0
        for document in documents.documents():
            text = documents.without_blocks(document)
            for address in (*LINK.findall(text), *PICTURE.findall(text)):
                count += 1
                with self.subTest(address):
                    self.check(document, address)
        self.assertGreater(count, 20)

    def test_every_document_is_reached_from_the_first(self) -> None:
        reached, waiting = set(), [ROOT / 'README.md']
        while waiting:
            document = waiting.pop()
            if document in reached or document.suffix != '.md' or not document.exists():
                continue
            reached.add(document)
            waiting += [(document.parent / address.partition('#')[0]).resolve()
                        for address in LINK.findall(documents.without_blocks(document))
                        if not re.match(r'\w+:|#', address)]
        for document in documents.documents():
            self.assertIn(document, reached, 'no link leads there')

    def test_every_picture_is_used(self) -> None:
        used = {(document.parent / address).resolve() for document in documents.documents()
                for address in PICTURE.findall(documents.without_blocks(document))}
        for picture in (ROOT / 'docs').rglob('*.png'):
            self.assertIn(picture, used)


class Drawings(unittest.TestCase):
    def test_the_pictures_of_the_architecture_are_those_of_the_code(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([ROOT / 'tools' / 'draw_architecture.py', folder], check=True)
            for name in ('floors.svg', 'road.svg'):
                self.assertEqual(Path(folder, name).read_text('utf-8'),
                                 (ROOT / 'docs' / name).read_text('utf-8'),
                                 f'docs/{name}: run tools/draw_architecture.py docs')

    def test_the_road_names_what_exists(self) -> None:
        sources = {path.stem for path in tree_files()}
        titles = re.findall(r'class="title"[^>]*>([^<]*)', (ROOT / 'docs/road.svg').read_text('utf-8'))
        names = re.findall(r'\b[A-Z][a-z]+[A-Z]\w+', ' '.join(titles))
        self.assertGreater(len(names), 8)
        for name in names:
            self.assertTrue(name in sources, f'docs/road.svg: there is no {name}')


class Files(unittest.TestCase):
    """A name in backticks that looks like a file of the tree is one."""

    def setUp(self) -> None:
        self.names = {path.name for path in tree_files()}
        self.top = {path.name for path in ROOT.iterdir() if path.is_dir()} - {'build', '.git'}
        self.rooms = {path.name for path in (ROOT / 'src').iterdir() if path.is_dir()}

    def is_there(self, name: str) -> bool:
        pattern = re.sub(r'<[^>]*>', '*', name.rstrip('/'))
        first = Path(pattern).parts[0]
        if '/' not in name.rstrip('/'):
            return name.endswith('/') or name in self.names
        base = ROOT if first in self.top else ROOT / 'src'
        return any(base.glob(pattern)) or any(base.glob(pattern + '.*'))

    def looks_like_a_file(self, text: str) -> bool:
        if not PATH.fullmatch(text):
            return False
        first = text.split('/')[0]
        if '/' in text:
            return first in self.top | self.rooms
        return Path(text).suffix in SOURCE_SUFFIXES

    def test_every_file_that_is_named_exists(self) -> None:
        count = 0
        for document in documents.documents():
            for code in documents.inline_code(document):
                if not self.looks_like_a_file(code.text):
                    continue
                count += 1
                self.assertTrue(self.is_there(code.text), f'{code.place}: {code.text} is not there')
        self.assertGreater(count, 40)


class Messages(unittest.TestCase):
    """The guide and the window use the same words."""

    def setUp(self) -> None:
        text = ''.join(path.read_text('utf-8') for path in tree_files()
                       if path.suffix in ('.cpp', '.h') and path.is_relative_to(ROOT / 'src'))
        text = re.sub(r'"(?:_s)?\s+u?"', '', text)  # literals that stand side by side are one
        self.source = text.replace('\\n', ' ').replace('\\u201D', '').replace('\\u201C', '')

    def guide(self, heading: str) -> list[str]:
        text = documents.section(ROOT / 'docs/users-guide.md', heading)
        return [re.sub(r'\s+', ' ', quoted) for quoted in re.findall(r'"([^"]{8,})"', text)]

    def test_every_message_of_the_guide_is_one_of_the_program(self) -> None:
        messages = (self.guide('Messages, and what to do') + self.guide('While the search runs'))
        self.assertGreater(len(messages), 15)
        for message in messages:
            with self.subTest(message):
                self.assertIn(message, self.source)

    def test_the_guide_explains_every_message_box(self) -> None:
        guide = re.sub(r'\s+', ' ', (ROOT / 'docs/users-guide.md').read_text('utf-8'))
        shown = re.findall(r'(?:Show_MessageBox|refuse)\(\s*u"\s*([^"]+?)"', self.source)
        self.assertGreater(len(shown), 4)
        for message in shown:
            with self.subTest(message):
                self.assertIn(f'"{message}"', guide)

    def test_the_guide_explains_every_guidance_that_is_no_instruction(self) -> None:
        """Those that lead through the steps say all themselves, and the guide tells the same."""
        instructions = {'drives', 'entire_disk', 'sector_range', 'about_range', 'about_far_sectors',
                        'file_types'}
        header = (ROOT / 'src/wizard/GuidanceTexts.h').read_text('utf-8')
        names = re.findall(r'TextView (\w+) =', header)
        self.assertTrue(instructions < set(names), 'a guidance that is no more')
        for name in set(names) - instructions:
            with self.subTest(name):
                text = re.search(rf'TextView {name} =\s*u"\s*([^"]+)"', self.source)
                self.assertTrue(text and any(text[1].strip().startswith(quoted) for quoted
                                             in self.guide('Messages, and what to do')))


if __name__ == '__main__':
    unittest.main()
