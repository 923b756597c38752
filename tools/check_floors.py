#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks who includes whom in src/, that only `files` and the programs know the disk, and that the mains stay short.

usage: check_floors.py ROOT

Each folder of src/ is a floor and includes only itself and the floors named in its row below. Outside headers
are the C++ standard library's everywhere; the rows say who may have more. Every offence is printed as
file:line and a sentence. Exit status: 0 all in order, 1 offences, 2 nothing to check.
"""

import re
import sys
from pathlib import Path
from typing import Iterator, NamedTuple, Optional

MAIN_LINES_MAX = 80
SOURCE_SUFFIXES = {".def", ".h", ".hh", ".hpp", ".hxx", ".inl", ".inc", ".ipp", ".c", ".cc", ".cpp", ".cxx"}


class Floor(NamedTuple):
    """What the sources of one folder may include beside their own folder and the C++ standard library."""

    below: tuple
    outside: tuple


NEIGHBOURS = ("statements", "functions", "keys", "display")
BELOW_SHELL = ("core", *NEIGHBOURS, "driver")

FLOORS = {
    "core": Floor(below=(), outside=()),
    "statements": Floor(below=("core",), outside=()),
    "functions": Floor(below=("core",), outside=()),
    "keys": Floor(below=("core",), outside=()),
    "display": Floor(below=("core",), outside=()),
    "driver": Floor(below=("core", *NEIGHBOURS), outside=()),
    "tooling": Floor(below=("core", "functions", "statements"), outside=()),
    "shell": Floor(below=BELOW_SHELL, outside=()),
    "session": Floor(below=(*BELOW_SHELL, "shell"), outside=()),
    "files": Floor(below=(*BELOW_SHELL, "shell", "session"), outside=("posix", "disk")),
    # Not `files`: a page in a browser speaks the protocols too. What they read is handed to them (shell/disk.h).
    "protocols": Floor(below=(*BELOW_SHELL, "shell", "session"), outside=("json",)),
    "desktop": Floor(below=(*BELOW_SHELL, "shell", "session", "files"), outside=("posix", "disk", "qt", "cli11")),
    "terminal": Floor(below=(*BELOW_SHELL, "tooling", "shell", "session", "files", "protocols"),
                      outside=("posix", "disk", "curses", "cli11", "json")),
}

STANDARD_HEADERS = set("""
    algorithm any array atomic barrier bit bitset charconv chrono codecvt compare complex concepts
    condition_variable coroutine deque exception execution format forward_list functional
    future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map memory
    memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator
    semaphore set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string
    string_view strstream syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map
    unordered_set utility valarray variant vector version
    cassert cctype cerrno cfenv cfloat cinttypes climits clocale cmath csetjmp csignal cstdarg cstddef cstdint
    cstdio cstdlib cstring ctime cuchar cwchar cwctype
""".split())

POSIX_HEADERS = set("""
    dirent.h dlfcn.h errno.h fcntl.h fnmatch.h glob.h grp.h iconv.h langinfo.h limits.h locale.h nl_types.h
    poll.h pthread.h pwd.h sched.h signal.h spawn.h stdio.h stdlib.h string.h strings.h sys/file.h sys/ioctl.h
    sys/mman.h sys/resource.h sys/select.h sys/socket.h sys/stat.h sys/statvfs.h sys/time.h sys/types.h
    sys/uio.h sys/un.h sys/utsname.h sys/wait.h syslog.h termios.h time.h unistd.h utime.h wchar.h
""".split())


class Family(NamedTuple):
    """A set of outside headers: what they are called in a message, and which names belong to it."""

    title: str
    pattern: re.Pattern


FAMILIES = {
    "qt": Family("Qt, which only desktop knows", re.compile(r"Q[A-Z]\w*|Qt\w*/.+|q[a-z]+\.h|Qt\w*")),
    "curses": Family("curses, which only terminal knows",
                     re.compile(r"(ncursesw?/)?(n?curses|panel|menu|form|term|eti|unctrl)(w|_dll)?\.h|cursesw?\.h")),
    "cli11": Family("CLI11, which only the programs know", re.compile(r"CLI/.+")),
    "json": Family("nlohmann-json, which only protocols and terminal know", re.compile(r"nlohmann/.+")),
    "disk": Family("the disk, which only files and the programs know", re.compile("filesystem|fstream")),
    "posix": Family("a POSIX or C header, which only files and the programs may use",
                    re.compile("|".join(re.escape(name) for name in sorted(POSIX_HEADERS)))),
}

# What reaches the disk or the environment by way of headers that everybody may include. `std::remove` is an algorithm.
DISK_NAMES = re.compile(r"\b(?:FILE|fopen|freopen|tmpfile|tmpnam|popen|getenv)\b|\bstd\s*::\s*(?:rename|system)\b")

# What the toolkit's code generator makes beside the sources it reads.
GENERATED_FOR_DESKTOP = re.compile(r"(moc_\w+\.cpp|\w+\.moc|ui_\w+\.h)")

# Comments and literals, so that an #include within one is none. A quote after a letter or digit is a digit
# separator, not the start of a character.
LEXEMES = re.compile(
    r"""(?P<raw>R"(?P<delimiter>[^()\\\s]{0,16})\(.*?\)(?P=delimiter)")"""
    r"""|(?P<comment>//(?:\\\n|[^\n])*|/\*.*?(?:\*/|\Z))"""
    r"""|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Za-z_])'(?:\\.|[^'\\\n])*'""",
    re.DOTALL)
