#!/usr/bin/env python3
"""Times conversions of generated catalogs, alternately with programs that only parse them. bench/run.sh starts it."""
import argparse
import json
import os
import pathlib
import shlex
import shutil
import statistics
import subprocess
import sys

OTHER_SHAPES = ["realistic", "one-name", "enumerations", "small-functions", "long-descriptions"]
# Few enough that a catalog of 1 MB has functions beyond those that every block has.
BLOCKS = "25"
LARGEST_WITH_LOGS = 100
CONVERSION = "[Conversion]\nWriteSignals=1\nWarnOnOverwrite=0\nMakeReadOnly=0\n"
TARVEX, DOM, SAX, XMLLINT = "TARVEX", "DOMCount", "SAXCount", "xmllint"


class Result:
    """What one program took for one catalog."""

    def __init__(self, megabytes, seconds, memory):
        self.seconds = statistics.median(seconds)
        self.per_megabyte = 1000 * self.seconds / megabytes
        self.memory = memory


class Bench:
    def __init__(self, options):
        self.build = options.build.resolve()
        self.directory = options.directory.resolve()
        self.rounds = options.rounds

    def generate(self, shape, size, doctype=False):
        """The name of a new catalog."""
        name = f"{shape}-{size}{'-doctype' if doctype else ''}.xml"
        print(f"Generating {name} ...", file=sys.stderr, flush=True)
        command = [self.build / "generate-catalog", "--shape", shape, "--megabytes", size, "--blocks", BLOCKS]
        with open(self.directory / name, "wb") as catalog:
            subprocess.run(command + (["--doctype"] if doctype else []), stdout=catalog, check=True)
        return name

    def megabytes(self, catalog):
        return (self.directory / catalog).stat().st_size / 1e6

    def conversion(self, catalog, validate=False, logs=False):
        """The command of a conversion and its settings."""
        settings = f"[Import]\nFCatImportValidate={int(validate)}\nFCatImportLog={int(logs)}\n"
        settings += "FCatTreeLog=bench.tree\n" if logs else ""
        return [str(self.build / "TARVEX"), catalog, "bench.vorn"], settings + CONVERSION

    def run(self, command, settings, *measuring):
        if settings is not None:
            (self.directory / "TARVEX.ini").write_text(settings)
        result = subprocess.run([*measuring, *command], cwd=self.directory, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, check=False)
        if result.returncode != 0:
            sys.exit(f"{shlex.join(command)} failed:\n{result.stdout.decode(errors='replace')}")

    def peak_megabytes(self, command, settings):
        self.run(command, settings, "/usr/bin/time", "-f", "%M", "-o", "bench.memory")
        return int((self.directory / "bench.memory").read_text()) * 1024 / 1e6

    def seconds(self, command, settings):
        hyperfine = ["hyperfine", "-N", "--runs", "1", "--style", "none", "--export-json", "bench.json"]
        self.run([shlex.join(command)], settings, *hyperfine)
        return json.loads((self.directory / "bench.json").read_text())["results"][0]["median"]

    def measure(self, catalog, programs):
        """Results by program: the memory of a first run, and the times of all further ones."""
        print(f"Measuring {catalog}: {', '.join(programs)} ...", file=sys.stderr, flush=True)
        memory = {name: self.peak_megabytes(*program) for name, program in programs.items()}
        seconds = {name: [] for name in programs}
        for _ in range(self.rounds):
            for name, program in programs.items():
                seconds[name].append(self.seconds(*program))
        size = self.megabytes(catalog)
        return {name: Result(size, seconds[name], memory[name]) for name in programs}

    def clean(self):
        for name in ["TARVEX.ini", "bench.vorn", "bench.tree", "bench.memory", "bench.json"]:
            (self.directory / name).unlink(missing_ok=True)


def row(*cells):
    print("| " + " | ".join(str(cell) for cell in cells) + " |", flush=True)


def head(title, *columns):
    print(f"\n### {title}\n")
    row(*columns)
    row(*["---"] + ["---:"] * (len(columns) - 1))


