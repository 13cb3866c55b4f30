#!/usr/bin/python3
"""The example of docs/signatures.md, done step by step: a type is added, and its file comes back."""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import textwrap
import unittest
from pathlib import Path

from documents import ROOT, section

DOCUMENT = ROOT / 'docs' / 'signatures.md'
RECOVER = Path(os.environ['NORVO_RECOVER'])
BUILD = Path(os.environ['NORVO_BUILD'])


def listings(language: str) -> list[str]:
    text = section(DOCUMENT, 'Add a type in ten minutes')
    found = re.findall(rf'^( *)```{language}\n(.*?)^ *```$', text, re.MULTILINE | re.DOTALL)
    return [textwrap.dedent(content) for _, content in found]


class Example(unittest.TestCase):
    def setUp(self) -> None:
        self.folder = Path(tempfile.mkdtemp(prefix='norvo_signature_example_'))
        self.addCleanup(shutil.rmtree, self.folder)
        (self.folder / 'build').symlink_to(self.folder / 'builds')
        (self.folder / 'builds').mkdir()
        (self.folder / 'builds' / 'release').symlink_to(BUILD)
        (self.record,) = listings('text')
        (self.make_file,) = listings('python')
        self.copy_tables, self.search = listings('sh')
        text = re.sub(r'\s+', ' ', section(DOCUMENT, 'Add a type in ten minutes'))
        (self.place,) = re.findall(r'It comes back as `([^`]+)`', text)

    def shell(self, commands: str) -> str:
        result = subprocess.run(['bash', '-e', '-c', commands], cwd=self.folder, text=True,
                                env={**os.environ, 'PATH': f'{RECOVER.parent}:/usr/bin:/bin'},
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        self.assertEqual(result.returncode, 0, result.stdout)
        return result.stdout

    def add_record(self) -> None:
        """In front of the last record, as the text says."""
        table = self.folder / 'tried' / 'SPRExt2Adv.dll'
        text = table.read_text('utf-8')
        last = text.rindex('\nExtension :') + 1
        table.write_text(f'{text[:last]}{self.record}\n{text[last:]}', 'utf-8')

    def made_file(self) -> bytes:
        subprocess.run([sys.executable, '-c', self.make_file], cwd=self.folder, check=True)
        return (self.folder / 'sample.ff').read_bytes()

    def test_the_file_comes_back(self) -> None:
        content = self.made_file()
        self.shell(self.copy_tables)
        self.add_record()
        self.shell(self.search)
        recovered = (self.folder / self.place).read_bytes()
        self.assertEqual(recovered[:len(content)], content)

    def test_without_the_record_it_does_not(self) -> None:
        self.made_file()
        self.shell(self.copy_tables)
        self.shell(self.search)
        self.assertFalse((self.folder / self.place).exists())

    def test_the_type_is_not_one_that_the_program_has_already(self) -> None:
        header = re.search(r'Header : (\w+)', self.record)
        assert header
        for master in (ROOT / 'resources' / 'signatures').glob('*.txt'):
            self.assertNotIn(header.group(1), master.read_text('utf-8'), master.name)

    def test_the_sample_begins_with_the_header(self) -> None:
        (sample,) = listings('cpp')
        bytes_text = re.findall(r'"([^"]*)"', sample)[2]
        begin = b''.join(bytes.fromhex(piece) if not piece.startswith("'")
                         else piece.strip("'").encode()
                         for piece in re.findall(r"'[^']*'|[0-9A-F]+", bytes_text))
        header = re.search(r'Header : (\w+)', self.record)
        assert header
        self.assertTrue(begin.startswith(bytes.fromhex(header.group(1))))


if __name__ == '__main__':
    unittest.main()
