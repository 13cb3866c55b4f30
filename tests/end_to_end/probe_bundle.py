"""A bundle whose program reports which rights it has; NORVO_PROBE names that program."""
import json
import os
import shutil
import tempfile
from pathlib import Path

from polkit_machine import User, processes_of, wait_until


class Bundle:
    """A bundle with the probe in it, and what that reports."""

    def __init__(self, folder: Path, user: User, name: str, executable: str = '') -> None:
        self.root = folder / f'{name}.app'
        self.executable = self.root / 'Contents/MacOS' / (executable or name)
        self.executable.parent.mkdir(parents=True)
        shutil.copy(os.environ['NORVO_PROBE'], self.executable)
        (self.root / 'Contents/Resources').mkdir()
        self.files = Path(tempfile.mkdtemp(prefix='probe_', dir=user.home))
        os.chown(self.files, user.uid, user.gid)
        self.report_file = self.files / 'report.json'
        self.final_file = self.files / 'final.json'
        self.plan([], [])

    def plan(self, paths: list[object], packets: list[bytes]) -> None:
        plan = {'report': str(self.report_file), 'final_report': str(self.final_file),
                'proceed': str(self.files / 'proceed'), 'open': [str(path) for path in paths],
                'packets': [packet.hex() for packet in packets]}
        place = self.root / 'Contents/Resources/plan.json'
        place.write_text(json.dumps(plan), encoding='utf-8')

    def report(self) -> dict:
        wait_until(self.report_file.exists, 'waiting for the report of the second process')
        return json.loads(self.report_file.read_text(encoding='utf-8'))

    def proceed(self) -> None:
        (self.files / 'proceed').touch()

    def final_report(self) -> dict:
        self.proceed()
        wait_until(self.final_file.exists, 'waiting for the last report')
        return json.loads(self.final_file.read_text(encoding='utf-8'))

    def running(self) -> list[int]:
        return processes_of(self.executable)

    def wait_for_end(self) -> None:
        self.proceed()
        wait_until(lambda: not self.running(), 'waiting for the end of all processes')

    def remove(self) -> None:
        self.wait_for_end()
        shutil.rmtree(self.root)
