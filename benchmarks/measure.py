#!/usr/bin/env python3
"""How fast a whole search is, against plain tools on the same bytes in the same rounds.

Prints, for each kind of work, the median over the rounds of the ratio
(time of the reference) / (time of the search): 1.00 means that recognising costs nothing.
Everything is read from the page cache; the images are made first and read once.
"""

import argparse
import os
import random
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
MIB = 1 << 20
GIB = 1 << 30
SECTOR = 512


def seconds(command: list[str]) -> float:
    begin = time.perf_counter()
    subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
    return time.perf_counter() - begin


def peak_memory(command: list[str]) -> int:
    """Bytes of the command's largest resident set. Read from the process itself while it runs: the
    figure that the system keeps for ended children contains this script's own."""
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    peak = 0
    while process.poll() is None:
        for line in Path(f"/proc/{process.pid}/status").read_text().splitlines():
            if line.startswith("VmHWM:"):
                peak = max(peak, int(line.split()[1]) * 1024)
        time.sleep(0.01)
    if process.returncode != 0:
        sys.exit(f"{command} ended with {process.returncode}")
    return peak


def write_table(folder: Path, names: tuple[str, str], records: list[dict[str, str]]) -> None:
    folder.mkdir(parents=True, exist_ok=True)
    lines = []
    for record in records:
        lines += [f"Extension : {record['extension']}", f"Size : {record['size']}",
                  f"Header : {record['header']}", f"Offset : {record['offset']}", "Kind : 0",
                  f"Description : {record['extension']}", ""]
    (folder / names[0]).write_text("\n".join(lines))
    (folder / names[1]).write_text("")


def random_records(count: int, size: int) -> list[dict[str, str]]:
    """Headers of 4 to 10 bytes at the places where real formats have theirs."""
    numbers = random.Random(count)
    offsets = ["1"] * 6 + ["5", "9", "37", "129"]
    return [{"extension": f"T{i}", "size": str(size),
             "header": numbers.randbytes(numbers.randint(4, 10)).hex().upper(),
             "offset": numbers.choice(offsets)} for i in range(count)]


