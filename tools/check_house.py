#!/usr/bin/python3
"""Holds the source tree to the rules of the house: file sizes, floors, shape of headers.

    check_house.py [ROOT]

File sizes hold in every folder, the length of functions in Python alone: clang-tidy holds that of
src/. Ends with 1 and names every fault when there is one.
"""
import ast
import re
import sys
from collections.abc import Iterator
from pathlib import Path

MOST_LINES = 400
MOST_FUNCTION_LINES = 60
# The folders that a folder's files may include from, beside their own.
MAY_INCLUDE = {
    'util': set(),
    'storage': {'util'},
    'results': {'util'},
    'sigdb': {'util'},
    'engine': {'sigdb', 'util'},
    'wizard': {'storage', 'results', 'sigdb', 'util'},
    'app': {'wizard', 'engine', 'storage', 'results', 'sigdb', 'util'},
    'platform': {'app', 'wizard', 'engine', 'storage', 'results', 'sigdb', 'util'},
}
SOURCES = {'.h', '.cpp', '.py', '.in', '.mm'}
# Beside src/: what is code, too. A file without a suffix is when its first line names an interpreter.
CODE = SOURCES | {'.cmake', '.sh'}
NOT_OURS = {'build', '.git', '__pycache__'}
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')
# Toolkit and system switches have their place on the highest floor only.
SYSTEM_SWITCH = re.compile(
    r'^\s*#\s*(?:if|ifdef|ifndef|elif)\b.*\b(?:__APPLE__|__linux__|_WIN32)\b')
TOOLKIT = re.compile(r'^\s*#\s*include\s*<(Q[A-Z]\w*|Qt\w+/.*)>')


def size_faults(path: Path, lines: list[str]) -> Iterator[str]:
    if len(lines) > MOST_LINES:
        yield f'{path}: {len(lines)} lines, {MOST_LINES} are the most'


def function_faults(path: Path, text: str) -> Iterator[str]:
    """Of Python; a class within a function counts with it, a function within a class by itself."""
    if path.suffix != '.py':
        return
    for node in ast.walk(ast.parse(text)):
        if isinstance(node, (ast.FunctionDef, ast.AsyncFunctionDef)):
            length = (node.end_lineno or node.lineno) - node.lineno + 1
            if length > MOST_FUNCTION_LINES:
                yield (f'{path}:{node.lineno}: {node.name} has {length} lines, '
                       f'{MOST_FUNCTION_LINES} are the most')


def header_faults(path: Path, lines: list[str]) -> Iterator[str]:
    if path.suffix != '.h':
        return
    if not lines or not re.match(r'// \S', lines[0]):
        yield f'{path}:1: a header begins with a comment line that says what it is for'
    if '#pragma once' not in lines:
        yield f'{path}: a header needs "#pragma once"'


def include_faults(path: Path, room: str, lines: list[str], source: Path) -> Iterator[str]:
    """`path` as it is shown, `room` its folder under `source`."""
    for number, line in enumerate(lines, start=1):
        place = f'{path}:{number}'
        if room != 'platform' and (SYSTEM_SWITCH.match(line) or TOOLKIT.match(line)):
            yield f'{place}: only platform/ knows systems and the toolkit'
        match = INCLUDE.match(line)
        if not match:
            continue
        included = match.group(1)
        target = Path(included).parts[0]
        if '/' not in included or target not in MAY_INCLUDE:
            yield f'{place}: "{included}" is not written from src/ on'
        elif '..' in Path(included).parts:
            yield f'{place}: "{included}" leaves its folder'
        elif target != room and target not in MAY_INCLUDE[room]:
            yield f'{place}: {room} may not include {target}'
        elif not (source / included).exists() and not (source / f'{included}.in').exists():
            yield f'{place}: "{included}" is not there'


def files_below(folder: Path) -> list[Path]:
    return sorted(path for path in folder.rglob('*')
                  if path.suffix in SOURCES and '__pycache__' not in path.parts)


def is_code(path: Path) -> bool:
    if path.suffix in CODE or path.name == 'CMakeLists.txt':
        return True
    if path.suffix or not path.is_file():
        return False
    with open(path, 'rb') as file:
        return file.read(2) == b'#!'


def all_code(root: Path) -> list[Path]:
    return sorted(path for path in root.rglob('*')
                  if not NOT_OURS & set(path.relative_to(root).parts) and is_code(path))


def house_faults(root: Path) -> list[str]:
    faults: list[str] = []
    source = root / 'src'
    for path in files_below(source):
        lines = path.read_text(encoding='utf-8').splitlines()
        shown = path.relative_to(root)
        room = path.relative_to(source).parts[0]
        faults += header_faults(shown, lines)
        if room not in MAY_INCLUDE:
            faults.append(f'{shown}: no floor is known for src/{room}')
        elif path.suffix != '.in':
            faults += include_faults(shown, room, lines, source)
    for path in files_below(root / 'tests'):
        lines = path.read_text(encoding='utf-8').splitlines()
        faults += header_faults(path.relative_to(root), lines)
    for path in all_code(root):
        text = path.read_text(encoding='utf-8')
        faults += size_faults(path.relative_to(root), text.splitlines())
        faults += function_faults(path.relative_to(root), text)
    return faults


def main() -> int:
    root = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parent.parent
    checked = len(all_code(root))
    if not files_below(root / 'src'):
        print(f'{root} holds nothing to check')
        return 1
    faults = house_faults(root)
    for fault in faults:
        print(fault)
    print(f'{checked} files checked, {len(faults)} faults')
    return 1 if faults else 0


if __name__ == '__main__':
    sys.exit(main())
