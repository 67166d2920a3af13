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
FUNCTIONS_PER_BLOCK = 4096
PARAMETERS_PER_FUNCTION = 20
OPERATIONS = ["PReportStatus", "PCmdSet", "PCmdSetGet", "PCmdIncrement", "PCmdDecrement"]


def function(number, count, operations):
    """A function whose parameters are all in the same operations: enumerations without values, which are short to write
    and become signals."""
    lines = [f"<Function><FunctionID>{number}</FunctionID><FunctionName>F{number}</FunctionName>"
             "<FunctionClass><Property><PUnclassified>"]
    for position in range(1, count + 1):
        places = "".join(f"<{name}><ParamPos>{position}</ParamPos></{name}>" for name in OPERATIONS[:operations])
        lines.append(f"<PUParam><ParamName>ErrorCode</ParamName><PUParamOPType>{places}</PUParamOPType>"
                     '<PUParamType><TEnum TypeRef="t" TEnumMax="1"/></PUParamType></PUParam>')
    lines.append("</PUnclassified></Property></FunctionClass></Function>\n")
    return "\n".join(lines)


def write_catalog(path, size, operations):
    """A catalog with about so many parameters, counted in each operation, which all have one name."""
    counts = [PARAMETERS_PER_FUNCTION] * (size // operations // PARAMETERS_PER_FUNCTION)
    with path.open("w", encoding="ascii") as catalog:
        catalog.write("<FunctionCatalog>\n")
        for block in range(0, len(counts), FUNCTIONS_PER_BLOCK):
            name = block // FUNCTIONS_PER_BLOCK
            catalog.write(f"<FBlock><FBlockID>{name}</FBlockID><FBlockName>B{name}</FBlockName>\n")
            for number, count in enumerate(counts[block:block + FUNCTIONS_PER_BLOCK]):
                catalog.write(function(number, count, operations))
            catalog.write("</FBlock>\n")
        catalog.write('<Definition><TypeDef TypeID="t"><TDefName>t</TDefName><TDefSize>1</TDefSize></TypeDef>'
                      "</Definition>\n</FunctionCatalog>\n")


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
    parser.add_argument("--operations", type=int, default=5, choices=range(1, 6), help="in how many operations each one stands")
    parser.add_argument("--not-unique", action="store_true", help="names are unique in their message only")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as directory:
        directory = pathlib.Path(directory)
        unique = 0 if options.not_unique else 1
        (directory / "TARVEX.ini").write_text(
            f"[Conversion]\nWriteSignals=1\nUniqueSignalNames={unique}\nWarnOnOverwrite=0\nMakeReadOnly=0\n")
        for size in SIZES:
            write_catalog(directory / f"{size}.xml", size, options.operations)
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