INCLUDE = re.compile(r"^[ \t]*#[ \t]*(?:include|include_next|import)\b[ \t]*(?P<what>.*?)[ \t]*$", re.MULTILINE)
QUOTED = re.compile(r"""(?:<(?P<angle>[^>]+)>|"(?P<quote>[^"]+)")""")


class Include(NamedTuple):
    line: int
    name: str     # empty when the include is not written as <name> or "name"
    written: str  # as it stands in the source


def blank_out(match: re.Match) -> str:
    """A comment or raw string as blanks that keep the line numbers; any other literal unchanged."""
    if match["comment"] is None and match["raw"] is None:
        return match[0]
    return re.sub(r"[^\n]", " ", match[0])


def read_includes(source: str) -> Iterator[Include]:
    code = LEXEMES.sub(blank_out, source.replace("\r\n", "\n"))
    for match in INCLUDE.finditer(code):
        quoted = QUOTED.fullmatch(match["what"])
        name = (quoted["angle"] or quoted["quote"]) if quoted else ""
        yield Include(code.count("\n", 0, match.start("what")) + 1, name.strip(), match["what"])


def read_disk_names(source: str) -> Iterator[tuple]:
    """Yields the line and the name of each use of the disk outside of comments and literals."""
    code = LEXEMES.sub(lambda match: re.sub(r"[^\n]", " ", match[0]), source.replace("\r\n", "\n"))
    for match in DISK_NAMES.finditer(code):
        yield code.count("\n", 0, match.start()) + 1, match[0]


def floor_offence(floor: str, target: str) -> Optional[str]:
    """Why a source of `floor` may not include one of the floor `target`, or None."""
    if target == floor or target in FLOORS[floor].below:
        return None
    if floor in NEIGHBOURS and target in NEIGHBOURS:
        return f"{floor} and {target} are neighbours that do not know each other"
    if {floor, target} == {"desktop", "terminal"}:
        return "desktop and terminal are separate programs and do not know each other"
    return f"{target} stands above {floor}"


def outside_offence(floor: str, name: str) -> Optional[str]:
    """Why a source of `floor` may not include the outside header `name`, or None."""
    if name in STANDARD_HEADERS:
        return None
    families = [key for key, family in FAMILIES.items() if family.pattern.fullmatch(name)]
    if any(key in FLOORS[floor].outside for key in families):
        return None
    if families:
        return f"this is {FAMILIES[families[0]].title}"
    return f"this is neither the C++ standard library's nor a header that {floor} may use"


def include_offence(floor: str, include: Include) -> Optional[str]:
    if not include.name:
        return "write an include as <name> or \"folder/name\", so that it can be read"
    folder, slash, _ = include.name.partition("/")
    if {".", ".."} & set(include.name.split("/")):
        return "write the path from src/, without . and .."
    if slash and folder in FLOORS:
        return floor_offence(floor, folder)
    if floor == "desktop" and GENERATED_FOR_DESKTOP.fullmatch(include.name):
        return None
    if include.written.startswith("\"") and not any(f.pattern.fullmatch(include.name) for f in FAMILIES.values()):
        return "write the path from src/, beginning with the floor's folder"
    return outside_offence(floor, include.name)


def source_offences(floor: str, path: Path, source: str) -> Iterator[tuple]:
    """Yields (line, sentence) for each offence of one file."""
    for include in read_includes(source):
        reason = include_offence(floor, include)
        if reason:
            yield include.line, f"{floor} may not include {include.written}: {reason}."
    if "disk" not in FLOORS[floor].outside:
        for line, name in read_disk_names(source):
            yield line, f"{floor} may not use {name}: this is {FAMILIES['disk'].title}."
    lines = len(source.splitlines())
    if path.name == "main.cpp" and lines > MAIN_LINES_MAX:
        yield MAIN_LINES_MAX + 1, f"a main has at most {MAIN_LINES_MAX} lines, this one has {lines}."


def tree_offences(root: Path, files: list) -> Iterator[str]:
    for path in files:
        shown = path.relative_to(root)
        floor = shown.parts[1]
        if len(shown.parts) < 3 or floor not in FLOORS:
            yield f"{shown}:1: this file lies on no floor; the folders of src/ are {', '.join(FLOORS)}."
            continue
        for line, sentence in source_offences(floor, path, path.read_text(encoding="utf-8", errors="replace")):
            yield f"{shown}:{line}: {sentence}"


def main(arguments: list) -> int:
    if len(arguments) != 1:
        print("usage: check_floors.py ROOT", file=sys.stderr)
        return 2
    root = Path(arguments[0])
    files = sorted(path for path in (root / "src").rglob("*") if path.suffix in SOURCE_SUFFIXES and path.is_file())
    if not files:
        print(f"floors: there are no sources in {root / 'src'}", file=sys.stderr)
        return 2
    offences = list(tree_offences(root, files))
    for offence in offences:
        print(offence)
    print(f"floors: {len(files)} files, {len(offences)} offences")
    return 1 if offences else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
