"""Talks to the emulator about the machine's hardware."""
import json
import socket
import time
from pathlib import Path

PATIENCE = 60  # seconds


class Monitor:
    """The emulator's control socket: one order at a time."""

    def __init__(self, path: Path) -> None:
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(PATIENCE)
        self.socket.connect(str(path))
        self.lines = self.socket.makefile('rb')
        self.events: list[dict] = []
        self.next_message()  # the greeting
        self.order('qmp_capabilities')

    def next_message(self) -> dict:
        line = self.lines.readline()
        if not line:
            raise AssertionError('the emulator is gone')
        return json.loads(line)

    def order(self, name: str, **arguments: object) -> object:
        """Lets the emulator do something that must succeed."""
        message = {'execute': name, 'arguments': arguments}
        self.socket.sendall(json.dumps(message).encode() + b'\n')
        while True:
            answer = self.next_message()
            if 'return' in answer:
                return answer['return']
            if 'error' in answer:
                raise AssertionError(f'{name}: {answer["error"]["desc"]}')
            self.events.append(answer)

    def wait_for_removal(self, device: str) -> None:
        end = time.monotonic() + PATIENCE
        while not any(event.get('event') == 'DEVICE_DELETED' and
                      event['data'].get('device') == device for event in self.events):
            if time.monotonic() > end:
                raise AssertionError(f'{device} does not go')
            self.events.append(self.next_message())
        self.events.clear()

    def close(self) -> None:
        self.lines.close()
        self.socket.close()
