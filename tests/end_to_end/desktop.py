"""A desktop without a screen: a display and a window manager of the test's own, keys and pictures."""
import os
import shutil
import signal
import subprocess
import tempfile
import time
from collections.abc import Callable
from pathlib import Path
from types import TracebackType

PATIENCE = 60  # seconds for anything that a person would wait for


def until(done: Callable[[], object], what: str) -> None:
    end = time.monotonic() + PATIENCE
    while not done():
        if time.monotonic() > end:
            raise AssertionError(f'waited in vain for {what}')
        time.sleep(0.05)


class Desktop:
    """Used with `with`; everything that it started ends with it."""

    def __init__(self, size: str = '1280x900') -> None:
        self.size = size
        self.processes: list[subprocess.Popen[bytes]] = []

    def __enter__(self) -> 'Desktop':
        self.folder = tempfile.mkdtemp(prefix='norvo_desktop_')
        # Nothing else of whoever runs the test: neither what a desktop of theirs asks for (its own
        # dialogs, an input method), nor their settings. Root stays root for the programs here, also
        # when somebody became it by sudo.
        self.environment = {'PATH': os.environ['PATH'], 'LC_ALL': 'C.UTF-8', 'HOME': self.folder,
                            'XDG_RUNTIME_DIR': self.folder, 'QT_QPA_PLATFORM': 'xcb'}
        try:
            self.start_screen()
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def start_screen(self) -> None:
        # Left by its last client, a server starts anew unless told otherwise, and throws out who
        # comes meanwhile: asking for the manager did that to the manager, once in ten starts on a
        # busy machine.
        reader, writer = os.pipe()
        self.start('Xvfb', '-displayfd', str(writer), '-screen', '0', f'{self.size}x24',
                   '-nolisten', 'tcp', '-noreset', pass_fds=(writer,))
        os.close(writer)
        with os.fdopen(reader) as answer:
            display = answer.readline().strip()
        self.environment['DISPLAY'] = f':{display}'
        self.start('openbox', '--sm-disable')
        # A window that comes up while the manager starts would never be shown.
        until(self.is_managed, 'the window manager')

    def __exit__(self, kind: type[BaseException] | None, error: BaseException | None,
                 trace: TracebackType | None) -> None:
        for process in reversed(self.processes):
            process.send_signal(signal.SIGKILL)
            process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def start(self, *command: str | Path, **settings: object) -> subprocess.Popen[bytes]:
        process = subprocess.Popen(command, env=self.environment, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, **settings)
        self.processes.append(process)
        return process

    def tool(self, *arguments: str) -> str:
        """The output of xdotool; empty when it finds nothing."""
        return subprocess.run(['xdotool', *arguments], env=self.environment, capture_output=True,
                              text=True, check=False, timeout=PATIENCE).stdout.strip()

    def is_managed(self) -> bool:
        """Whether the manager does what it is asked for; it makes itself known long before."""
        self.tool('set_num_desktops', '1')
        return self.tool('get_num_desktops') == '1'

    def key(self, *keys: str) -> None:
        self.tool('key', '--delay', '30', *keys)
        time.sleep(0.2)

    def type(self, text: str) -> None:
        self.tool('type', '--delay', '10', text)
        time.sleep(0.2)

    def shows_window(self, title: str) -> bool:
        return bool(self.tool('search', '--onlyvisible', '--name', title))

    def active_title(self) -> str:
        return self.tool('getactivewindow', 'getwindowname')

    def wait_for_window(self, title: str) -> None:
        self.wait_for_title(lambda active: title in active, f'the window "{title}"')

    def wait_for_box(self, title: str) -> None:
        """A message box: its title is exactly this one, unlike that of a window whose title goes on."""
        self.wait_for_title(lambda active: active == title, f'the box "{title}"')

    def wait_for_title(self, matches: Callable[[str], bool], what: str) -> None:
        """Waits until the window with the keyboard has such a title, and keeps it: a notice may
        come and go in front of a window that has just opened, and while the keyboard changes hands
        no window has it."""
        seen = 0
        end = time.monotonic() + PATIENCE
        while seen < 8:
            seen = seen + 1 if matches(self.active_title()) else 0
            if time.monotonic() > end:
                self.picture(Path(tempfile.gettempdir()) / 'norvo_desktop_failure.png')
                raise AssertionError(f'waited in vain for {what}, '
                                     f'in front is "{self.active_title()}"')
            time.sleep(0.1)

    def picture(self, path: Path) -> None:
        subprocess.run(['import', '-window', 'root', path], env=self.environment, check=True,
                       timeout=PATIENCE)
