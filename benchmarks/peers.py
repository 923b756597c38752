# SPDX-License-Identifier: MIT
"""How long a statement takes here and in the BASIC interpreters of Debian: the same programs, one text per dialect.

Each program runs several times in turn on every interpreter. What counts is the user time of the process, less that of
a program that ends at once, by statement; of several runs the least. PRINT writes to a file that keeps nothing.
"""

import argparse
import math
import os
import platform
import re
import resource
import shutil
import subprocess
import sys
from pathlib import Path

PROGRAMS = Path(__file__).resolve().parent / "programs"

# Statements that a program runs for each round of its outer loop, "FOR ... =1 TO rounds".
STATEMENTS = {
    "empty_loop": 1,
    "sum": 3,
    "sieve": 848,
    "gosub": 4,
    "integration": 3,
    "functions": 5,
    "strings": 6,
    "print": 2,
}

# The first is ours: the ratios are its time by theirs.
INTERPRETERS = {
    "quillon": ["{cli}", "run"],
    "yabasic": ["yabasic"],
    "bwbasic": ["bwbasic"],
    "brandy": ["brandy", "-quit"],
}
ENVIRONMENT = {**os.environ, "SDL_VIDEODRIVER": "dummy", "SDL_AUDIODRIVER": "dummy", "LC_ALL": "C.UTF-8"}
TIME_LIMIT = 300


def user_time(command: list) -> float:
    before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
    subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                   env=ENVIRONMENT, timeout=TIME_LIMIT, check=False)
    return resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before


def rounds_of(text: str) -> int:
    return int(re.search(r"FOR \w=1 TO (\d+)", text).group(1))


def measure(commands: dict, runs: int) -> dict:
    """Nanoseconds by statement: {program: {interpreter: time}}."""
    start_up = {name: min(user_time([*command, PROGRAMS / name / "startup.bas"]) for _ in range(runs))
                for name, command in commands.items()}
    table = {}
    for program, statements in STATEMENTS.items():
        least = dict.fromkeys(commands, math.inf)
        for _ in range(runs):
            for name, command in commands.items():
                path = PROGRAMS / name / f"{program}.bas"
                count = statements * rounds_of(path.read_text(encoding="utf-8"))
                least[name] = min(least[name], max(user_time([*command, path]) - start_up[name], 1e-9) / count * 1e9)
        table[program] = least
    return table


def geometric_mean(values: list) -> float:
    return math.exp(sum(map(math.log, values)) / len(values))


def print_table(table: dict, names: list) -> None:
    ours, *others = names
    print(f"{'ns by statement':16}" + "".join(f"{name:>10}" for name in names) +
          "".join(f"{ours + '/' + name:>18}" for name in others))
    rows = {**table, "geometric mean": {name: geometric_mean([row[name] for row in table.values()]) for name in names}}
    for program, row in rows.items():
        print(f"{program:16}" + "".join(f"{row[name]:10.1f}" for name in names) +
              "".join(f"{row[ours] / row[name]:18.3f}" for name in others))


def versions(names: list) -> str:
    done = subprocess.run(["dpkg-query", "-W", "-f", "${Package} ${Version}, ", *names], capture_output=True, text=True,
                          check=False)
    return done.stdout.rstrip(", ")


def processor() -> str:
    found = re.search(r"model name\s*: (.*)", Path("/proc/cpuinfo").read_text(encoding="utf-8"))
    return found.group(1) if found else platform.processor()


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("cli", help="the built quillon-cli")
    parser.add_argument("--runs", type=int, default=5, help="of each program on each interpreter (default 5)")
    arguments = parser.parse_args()
    if arguments.runs < 1:
        parser.error("--runs takes a number from 1 on")
    missing = [name for name in INTERPRETERS if name != "quillon" and shutil.which(name) is None]
    if missing:
        sys.exit("not installed: " + " ".join(missing))
    commands = {name: [word.format(cli=arguments.cli) for word in words] for name, words in INTERPRETERS.items()}
    table = measure(commands, arguments.runs)
    print(f"{processor()}, {os.cpu_count()} processors; {versions(list(INTERPRETERS)[1:])}; least of {arguments.runs}")
    print_table(table, list(INTERPRETERS))


if __name__ == "__main__":
    main()
