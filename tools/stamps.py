# SPDX-License-Identifier: MIT
"""Remembers which files passed a check, so that a checker runs again only where something changed.

A stamp says: this file passed under this key (tool, options, configuration) while the files it depends on had
these contents. It is current as long as all of that still holds.
"""

import hashlib
import json
import os
import re
import shlex
import subprocess
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import Callable, Iterable, NamedTuple, Optional


def digest(*parts) -> str:
    """One fingerprint of several texts; where one ends and the next begins counts."""
    total = hashlib.sha256()
    for part in parts:
        total.update(hashlib.sha256(str(part).encode("utf-8", "surrogateescape")).digest())
    return total.hexdigest()


def file_digest(path) -> Optional[str]:
    """The fingerprint of a file's content, or None when it cannot be read."""
    try:
        return hashlib.sha256(Path(path).read_bytes()).hexdigest()
    except OSError:
        return None


def read_depfile(text: str) -> list:
    """The prerequisites of a rule as compilers write it (`target: a b \\`, blanks in names escaped)."""
    _, _, names = text.replace("\\\n", " ").partition(": ")
    words = re.findall(r"(?:\\.|[^\s\\])+", names)
    return [re.sub(r"\\(.)", r"\1", word).replace("$$", "$") for word in words]


def tool_version(command: list) -> Optional[str]:
    """What a tool says of its version, or None when it cannot be run."""
    try:
        done = subprocess.run([*command, "--version"], capture_output=True, text=True, check=False)
    except OSError:
        return None
    return done.stdout if done.returncode == 0 else None


class Stamps:
    """The stamps of one checker, one small file each in a folder of the build tree."""

    def __init__(self, folder):
        self.folder = Path(folder)
        self.folder.mkdir(parents=True, exist_ok=True)

    def _path(self, name: str) -> Path:
        return self.folder / (digest(name)[:24] + ".json")

    def is_current(self, name: str, key: str) -> bool:
        try:
            stamp = json.loads(self._path(name).read_text(encoding="utf-8"))
            return stamp["key"] == key and all(file_digest(path) == seen for path, seen in stamp["files"].items())
        except (OSError, ValueError, KeyError, AttributeError, TypeError):
            return False

    def record(self, name: str, key: str, files: Iterable, started: float) -> None:
        """Notes a pass. A file changed since `started` may not be what was checked: then nothing is noted."""
        try:
            if any(os.stat(path).st_mtime >= started for path in files):
                return
        except OSError:
            return
        stamp = {"name": name, "key": key, "files": {str(path): file_digest(path) for path in files}}
        fresh = self._path(name).with_suffix(".new")
        fresh.write_text(json.dumps(stamp), encoding="utf-8")
        os.replace(fresh, self._path(name))


class Result(NamedTuple):
    name: str
    passed: bool
    fresh: bool   # checked now, not known from a stamp
    report: str   # what the tool said


def run_all(check: Callable, names: list, jobs: int, title: str) -> int:
    """Runs check(name) -> Result for every name, prints the failures; exit status 0 all passed, 1 some did not."""
    failed = fresh = 0
    with ThreadPoolExecutor(max_workers=max(1, jobs)) as pool:
        for result in pool.map(check, names):
            fresh += result.fresh
            if not result.passed:
                failed += 1
                print(f"{title}: {result.name} fails\n{result.report.rstrip()}", flush=True)
    print(f"{title}: {len(names)} files, {fresh} checked now, {failed} failed")
    return 1 if failed else 0


def split_command(command: str) -> list:
    """A command with its options as words, as in CXX=\"ccache g++\"."""
    return shlex.split(command)
