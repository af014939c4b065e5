#!/usr/bin/python3
"""Proves that the tests see faults: applies one-line mutations, one at a time, and reports those that no test notices.

Usage: mutate.py FOLDER [LIST]
       mutate.py --lookup [LIST]

--lookup  only checks that each mutation is found
FOLDER  of build/: the sources are copied there, mutated and built; the working tree is not touched
LIST    of mutations, tests/mutations by default. Those of a file stand under its name, an empty line comes before the
        next, and comments after "#":
          map/tile_board.cpp
          - what stands there: text that occurs once in the file
          + what is to stand there instead; without this line it is left out

Exits with 1 when a mutation survives or does not compile, at once when one is not found or a test fails without any.
"""
import pathlib
import re
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent

# What is built and run for a file in the folder: the first test that fails ends it, so the quickest come first. Of the
# checks of the code itself only those count that look for more than the line that was changed.
HOUSE = [("", "^house[.](names|rooms)")]
WINDOW = [("fleetor_window_tests", "^window: the real window")]
MAPS = [("fleetor_tiles_tests", "^tiles:")] + WINDOW
DEVICE = [("fleetor_device_tests", "^device:"), ("fleetor_portal_tests", "^portal:"), ("fleetor_keyring_tests", "^keyring:")]
STORIES = [("fleetor_shell_tests", "^shell:"), ("fleetor_vehicle_tests", "^vehicle:"), ("fleetor_feature_tests", "^feature:")]
REQUESTS = [("fleetor_service_tests", "^service:")]
PROGRAMS = [("fleetor_app_tests", "^app:"), ("fleetor_widget_tests", "^widget:")]
TESTS = {
    "platform": REQUESTS + STORIES,
    "http": [("fleetor_http_tests", "^http:")],
    "map": [("fleetor_map_tests", "^map:"), ("fleetor_ui_tests", "^ui:")] + STORIES + MAPS,
    "model": [("fleetor_model_tests", "^model:")] + REQUESTS + STORIES,
    "ui": [("fleetor_ui_tests", "^ui:")] + STORIES + WINDOW,
    "kept": [("fleetor_kept_tests", "^kept:"), ("fleetor_shell_tests", "^shell:")],
    "service": REQUESTS + STORIES,
    "fleet": [("fleetor_fleet_tests", "^fleet:")],
    "exports": [("fleetor_exports_tests", "^exports:")],
    "values": [("fleetor_values_tests", "^values:"), ("fleetor_day_tests", "^day:")],
    "day": [("fleetor_day_tests", "^day:")] + STORIES[1:],
    "vehicle": STORIES[1:] + WINDOW,
    "board": [("fleetor_board_tests", "^board:")] + WINDOW,
    "shell": STORIES + WINDOW,
    "diagnostics": [("fleetor_diagnostics_tests", "^diagnostics:")],
    "qt/device": DEVICE + PROGRAMS,
    "qt/map": MAPS,
    "qt": [("fleetor_contrast_tests", "^access: every text")] + WINDOW,
    "resources": [("fleetor_resources_tests", "^resources:")],
    "app": PROGRAMS + WINDOW,
    "widget": PROGRAMS[1:],
    "demo": [("fleetor_demo_tests", "^demo:")],
}


CHANGE = re.compile(r"^- (.*)(?:\n\+ (.*))?$", re.MULTILINE)


def mutations(text):
    """Each as (file, what stands there, what is to stand there)."""
    lines = [line for line in text.splitlines() if not line.startswith("#")]
    for block in re.split(r"\n\s*\n", "\n".join(lines).strip()):
        name, _, changes = block.partition("\n")
        if not changes or CHANGE.sub("", changes).strip():
            sys.exit(f"mutate: invalid mutation, expected a file and lines with '-', each before one with '+' or alone:\n{block}")
        for old, new in CHANGE.findall(changes):
            yield name.strip(), old.strip(), new.strip()


