#!/usr/bin/python3
"""Lists the tests that did not run, with their reasons, from the log that ctest keeps of a stage.

    list_skipped_tests.py LOG

ctest counts a program as skipped only when all of it was, and shows no reason; the log has both.
"""
import re
import sys
from collections.abc import Iterator
from pathlib import Path

SAID = re.compile(r'NOT RUN: .*')  # by a test that is a script
# By a test program: the place, the reason on lines of its own, and what was skipped with its time,
# which the summary at the end of the program does not repeat.
PLACE = re.compile(r'.+:\d+: Skipped')
ENDED = re.compile(r'\[ *(?P<outcome>SKIPPED|OK|FAILED) *\] (?P<test>[^ ,]+).*\(\d+ ms\)')


def skipped_tests(log: str) -> Iterator[str]:
    reason: list[str] | None = None
    for line in log.splitlines():
        if SAID.fullmatch(line):
            yield line
        elif PLACE.fullmatch(line):
            reason = []
        elif ended := ENDED.fullmatch(line):
            if ended['outcome'] == 'SKIPPED':
                yield f'NOT RUN: {ended["test"]}: {" ".join(reason or []) or "it gives no reason"}'
            reason = None
        elif reason is not None and line:
            reason.append(line)


def main() -> None:
    log = Path(sys.argv[1]).read_text('utf-8', errors='replace')
    for line in skipped_tests(log):
        print(line)


if __name__ == '__main__':
    main()
