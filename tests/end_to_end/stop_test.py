#!/usr/bin/python3
"""A stop request ends the search at once and keeps and reports what was recovered."""
import signal

import disks
from harness import GENERAL, PATIENCE, Run, main
from pictures import make_jpegs
from running_search import HeldSearch, RunningSearch

STOPPED = 130


class StopCase(RunningSearch):
    def assert_stopped(self, run: Run) -> None:
        self.assertEqual((run.status, run.outcome), (STOPPED, 'stopped'), run.err)
        self.assertEqual([event['pass'] for event in run.of('pass')], ['GEN'])
        self.assertEqual(run.of('message'), [])
        self.assertEqual(set(run.files),
                         {path for path in self.destination.rglob('*') if path.is_file()})


class StopInsideAPicture(StopCase, HeldSearch):
    def stop_inside_a_picture(self, number: signal.Signals) -> None:
        search = self.start_and_hold()
        self.stop(search, number)
        self.let_go()
        run = self.end(search)
        self.assert_stopped(run)
        self.assertEqual(len(run.files), self.finished + 1)
        finished, held = self.places[:self.finished], self.places[self.finished].picture
        self.assertEqual(disks.Recovered(run.files[:-1]).missing(finished), [])
        kept = run.files[-1].read_bytes()
        self.assertGreater(len(kept), 0)
        self.assertLess(len(kept), len(held.content))
        self.assertTrue(held.content.startswith(kept))

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
        search.wait(PATIENCE)
        self.assertEqual(search.returncode, STOPPED, self.err.read_text('utf-8'))
        out = self.out.read_text('utf-8')
        self.assertIn('Stopped. Found up to there:', out)
        self.assertRegex(out, r'General +JPG +3 ')


if __name__ == '__main__':
    main()
