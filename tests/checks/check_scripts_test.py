#!/usr/bin/python3
"""The checks of the tree find what they are made to find."""
import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
GOOD_HEADER = '// What it is for.\n#pragma once\n'


class Tree(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory(prefix='norvo_checks_')
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        self.write('CMakeLists.txt', 'add_subdirectory(tests)')
        self.write('src/util/Text.h', GOOD_HEADER)
        self.write('src/engine/Scan.h', GOOD_HEADER + '#include "util/Text.h"\n')
        self.write('src/wizard/Wizard.h', GOOD_HEADER)

    def write(self, name: str, content: str) -> None:
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(content, 'utf-8')

    def run_script(self, script: str, argument: Path) -> tuple[int, str]:
        result = subprocess.run([sys.executable, ROOT / script, argument], text=True,
                                capture_output=True, check=False)
        return result.returncode, result.stdout


class Layout(Tree):
    def setUp(self) -> None:
        super().setUp()
        shutil.copy(ROOT / '.clang-format', self.root)

    def check(self) -> tuple[int, str]:
        status, output = self.run_script('tools/check_layout.py', self.root)
        if status == 77:
            self.skipTest(output)
        return status, output

    def test_a_tree_that_is_laid_out_passes(self) -> None:
        self.assertEqual(self.check()[0], 0)

    def test_a_file_that_is_not_is_named(self) -> None:
        self.write('tests/util/Text_test.cpp', 'int  one ;\n')
        status, output = self.check()
        self.assertEqual(status, 1)
        self.assertIn('tests/util/Text_test.cpp:1:4', output)

    def test_an_empty_tree_does_not_pass(self) -> None:
        shutil.rmtree(self.root / 'src')
        self.assertEqual(self.check()[0], 1)


class Lint(Tree):
    def findings_in(self, *contents: str) -> tuple[int, str]:
        shutil.copy(ROOT / '.clang-tidy', self.root)
        names = [f'src/util/Source{number}.cpp' for number in range(len(contents))]
        for name, content in zip(names, contents):
            self.write(name, content)
        entries = [{'file': str(self.root / name), 'directory': str(self.root),
                    'command': f'c++ -std=c++20 -o util.dir/{name}.o -c {self.root / name}'}
                   for name in names]
        self.write('compile_commands.json', json.dumps(entries))
        result = subprocess.run([sys.executable, ROOT / 'tools/run_clang_tidy.py', self.root,
                                 *(self.root / name for name in names)], text=True,
                                capture_output=True, check=False)
        if result.returncode == 77:
            self.skipTest(result.stdout)
        return result.returncode, result.stdout

    def test_sources_without_a_fault_pass(self) -> None:
        status, output = self.findings_in('int one() { return 1; }\n', 'int two() { return 2; }\n')
        self.assertEqual(status, 0, output)
        self.assertIn('2 sources looked at in 1 groups', output)

    def test_a_fault_that_stands_in_one_place_is_found(self) -> None:
        status, output = self.findings_in('int one() { return 1; }\n', 'int* two() { return 0; }\n')
        self.assertEqual(status, 1, output)
        self.assertIn('Source1.cpp:1:21: error: use nullptr', output)

    def test_a_fault_on_the_road_between_functions_is_found(self) -> None:
        status, output = self.findings_in(
            'int one() { return 1; }\n',
            'static int at(const int* place) { return place == nullptr ? *place : 1; }\n'
            'int two(int n) { return at(n > 3 ? nullptr : &n); }\n')
        self.assertEqual(status, 1, output)
        self.assertIn('Source1.cpp:1:61: error: Dereference of null pointer', output)


class HouseRules(Tree):
    def assert_fault(self, expected: str) -> None:
        status, output = self.run_script('tools/check_house.py', self.root)
        self.assertEqual(status, 1, output)
        self.assertIn(expected, output)
        self.assertIn(' 1 faults', output)

    def test_a_tree_that_keeps_the_rules_passes(self) -> None:
        status, output = self.run_script('tools/check_house.py', self.root)
        self.assertEqual(status, 0, output)

    def test_an_empty_tree_does_not_pass(self) -> None:
        status, _ = self.run_script('tools/check_house.py', self.root / 'src' / 'nothing')
        self.assertEqual(status, 1)

    def test_an_include_that_points_up_is_named(self) -> None:
        self.write('src/util/Text.cpp', '\n#include "engine/Scan.h"\n')
        self.assert_fault('src/util/Text.cpp:2: util may not include engine')

    def test_two_rooms_of_one_floor_do_not_know_each_other(self) -> None:
        self.write('src/engine/Scan.cpp', '#include "wizard/Wizard.h"\n')
        self.assert_fault('src/engine/Scan.cpp:1: engine may not include wizard')

    def test_an_include_without_its_folder_is_named(self) -> None:
        self.write('src/engine/Scan.cpp', '#include "Scan.h"\n')
        self.assert_fault('src/engine/Scan.cpp:1')

    def test_a_system_switch_below_the_platform_is_named(self) -> None:
        self.write('src/engine/Scan.cpp', '#ifdef __APPLE__\n#endif\n')
        self.assert_fault('src/engine/Scan.cpp:1: only platform/')

    def test_a_header_without_a_guard_is_named(self) -> None:
        self.write('tests/support/Card.h', '// A card.\n')
        self.assert_fault('tests/support/Card.h: a header needs "#pragma once"')

    def test_a_header_without_a_word_about_its_purpose_is_named(self) -> None:
        self.write('src/util/Files.h', '#pragma once\n')
        self.assert_fault('src/util/Files.h:1')

    def test_a_file_of_more_than_400_lines_is_named(self) -> None:
        self.write('tests/util/Text_test.cpp', '\n' * 400)
        self.write('tests/util/Files_test.cpp', '\n' * 401)
        self.assert_fault('tests/util/Files_test.cpp: 401 lines')

    def test_a_long_file_is_named_wherever_it_is(self) -> None:
        for name in ('tools/draw.py', 'cmake/Rules.cmake', 'packaging/CMakeLists.txt', '.ci/run'):
            with self.subTest(name):
                self.write(name, '#!/bin/bash\n' + '\n' * 400)
                self.assert_fault(f'{name}: 401 lines')
                (self.root / name).unlink()

    def test_data_and_builds_may_be_long(self) -> None:
        self.write('resources/table', '\n' * 401)
        self.write('build/release/made.py', '\n' * 401)
        self.assertEqual(self.run_script('tools/check_house.py', self.root)[0], 0)

    def test_a_function_in_python_of_more_than_60_lines_is_named(self) -> None:
        self.write('tools/draw.py', 'def short():\n' + '    pass\n' * 59)
        self.write('tools/make.py', 'class Maker:\n    def long(self):\n' + '        pass\n' * 60)
        self.assert_fault('tools/make.py:2: long has 61 lines')


class Registration(Tree):
    def check(self, listing: str) -> tuple[int, str]:
        self.write('tests/CMakeLists.txt', listing)
        return self.run_script('tests/check_registration.py', self.root / 'tests')

    def test_a_registered_test_passes(self) -> None:
        self.write('tests/util/Text_test.cpp', '')
        status, output = self.check('norvo_test(text_test SOURCES util/Text_test.cpp)')
        self.assertEqual(status, 0, output)

    def test_a_forgotten_test_is_named(self) -> None:
        self.write('tests/util/Text_test.cpp', '')
        self.write('tests/util/Other_test.py', '')
        status, output = self.check('add(util/Text_test.cpp)')
        self.assertEqual(status, 1)
        self.assertIn('util/Other_test.py', output)
        self.assertNotIn('util/Text_test.cpp', output)

    def test_a_comment_registers_nothing(self) -> None:
        self.write('tests/util/Text_test.cpp', '')
        self.assertEqual(self.check('# util/Text_test.cpp\n')[0], 1)

    def test_a_longer_name_registers_nothing(self) -> None:
        self.write('tests/Text_test.cpp', '')
        self.assertEqual(self.check('add(PlainText_test.cpp)')[0], 1)

    def test_a_folder_that_nobody_adds_is_named(self) -> None:
        self.write('tests/deep/CMakeLists.txt', 'add_test(x Deep_test.py)')
        self.write('tests/deep/Deep_test.py', '')
        self.assertEqual(self.check('')[0], 1)
        self.assertEqual(self.check('add_subdirectory(deep)')[0], 0)


class SkippedTests(Tree):
    def listed(self, log: str) -> str:
        self.write('log', log)
        status, output = self.run_script('tools/list_skipped_tests.py', self.root / 'log')
        self.assertEqual(status, 0)
        return output

    def test_a_program_that_skips_some_of_its_tests_is_listed_with_the_reasons(self) -> None:
        # One random search is either for photos or for raw files: what compares the other is skipped.
        run = subprocess.run(
            [os.environ['NORVO_SKIPPING_TEST'],
             '--gtest_filter=Differential.PhotoSearches*:Differential.RawFileSearches*'],
            env={**os.environ, 'NORVO_SEEDS': '1 1'}, text=True, capture_output=True, check=True)
        self.assertRegex(self.listed(run.stdout),
                         r'^NOT RUN: Differential\.(Photo|RawFile)SearchesEqualThePlainOnes: '
                         r'none of the chosen seeds has such a mode\n$')

    def test_the_reason_belongs_to_its_test(self) -> None:
        output = self.listed('[ RUN      ] Drive.Opens\n'
                             'tests/Drive_test.cpp:5: Skipped\nno\ndrive\n\n'
                             '[  SKIPPED ] Drive.Opens (0 ms)\n'
                             '[ RUN      ] Drive.Closes\nSaid in passing\n'
                             '[       OK ] Drive.Closes (0 ms)\n'
                             '[ RUN      ] Each/Size.Fits/1\ntests/Size_test.cpp:7: Skipped\n\n'
                             '[  SKIPPED ] Each/Size.Fits/1, where GetParam() = 4 (3 ms)\n'
                             '[  SKIPPED ] 2 tests, listed below:\n[  SKIPPED ] Drive.Opens\n')
        self.assertEqual(output, 'NOT RUN: Drive.Opens: no drive\n'
                                 'NOT RUN: Each/Size.Fits/1: it gives no reason\n')

    def test_what_a_script_says_is_listed(self) -> None:
        self.assertEqual(self.listed('before\nNOT RUN: one: no root\nbehind\n'),
                         'NOT RUN: one: no root\n')

    def test_a_log_that_is_not_there_is_a_failure(self) -> None:
        self.assertNotEqual(self.run_script('tools/list_skipped_tests.py', self.root / 'none')[0], 0)


if __name__ == '__main__':
    unittest.main()
