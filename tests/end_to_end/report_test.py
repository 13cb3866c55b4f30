#!/usr/bin/python3
"""--report tells of every recovered file: which bytes of the device it is, and their digest."""
import csv
import hashlib
import os
import signal
import subprocess
import xml.etree.ElementTree as ET
from pathlib import Path

import disks
from dfxml_rules import (BrokenRule, ReportedFile, ReportedRun, read_report,
                         read_report_of_a_broken_search)
from harness import SECTOR, Case, Run, main
from pictures import make_jpegs, make_pictures
from running_search import HeldSearch
from served_file import ServedFile

VIDEO_HEADER = bytes.fromhex('0000001866747970')


def read_csv(path: Path) -> list[ReportedFile]:
    files = []
    with open(path, encoding='utf-8', newline='') as file:
        for row in csv.DictReader(file):
            name = row['filename']
            found = ReportedFile(name[1:] if name.startswith("'") else name,
                                 int(row['filesize']), row['sha256'], row['search'])
            repeats = {}
            for entry in row['unread'].split():
                offset, place, _ = entry.split(':')
                repeats[int(offset)] = int(place) if place else None
            for entry in row['byte_runs'].split():
                offset, place, length = entry.split(':')
                found.runs.append(ReportedRun(int(offset), int(length),
                                              int(place) if place else None,
                                              repeats.get(int(offset))))
            files.append(found)
    return files


class ReportChecks(Case):
    def setUp(self) -> None:
        super().setUp()
        self.report = self.folder / 'report.xml'
        self.image = self.folder / 'disk.img'

    def check_files(self, files: list[ReportedFile], paths: list[Path]) -> None:
        """`files` are those at `paths`, in this order, and tell the truth about each of them."""
        content = self.image.read_bytes()
        self.assertEqual([self.destination / file.filename for file in files], paths)
        for file, path in zip(files, paths):
            recovered = path.read_bytes()
            self.assertEqual(file.size, len(recovered), path)
            self.assertEqual(file.sha256, hashlib.sha256(recovered).hexdigest(), path)
            self.assertEqual(file.bytes_on(content), recovered, path)

    def search_and_check(self, device: Path, *arguments: object) -> tuple[Run, list[ReportedFile]]:
        run = self.search(device, '--report', self.report, *arguments)
        self.assertEqual((run.status, run.outcome), (0, 'completed'), run.err)
        self.assertGreater(len(run.files), 0)
        files = read_report(self.report.read_bytes())
        self.check_files(files, run.files)
        passes = {'GEN': 'General', 'THD': 'Thorough'}
        self.assertEqual([file.search for file in files],
                         [passes[str(event['pass'])] for event in run.of('file')])
        return run, files


