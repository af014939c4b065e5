"""Walks through the client on the display it finds, with real mouse and key events, and leaves a picture of every
screen. Controls are found by their accessible names; an absent one ends the tour with a message and status 1."""

import os
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

PROGRAMS, PICTURES = sys.argv[1:3]
PORT = "8845"


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()


class Demo:
    """The demo service; it can go away and come back, keeping its sign-ins."""

    def __init__(self):
        self.start()

    def start(self):
        command = [f"{PROGRAMS}/demo/fleetor-demo-service", "--port", PORT, "--seed", "7"]
        command += ["--state", os.path.join(os.environ["HOME"], "demo-state")]
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)
        if not self.process.stdout.readline().startswith("Listening"):
            sys.exit("tour: the demo service did not start")

    def stop(self):
        self.process.terminate()
        self.process.wait()


class Client:
    """One running client, seen and used from outside."""

    def __init__(self, prefix, *options):
        self.prefix = prefix
        self.process = subprocess.Popen([f"{PROGRAMS}/app/fleetor", *options])
        self.window = self.wait_for("the client's window", lambda: self.own_window())

    def close(self):
        self.process.terminate()
        self.process.wait()
        time.sleep(0.3)

    def own_window(self):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "Fleetor"],
                               capture_output=True, text=True).stdout.split()
        return found[-1] if found else None

    def wait_for(self, what, look, seconds=15):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            if self.process.poll() is not None:
                sys.exit(f"tour: the client ended with status {self.process.returncode}")
            try:
                if found := look():
                    return found
            except Exception:  # an accessible that went away while it was looked at
                pass
            time.sleep(0.1)
        self.picture("lost")
        sys.exit(f"tour: {what} did not appear within {seconds} s (see {self.prefix}-lost.png)")

    def application(self):
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(index)
            if child and child.get_process_id() == self.process.pid:
                return child
        return None

    def look(self, name, role=None):
        """The last showing accessible of that name: what lies on top comes last."""
        hit, stack = None, [self.application()]
        while stack:
            node = stack.pop()
            if node is None or not node.get_state_set().contains(Atspi.StateType.SHOWING) and node.get_parent() \
                    and node.get_role() not in (Atspi.Role.APPLICATION,):
                continue
            if node.get_name().replace("\n", " ").startswith(name) and (role is None or node.get_role_name() in (role, f"push {role}")):
                extents = node.get_extents(Atspi.CoordType.SCREEN)
                if extents.width > 0 and extents.height > 0:
                    hit = extents
            stack += [node.get_child_at_index(i) for i in reversed(range(node.get_child_count()))]
        return hit

    def find(self, name, role=None, seconds=15):
        return self.wait_for(f"\"{name}\"", lambda: self.look(name, role), seconds)

    def gone(self, name, seconds=15):
        self.wait_for(f"the end of \"{name}\"", lambda: self.look(name) is None, seconds)

    def click(self, name, role=None):
        at = self.find(name, role)
        time.sleep(0.45)  # let a transition come to rest
        at = self.look(name, role) or at
        run("xdotool", "mousemove", str(at.x + at.width // 2), str(at.y + at.height // 2), "click", "1")

    def type(self, text):
        run("xdotool", "type", "--delay", "15", text)

    def key(self, *names):
        run("xdotool", "key", *names)

    def scroll_down(self, title, times):
        """Turns the wheel over the list below that title."""
        at = self.find(title)
        run("xdotool", "mousemove", str(at.x + at.width // 2), str(at.y + 300))
        for _ in range(times):
            run("xdotool", "click", "5")
            time.sleep(0.03)

    def picture(self, name, rest=0.7):
        time.sleep(rest)
        run("import", "-window", self.window, f"{PICTURES}/{self.prefix}-{name}.png")


def sign_in(client, user="demo", password="demo"):
    client.click("User name")
    client.key("ctrl+a")
    client.type(user)
    client.click("Password")
    client.key("ctrl+a")
    client.type(password)
    client.click("Sign in", "push button")


TABS = ["Info", "Live", "Map", "Trips", "About"]


def phone(demo):
    client = Client("phone", "--size", "390x844")
    client.find("I agree")
    client.picture("terms")
    client.click("I agree")
    client.find("User name")
    client.picture("sign-in")
    sign_in(client, password="wrong")
    client.find("Unable to sign in")
    client.picture("wrong-password", rest=0.4)
    client.gone("Unable to sign in")
    sign_in(client)
    client.find("My Vehicles")
    client.picture("vehicles")
    client.scroll_down("My Vehicles", 120)
    client.picture("vehicles-end")
    client.close()

    client = Client("phone", "--size", "390x844")
    client.picture("launch", rest=0.5)
    client.find("My Vehicles")
    first_vehicle(client)
    client.find("Speed")
    client.picture("info")
    for tab in TABS[1:]:
        client.click(tab, "page tab")
        client.picture(f"tab-{tab.lower()}")
    client.click(TABS[0], "page tab")
    client.click("Choose date")
    client.picture("choose-date")
    client.click("Cancel")
    demo.stop()
    # Which of the two depends on whether this machine has a network besides loopback.
    client.wait_for("a message", lambda: client.look("The call ended with an error")
                    or client.look("An unexpected error occurred"), seconds=25)
    client.picture("service-away", rest=0.4)
    demo.start()
    client.click("Back")
    client.find("My Vehicles")
    client.close()


def first_vehicle(client):
    client.click("Café van 1")  # on the road round the clock


def small_phone():
    client = Client("small-phone", "--size", "320x568")
    client.find("My Vehicles")
    client.picture("vehicles")
    first_vehicle(client)
    client.find("Speed")
    client.picture("info")
    client.close()


def tablet():
    client = Client("tablet", "--tablet")
    client.picture("launch", rest=0.5)
    client.find("My Vehicles")
    client.picture("vehicles")
    first_vehicle(client)
    client.find("Speed")
    client.picture("info")
    client.click("Log out")
    client.find("Are you sure")
    client.picture("log-out")
    client.click("Log out", "push button")
    client.find("User name")
    client.picture("sign-in")
    client.close()


def index():
    names = sorted(name for name in os.listdir(PICTURES) if name.endswith(".png"))
    figures = "".join(f'<figure><img src="{n}" alt="{n[:-4]}"><figcaption>{n[:-4]}</figcaption></figure>' for n in names)
    style = "body{font:16px sans-serif;display:flex;flex-wrap:wrap;gap:24px;background:#eef2f4}" \
            "figure{margin:0}img{max-height:600px;border-radius:8px;box-shadow:0 2px 12px #0003}"
    with open(f"{PICTURES}/index.html", "w", encoding="utf-8") as page:
        page.write(f"<!doctype html><title>Fleetor, every screen</title><style>{style}</style>{figures}")
    print(f"{len(names)} pictures")


service = Demo()
try:
    phone(service)
    small_phone()
    tablet()
    index()
finally:
    service.stop()
