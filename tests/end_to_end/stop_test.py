#!/usr/bin/python3
"""A stop request ends the search at once and keeps and reports what was recovered."""
import signal
import subprocess
import time
from collections.abc import Callable
from pathlib import Path

import disks
from harness import GENERAL, PATIENCE, Case, Run, main, read_events
from pictures import make_jpegs
from served_file import ServedFile

AT_ONCE = 5  # seconds
STOPPED = 130


class StopCase(Case):
    def start(self, device: Path, *arguments: str) -> subprocess.Popen[str]:
        """Begins a search; what it says goes to files, so that nothing has to be read in time."""
        self.out, self.err = self.folder / 'out', self.folder / 'err'
        with open(self.out, 'w') as out, open(self.err, 'w') as err:
            search = subprocess.Popen(
                self.command('--device', device, '--destination', self.destination, '--quiet',
                             *arguments),
                stdin=subprocess.DEVNULL, stdout=out, stderr=err, text=True)
        self.addCleanup(search.wait)
        self.addCleanup(search.kill)
        return search

    def wait_until(self, condition: Callable[[], bool], search: subprocess.Popen[str]) -> None:
        deadline = time.monotonic() + PATIENCE
        while not condition():
            self.assertIsNone(search.poll(), 'the search ended early')
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.002)

    def count(self, kind: str) -> int:
        return self.out.read_text('utf-8').count(f'{{"event":"{kind}"')

    def end(self, search: subprocess.Popen[str]) -> Run:
        """The whole run; it must end at once."""
        search.wait(AT_ONCE)
        out = self.out.read_text('utf-8')
        run = Run(search.returncode, out, self.err.read_text('utf-8'), read_events(out))
        self.check_end(run)
        self.check_events(run.events)
        return run

    def assert_stopped(self, run: Run) -> None:
        self.assertEqual((run.status, run.outcome), (STOPPED, 'stopped'), run.err)
        self.assertEqual([event['pass'] for event in run.of('pass')], ['GEN'])
        self.assertEqual(run.of('message'), [])
        self.assertEqual(set(run.files),
                         {path for path in self.destination.rglob('*') if path.is_file()})


class StopInsideAPicture(StopCase):
    def stop_inside_a_picture(self, number: signal.Signals) -> None:
        """The device gives nothing from the middle of a picture on until the stop was asked."""
        image = self.folder / 'disk.img'
        large = make_jpegs(12, seed=4, side=2000)
        places = disks.raw_image(image, [*make_jpegs(20), *large, *make_jpegs(5, seed=9)])
        middle = places[24].offset + len(places[24].picture.content) // 2
        gate = self.folder / 'gate'
        served = ServedFile(self, image, self.folder / 'mount', '--gate', str(gate),
                            '--gate-offset', str(middle))
        search = self.start(served.path, '--json')
        self.wait_until(lambda: self.count('file') >= 24, search)
        search.send_signal(number)
        time.sleep(0.2)
        gate.touch()
        run = self.end(search)
        self.assert_stopped(run)
        self.assertEqual(len(run.files), 25)
        self.assertEqual(disks.Recovered(run.files[:-1]).missing(places[:24]), [])
        original, kept = places[24].picture.content, run.files[-1].read_bytes()
        self.assertGreater(len(kept), 0)
        self.assertLess(len(kept), len(original))
        self.assertTrue(original.startswith(kept))

    def test_sigint_keeps_and_reports_the_picture_in_progress(self) -> None:
        self.stop_inside_a_picture(signal.SIGINT)

    def test_sigterm_keeps_and_reports_the_picture_in_progress(self) -> None:
        self.stop_inside_a_picture(signal.SIGTERM)


class StopWhereNothingIsFound(StopCase):
    def test_a_search_through_emptiness_stops_at_once(self) -> None:
        image = self.folder / 'disk.img'
        # The last picture grows to its limit before the emptiness is reached.
        places = disks.raw_image(image, make_jpegs(30), size=1 << 40)
        search = self.start(image, '--json')
        self.wait_until(lambda: self.count('file') >= len(places), search)
        search.send_signal(signal.SIGINT)
        run = self.end(search)
        self.assert_stopped(run)
        self.assertEqual(disks.Recovered(run.files).missing(places), [])

    def test_a_signal_at_the_very_beginning_counts(self) -> None:
        image = self.folder / 'disk.img'
        disks.raw_image(image, make_jpegs(3), size=1 << 40)
        search = self.start(image, '--json')
        self.wait_until(lambda: self.count('pass') >= 1, search)
        search.send_signal(signal.SIGTERM)
        self.assert_stopped(self.end(search))

    def test_people_are_told_that_it_was_stopped(self) -> None:
        image = self.folder / 'disk.img'
        disks.raw_image(image, make_jpegs(3), size=1 << 40)
        search = self.start(image)
        third = self.destination / GENERAL / 'JPG' / 'GND00003.JPG'
        self.wait_until(third.exists, search)
        search.send_signal(signal.SIGINT)
        search.wait(AT_ONCE)
        self.assertEqual(search.returncode, STOPPED, self.err.read_text('utf-8'))
        out = self.out.read_text('utf-8')
        self.assertIn('Stopped. Found up to there:', out)
        self.assertRegex(out, r'General +JPG +3 ')


if __name__ == '__main__':
    main()