class Reports(ReportChecks):
    def test_photos_of_both_passes(self) -> None:
        disks.raw_image(self.image, make_pictures(150, seed=5), size=24 << 20)
        signatures = self.folder / 'signatures'
        signatures.mkdir()
        record = 'E : {}\nS : 90000\nHeader : {}\nP : 1\nK : 0\nD : a picture\n\n'
        (signatures / 'SPRExt2.dll').write_text(record.format('JPG', 'FFD8FF'))
        (signatures / 'SPRExt2Adv.dll').write_text(record.format('PNG', '89504E47'))
        _, files = self.search_and_check(self.image, '--signatures', signatures)
        self.assertEqual({file.search for file in files}, {'General', 'Thorough'})

    def test_photos_of_a_range(self) -> None:
        disks.raw_image(self.image, make_jpegs(40))
        _, files = self.search_and_check(self.image, '--start-sector', '77', '--end-sector', '400')
        self.assertGreater(len(files), 3)
        last = files[-1].runs[-1]
        self.assertEqual((last.img_offset, last.length), (399 * SECTOR, SECTOR),
                         'the last sector of the range is in the last file once more')

    def image_with_videos(self) -> Path:
        signatures = self.folder / 'signatures'
        signatures.mkdir()
        record = 'E : {}\nS : {}\nHeader : {}\nP : 1\nK : 0\nD : a video\n\n'
        header = VIDEO_HEADER.hex()
        (signatures / 'SPRVideo.dll').write_text(record.format('AAA', 9000, header) +
                                                 record.format('BBB', 700000, header))
        (signatures / 'SPRVideoAdv.dll').write_text(record.format('CCC', 30000, header[:12]))
        video = VIDEO_HEADER + os.urandom(50 * SECTOR - len(VIDEO_HEADER))
        self.image.write_bytes(b''.join(bytes(3 * SECTOR) + video for _ in range(40)))
        return self.image

    def test_videos_with_several_files_of_one_header(self) -> None:
        _, files = self.search_and_check(self.image_with_videos(), '--mode', 'video',
                                         '--signatures', self.folder / 'signatures')
        self.assertEqual({Path(file.filename).suffix for file in files}, {'.AAA', '.BBB', '.CCC'})
        self.assertEqual({file.search for file in files}, {'General', 'Thorough'})

    def test_csv_tells_the_same(self) -> None:
        disks.raw_image(self.image, make_pictures(60, seed=5), size=8 << 20)
        _, files = self.search_and_check(self.image)
        table = self.folder / 'report.csv'
        run = self.search(self.image, '--report', table)
        self.assertEqual(run.status, 0, run.err)
        self.assertEqual(read_csv(table), files)

    def test_however_the_destination_is_written_names_start_below_it(self) -> None:
        disks.raw_image(self.image, make_jpegs(3))
        folder = self.destination
        for number, way in enumerate(('/', '/.', '/x/..', '//')):
            report = self.folder / f'report{number}.xml'
            (folder / 'x').mkdir(parents=True, exist_ok=True)
            run = self.run_program('--device', self.image, '--destination', f'{folder}{way}',
                                   '--report', report, '--quiet')
            self.assertEqual(run.status, 0, run.err)
            files = read_report(report.read_bytes())
            self.assertEqual(len(files), 3)
            for file in files:
                self.assertTrue(file.filename.startswith('Norvo Spruce Results/'), file.filename)
                self.assertEqual(hashlib.sha256((folder / file.filename).read_bytes()).hexdigest(),
                                 file.sha256)

    def test_paths_that_are_no_text_break_neither_report(self) -> None:
        strange = os.fsencode(self.folder) + b'/\xff\xfe<\x1b]0;x\x07\n&'
        os.mkdir(strange)
        image = strange + b'/disk.img'
        disks.raw_image(Path(os.fsdecode(image)), make_jpegs(3))
        for report in (self.report, self.folder / 'report.csv'):
            run = self.search(Path(os.fsdecode(image)), '--report', report)
            self.assertEqual(run.status, 0, run.err)
        self.assertEqual(read_csv(self.folder / 'report.csv'),
                         read_report(self.report.read_bytes()))
        source = ET.parse(self.report).getroot()[2][0].text or ''
        self.assertTrue(source.endswith('/\ufffd\ufffd<\ufffd]0;x\ufffd\n&/disk.img'), source)

    def test_names_from_strangers_break_neither_report(self) -> None:
        disks.raw_image(self.image, make_jpegs(3))
        edition = '=1+1,"\x01<&>" Spruce'
        run = self.search(self.image, '--edition', edition, '--report', self.report)
        self.assertEqual(run.status, 0, run.err)
        files = read_report(self.report.read_bytes())
        self.assertEqual(len(files), 3)
        self.assertTrue(files[0].filename.startswith('=1+1,"\ufffd<&>" Spruce Results/'))
        self.assertIn('\ufffd<&>', ET.parse(self.report).getroot()[1][3][5].text or '')
        table = self.folder / 'report.csv'
        self.assertEqual(self.search(self.image, '--edition', edition, '--report', table).status, 0)
        for row in table.read_text('utf-8').splitlines()[1:]:
            self.assertTrue(row.startswith('"\'=1+1,""'), row)
        self.assertEqual(read_csv(table), files)

    def test_an_existing_report_is_never_replaced(self) -> None:
        disks.raw_image(self.image, make_jpegs(3))
        self.report.write_text('precious')
        self.assert_refused(self.run_program('--device', self.image, '--destination',
                                             self.destination, '--report', self.report),
                            'exists already')
        self.assertEqual(self.report.read_text(), 'precious')

    def test_a_search_without_a_report_writes_none(self) -> None:
        disks.raw_image(self.image, make_jpegs(3))
        self.assertEqual(self.search(self.image).status, 0)
        self.assertFalse(self.report.exists())


