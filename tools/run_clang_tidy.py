#!/usr/bin/python3
"""Runs clang-tidy over the program's sources with the checks of .clang-tidy.

    run_clang_tidy.py BUILD_FOLDER [SOURCE...]

BUILD_FOLDER holds compile_commands.json; without sources, all of src/ that it compiles are looked
at, some of a library at a time: what they include is read and looked at once, which is most of the
work. Sources without findings are not looked at again until one, a header or the checks change.
Ends with 1 on a finding and with 77 when clang-tidy is not there.
"""
import hashlib
import json
import os
import shlex
import shutil
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
NOT_RUN = 77
# Options of the compiler that made the build and that clang does not know or cannot use.
FOREIGN_OPTIONS = ('-fpch-preprocess', '-Winvalid-pch', '-Wno-restrict', '-Wno-stringop-overflow',
                   '-Wno-maybe-uninitialized', '-fno-sanitize-recover', '-fsanitize', '-Werror')
# Sources of a group are included on purpose.
KNOWN = '  // NOLINT(bugprone-suspicious-include)'
# The analyzer passes over what a file includes, unless the file is called so.
TOGETHER = 'UnifiedSource'
# So many sources share the reading of their headers; more of them fill the memory.
GROUP = 8
# Two checks of bugprone-* that take a quarter of the time, most of it in the system's headers, and
# look for what reviewers see: reserved names, and string views made of null.
LEFT_OUT = '-bugprone-reserved-identifier,-bugprone-stringview-nullptr'


def without_foreign_options(command: str) -> str:
    """The command as clang understands it: no foreign options, no precompiled header."""
    words = command.split()
    kept: list[str] = []
    skip_next = False
    for place, word in enumerate(words):
        following = words[place + 1] if place + 1 < len(words) else ''
        if skip_next:
            skip_next = False
        elif word == '-include' and 'cmake_pch' in following:
            skip_next = True
        elif not word.startswith(FOREIGN_OPTIONS):
            kept.append(word)
    return ' '.join(kept)


def sources_of(commands: list[dict[str, str]]) -> list[str]:
    below = str(ROOT / 'src') + os.sep
    return sorted({entry['file'] for entry in commands if entry['file'].startswith(below)})


def options_of(entry: dict[str, str]) -> list[str]:
    """How the source is compiled, but for its own name and that of what is made of it."""
    words = shlex.split(entry['command'])[1:]
    output = words.index('-o')
    return [word for word in words[:output] + words[output + 2:] if word not in ('-c', entry['file'])]


def library_of(entry: dict[str, str]) -> str:
    """What the source becomes a part of; names in it do not clash."""
    words = shlex.split(entry['command'])
    return words[words.index('-o') + 1].partition('.dir/')[0]


def grouped(entries: list[dict[str, str]]) -> list[list[dict[str, str]]]:
    """Sources of one library that are compiled alike, GROUP of them at most."""
    alike: dict[tuple[str, ...], list[dict[str, str]]] = {}
    for entry in entries:
        alike.setdefault((library_of(entry), *options_of(entry)), []).append(entry)
    return [same[at:at + GROUP] for same in alike.values() for at in range(0, len(same), GROUP)]


class Checker:
    """Looks at groups of sources; knows those that were clean before."""

    def __init__(self, tidy: str, folder: Path, memory: Path):
        self.tidy, self.folder, self.memory = tidy, folder, memory
        memory.mkdir(exist_ok=True)
        shutil.copy(ROOT / '.clang-tidy', folder)
        version = subprocess.run([tidy, '--version'], capture_output=True, check=True).stdout
        self.setting = version + (TOGETHER + LEFT_OUT).encode() + (ROOT / '.clang-tidy').read_bytes()

    def fingerprint(self, source: Path, options: list[str], directory: str) -> str | None:
        """Of all that decides about findings; None when that cannot be had."""
        compiler = shutil.which('clang++')
        if compiler is None:
            return None
        result = subprocess.run([compiler, *options, '-E', '-C', '-P', source], cwd=directory,
                                stdin=subprocess.DEVNULL, capture_output=True, check=False)
        if result.returncode != 0:
            return None
        return hashlib.sha256(self.setting + result.stdout).hexdigest()

    def check(self, group: list[dict[str, str]]) -> str:
        """The findings in a group. When there are some, each source is looked at by itself, and what
        it then has counts: in sources that are included the analyzer takes some calls of the toolkit
        for leaks, and in the very same ones by themselves it does not."""
        if not self.look_at(self.together(group), group[0]):
            return ''
        found = (self.look_at(Path(entry['file']), entry) for entry in group)
        return '\n'.join(filter(None, found))

    def together(self, group: list[dict[str, str]]) -> Path:
        """A source that includes those of the group."""
        includes = ''.join(f'#include "{entry["file"]}"{KNOWN}\n' for entry in group)
        source = self.folder / f'{TOGETHER}{hashlib.sha256(includes.encode()).hexdigest()[:16]}.cpp'
        source.write_text(includes, 'utf-8')
        return source

    def look_at(self, source: Path, entry: dict[str, str]) -> str:
        """The findings in a source that is compiled as `entry` is; nothing when there are none."""
        options, directory = options_of(entry), entry['directory']
        fingerprint = self.fingerprint(source, options, directory)
        if fingerprint and (self.memory / fingerprint).exists():
            return ''
        result = subprocess.run([self.tidy, '--quiet', f'--checks={LEFT_OUT}', source, '--', *options],
                                text=True, cwd=directory, stdin=subprocess.DEVNULL,
                                capture_output=True, check=False)
        if result.returncode == 0 and 'warning:' not in result.stdout:
            if fingerprint:
                (self.memory / fingerprint).touch()
            return ''
        # Standard error counts warnings in the system's headers, and says why a run failed.
        return result.stdout + result.stderr


def main() -> int:
    tidy = shutil.which('clang-tidy')
    if tidy is None:
        print('NOT RUN: clang-tidy is not installed; tools/install_packages test installs it.')
        return NOT_RUN
    compiled = json.loads((Path(sys.argv[1]) / 'compile_commands.json').read_text('utf-8'))
    for entry in compiled:
        entry['command'] = without_foreign_options(entry['command'])
    sources = [str(Path(name).resolve()) for name in sys.argv[2:]] or sources_of(compiled)
    if not sources:
        print('FAILED: the build compiles nothing of src/')
        return 1
    groups = grouped([entry for entry in compiled if entry['file'] in sources])
    found = 0
    with tempfile.TemporaryDirectory(prefix='norvo_tidy_') as folder:
        checker = Checker(tidy, Path(folder), Path(sys.argv[1]) / 'clang_tidy_clean')
        with ThreadPoolExecutor(max_workers=2) as pool:
            for findings in pool.map(checker.check, groups):
                if findings:
                    found += 1
                    print(findings, flush=True)
    print(f'{len(sources)} sources looked at in {len(groups)} groups, findings in {found}')
    return 1 if found else 0


if __name__ == '__main__':
    sys.exit(main())
