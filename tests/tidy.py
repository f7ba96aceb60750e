#!/usr/bin/env python3
"""tidy.py BUILD [--option OPTION]... < FILES: asks clang-tidy about files, one in each line, as BUILD compiles them.

Prints what it finds, and fails when there is something. A file in which it found nothing is not looked at again until
the file itself, a header that it reads, its command or clang-tidy is another one: ~/.cache/burnwick/tidy remembers.
What a file reads is known from BUILD, where it has been compiled.
"""

import argparse
import concurrent.futures
import functools
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import time

ROOT = pathlib.Path.cwd()
CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache") / "burnwick" / "tidy"
KEPT = 30 * 24 * 3600  # seconds without a use
NOISE = re.compile(r"^\d+ warnings? (generated|treated as error)")


def commands(build):
    """Of each file: the words of its command."""
    entries = json.loads((build / "compile_commands.json").read_text())
    return {os.path.normpath(entry["file"]): shlex.split(entry["command"]) for entry in entries}


def dependencies(build):
    """Of each object that has been compiled: the files that it was made of."""
    lines = subprocess.run(["ninja", "-C", build, "-t", "deps"], stdout=subprocess.PIPE, text=True, check=True).stdout
    found = {}
    for block in lines.split("\n\n"):
        head, *files = block.strip().splitlines() or [""]
        if head.endswith("(VALID)"):
            found[head.partition(":")[0]] = [os.path.normpath(build / file.strip()) for file in files]
    return found


@functools.cache
def content(path):
    return hashlib.sha256(pathlib.Path(path).read_bytes()).hexdigest()


def portable(text):
    """The same in every checkout."""
    return str(text).replace(str(ROOT), ".")


class Tidy:
    def __init__(self, build, options):
        self.build, self.options = build, options
        self.commands, self.dependencies = commands(build), dependencies(build)
        version = subprocess.run(["clang-tidy", "--version"], stdout=subprocess.PIPE, text=True, check=True).stdout
        self.common = [version, content(ROOT / ".clang-tidy"), content(__file__), *options]

    def stamp(self, file):
        """The file that tells of nothing found; none when it is not known what the source reads."""
        words = self.commands[file]
        output = words[words.index("-o") + 1]
        if output not in self.dependencies:
            return None
        read = sorted(f"{portable(path)} {content(path)}" for path in self.dependencies[output])
        parts = [*self.common, *words, *read]
        return CACHE / hashlib.sha256("\n".join(map(portable, parts)).encode()).hexdigest()

    def check(self, file):
        """What is to be told of the file, and whether it is clean."""
        stamp = self.stamp(file)
        if stamp and stamp.exists():
            stamp.touch()
            return "", True
        words = ["clang-tidy", "--quiet", "-p", self.build, *self.options, file]
        run = subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        told = "".join(line for line in run.stdout.splitlines(keepends=True) if not NOISE.match(line))
        clean = run.returncode == 0 and not told.strip()
        if clean and stamp:
            stamp.touch()
        return told, clean


def main():
    arguments = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    arguments.add_argument("build", type=lambda text: ROOT / text)
    arguments.add_argument("--option", action="append", default=[])
    asked = arguments.parse_args()
    CACHE.mkdir(parents=True, exist_ok=True)
    for old in CACHE.iterdir():
        if old.stat().st_mtime < time.time() - KEPT:
            old.unlink(missing_ok=True)
    tidy = Tidy(asked.build, asked.option)
    files = [os.path.normpath(ROOT / line) for line in sys.stdin.read().split("\n") if line]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(tidy.check, files))
    sys.stdout.writelines(told for told, _ in results)
    sys.exit(0 if all(clean for _, clean in results) else 1)


main()