class BadSectors(ReportChecks):
    def test_what_stands_in_for_unread_sectors_is_named(self) -> None:
        places = disks.raw_image(self.image, make_pictures(60, seed=5), size=12 << 20)
        first = places[20].offset // SECTOR + 3
        bad = [first, *range(first + 40, first + 44)]
        served = ServedFile(self, self.image, self.folder / 'mount', '--bad-sectors',
                            ','.join(map(str, bad)))
        _, files = self.search_and_check(served.path, '--no-thorough')
        runs = [run for file in files for run in file.runs]
        unread = sum(run.length for run in runs if run.img_offset is None)
        self.assertGreaterEqual(unread, len(bad) * SECTOR)
        for run in runs:
            if run.img_offset is not None:
                sectors = range(run.img_offset // SECTOR, (run.img_offset + run.length) // SECTOR)
                self.assertTrue(set(bad).isdisjoint(sectors), 'nobody claims to have read it')


class BrokenSearches(ReportChecks, HeldSearch):
    def begin(self) -> subprocess.Popen[str]:
        search = self.start_and_hold('--report', str(self.report))
        self.wait_until(
            lambda: self.report.read_bytes().count(b'</fileobject>') >= self.finished, search)
        return search

    def test_a_killed_search_leaves_every_finished_file(self) -> None:
        search = self.begin()
        search.send_signal(signal.SIGKILL)
        self.let_go()
        self.assertEqual(search.wait(), -signal.SIGKILL)
        left = self.report.read_text('utf-8')
        with self.assertRaises(ET.ParseError):
            ET.fromstring(left)
        self.assertTrue(left.endswith('</fileobject>\n'), 'whole pieces only')
        files = read_report_of_a_broken_search(left)
        self.assertEqual(len(files), self.finished)
        self.check_files(files, [self.destination / file.filename for file in files])

    def test_a_killed_search_leaves_whole_rows(self) -> None:
        self.report = self.folder / 'report.csv'
        search = self.start_and_hold('--report', str(self.report))
        self.wait_until(lambda: self.report.read_bytes().count(b'\r\n') > self.finished, search)
        search.send_signal(signal.SIGKILL)
        self.let_go()
        self.assertEqual(search.wait(), -signal.SIGKILL)
        files = read_csv(self.report)
        self.assertEqual(len(files), self.finished)
        self.check_files(files, [self.destination / file.filename for file in files])

    def test_a_stopped_search_ends_its_report(self) -> None:
        search = self.begin()
        self.stop(search, signal.SIGINT)
        self.let_go()
        run = self.end(search)
        self.assertEqual((run.status, run.outcome), (130, 'stopped'), run.err)
        self.assertEqual(len(run.files), self.finished + 1)
        self.check_files(read_report(self.report.read_bytes()), run.files)


class TheRules(ReportChecks):
    def test_a_report_that_breaks_one_is_refused(self) -> None:
        disks.raw_image(self.image, make_jpegs(2))
        self.search_and_check(self.image)
        good = self.report.read_text('utf-8')
        for right, wrong in (('version="1.2.0"', 'version="1.1"'), ('Category:Digital', 'Category'),
                             ('<uid>', '<uid>x'), (' len="', ' len="1'), ('sha256', 'sha1'),
                             ('<filesize>', '<filesize>1'), ('<metadata>', '<creator/><metadata>'),
                             (' img_offset=', ' fs_offset='), ('norvo:search', 'norvo:other'),
                             ('<device_sectors>', '<device_sectors>1')):
            self.assertIn(right, good)
            with self.assertRaises(BrokenRule, msg=right):
                read_report(good.replace(right, wrong).encode())


if __name__ == '__main__':
    main()
