#!/usr/bin/python3
"""The Debian package in a clean system: installed, used, upgraded and removed.

NORVO_PACKAGES names the folder of the package, NORVO_CLEAN_SYSTEM the cache of the clean system.
"""
import configparser
import os
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from clean_system import (ENVIRONMENT, CleanSystem, NotToBeHad, call, enter, is_inside,
                          unpacked_system)
from desktop import Desktop, until
from harness import main, need_root, need_tools

NAME = 'norvo-recovery'
SAMPLE_CARD = Path(__file__).resolve().parents[2] / 'tools/make_sample_card.py'
EDITIONS = 7


def package() -> Path:
    return next(Path(os.environ['NORVO_PACKAGES']).glob('*.deb'))


def setUpModule() -> None:
    need_root('installing into a system of its own')
    need_tools('debootstrap', 'dpkg-deb', 'tar', 'unshare', 'Xvfb', 'openbox', 'xdotool', 'xprop',
               'mkfs.fat', 'mcopy', 'mdel')
    if not is_inside():
        raise unittest.SkipTest('no mount namespace can be had here')
    needed = call('dpkg-deb', '--field', package(), 'Depends').strip()
    try:
        Package.base = unpacked_system(Path(os.environ['NORVO_CLEAN_SYSTEM']), needed)
    except NotToBeHad as missing:
        raise unittest.SkipTest(f'no clean system: {missing}') from None
    unittest.addModuleCleanup(shutil.rmtree, Package.base)


def entry_of(path: Path) -> dict[str, str]:
    parser = configparser.RawConfigParser(interpolation=None)
    parser.optionxform = str  # type: ignore[assignment]
    parser.read(path, 'utf-8')
    return dict(parser['Desktop Entry'])