def tests_of(name):
    room = max((room for room in TESTS if name.startswith(room + "/")), key=len, default=None)
    if room is None:
        sys.exit(f"mutate: no tests are known for {name}")
    return HOUSE + TESTS[room]


class Build:
    def __init__(self, folder):
        self.sources = folder / "sources"
        self.folder = folder / "build"
        shutil.rmtree(self.sources, ignore_errors=True)
        names = subprocess.check_output(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, text=True)
        for name in names.splitlines():
            if (ROOT / name).is_file():
                (self.sources / name).parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(ROOT / name, self.sources / name)  # newer than what was built of an earlier version
        self.run("cmake", "--preset", "mutate", "-S", str(self.sources), "-B", str(self.folder), check=True)

    def run(self, *command, check=False):
        done = subprocess.run(command, cwd=self.sources, capture_output=True, text=True, check=False)
        if check and done.returncode:
            sys.exit(f"mutate: {' '.join(command)} failed:\n{done.stdout[-3000:]}{done.stderr[-3000:]}")
        return done

    def compiles(self, targets, check=False):
        return self.run("cmake", "--build", str(self.folder), *[word for target in targets for word in ("--target", target)],
                        check=check).returncode == 0

    def failure(self, pattern):
        """The name of a test that fails, or None."""
        done = self.run("ctest", "--test-dir", str(self.folder), "-R", pattern, "-j2", "--stop-on-failure", "--no-tests=error",
                        "--timeout", "300")
        if done.returncode == 0:
            return None
        failed = re.search(r"^\s*\d+ - (.*) \(", done.stdout, re.MULTILINE)
        return failed[1] if failed else sys.exit(f"mutate: ctest -R '{pattern}' failed:\n{done.stdout[-3000:]}{done.stderr}")

    def verdict(self, name, old, new):
        """What became of a mutation, and whether it was noticed."""
        file = self.sources / name
        sound = file.read_text()
        file.write_text(sound.replace(old, new))
        try:
            for target, pattern in tests_of(name):
                if target and not self.compiles([target]):
                    return "DOES NOT COMPILE", False
                failed = self.failure(pattern)
                if failed:
                    return f"noticed by {failed}", True
            return "SURVIVES", False
        finally:
            file.write_text(sound)


def main():
    if len(sys.argv) not in (2, 3) or (sys.argv[1].startswith("-") and sys.argv[1] != "--lookup"):
        sys.exit(__doc__)
    path = pathlib.Path(sys.argv[2] if len(sys.argv) == 3 else ROOT / "tests/mutations")
    chosen = list(mutations(path.read_text()))
    lost = [f"{name}: {old}" for name, old, _ in chosen
            if not (ROOT / name).is_file() or (ROOT / name).read_text().count(old) != 1]
    if lost:
        sys.exit("mutate: not found exactly once:\n" + "\n".join(lost))
    if sys.argv[1] == "--lookup":
        return
    build = Build(pathlib.Path(sys.argv[1]).resolve())
    targets = sorted({target for name, _, _ in chosen for target, _ in tests_of(name) if target})
    print(f"{len(chosen)} mutations; building {len(targets)} test programs", flush=True)
    build.compiles(targets, check=True)
    for pattern in sorted({pattern for name, _, _ in chosen for _, pattern in tests_of(name)}):
        if failed := build.failure(pattern):
            sys.exit(f"mutate: {failed} fails without any fault")

    noticed = 0
    for number, (name, old, new) in enumerate(chosen, 1):
        began = time.monotonic()
        verdict, good = build.verdict(name, old, new)
        noticed += good
        print(f"[{number}/{len(chosen)}] {name}: {old}  ->  {new}\n    {verdict} ({time.monotonic() - began:.0f} s)", flush=True)
    print(f"{noticed} of {len(chosen)} mutations were noticed")
    sys.exit(noticed != len(chosen))


if __name__ == "__main__":
    main()
