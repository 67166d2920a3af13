#!/usr/bin/env python3
"""Converts catalogs of 250,000 and 500,000 parameters of one name, alternately, and prints medians and their ratio.

    bench/equal_names.py [--runs N] [--operations N] [--not-unique]

Wants the release build.
"""
import argparse
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

PROGRAMS = pathlib.Path(__file__).resolve().parent.parent / "build" / "release"
SIZES = [250_000, 500_000]
LARGEST_RATIO = 2.3


def convert(directory, size):
    """Seconds of wall clock and of CPU that one conversion takes."""
    command = [PROGRAMS / "TARVEX", f"{size}.xml", f"{size}.vorn"]
    start = time.perf_counter()
    process = subprocess.Popen(command, cwd=directory, stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit(f"The conversion of {size} parameters failed.")
    return time.perf_counter() - start, usage.ru_utime + usage.ru_stime


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--runs", type=int, default=7)
    parser.add_argument("--operations", type=int, default=5, help="in how many operations each one stands")
    parser.add_argument("--not-unique", action="store_true", help="names are unique in their message only")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as directory:
        directory = pathlib.Path(directory)
        unique = 0 if options.not_unique else 1
        (directory / "TARVEX.ini").write_text(
            f"[Conversion]\nWriteSignals=1\nUniqueSignalNames={unique}\nWarnOnOverwrite=0\nMakeReadOnly=0\n")
        for size in SIZES:
            with open(directory / f"{size}.xml", "wb") as catalog:
                command = [PROGRAMS / "generate-equal-names", "--parameters", str(size)]
                command += ["--operations", str(options.operations)]
                subprocess.run(command, stdout=catalog, check=True)
        times = {size: [] for size in SIZES}
        for _ in range(options.runs):
            for size in SIZES:
                times[size].append(convert(directory, size))
    ratios = []
    for index, what in enumerate(["wall clock", "CPU"]):
        medians = [statistics.median(run[index] for run in times[size]) for size in SIZES]
        ratios.append(medians[1] / medians[0])
        print(f"{what}: {medians[0]:.2f} s, {medians[1]:.2f} s, ratio {ratios[-1]:.2f}")
    return 0 if ratios[0] <= LARGEST_RATIO else 1


if __name__ == "__main__":
    sys.exit(main())
