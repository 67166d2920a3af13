"""Runs clang-tidy over all sources below some directories: run_tidy.py CLANG_TIDY BUILD JOBS DIRECTORY... [-- OPTION...]

BUILD has the compile commands; without any it is "-". The files of a directory are looked at together, as one that
includes the others: most of the time goes into the headers that they share. Files that cannot be together, as they
have names in common, come in turn."""

import concurrent.futures
import json
import os
import re
import shlex
import subprocess
import sys
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


def together(files):
    return [f"-include{file}" for file in files[1:]] + [files[0]]


def clashing(files, options):
    """Those of the files that do not compile with the others."""
    result = subprocess.run(["clang++", "-fsyntax-only", "-w", "-ferror-limit=0", *options, *together(files)],
                            capture_output=True, text=True, check=False)
    found = set(re.findall(r"^(.+?):\d+:\d+: (?:fatal )?error:", result.stdout + result.stderr, re.M))
    if result.returncode == 0:
        return []
    return [file for file in files if file in found] or files[1:]


def batches(files, options):
    while files:
        later = []
        while len(files) > 1 and (bad := clashing(files, options)):
            bad = bad if len(bad) < len(files) else bad[1:]
            files = [file for file in files if file not in bad]
            later = bad + later
        yield files
        files = later


def main():
    arguments = sys.argv[1:]
    extra = arguments[arguments.index("--") + 1:] if "--" in arguments else []
    clang_tidy, build, jobs, *directories = arguments[:len(arguments) - len(extra) - ("--" in arguments)]
    checks = [option for option in extra if option.startswith("--checks=")] or ["--checks="]
    options = compiler_options(build) + [option for option in extra if not option.startswith("--checks=")]

    groups = {}
    for directory in directories:
        files = sorted(str(file.resolve()) for file in Path(directory).rglob("*.cpp")
                       if "samples" not in file.relative_to(directory).parts)
        if not files:
            sys.exit(f"{directory} has no sources")
        for file in files:
            groups.setdefault(str(Path(file).parent), []).append(file)

    def tidy(files):
        # One source includes another one here only.
        command = [clang_tidy, "--quiet", "--header-filter=.*", checks[0] + ",-bugprone-suspicious-include",
                   *(f"--extra-arg=-include{file}" for file in files[1:]), files[0], "--", *options,
                   "-Wno-unknown-warning-option"]
        result = subprocess.run(command, capture_output=True, text=True, check=False)
        return files, result.returncode, result.stdout

    def tidy_all(files):
        return [tidy(batch) for batch in batches(files, options)]

    failed = False
    with concurrent.futures.ThreadPoolExecutor(int(jobs)) as pool:
        for results in pool.map(tidy_all, groups.values()):
            for files, status, output in results:
                print(len(files), "files of", Path(files[0]).parent, flush=True)
                if status != 0:
                    print(output, flush=True)
                    failed = True
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
