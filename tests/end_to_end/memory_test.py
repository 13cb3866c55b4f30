#!/usr/bin/python3
"""The search needs little memory, and as much for a large device as for a small one."""
import json
import subprocess
import sys
from pathlib import Path

import disks
from harness import PATIENCE, Case, main
from pictures import make_jpegs

GIB = 1 << 30
MOST_KILOBYTES = 64 << 10
SAME_KILOBYTES = 4 << 10
# Measured by a small process of its own: a child counts what its parent had when it began.
MEASURE = '''
import json, resource, subprocess, sys
own = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
status = subprocess.run(sys.argv[1:], stdout=subprocess.DEVNULL).returncode
print(json.dumps([status, own, resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss]))
'''


class Memory(Case):
    def peak_kilobytes(self, size: int) -> int:
        image = self.folder / f'{size}.img'
        disks.raw_image(image, make_jpegs(20), size=size)
        destination = self.folder / f'{size}'
        command = self.command('--device', image, '--destination', destination, '--json')
        result = subprocess.run([sys.executable, '-S', '-E', '-c', MEASURE, *command], text=True,
                                capture_output=True, timeout=PATIENCE, check=True)
        status, own, peak = json.loads(result.stdout)
        self.assertEqual(status, 0, result.stderr)
        self.assertEqual(len(list(Path(destination).rglob('*.JPG'))), 20)
        print(f'{size // GIB} GiB: {peak} KiB (the measuring process has {own})', flush=True)
        return peak

    def test_the_peak_is_small_and_does_not_grow_with_the_device(self) -> None:
        small, large = self.peak_kilobytes(GIB), self.peak_kilobytes(8 * GIB)
        self.assertLess(max(small, large), MOST_KILOBYTES)
        self.assertLess(abs(large - small), SAME_KILOBYTES)


if __name__ == '__main__':
    main()
