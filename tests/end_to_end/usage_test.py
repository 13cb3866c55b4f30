#!/usr/bin/python3
"""What the program says to wrong calls, and to calls that only ask."""
import os
import subprocess
from pathlib import Path

import disks
from harness import PATIENCE, Case, main, program
from pictures import make_jpegs

START_MESSAGE = 'Please enter valid Start Sector value.'
END_MESSAGE = 'Please enter valid End Sector value.'
FULL_MESSAGE = 'Not all of the output could be written: standard output took no more.\n'
ORDER_MESSAGE = 'End Sector should be greater than Start Sector.'


class WrongUsage(Case):
    def setUp(self) -> None:
        super().setUp()
        self.image = self.folder / 'disk.img'
        self.places = disks.raw_image(self.image, make_jpegs(3), size=100 * 512)

    def refuse(self, message: str, *arguments: object) -> None:
        for json in ((), ('--json',)):
            with self.subTest(arguments=arguments, json=json):
                self.assert_refused(self.run_program(*arguments, *json), message)

    def refuse_search(self, message: str, *arguments: object) -> None:
        self.refuse(message, '--device', self.image, '--destination', self.destination, *arguments)

    def test_device_and_destination_are_required(self) -> None:
        self.refuse('--device')
        self.refuse('--device', '--destination', self.destination)
        self.refuse('--destination', '--device', self.image)

    def test_an_option_that_does_not_exist_is_refused(self) -> None:
        self.refuse_search('--unknown', '--unknown')
        self.refuse_search('--unknown', '--unknown=1')
        self.refuse_search('--jso', '--jso')
        self.refuse_search('stray', 'stray')

    def test_an_option_without_its_value_is_refused(self) -> None:
        for option in ('--device', '--destination', '--edition', '--mode', '--start-sector',
                       '--end-sector', '--signatures', '--report'):
            run = self.run_program('--json', '--device', self.image, '--destination',
                                   self.destination, option)
            self.assert_refused(run, option)

    def test_a_mode_that_does_not_exist_is_refused(self) -> None:
        self.refuse_search('--mode', '--mode', 'music')
        self.refuse_search('--mode', '--mode', '')

    def test_a_name_without_a_keyword_is_no_edition(self) -> None:
        self.refuse_search('Norvo Oak', '--edition', 'Norvo Oak')
        self.refuse_search('norvo spruce', '--edition', 'norvo spruce')

    def test_an_edition_without_the_mode_is_refused(self) -> None:
        self.refuse_search('Norvo Rowan', '--edition', 'Norvo Rowan', '--mode', 'video')
        self.refuse_search('Norvo Alder', '--edition', 'Norvo Alder', '--mode', 'audio')
        self.refuse_search('Norvo Spruce', '--mode', 'audio')

    def test_a_range_needs_both_ends(self) -> None:
        self.refuse_search('--end-sector', '--start-sector', '1')
        self.refuse_search('--start-sector', '--end-sector', '9')

    def test_a_start_that_is_no_sector_is_refused(self) -> None:
        for start in ('', '-1', '+1', '1.0', 'x', ' 1', '0x1', '101', '0001',
                      '99999999999999999999'):
            self.refuse_search(START_MESSAGE, f'--start-sector={start}', '--end-sector=50')

    def test_an_end_that_is_no_sector_is_refused(self) -> None:
        for end in ('', '-1', '+1', '50.', 'x', '50 ', '101', '0050', '18446744073709551617'):
            self.refuse_search(END_MESSAGE, '--start-sector=1', f'--end-sector={end}')

    def test_the_start_is_looked_at_before_the_end(self) -> None:
        self.refuse_search(START_MESSAGE, '--start-sector=x', '--end-sector=y')

    def test_an_end_that_does_not_lie_behind_the_start_is_refused(self) -> None:
        self.refuse_search(ORDER_MESSAGE, '--start-sector=50', '--end-sector=50')
        self.refuse_search(ORDER_MESSAGE, '--start-sector=50', '--end-sector=49')
        self.refuse_search(ORDER_MESSAGE, '--start-sector=100', '--end-sector=100')

    def test_the_whole_device_as_a_range_is_allowed(self) -> None:
        run = self.search(self.image, '--start-sector=000', '--end-sector=100')
        self.assertEqual((run.status, run.outcome), (0, 'completed'), run.err)
        self.assertEqual(disks.Recovered(run.files).missing(self.places), [])


class Information(Case):
    def test_help_names_every_option(self) -> None:
        run = self.run_program('--help')
        self.assertEqual((run.status, run.err), (0, ''))
        for option in ('--device', '--destination', '--edition', '--mode', '--start-sector',
                       '--end-sector', '--no-thorough', '--signatures', '--json', '--quiet',
                       '--list-types', '--list-drives', '--check-signatures', '--report', '--help',
                       '--version'):
            self.assertIn(option, run.out)

    def test_the_version_is_one_line(self) -> None:
        run = self.run_program('--version')
        self.assertEqual((run.status, run.err), (0, ''))
        self.assertRegex(run.out, r'\Anorvo-recover \d+\.\d+\.\d+\n\Z')


