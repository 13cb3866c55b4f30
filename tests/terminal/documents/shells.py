"""Shells at a terminal: a person's keys go in, and what the shell made of them comes out."""
import os
import pty
import re
import select
import subprocess
import time
from pathlib import Path

PROMPT = '[ready]'
# Tells what a command line came to, in signs that nobody types.
ECHO_ARGUMENTS = r"""norvo-recover() { printf '\n{'; printf '<%s>' "$@"; printf '}\n'; }"""
PATIENCE = 120  # seconds; a shell that takes longer hangs


class Shell:
    """A shell at a terminal of its own, in `folder`. Runs until it is closed."""

    def __init__(self, command: list[str], folder: Path, environment: dict[str, str]) -> None:
        self._terminal, its_end = pty.openpty()
        self._process = subprocess.Popen(
            command, stdin=its_end, stdout=its_end, stderr=its_end, cwd=folder,
            start_new_session=True,
            env={'PATH': os.environ['PATH'], 'HOME': str(folder), 'TERM': 'vt100',
                 'LC_ALL': 'C.UTF-8', 'COLUMNS': '500', **environment})
        os.close(its_end)
        self._read_until(re.escape(PROMPT))

    def close(self) -> None:
        self._process.kill()
        self._process.wait()
        os.close(self._terminal)

    def arguments(self, keys: str) -> list[str]:
        """The arguments that norvo-recover gets when `keys` are typed behind its name."""
        os.write(self._terminal, f'norvo-recover {keys}\r'.encode())
        words = self._read_until(r'\n\{((?:<[^>]*>)*)\}')
        self._read_until(re.escape(PROMPT))
        return re.findall('<([^>]*)>', words.group(1))

    def _read_until(self, pattern: str) -> re.Match[str]:
        """Takes output up to the pattern; what follows is left for later."""
        deadline = time.monotonic() + PATIENCE
        seen = b''
        while True:
            found = re.search(pattern, seen.decode('utf-8', 'replace').replace('\r', ''))
            if found:
                return found
            ready, _, _ = select.select([self._terminal], [], [], deadline - time.monotonic())
            if not ready:
                raise TimeoutError(f'{pattern} was not seen in {seen!r}')
            # Byte by byte, so that nothing behind the pattern is taken.
            seen += os.read(self._terminal, 1)


def bash(completion: Path, folder: Path) -> Shell:
    start = folder / 'start.bash'
    start.write_text(f"""
PS1='{PROMPT}'
unset HISTFILE
bind 'set enable-bracketed-paste off' 'set completion-query-items 0'
bind 'set page-completions off' 'set show-all-if-ambiguous on' 'set bell-style none'
{ECHO_ARGUMENTS}
source '{completion}'
""")
    return Shell(['bash', '--noprofile', '--rcfile', str(start), '-i'], folder, {})


def zsh(completion: Path, folder: Path) -> Shell:
    (folder / '.zshrc').write_text(f"""
PS1='{PROMPT}'
unsetopt beep prompt_cr prompt_sp
fpath=('{completion.parent}' $fpath)
autoload -Uz compinit
compinit -u -D
{ECHO_ARGUMENTS}
# Escape and a star put everything that can stand there into the line.
zle -C all-matches complete-word _generic
bindkey '\\e*' all-matches
zstyle ':completion:all-matches::::' completer _all_matches _complete
zstyle ':completion:all-matches:*' insert yes
""")
    return Shell(['zsh', '-d', '-i'], folder, {'ZDOTDIR': str(folder)})