def measure_parse(bench, catalog, use, with_dom=True):
    """One row of the table: a conversion, and the parse alone by others. Returns the conversion."""
    validate = use == "validated"
    switch = "-v=always" if validate else "-v=never"
    programs = {TARVEX: bench.conversion(catalog, validate)}
    if with_dom:
        programs[DOM] = (["DOMCount", switch, catalog], None)
    programs[SAX] = (["SAXCount", switch, catalog], None)
    programs[XMLLINT] = (["xmllint", "--noout", *(["--valid"] if validate else []), catalog], None)
    results = bench.measure(catalog, programs)
    tarvex = results[TARVEX]
    cells = [catalog, use, f"{bench.megabytes(catalog):.1f}", f"{tarvex.seconds:.3f}", f"{tarvex.per_megabyte:.1f}",
             f"{tarvex.memory:.0f}"]
    if with_dom:
        dom = results[DOM]
        cells += [f"{dom.seconds:.3f}", f"{dom.memory:.0f}", f"{tarvex.seconds / dom.seconds:.2f}",
                  f"{tarvex.memory / dom.memory:.2f}"]
    else:
        cells += ["-"] * 4
    row(*cells, f"{results[SAX].seconds:.3f}", f"{results[XMLLINT].seconds:.3f}")
    return tarvex


def against_the_parse(bench, options):
    """Returns the conversions without a document type by shape and size."""
    head("Against the parse alone", "Catalog", "Document type", "MB", "TARVEX s", "ms per MB", "Peak MB", "DOMCount s",
         "Peak MB", "Time ratio", "Memory ratio", "SAXCount s", "xmllint s")
    conversions = {}
    for size in options.sizes:
        conversions["plain", size] = measure_parse(bench, bench.generate("plain", size), "none")
        catalog = bench.generate("plain", size, doctype=True)
        measure_parse(bench, catalog, "read")
        measure_parse(bench, catalog, "validated")
    for shape in OTHER_SHAPES:
        for size in options.shape_sizes:
            conversions[shape, size] = measure_parse(bench, bench.generate(shape, size), "none", with_dom=False)
    return conversions


def growth(conversions, options):
    small = min(options.shape_sizes, key=float)
    large = max(options.shape_sizes, key=float)
    if small == large:
        return
    head("Growth", "Shape", f"ms per MB at {small} MB", f"at {large} MB", "Ratio")
    for shape in ["plain", *OTHER_SHAPES]:
        if (shape, small) in conversions and (shape, large) in conversions:
            low = conversions[shape, small].per_megabyte
            high = conversions[shape, large].per_megabyte
            row(shape, f"{low:.1f}", f"{high:.1f}", f"{high / low:.2f}")


def logs(bench, options):
    size = max((size for size in options.sizes if float(size) <= LARGEST_WITH_LOGS), key=float,
               default=options.sizes[0])
    head("Logs", "Catalog", "Logs off s", "Import log and tree log on s", "Ratio")
    catalog = bench.generate("plain", size)
    results = bench.measure(catalog, {"off": bench.conversion(catalog), "on": bench.conversion(catalog, logs=True)})
    off, on = results["off"].seconds, results["on"].seconds
    row(catalog, f"{off:.3f}", f"{on:.3f}", f"{on / off:.2f}")
    (bench.directory / catalog).with_suffix(".log").unlink()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, required=True, help="directory with the programs")
    parser.add_argument("--directory", type=pathlib.Path, required=True, help="where catalogs go")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--sizes", nargs="+", required=True, metavar="MB", help="of the plain catalogs")
    parser.add_argument("--shape-sizes", nargs="+", required=True, metavar="MB", help="of the other shapes")
    options = parser.parse_args()
    bench = Bench(options)
    document_type = pathlib.Path(__file__).resolve().parent.parent / "examples" / "fcat.dtd"
    shutil.copy(document_type, bench.directory)
    rounds = "1 run" if options.rounds == 1 else f"{options.rounds} runs"
    print(f"Medians of {rounds}, on {os.cpu_count()} processors.", flush=True)
    try:
        growth(against_the_parse(bench, options), options)
        logs(bench, options)
    finally:
        bench.clean()


if __name__ == "__main__":
    main()