class Package(unittest.TestCase):
    maxDiff = None
    base: Path

    def setUp(self) -> None:
        self.system = CleanSystem(self.base)
        self.addCleanup(self.system.remove)

    def apt(self, *words: str) -> str:
        return self.system.run('apt-get', '-qy', '--no-install-recommends', *words)

    def install(self, file: Path, *words: str) -> str:
        copy = self.system.path('tmp/given.deb')
        shutil.copy(file, copy)
        said = self.apt('install', *words, '/tmp/given.deb')
        copy.unlink()
        return said

    def version(self) -> str:
        return self.system.run('dpkg-query', '--show', '--showformat=${Version}', NAME)

    def contents(self) -> list[str]:
        return self.system.run('dpkg', '--listfiles', NAME).splitlines()

    def entries(self) -> list[dict[str, str]]:
        folder = self.system.path('usr/share/applications')
        return [entry_of(path) for path in sorted(folder.glob('org.norvo.recovery.*.desktop'))]

    def assert_as_shipped(self) -> None:
        self.assertEqual(self.system.run('dpkg', '--verify', NAME), '')

    def test_needs_nothing_but_what_it_says(self) -> None:
        said = self.install(package())
        self.assertIn('0 upgraded, 1 newly installed, 0 to remove', said)
        self.assert_as_shipped()
        programs = [path for path in self.contents()
                    if '/MacOS/' in path or path.startswith('/usr/bin/')]
        self.assertEqual(len(programs), 3 * EDITIONS + 1)
        for program in programs:
            libraries = self.system.run('ldd', program)
            self.assertIn('libstdc++', libraries)
            self.assertNotIn('not found', libraries)
        # What is loaded by name when it is needed, so that no library list has it.
        for plugin in ('qt6/plugins/platforms/libqxcb.so', 'qt6/plugins/imageformats/libqtiff.so',
                       'qt6/plugins/imageformats/libqwebp.so',
                       'qt6/plugins/iconengines/libqsvgicon.so',
                       'qt6/plugins/multimedia/libffmpegmediaplugin.so'):
            found = list(self.system.path('usr/lib').glob(f'*/{plugin}'))
            self.assertEqual(len(found), 1, plugin)
        for tool in ('pkexec', 'lsblk'):
            self.assertTrue(self.system.path(f'usr/bin/{tool}').exists(), tool)

    def test_puts_files_in_its_places_only_and_gives_nobody_a_right(self) -> None:
        self.install(package())
        self.assertFalse(list(self.system.path('var/lib/dpkg/info').glob(f'{NAME}.p*')),
                         'no script runs at installing or removing')
        for name in self.contents():
            path = self.system.path(name)
            status = path.lstat()
            self.assertEqual((status.st_uid, status.st_gid), (0, 0), name)
            self.assertIn(status.st_mode & 0o7777, (0o644, 0o755), name)
            if not path.is_dir():
                self.assertRegex(name, r'^/(opt/norvo/|usr/bin/norvo-recover$|usr/share/)')
                self.assertFalse((self.base / name[1:]).exists(), name)

    def test_menu_and_policy_lead_to_what_is_installed(self) -> None:
        self.install(package())
        entries = self.entries()
        self.assertEqual(len(entries), EDITIONS)
        started = [shlex.split(entry['Exec']) for entry in entries]
        for entry, command in zip(entries, started):
            self.assertEqual(len(command), 1)
            self.assertTrue(os.access(self.system.path(command[0]), os.X_OK), command)
            icons = self.system.path('usr/share/icons/hicolor')
            self.assertEqual(len(list(icons.glob(f'*x*/apps/{entry["Icon"]}.png'))), 8)
            self.assertTrue((icons / f'scalable/apps/{entry["Icon"]}.svg').exists())
        policy = self.system.path('usr/share/polkit-1/actions/org.norvo.recovery.policy')
        allowed = [note.text for note in ElementTree.parse(policy).iter('annotate')
                   if str(note.get('key')).endswith('.exec.path')]
        self.assertEqual(sorted(map(str, allowed)), sorted(command[0] for command in started))

    def recover_sample_card(self) -> str:
        """A person recovers the sample card inside; the answer says what came back."""
        folder = Path(tempfile.mkdtemp(prefix='norvo_package_'))
        self.addCleanup(shutil.rmtree, folder)
        call(sys.executable, SAMPLE_CARD, folder)
        home = self.system.path('home/person')
        shutil.copy(folder / 'card.img', home)
        self.system.run('norvo-recover', '--device', '/home/person/card.img', '--destination',
                        '/home/person/found', '--quiet', person=True)
        answer = call(sys.executable, SAMPLE_CARD, folder, '--compare', home / 'found')
        shutil.rmtree(home / 'found')
        (home / 'card.img').unlink()
        return answer

    def test_recovers_the_sample_card_in_a_terminal(self) -> None:
        self.install(package())
        self.assertIn(self.version(), self.system.run('norvo-recover', '--version', person=True))
        self.assertIn('JPG', self.system.run('norvo-recover', '--list-types', person=True))
        self.assertRegex(self.recover_sample_card(), r'\b(\d+) of \1 deleted pictures')
        for document in ('man/man1/norvo-recover.1.gz', 'bash-completion/completions/norvo-recover',
                         'zsh/vendor-completions/_norvo-recover',
                         'fish/vendor_completions.d/norvo-recover.fish',
                         'doc/norvo-recovery/report.md'):
            self.assertTrue(self.system.path(f'usr/share/{document}').exists(), document)

    def opened(self, desktop: Desktop, entry: dict[str, str]) -> str:
        """Starts the edition of a menu entry as the copy that has asked for its right, and tells
        the class of its window."""
        environment = dict(ENVIRONMENT, HOME='/home/person', QT_QPA_PLATFORM='xcb',
                           DISPLAY=desktop.environment['DISPLAY'])
        command = self.system.command(*shlex.split(entry['Exec']), 'a', 'b', 'c', person=True)
        with subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as program:
            try:
                title = f'Norvo {entry["GenericName"]}'
                desktop.wait_for_window(title)
                window = desktop.tool('search', '--onlyvisible', '--name', f'^{title}')
                return subprocess.run(['xprop', '-id', window.split()[0], 'WM_CLASS'],
                                      env=desktop.environment, capture_output=True, text=True,
                                      check=True).stdout
            finally:
                program.terminate()
                until(lambda: program.poll() is not None, 'the end of the program')

    def test_every_menu_entry_opens_its_window(self) -> None:
        self.install(package())
        self.system.mount('sysfs', 'sysfs', 'sys')
        with Desktop() as desktop:
            self.system.mount('bind', '/tmp/.X11-unix', 'tmp/.X11-unix')
            for entry in self.entries():
                with self.subTest(entry['Name']):
                    self.assertIn(f'"{entry["StartupWMClass"]}"', self.opened(desktop, entry))
            self.system.unmount()

    def older(self, folder: Path) -> Path:
        """A package of an older version that had one file more."""
        call('dpkg-deb', '--raw-extract', package(), folder / 'older')
        control = folder / 'older/DEBIAN/control'
        control.write_text(control.read_text().replace(
            f'Version: {package().name.split("_")[1]}', 'Version: 0.1'))
        (folder / 'older/opt/norvo/given up').write_text('once')
        call('dpkg-deb', '-Znone', '--build', folder / 'older', folder / 'older.deb')
        return folder / 'older.deb'

    def test_upgrades_an_older_version_and_itself(self) -> None:
        with tempfile.TemporaryDirectory(prefix='norvo_package_') as folder:
            self.install(self.older(Path(folder)))
        self.assertEqual(self.version(), '0.1')
        self.assertTrue(self.system.path('opt/norvo/given up').exists())
        self.assertIn('1 upgraded, 0 newly installed', self.install(package()))
        self.assertNotEqual(self.version(), '0.1')
        self.assertFalse(self.system.path('opt/norvo/given up').exists())
        self.assert_as_shipped()
        self.assertIn('1 reinstalled', self.install(package(), '--reinstall'))
        self.assert_as_shipped()

    def test_removing_leaves_nothing(self) -> None:
        for how in ('remove', 'purge'):
            self.install(package())
            self.assertGreater(len(self.system.changes()), 200)
            self.recover_sample_card()
            self.apt(how, NAME)
            left = {path: what for path, what in self.system.changes().items() if what[1]}
            self.assertEqual(left, {})
            # dpkg takes an empty /opt with it, which the system has but no package owns.
            self.assertLessEqual(set(self.system.changes()), {'opt'})
            self.assertFalse(list(self.system.path('var/lib/dpkg/info').glob(f'{NAME}*')))
        self.assertNotIn(NAME, self.system.run('dpkg-query', '--show'))


if __name__ == '__main__':
    enter()
    main()
