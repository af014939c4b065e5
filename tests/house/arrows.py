#!/usr/bin/python3
"""Every room includes the rooms that its CMakeLists.txt names under USES, and no other; and it uses what it names."""
import pathlib
import re
import sys

root = pathlib.Path(sys.argv[1])


def declared_rooms():
    """The rooms by folder, each with the rooms that it declares."""
    for path in set(root.glob("**/CMakeLists.txt")) - set(root.glob("build/**/CMakeLists.txt")):
        for call in re.findall(r"^fleetor_room\(([^)]*)\)", re.sub(r"#.*", "", path.read_text()), re.MULTILINE):
            folder, *words = call.split()
            uses = words[words.index("USES") + 1 :] if "USES" in words else []
            yield folder, set(uses[: next((i for i, word in enumerate(uses) if word.isupper()), len(uses))])


rooms = dict(declared_rooms())
included = {room: {} for room in rooms}


def room_of(name):
    return max((room for room in rooms if name.startswith(room + "/")), key=len, default=None)


for room in rooms:
    for path in (root / room).glob("**/*"):
        name = str(path.relative_to(root))
        if path.suffix in (".h", ".cpp") and room_of(name) == room:
            for header in re.findall(r'^#include "([^"]+)"', path.read_text(), re.MULTILINE):
                if room_of(header) not in (room, None):
                    included[room].setdefault(room_of(header), name)

faults = []
for room, uses in rooms.items():
    faults += [f"{included[room][used]} includes {used}/, which {room}/CMakeLists.txt does not name under USES"
               for used in sorted(included[room].keys() - uses)]
    faults += [f"{room}/CMakeLists.txt names {used} under USES, but no file there includes it"
               for used in sorted(uses - included[room].keys())]
print(*faults, sep="\n")
sys.exit(bool(faults) or len(rooms) < 10)
