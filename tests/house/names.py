"""names.py FOLDER: compares the names that join C++ and QML: every outlet, screen and kind of row that C++ registers is drawn
by QML, and the other way round, and every picture that C++ names is a resource. Also refuses tests that wait for a fixed time."""

import re
import sys
from pathlib import Path

ROOT = Path(sys.argv[1])
CPP = [f for room in ("ui", "shell", "vehicle", "board") for f in sorted((ROOT / room).rglob("*.[ch]*"))]
QML = sorted((ROOT / "qt/qml").rglob("*.qml"))
KINDS = {
    "outlet": r'outlet\("(\w+)"|"([a-z]\w*(?:Button|Label|Field|View|Bar|Indicator))"',
    "screen": r'\{"(\w+VC)", make|\b(\w+VC):',
    "kind of row": r'"(\w+Cell)"',
}
NOT_JOINED = {"MainVC"}  # a container: it is drawn by its class

problems = []


def names(files, pattern):
    """Where each name is met first."""
    found = {}
    for file in files:
        for number, line in enumerate(file.read_text().splitlines(), 1):
            for groups in re.findall(pattern, line.split("//")[0]):
                name = groups if isinstance(groups, str) else groups[0] or groups[1]
                found.setdefault(name, f"{file.relative_to(ROOT)}:{number}")
    return {name: place for name, place in found.items() if name not in NOT_JOINED}


for kind, pattern in KINDS.items():
    registered, drawn = names(CPP, pattern), names(QML, pattern)
    if len(registered) < 3:
        problems.append(f"only {len(registered)} names of the sort \"{kind}\" were found in C++")
    problems += [f"{registered[name]}: no QML file draws the {kind} \"{name}\"" for name in sorted(set(registered) - set(drawn))]
    problems += [f"{drawn[name]}: no C++ file registers the {kind} \"{name}\"" for name in sorted(set(drawn) - set(registered))]

for file in QML:
    for name in re.findall(r'"(\w+\.qml)"', file.read_text()):
        if not any(other.name == name for other in QML):
            problems.append(f"{file.relative_to(ROOT)}: there is no {name}")

pictures = re.findall(r'"images/(\w+)\.svg"', (ROOT / "resources/resources.qrc").read_text())
shown = names(CPP + QML, r'"((?:Btn|Nav|Tab|Row|Age)[A-Z]\w+)"')
problems += [f"{place}: resources/resources.qrc has no picture \"{name}\"" for name, place in shown.items()
             if name not in pictures]

WAITS = {"*.[ch]*": (r"\b(qWait|qSleep|[mu]?sleep(_for|_until)?|nanosleep)\(", "//"), "*.py": (r"\btime\.sleep\(", "#")}
for files, (wait, comment) in WAITS.items():
    for file in sorted((ROOT / "tests").rglob(files)):
        for number, line in enumerate(file.read_text(errors="replace").splitlines(), 1):
            if re.search(wait, line) and comment not in line:
                problems.append(f"{file.relative_to(ROOT)}:{number}: expected a wait for something, "
                                "or a comment on why only a fixed time will do")

sys.exit("\n".join(problems) or None)
