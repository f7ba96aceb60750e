#!/usr/bin/env python3
"""tidy.py BUILD PATH... [--option OPTION]...: runs clang-tidy on the sources in these files and folders, with the commands
that BUILD compiles them with.

Prints the warnings, and fails when there are any. A source without warnings is skipped until the source, a header that it
includes, its command or clang-tidy changes: ~/.cache/burnwick/tidy has a stamp for each. The headers are known from BUILD,
where the source must have been compiled.

Sources that BUILD compiles together are checked together: most of clang-tidy's time goes into the headers of libraries.
Two checks look at the main file of a compilation only. They run on each source that has something for them to find.
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
# A unity source is made by the build, and consists of these.
UNITY_PART = re.compile(r'^#include "(.*\.cpp)"$', re.MULTILINE)
NOT_FOR_UNITY = "--checks=-bugprone-suspicious-include"
MAIN_FILE_ONLY = "--checks=-*,misc-unused-using-decls,misc-unused-alias-decls"
HAS_MAIN_FILE_ONLY = re.compile(r"^\s*(using [\w:]+::\w+;|namespace \w+ =)", re.MULTILINE)


def commands(build):
    """Maps each source to the words of its command."""
    entries = json.loads((build / "compile_commands.json").read_text())
    return {os.path.normpath(entry["file"]): shlex.split(entry["command"]) for entry in entries}


def dependencies(build):
    """Maps each compiled object to the files that were read for it."""
    lines = subprocess.run(["ninja", "-C", build, "-t", "deps"], stdout=subprocess.PIPE, text=True, check=True).stdout
    found = {}
    for block in lines.split("\n\n"):
        head, *files = block.strip().splitlines() or [""]
        if head.endswith("(VALID)"):
            found[head.partition(":")[0]] = [os.path.normpath(build / file.strip()) for file in files]
    return found


def parts(source):
    """The sources that are compiled as this one: itself, or those that a unity source includes."""
    if "/Unity/" not in source:
        return [source]
    return [os.path.normpath(part) for part in UNITY_PART.findall(pathlib.Path(source).read_text())]


def is_below(path, top):
    return path == top or path.startswith(top + os.sep)


@functools.cache
def content(path):
    return hashlib.sha256(pathlib.Path(path).read_bytes()).hexdigest()


def portable(text):
    """The same text in every checkout."""
    return str(text).replace(str(ROOT), ".")


class Tidy:
    def __init__(self, build, options):
        self.build, self.options = build, options
        self.commands, self.dependencies = commands(build), dependencies(build)
        version = subprocess.run(["clang-tidy", "--version"], stdout=subprocess.PIPE, text=True, check=True).stdout
        self.common = [version, content(ROOT / ".clang-tidy"), content(__file__), *options]

    def stamp(self, source):
        """The file that exists when the source has no warnings; None when its headers are not known."""
        words = self.commands[source]
        output = words[words.index("-o") + 1]
        if output not in self.dependencies:
            return None
        read = sorted(f"{portable(path)} {content(path)}" for path in self.dependencies[output])
        key = [*self.common, *words, *read]
        return CACHE / hashlib.sha256("\n".join(map(portable, key)).encode()).hexdigest()

    def run(self, *words):
        """The warnings, and whether there are none."""
        run = subprocess.run(
            ["clang-tidy", "--quiet", *words], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False
        )
        warnings = "".join(line for line in run.stdout.splitlines(keepends=True) if not NOISE.match(line))
        return warnings, run.returncode == 0 and not warnings.strip()

    def check_part(self, part, unity_source):
        words = flags(self.commands[unity_source])
        return self.run(MAIN_FILE_ONLY, *self.options, part, "--", *words)

    def check(self, source):
        stamp = self.stamp(source)
        if stamp and stamp.exists():
            stamp.touch()
            return "", True
        sources = parts(source)
        results = [self.run("-p", self.build, *([] if sources == [source] else [NOT_FOR_UNITY]), *self.options, source)]
        if sources != [source]:
            results += [
                self.check_part(part, source)
                for part in sources
                if HAS_MAIN_FILE_ONLY.search(pathlib.Path(part).read_text())
            ]
        clean = all(clean for _, clean in results)
        if clean and stamp:
            stamp.touch()
        return "".join(warnings for warnings, _ in results), clean


def flags(words):
    """Those words of a command that decide what a source means: the language, its headers and its macros."""
    kept = []
    for word, following in zip(words, words[1:] + [""]):
        if word == "-isystem":
            kept += [word, following]
        elif word.startswith(("-I", "-D", "-std=")):
            kept.append(word)
    return kept


def main():
    arguments = argparse.ArgumentParser(description=__doc__.partition("\n\n")[0])
    arguments.add_argument("build", type=lambda text: ROOT / text)
    arguments.add_argument("paths", nargs="+", type=lambda text: os.path.normpath(ROOT / text))
    arguments.add_argument("--option", action="append", default=[])
    given = arguments.parse_args()
    CACHE.mkdir(parents=True, exist_ok=True)
    for old in CACHE.iterdir():
        if old.stat().st_mtime < time.time() - KEPT:
            old.unlink(missing_ok=True)
    tidy = Tidy(given.build, given.option)
    sources = [
        source
        for source in tidy.commands
        if any(is_below(part, path) for part in parts(source) for path in given.paths)
    ]
    if not sources:
        sys.exit("tidy.py: no source of these paths is compiled in " + str(given.build))
    # The largest first, so that none is left to run alone at the end.
    sources.sort(key=lambda source: -len(parts(source)))
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(tidy.check, sources))
    sys.stdout.writelines(warnings for warnings, _ in results)
    sys.exit(0 if all(clean for _, clean in results) else 1)


main()
