#!/usr/bin/python3
"""Documents are taken apart as their readers see them."""
import tempfile
import unittest
from pathlib import Path
from unittest import mock

import documents

TEXT = """# A title, with `code`

Call `./run` first, never `sed`. A `lsblk
--json` may end
on the `next line`, code with `no end does not.

It `is text`.

    first --option   # what it does
    second \\
        --more

1. An entry

       its own text

   ```sh
   third && fourth
   ```

```text
no command
```

    <markup />
"""


class Documents(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory(prefix='norvo_documents_')
        self.addCleanup(folder.cleanup)
        self.document = Path(folder.name) / 'text.md'
        self.document.write_text(TEXT, 'utf-8')
        for name, value in (('ROOT', self.document.parent), ('documents', lambda: [self.document])):
            patch = mock.patch.object(documents, name, value)
            patch.start()
            self.addCleanup(patch.stop)

    def test_commands_are_found_in_listings_and_sentences(self) -> None:
        self.assertEqual([command.text for command in documents.commands()],
                         ['first --option', 'second --more', 'third && fourth', './run',
                          'lsblk --json'])

    def test_a_command_knows_its_place(self) -> None:
        places = {command.text: command.place for command in documents.commands()}
        self.assertEqual(places['first --option'], 'text.md:9')
        self.assertEqual(places['lsblk --json'], 'text.md:3')

    def test_code_ends_with_its_paragraph(self) -> None:
        self.assertEqual([code.text for code in documents.inline_code(self.document)],
                         ['code', './run', 'sed', 'lsblk --json', 'next line', 'is text'])

    def test_text_does_not_hold_listings(self) -> None:
        text = documents.without_blocks(self.document)
        self.assertIn('An entry', text)
        for listed in ('first --', 'third', 'no command', 'markup'):
            self.assertNotIn(listed, text)

    def test_a_heading_is_an_anchor(self) -> None:
        self.assertEqual(documents.anchors(self.document), {'a-title-with-code'})


if __name__ == '__main__':
    unittest.main()
