"""What the tour and the ordeals (scripts/chaos.py) drive: the demo service, and clients used from outside with real mouse and
key events. Controls are found by their accessible names. Whatever does not come in time ends the program with a message and
status 1."""

import atexit
import collections
import datetime
import json
import os
import re
import subprocess
import sys
import time
import urllib.error
import urllib.parse
import urllib.request

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

PROGRAMS, PICTURES, PORT = sys.argv[1:4]
DAY = datetime.date.today()
WAYLAND = os.environ.get("TOUR_PLATFORM") == "wayland"


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()


def fail(message):
    PROGRESS.clear()
    raise SystemExit(f"{os.path.basename(sys.argv[0]).removesuffix('.py')}: {message}")


class Progress:
    """Where the tour is, on standard error: on a terminal one line that changes, otherwise a line for each stop and one
    after 20 seconds."""

    def __init__(self):
        self.stop = ""
        self.pictures = 0
        self.shown = 0.0

    def arrive(self, stop):
        self.stop = stop
        self.show(stop, always=True)

    def picture(self, name):
        self.pictures += 1
        self.show(f"{self.stop}: picture {self.pictures}, {name}")

    def show(self, line, always=False):
        if sys.stderr.isatty():
            print(f"\r{line[:78]}\033[K", end="", file=sys.stderr, flush=True)
        elif always or time.monotonic() - self.shown >= 20:
            print(line, file=sys.stderr, flush=True)
            self.shown = time.monotonic()

    def clear(self):
        if sys.stderr.isatty():
            print("\r\033[K", end="", file=sys.stderr, flush=True)


PROGRESS = Progress()


class Demo:
    """The demo service, at its own time of this day; it can go away and come back, keeping its sign-ins."""

    def __init__(self, port=PORT):
        self.wanted_port = port
        self.start(datetime.time(14, 30))

    def start(self, time_of_day):
        self.process, self.port = self.launch(self.wanted_port, time_of_day, "--state",
                                              os.path.join(os.environ["HOME"], "demo-state"))

    def launch(self, port, time_of_day, *options):
        command = [f"{PROGRAMS}/demo/fleetor-demo-service", "--port", port, "--seed", "7",
                   "--now", f"{DAY} {time_of_day}", *options]
        process = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)
        said = process.stdout.readline()
        if not said.startswith("Listening"):
            fail("the demo service did not start")
        return process, said.rstrip().rstrip("/").rpartition(":")[2]

    def stop(self):
        self.process.terminate()
        self.process.wait()

    def ask(self, path, body=None, verb=None, token=None, port=None):
        request = urllib.request.Request(f"http://127.0.0.1:{port or self.port}{path}", body, method=verb)
        if token:
            request.add_header("Authorization", f"Bearer {token}")
        with urllib.request.urlopen(request, timeout=10) as answer:
            return json.loads(answer.read() or b"null")

    def fault(self, fault):
        self.ask("/control/faults", json.dumps(fault).encode(), "POST")

    def no_faults(self):
        self.ask("/control/faults", verb="DELETE")

    def forget_requests(self):
        self.ask("/control/requests", verb="DELETE")

    def requests(self, path, vehicle):
        """How many requests of that path for that vehicle were answered since the service was told to forget them."""
        return sum(one["path"] == path and one["status"] == 200 and f"vehid={vehicle['vehicleId']}" in one["query"]
                   for one in self.ask("/control/requests")["requests"])

    def longest_drives(self, first):
        """The longest drive that each of the first vehicles of the list makes this afternoon, longest first: the
        vehicle, and when it begins."""
        process, port = self.launch("0", datetime.time(23, 59))
        try:
            form = b"username=demo&password=demo&uid=tour"
            token = self.ask("/token?grant_type=password", form, port=port)["token"]["access_token"]
            drives = []
            for vehicle in self.ask(f"/vehicles?offset=0&limit={first}", token=token, port=port)["vehicles"]:
                stages = self.ask(f"/route?vehid={vehicle['vehicleId']}&date={DAY}", token=token, port=port)["route"]
                drives += [(one["duration"], vehicle["vehicleId"], vehicle, one["timeFrom"][11:]) for one in stages
                           if one["status"] == "Driving" and "12:" <= one["timeFrom"][11:] < "20:"]
        finally:
            process.terminate()
            process.wait()
        longest = {vehicle_id: (vehicle, datetime.time.fromisoformat(begins))
                   for _, vehicle_id, vehicle, begins in sorted(drives)}
        return list(longest.values())[::-1]