class FullOutput(Case):
    """Standard output that takes nothing."""

    def run_into(self, output: str | int, *arguments: object) -> tuple[int, str]:
        with open(output, 'wb') as full:
            result = subprocess.run(self.command(*arguments), stdin=subprocess.DEVNULL, stdout=full,
                                    stderr=subprocess.PIPE, text=True, timeout=PATIENCE,
                                    check=False)
        return result.returncode, result.stderr

    def setUp(self) -> None:
        super().setUp()
        self.image = self.folder / 'disk.img'
        self.places = disks.raw_image(self.image, make_jpegs(3), size=100 * 512)
        self.call = ('--device', self.image, '--destination', self.destination, '--quiet')

    def recovered(self) -> list[Path]:
        return [path for path in self.destination.rglob('*') if path.is_file()]

    def test_is_told_with_a_status_of_its_own(self) -> None:
        for arguments in (('--help',), ('--version',), ('--list-types',),
                          ('--list-types', '--json'), self.call, (*self.call, '--json')):
            with self.subTest(arguments):
                status, err = self.run_into('/dev/full', *arguments)
                self.assertEqual((status, err), (1, FULL_MESSAGE))
        self.assertEqual(disks.Recovered(self.recovered()).missing(self.places), [])

    def test_of_a_drive_list_is_told(self) -> None:
        if not self.run_program('--list-drives').out:
            self.skipTest('no drive is mounted here')
        self.assertEqual(self.run_into('/dev/full', '--list-drives'), (1, FULL_MESSAGE))

    def test_does_not_hide_that_a_call_was_wrong(self) -> None:
        status, err = self.run_into('/dev/full', '--json', '--unknown')
        self.assertEqual(status, 2)
        self.assertNotIn(FULL_MESSAGE, err)

    def test_a_reader_that_goes_does_not_stop_the_search(self) -> None:
        reader, writer = os.pipe()
        os.close(reader)
        status, err = self.run_into(writer, *self.call, '--json')
        self.assertEqual((status, err), (1, FULL_MESSAGE))
        self.assertEqual(disks.Recovered(self.recovered()).missing(self.places), [])


class WithoutSignatures(Case):
    """A signature folder that has nothing for the search."""

    def assert_warned(self, err: str) -> None:
        self.assertEqual(err.count(f'Warning: no signatures could be read from {self.folder}.'), 1)

    def test_is_told_whatever_is_listed(self) -> None:
        for mode in ('photo', 'video', 'raw', 'audio'):
            with self.subTest(mode):
                run = self.run_program('--edition', 'Norvo Birch', '--mode', mode, '--list-types',
                                       '--signatures', self.folder)
                self.assertEqual(run.status, 0)
                self.assert_warned(run.err)

    def test_is_told_whatever_is_searched_for(self) -> None:
        image = self.folder / 'disk.img'
        image.write_bytes(bytes(100 * 512))
        for mode, status in (('photo', 0), ('video', 2)):
            with self.subTest(mode):
                run = self.run_program('--mode', mode, '--device', image, '--destination',
                                       self.destination, '--signatures', self.folder)
                self.assertEqual(run.status, status)
                self.assert_warned(run.err)


class ClosedStreams(Case):
    def test_nothing_but_a_file_is_written_into_a_file(self) -> None:
        """Who starts a program with its streams closed leaves their numbers to the first files that
        it opens."""
        image = self.folder / 'disk.img'
        places = disks.raw_image(image, make_jpegs(3), size=100 * 512)
        command = self.command('--device', image, '--destination', self.destination, '--json')
        status = subprocess.run(['sh', '-c', 'exec "$@" <&- >&- 2>&-', 'sh', *command],
                                timeout=PATIENCE, check=False).returncode
        self.assertEqual(status, 0)
        files = sorted(self.destination.rglob('*.JPG'))
        self.assertEqual(disks.Recovered(files).missing(places), [])
        for file in files:
            self.assertNotIn(b'"event"', file.read_bytes(), file)


class CheckSignatures(Case):
    def write(self, name: str, *lines: str) -> Path:
        path = self.folder / 'signatures' / name
        path.parent.mkdir(exist_ok=True)
        path.write_text('\n'.join(lines) + '\n', 'utf-8')
        return path

    def check(self) -> tuple[int, str]:
        run = self.run_program('--check-signatures', self.folder / 'signatures')
        return run.status, run.out

    def good_lines(self) -> list[str]:
        return ['Extension : JPG', 'Size : 1000', 'Header : FFD8FF', 'Offset : 1', 'Kind : photo',
                'Description : picture']

    def test_the_shipped_files_have_no_faults(self) -> None:
        shipped = program().parent.parent / 'share/norvo-recovery/signatures'
        run = self.run_program('--check-signatures', shipped)
        self.assertEqual(run.status, 0, run.out)
        self.assertIn(' 0 faults', run.out)

    def test_a_good_file_has_none(self) -> None:
        self.write('SPRExt2.dll', *self.good_lines())
        self.assertEqual(self.check(), (0, '1 file, 0 faults\n'))

    def test_a_short_header_is_named_with_file_and_line(self) -> None:
        lines = self.good_lines()
        lines[2] = 'Header : F'
        path = self.write('SPRExt2.dll', '# a picture', *lines)
        status, out = self.check()
        self.assertEqual(status, 1)
        self.assertIn(f'{path}:4: ', out)

    def test_an_incomplete_last_record_is_named_with_file_and_line(self) -> None:
        path = self.write('SPRExt2.dll', *self.good_lines(), *self.good_lines()[:4])
        self.write('SPRExt2Adv.dll', *self.good_lines())
        status, out = self.check()
        self.assertEqual(status, 1)
        self.assertIn(f'{path}:7: ', out)
        self.assertIn('2 files, 1 fault\n', out)

    def test_a_name_cannot_steer_the_terminal(self) -> None:
        self.write('\x1b[31mred.dll', 'Extension : JPG')
        status, out = self.check()
        self.assertEqual(status, 1)
        self.assertIn('red.dll', out)
        self.assertNotIn('\x1b', out)

    def test_a_folder_without_signatures_is_wrong_usage(self) -> None:
        run = self.run_program('--check-signatures', self.folder)
        self.assertEqual((run.status, run.out), (2, ''))
        self.assertIn(str(self.folder), run.err)


if __name__ == '__main__':
    main()
