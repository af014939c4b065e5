#!/usr/bin/python3
"""What ./bench keeps, and how two of these files compare.

Usage: bench_files.py write FIGURES FILE    the figures, a line of JSON each, become a file with the machine's description
       bench_files.py compare A B           prints the figures of both files, and by how much those of B are larger
"""
import datetime
import json
import os
import pathlib
import platform
import subprocess
import sys


def described():
    """The machine, and what was measured on it."""
    def first(path, key):
        lines = pathlib.Path(path).read_text(encoding="utf-8").splitlines()
        return next((line.partition(":")[2].strip() for line in lines if line.startswith(key)), "unknown")

    def said(*command):
        done = subprocess.run(command, capture_output=True, text=True, check=False)
        return done.stdout.strip() or "unknown"

    return {"date": datetime.datetime.now().isoformat(timespec="seconds"),
            "commit": said("git", "describe", "--always", "--dirty"),
            "processor": first("/proc/cpuinfo", "model name"), "cores": os.cpu_count(), "load": os.getloadavg()[0],
            "memory": first("/proc/meminfo", "MemTotal"), "kernel": platform.release(),
            "Qt": said("qmake6", "-query", "QT_VERSION"), "compiler": said("c++", "--version").splitlines()[0]}


def write(figures, file):
    lines = pathlib.Path(figures).read_text(encoding="utf-8").splitlines()
    content = {"machine": described(), "figures": [json.loads(line) for line in lines]}
    pathlib.Path(file).write_text(json.dumps(content, indent=1) + "\n", encoding="utf-8")


def read(path):
    try:
        content = json.loads(pathlib.Path(path).read_text(encoding="utf-8"))
        return content["machine"], {(one["table"], one["row"], one["figure"]): one["value"] for one in content["figures"]}
    except (OSError, ValueError, KeyError, TypeError) as error:
        sys.exit(f"bench: {path} is not a file of ./bench: {error}")


def compare(first, second):
    (machine, before), (other, after) = read(first), read(second)
    for key in sorted(set(machine) & set(other)):
        if machine[key] != other[key]:
            print(f"{key}: {machine[key]}, then {other[key]}")
    table = None
    for key in [*before, *(key for key in after if key not in before)]:
        if key[0] != table:
            table = key[0]
            print(f"\n{table:<74} {'before':>10} {'after':>10} {'ratio':>7}")
        a, b = before.get(key), after.get(key)
        ratio = f"{b / a:7.2f}" if a and b is not None else f"{'-':>7}"
        shown = (f"{'-' if value is None else format(value, '.4g'):>10}" for value in (a, b))
        print(f"{f'{key[1]}: {key[2]}':<74.74} {' '.join(shown)} {ratio}")


if __name__ == "__main__":
    if len(sys.argv) != 4 or sys.argv[1] not in ("write", "compare"):
        sys.exit(__doc__)
    {"write": write, "compare": compare}[sys.argv[1]](*sys.argv[2:])