def write_noise(path: Path, size: int) -> None:
    with open(path, "wb") as image:
        for _ in range(size // MIB):
            image.write(os.urandom(MIB))


def write_zeros(path: Path, size: int) -> None:
    block = bytes(MIB)
    with open(path, "wb") as image:
        for _ in range(size // MIB):
            image.write(block)


def write_half_card(path: Path, size: int, header: bytes) -> int:
    """Pictures of 4 MiB, each followed by as much that belongs to nothing. The search ends each
    picture by its size limit. Returns the bytes of the pictures."""
    pictures = 0
    with open(path, "wb") as image:
        for _ in range(size // (8 * MIB)):
            image.write(header + os.urandom(4 * MIB - len(header)))
            image.write(os.urandom(4 * MIB))
            pictures += 4 * MIB
    return pictures


class Bench:
    def __init__(self, arguments: argparse.Namespace, folder: Path) -> None:
        self.rounds = arguments.rounds
        self.scale = 64 if arguments.smallest else 8 if arguments.quick else 1
        self.binary = arguments.binary
        self.folder = folder
        self.out = folder / "out"

    def search(self, image: Path, signatures: Path, *more: str) -> list[str]:
        return [self.binary, "--device", str(image), "--destination", str(self.out),
                "--no-thorough", "--quiet", "--signatures", str(signatures), *more]

    def clear(self) -> None:
        shutil.rmtree(self.out, ignore_errors=True)

    def report(self, what: str, ratios: list[float], note: str = "") -> None:
        print(f"  {what:<52} {statistics.median(ratios):5.2f}   "
              f"({min(ratios):.2f} to {max(ratios):.2f}){note}", flush=True)

    def nothing_found(self) -> None:
        print("Nothing is found, against cat (at least 0.85, aim 1.00)")
        tables = {count: self.folder / f"table{count}" for count in (10, 20, 200)}
        for count, table in tables.items():
            records = random_records(count, 10 * MIB)
            write_table(table, ("SPRExt2.dll", "SPRExt2Adv.dll"), records)
        tables_ratio: list[float] = []
        for name, write in (("noise", write_noise), ("zeros", write_zeros)):
            image = self.folder / f"{name}.img"
            write(image, 4 * GIB // self.scale)
            seconds(["cat", str(image)])
            times: dict[object, list[float]] = {key: [] for key in ("cat", 10, 20, 200)}
            for _ in range(self.rounds):
                times["cat"].append(seconds(["cat", str(image)]))
                for count, table in tables.items():
                    times[count].append(seconds(self.search(image, table)))
                    self.clear()
            for count in (20, 200):
                ratios = [c / s for c, s in zip(times["cat"], times[count])]
                self.report(f"{name}, {count} signatures", ratios)
            tables_ratio += [b / a for a, b in zip(times[10], times[200])]
            image.unlink()
        print("Time with 200 signatures against 10 (at most 1.10, aim 1.05)")
        self.report("noise and zeros", tables_ratio)

    def half_recovered(self) -> None:
        print("Half of the card is recovered, against cat of the card and cp of what is written")
        header = bytes.fromhex("FFD8FFE000104A464946")
        table = self.folder / "photo"
        write_table(table, ("SPRExt2.dll", "SPRExt2Adv.dll"),
                    random_records(19, 4 * MIB) + [{"extension": "JPG", "size": str(4 * MIB),
                                                    "header": header.hex(), "offset": "1"}])
        image = self.folder / "card.img"
        pictures = write_half_card(image, 2 * GIB // self.scale, header)
        self.compare_with_copy("photos", image, self.search(image, table), pictures)
        image.unlink()

    def thirty_files(self) -> None:
        print("30 files from one header, against cat of the card and cp of what is written")
        header = bytes.fromhex("0000001866747970")
        length = 2 * MIB if self.scale > 8 else 16 * MIB
        common = [{"extension": f"V{i}", "size": str(length), "header": header.hex(),
                   "offset": "1"} for i in range(30)]
        table = self.folder / "video"
        write_table(table, ("SPRVideo.dll", "SPRVideoAdv.dll"),
                    random_records(170, 4 * MIB) + common)
        image = self.folder / "video.img"
        with open(image, "wb") as card:
            for _ in range(max(1, 4 // self.scale)):
                card.write(header + os.urandom(length - len(header)))
        size = image.stat().st_size
        self.compare_with_copy("videos, 200 signatures", image,
                               self.search(image, table, "--mode", "video"), 30 * size)
        image.unlink()

    def compare_with_copy(self, what: str, image: Path, search: list[str], written: int) -> None:
        source = self.folder / "written"
        copy = self.folder / "copy"
        write_noise(source, written)
        seconds(["cat", str(image)])
        ratios = []
        for _ in range(self.rounds):
            reference = seconds(["cat", str(image)]) + seconds(["cp", str(source), str(copy)])
            copy.unlink()
            ratios.append(reference / seconds(search))
            found = sum(f.stat().st_size for f in self.out.rglob("*") if f.is_file())
            if abs(found - written) > written // 50:
                sys.exit(f"{found} bytes were recovered, {written} expected")
            self.clear()
        source.unlink()
        self.report(what, ratios, f", {written // MIB} MiB written")

    def memory(self) -> None:
        print("Peak memory in MiB (at most 64, aim 32)")
        table = self.folder / "table200"
        for name, size in (("1 GiB", GIB), ("64 GiB", 64 * GIB // self.scale)):
            image = self.folder / "sparse.img"
            image.touch()
            os.truncate(image, size)
            peak = peak_memory(self.search(image, table))
            self.clear()
            print(f"  sparse, {name:<44} {peak / MIB:5.1f}", flush=True)
            image.unlink()


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--rounds", type=int, default=7, help="rounds of each kind (default 7)")
    parser.add_argument("--quick", action="store_true", help="an eighth of the sizes")
    parser.add_argument("--smallest", action="store_true",
                        help="sizes that show that it runs; the figures mean nothing")
    parser.add_argument("--folder", help="where the images go (default: the temporary folder)")
    parser.add_argument("--binary", default=str(ROOT / "build/release/bin/norvo-recover"))
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="norvo-measure-", dir=arguments.folder) as folder:
        bench = Bench(arguments, Path(folder))
        bench.nothing_found()
        bench.half_recovered()
        bench.thirty_files()
        bench.memory()


if __name__ == "__main__":
    main()
