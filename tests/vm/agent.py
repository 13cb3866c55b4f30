"""Runs in the virtual machine: takes commands from the host and tells how they ended.

A line from the host is a JSON object with "number", "command" and "limit" (seconds), and perhaps
"user" (a name) and "environment"; the answer is a line with "number", "status", "out" and "err".
Several commands may run at once. A line without a command ends the agent.
"""
import glob
import json
import os
import pwd
import subprocess
import sys
import threading
from typing import BinaryIO

PORT_NAME = 'norvo.agent'
TOO_LONG = 124
sending = threading.Lock()


def open_port() -> BinaryIO:
    for name in glob.glob('/sys/class/virtio-ports/*/name'):
        with open(name, encoding='ascii') as file:
            if file.read().strip() == PORT_NAME:
                port = '/dev/' + name.split('/')[-2]
                return os.fdopen(os.open(port, os.O_RDWR | os.O_CLOEXEC), 'r+b', buffering=0)
    sys.exit('norvo: there is no way to the host')


def send(port: BinaryIO, message: dict) -> None:
    line = json.dumps(message).encode() + b'\n'
    with sending:
        while line:
            line = line[port.write(line):]


def surroundings(request: dict) -> dict:
    """Root, or a user as after a login."""
    if 'user' not in request:
        return {'env': {**os.environ, **request.get('environment', {})}, 'cwd': '/'}
    user = pwd.getpwnam(request['user'])
    environment = {'PATH': '/usr/local/bin:/usr/bin:/bin', 'HOME': user.pw_dir,
                   'USER': user.pw_name, 'LOGNAME': user.pw_name, 'SHELL': user.pw_shell,
                   'LANG': 'C.UTF-8', **request.get('environment', {})}
    return {'env': environment, 'cwd': user.pw_dir, 'user': user.pw_uid, 'group': user.pw_gid,
            'extra_groups': os.getgrouplist(user.pw_name, user.pw_gid), 'umask': 0o022}


def run(request: dict) -> dict:
    try:
        result = subprocess.run(request['command'], stdin=subprocess.DEVNULL, capture_output=True,
                                timeout=request['limit'], check=False, **surroundings(request))
        status, out, err = result.returncode, result.stdout, result.stderr
    except subprocess.TimeoutExpired as end:
        status, out, err = TOO_LONG, end.stdout or b'', end.stderr or b''
    except (OSError, KeyError) as fault:
        status, out, err = 127, b'', str(fault).encode()
    return {'number': request['number'], 'status': status,
            'out': out.decode(errors='replace'), 'err': err.decode(errors='replace')}


def serve(port: BinaryIO) -> None:
    unread = b''
    while True:
        unread += port.read(1 << 16) or b''
        while b'\n' in unread:
            line, unread = unread.split(b'\n', 1)
            request = json.loads(line)
            if 'command' not in request:
                return
            threading.Thread(target=lambda order: send(port, run(order)), args=(request,),
                             daemon=True).start()


def main() -> None:
    with open_port() as port:
        with open('/proc/uptime', encoding='ascii') as file:
            send(port, {'ready': float(file.read().split()[0])})
        serve(port)


if __name__ == '__main__':
    main()
