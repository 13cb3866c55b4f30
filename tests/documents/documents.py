"""The documents of the tree, taken apart: blocks, commands, links, names of files."""
import re
from collections.abc import Iterator
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
COMMAND_LANGUAGES = {'sh', 'bash'}
# What is called by its name alone where it stands within a sentence; with a blank it is a command.
TOOLS = ('apt', 'apt-get', 'cmake', 'codesign', 'ctest', 'dch', 'dd', 'ddrescue', 'diskutil', 'ditto',
         'git', 'kill', 'lsblk', 'norvo-recover', 'od', 'open', 'otool', 'python3', 'security', 'sed',
         'spctl', 'sudo', 'tccutil', 'umount', 'xcode-select', 'xcrun', 'xxd')
INLINE_COMMAND = re.compile(r'\./(run|test)\b|(tools|tests|benchmarks|build)/\S+ \S'
                            rf'|({"|".join(map(re.escape, TOOLS))}) \S')


def documents() -> list[Path]:
    return [ROOT / 'README.md', ROOT / 'CONTRIBUTING.md', *sorted((ROOT / 'docs').rglob('*.md'))]


@dataclass(frozen=True)
class Block:
    """A listing: fenced, with the language that it names, or indented (language None)."""
    document: Path
    line: int
    language: str | None
    text: str

    @property
    def place(self) -> str:
        return f'{self.document.relative_to(ROOT)}:{self.line}'

    @property
    def holds_commands(self) -> bool:
        """Indented listings do, unless they are markup; fenced ones say so."""
        if self.language is None:
            return not all(line.lstrip().startswith(('<', '{')) for line in self.text.splitlines()
                           if line.strip())
        return self.language in COMMAND_LANGUAGES


@dataclass(frozen=True)
class Command:
    place: str
    text: str


def fenced(lines: list[str], start: int) -> tuple[str, list[str], int]:
    """Language, content and the line behind the fence that begins at `start`."""
    fence = re.match(r'\s*(`{3,}|~{3,})\s*(\w*)', lines[start])
    assert fence
    indent = len(lines[start]) - len(lines[start].lstrip())
    for end in range(start + 1, len(lines)):
        if lines[end].strip().startswith(fence.group(1)):
            content = [line[indent:] if not line[:indent].strip() else line
                       for line in lines[start + 1:end]]
            return fence.group(2), content, end + 1
    raise ValueError(f'line {start + 1}: the fence has no end')


def blocks(document: Path) -> list[Block]:
    lines = document.read_text(encoding='utf-8').splitlines()
    found: list[Block] = []
    number = 0
    in_list = False
    while number < len(lines):
        line = lines[number]
        if re.match(r'\s*(`{3,}|~{3,})', line):
            language, content, after = fenced(lines, number)
            found.append(Block(document, number + 1, language, '\n'.join(content)))
            number = after
            in_list = in_list and line.startswith(' ')
            continue
        # Within a list an indented line is the entry's own text.
        in_list = (bool(re.match(r'([-*+]|\d+\.)\s', line)) or
                   in_list and (not line.strip() or line.startswith(' ')))
        if line.startswith('    ') and not in_list and not (number and lines[number - 1].strip()):
            start = number
            while number < len(lines) and (lines[number].startswith('    ')
                                           or not lines[number].strip()):
                number += 1
            content = [line[4:] for line in lines[start:number]]
            found.append(Block(document, start + 1, None, '\n'.join(content).rstrip()))
            continue
        number += 1
    return found


def without_blocks(document: Path) -> str:
    """The document's own text; listings are blank lines."""
    lines = document.read_text(encoding='utf-8').splitlines()
    for block in blocks(document):
        extra = 2 if block.language is not None else 0
        for number in range(block.line - 1, block.line - 1 + len(block.text.splitlines()) + extra):
            lines[number] = ''
    return '\n'.join(lines)


def commands_of(block: Block) -> Iterator[Command]:
    text = re.sub(r'\\\n\s*', '', block.text)
    for line in text.splitlines():
        command = re.sub(r'(^|\s+)#\s.*$', '', line).strip()
        if command:
            yield Command(block.place, command)


def inline_code(document: Path) -> Iterator[Command]:
    """What stands in backticks, also over the end of a line; a paragraph ends it."""
    for match in re.finditer(r'`((?:[^`\n]|\n(?!\s*\n))+)`', text := without_blocks(document)):
        number = text.count('\n', 0, match.start()) + 1
        yield Command(f'{document.relative_to(ROOT)}:{number}',
                      re.sub(r'\s*\n\s*', ' ', match.group(1)))


def commands() -> list[Command]:
    """All of them, in the order in which a reader meets them."""
    found: list[Command] = []
    for document in documents():
        for block in blocks(document):
            if block.holds_commands:
                found += commands_of(block)
        found += [code for code in inline_code(document) if INLINE_COMMAND.match(code.text)]
    return found


def section(document: Path, heading: str) -> str:
    """The text below a heading, up to the next one of its level or above."""
    lines = document.read_text(encoding='utf-8').splitlines()
    start = next(i for i, line in enumerate(lines) if line.lstrip('# ') == heading
                 and line.startswith('#'))
    level = len(lines[start]) - len(lines[start].lstrip('#'))
    for end in range(start + 1, len(lines)):
        marks = re.match(r'(#+) ', lines[end])
        if marks and len(marks.group(1)) <= level:
            return '\n'.join(lines[start:end])
    return '\n'.join(lines[start:])


def anchors(document: Path) -> set[str]:
    found = set()
    for line in without_blocks(document).splitlines():
        if re.match(r'#{1,6} ', line):
            heading = line.lstrip('#').strip().lower()
            found.add(re.sub(r'[^\w\- ]', '', heading).replace(' ', '-'))
    return found
