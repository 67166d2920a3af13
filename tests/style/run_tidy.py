"""Runs clang-tidy over all sources below some directories: run_tidy.py CLANG_TIDY BUILD JOBS GROUP... [-- OPTION...]

BUILD has the compile commands; without any it is "-". A GROUP is one directory or several, with commas between them. Its
sources are looked at together, as one that includes them all: most of the time goes into the headers that they share.
Those that cannot be together, as they have names in common, come in a later turn."""

import concurrent.futures
import json
import os
import re
import shlex
import subprocess
import sys
import tempfile
from pathlib import Path


def compiler_options(build):
    """All directories of headers and macros that anything is compiled with, and the language."""
    options = {"-std=c++20": None}  # in their order
    if build != "-":
        for command in json.loads((Path(build) / "compile_commands.json").read_text()):
            words = shlex.split(command["command"])
            for word, following in zip(words, words[1:]):
                if word == "-isystem":
                    options[f"-isystem{os.path.normpath(following)}"] = None
                elif word.startswith("-I"):
                    options[f"-I{os.path.normpath(word[2:])}"] = None
                elif word.startswith("-D"):
                    options[word] = None
    return list(options)


# What every program has one of. Under a name of its own in each source, they can be together.
ENTRY_POINTS = ("main", "LLVMFuzzerInitialize", "LLVMFuzzerTestOneInput", "LLVMFuzzerCustomMutator")
LARGEST_SHARE = 60


def write_together(files, path):
    lines = []
    for number, file in enumerate(files):
        lines += [f"#define {name} {name}_{number}" for name in ENTRY_POINTS]
        lines += [f'#include "{file}"']
        lines += [f"#undef {name}" for name in ENTRY_POINTS]
    path.write_text("\n".join(lines) + "\n")


def clashing(files, path, options):
    """Those of the files that do not compile with the ones before them."""
    write_together(files, path)
    result = subprocess.run(["clang++", "-fsyntax-only", "-w", "-ferror-limit=0", *options, str(path)],
                            capture_output=True, text=True, check=False)
    found = set(re.findall(r"^(.+?):\d+:\d+: (?:fatal )?error:", result.stdout + result.stderr, re.M))
    return [file for file in files[1:] if file in found or (result.returncode != 0 and not found & set(files))]


def shares(group):
    """Its sources, in equal shares that are not too large for one run."""
    files = []
    for directory in map(Path, group.split(",")):
        found = sorted(str(file.resolve()) for file in directory.rglob("*.cpp")
                       if "samples" not in file.relative_to(directory).parts)
        if not found:
            sys.exit(f"{directory} has no sources")
        files += found
    each = -(-len(files) // -(-len(files) // LARGEST_SHARE))
    return [files[first:first + each] for first in range(0, len(files), each)]


def main():
    arguments = sys.argv[1:]
    extra = arguments[arguments.index("--") + 1:] if "--" in arguments else []
    clang_tidy, build, jobs, *names = arguments[:len(arguments) - len(extra) - ("--" in arguments)]
    checks = [option for option in extra if option.startswith("--checks=")] or ["--checks="]
    options = compiler_options(build) + [option for option in extra if not option.startswith("--checks=")]

    groups = [share for name in names for share in shares(name)]

    def tidy(files, path):
        """What is wrong with the files that compile together, and those that do not."""
        write_together(files, path)
        # One source includes others here only.
        command = [clang_tidy, "--quiet", f"--config-file={Path('.clang-tidy').resolve()}", "--header-filter=.*",
                   checks[0] + ",-bugprone-suspicious-include", str(path), "--", *options,
                   "-Wno-unknown-warning-option"]
        result = subprocess.run(command, capture_output=True, text=True, check=False)
        if "clang-diagnostic-error" in result.stdout and (bad := clashing(files, path, options)):
            good = [file for file in files if file not in bad]
            return tidy(good, path) + tidy(bad, path)
        return [(files, result.returncode, result.stdout)]

    failed = False
    with tempfile.TemporaryDirectory() as folder, concurrent.futures.ThreadPoolExecutor(int(jobs)) as pool:
        paths = [Path(folder) / f"group_{number}.cpp" for number in range(len(groups))]
        for results in pool.map(tidy, groups, paths):
            for files, status, output in results:
                print(len(files), "files from", files[0], flush=True)
                if status != 0:
                    print(output, flush=True)
                    failed = True
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
