"""How tests written as scripts end: ctest shows 77 as a skipped test, and ./test shows the reasons."""
import sys
import unittest

NOT_RUN = 77


def main() -> None:
    """Runs the tests of the calling file and ends the process."""
    outcome = unittest.main(module='__main__', exit=False, verbosity=2).result
    for test, reason in outcome.skipped:
        print(f'NOT RUN: {test}: {reason}', flush=True)
    if not outcome.wasSuccessful():
        sys.exit(1)
    sys.exit(NOT_RUN if outcome.skipped or outcome.testsRun == 0 else 0)