class Compositor:
    """A Wayland compositor of its own in a window of the display, which it shares with nobody: what it shows fills it."""

    def __init__(self, environment, width, height):
        before = self.windows()
        self.process = subprocess.Popen(
            ["weston", "--backend=x11-backend.so", "--shell=kiosk-shell.so", "--socket=tour", "--idle-time=0",
             "--use-pixman", f"--width={width}", f"--height={height}", f"--log={environment['XDG_RUNTIME_DIR']}/weston.log"],
            env=environment)
        atexit.register(self.process.kill)
        end = time.monotonic() + 15
        while not (self.windows() - before) or not os.path.exists(f"{environment['XDG_RUNTIME_DIR']}/tour"):
            if self.process.poll() is not None or time.monotonic() > end:
                fail("the compositor did not start")
            time.sleep(0.1)
        self.window = (self.windows() - before).pop()

    @staticmethod
    def windows():
        return set(subprocess.run(["xdotool", "search", "--onlyvisible", "--class", "Weston Compositor"],
                                  capture_output=True, text=True).stdout.split())

    def close(self):
        self.process.terminate()
        self.process.wait()


class Client:
    """One running client, its window at a separate place on the display. Several run side by side here: each has a
    private folder for what the second start reports to the first."""

    def __init__(self, prefix, *options, at=(0, 0), empty_cache=False, within=(), environment=None):
        """`within` is a command that runs the client's, for instance under a limit."""
        self.prefix = prefix
        self.environment = dict(os.environ, **(environment or {}))
        self.environment["XDG_RUNTIME_DIR"] = os.path.join(os.environ["HOME"], f"runtime-{prefix}")
        os.makedirs(self.environment["XDG_RUNTIME_DIR"], 0o700, exist_ok=True)
        if empty_cache:
            self.environment["XDG_CACHE_HOME"] = os.path.join(os.environ["HOME"], f"cache-{prefix}")
        self.compositor = None
        if WAYLAND:
            self.compositor = Compositor(self.environment, *options[options.index("--size") + 1].split("x"))
            self.environment.update(WAYLAND_DISPLAY="tour", QT_QPA_PLATFORM="wayland")
            self.environment.pop("DISPLAY")
        self.process = subprocess.Popen([*within, f"{PROGRAMS}/app/fleetor", *options], env=self.environment)
        self.window = None
        self.window = self.compositor.window if WAYLAND else self.wait_for("the client's window", self.own_window)
        run("xdotool", "windowmove", self.window, str(at[0]), str(at[1]))

    def close(self):
        self.process.terminate()
        self.process.wait()
        if self.compositor:
            self.compositor.close()

    def open_url(self, url):
        """As the desktop does it: a second start, which hands the URL over."""
        subprocess.run([f"{PROGRAMS}/app/fleetor", url], env=self.environment, check=True, timeout=20)

    def own_window(self):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--all", "--pid", str(self.process.pid),
                                "--name", "Fleetor"], capture_output=True, text=True).stdout.split()
        return found[-1] if found else None

    def resize(self, width, height):
        run("xdotool", "windowsize", "--sync", self.window, str(width), str(height))

    def wait_for(self, what, look, seconds=15):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            if self.process.poll() is not None:
                fail(f"the client ended with status {self.process.returncode}")
            try:
                if found := look():
                    return found
            except (gi.repository.GLib.Error, AttributeError, urllib.error.URLError):
                pass  # an accessible that went away while it was looked at, a service that is not back yet
            time.sleep(0.1)
        lost = f"{self.prefix}-lost.png"
        if self.window:
            self.save(lost)
        fail(f"{self.prefix}: {what} did not come within {seconds} s (see {lost})")

    # What is on the screen, as assistive technology sees it

    def application(self):
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(index)
            if child and child.get_process_id() == self.process.pid:
                return child
        return None

    def seen(self, name, role=None):
        """Where all showing accessibles are whose name begins with that pattern; what lies on top comes last."""
        left, top = self.place() if WAYLAND else (0, 0)  # a client of Wayland does not know where it is
        hits, stack = [], [self.application()]
        while stack:
            node = stack.pop()
            if node is None or not node.get_state_set().contains(Atspi.StateType.SHOWING) and node.get_parent() \
                    and node.get_role() not in (Atspi.Role.APPLICATION,):
                continue
            if re.match(name, (node.get_name() or "").replace("\n", " ")) \
                    and role in (None, node.get_role_name()):
                extents = node.get_extents(Atspi.CoordType.SCREEN)
                if extents.width > 0 and extents.height > 0:
                    extents.x += left
                    extents.y += top
                    hits.append(extents)
            stack += [node.get_child_at_index(i) for i in reversed(range(node.get_child_count()))]
        return hits

    def look(self, name, role=None):
        hits = self.seen(name, role)
        return hits[-1] if hits else None

    def find(self, name, role=None, seconds=15):
        """Where it is, once it has come to rest."""
        places = [None]

        def rests():
            at = self.look(name, role)
            places.append(at and (at.x, at.y, at.width, at.height))
            return places[-1] and places[-1] == places[-2] and at

        return self.wait_for(f'"{name}"', rests, seconds)

    def gone(self, name, role=None, seconds=15):
        self.wait_for(f'the end of "{name}"', lambda: self.look(name, role) is None, seconds)

    # Mouse and keys

    def click(self, name, role=None):
        at = self.find(name, role)
        self.click_at(at.x + at.width // 2, at.y + at.height // 2)

    def click_at(self, x, y, times=1):
        run("xdotool", "mousemove", str(x), str(y), "click", "--repeat", str(times), "--delay", "60", "1")

    def drag(self, x, y, dx, dy):
        """From a place of the window."""
        left, top = self.place()
        run("xdotool", "mousemove", str(left + x), str(top + y), "mousedown", "1")
        for step in range(1, 13):
            run("xdotool", "mousemove", str(left + x + dx * step // 12), str(top + y + dy * step // 12))
        run("xdotool", "mouseup", "1")

    def wheel(self, name, notches, below=0, role=None):
        """Over the middle of that control, or so many points below its top; positive turns away from the person."""
        at = self.find(name, role)
        y = at.y + (below or at.height // 2)
        run("xdotool", "mousemove", str(at.x + at.width // 2), str(y),
            "click", "--repeat", str(abs(notches)), "--delay", "30", "4" if notches > 0 else "5")

    def type(self, text):
        self.take_keys()
        run("xdotool", "type", "--delay", "15", text)

    def take_keys(self):
        if WAYLAND:
            run("xdotool", "windowfocus", "--sync", self.window)

    def key(self, *names):
        self.take_keys()
        run("xdotool", "key", *names)

    def sign_in(self, user="demo", password="demo"):
        self.click("User name")
        self.key("ctrl+a")
        self.type(user)
        self.click("Password")
        self.key("ctrl+a")
        self.type(password)
        self.click("Sign in", "push button")

    def place(self):
        said = dict(line.split("=") for line in run("xdotool", "getwindowgeometry", "--shell", self.window).split())
        return int(said["X"]), int(said["Y"])

    # Pictures

    def pixels(self):
        return subprocess.run(["import", "-silent", "-window", self.window, "-depth", "8", "rgb:-"], check=True,
                              capture_output=True).stdout

    def colours(self, box=None):
        """How often each colour is seen; `box` is x, y, width and height on the display."""
        crop = []
        if box:
            left, top = self.place()
            crop = ["-crop", f"{box[2]}x{box[3]}+{box[0] - left}+{box[1] - top}"]
        data = subprocess.run(["import", "-silent", "-window", self.window, *crop, "-depth", "8", "rgb:-"],
                              check=True, capture_output=True).stdout
        return collections.Counter(zip(data[0::3], data[1::3], data[2::3]))

    def settle(self):
        """Until nothing moves any more."""
        seen = [None]

        def rests():
            seen.append(self.pixels())
            return seen[-1] == seen[-2]

        self.wait_for("a picture that rests", rests)

    def picture(self, name):
        PROGRESS.picture(f"{self.prefix}-{name}")
        self.settle()
        self.save(f"{self.prefix}-{name}.png")

    def save(self, file):
        run("import", "-silent", "-window", self.window, os.path.join(PICTURES, file))
