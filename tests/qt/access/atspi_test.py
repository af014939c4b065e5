"""atspi_test.py DEMO_SERVICE CLIENT: uses the client as assistive technology does, through AT-SPI alone: no picture, no
mouse, no key. On every screen that it meets, whatever can have the focus or be pressed must have a name and a role."""

import re
import select
import subprocess
import sys
import time
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

warnings.simplefilter("ignore", DeprecationWarning)  # of names for which there are no others yet
NOT_A_ROLE = {"unknown", "invalid", "redundant object"}


def until(condition, seconds=30):
    """What the condition gives as soon as that is true, or in the end."""
    end = time.monotonic() + seconds
    while not (result := condition()) and time.monotonic() < end:
        time.sleep(0.05)  # between two looks
        while GLib.MainContext.default().iteration(False):
            pass
    return result


class Screen:
    def __init__(self, process):
        self.process = process
        self.controls = 0

    def application(self):
        desktop = Atspi.get_desktop(0)
        found = [desktop.get_child_at_index(i) for i in range(desktop.get_child_count())]
        return next((one for one in found if one and one.get_process_id() == self.process.pid), None)

    def showing(self, scrolled_away=False):
        """Everything on the screen, in reading order."""
        nodes, todo = [], [self.application()]
        while todo:
            node = todo.pop()
            if node is None:
                continue
            try:
                shows = scrolled_away or node.get_state_set().contains(Atspi.StateType.SHOWING)
                if node.get_role() != Atspi.Role.APPLICATION and not shows:
                    continue
                todo += [node.get_child_at_index(i) for i in reversed(range(node.get_child_count()))]
                nodes.append(node)
            except GLib.Error:  # it went away meanwhile
                pass
        return nodes

    def find(self, role, name, scrolled_away):
        """The last one of that role whose whole name matches: what lies on top comes last."""
        hits = [n for n in self.showing(scrolled_away) if n.get_role_name() == role and re.fullmatch(name, n.get_name(), re.DOTALL)]
        return hits[-1] if hits else None

    def wait(self, role, name, scrolled_away=False):
        def look():
            if self.process.poll() is not None:
                sys.exit(f"the client ended with status {self.process.returncode}")
            try:
                return self.find(role, name, scrolled_away)
            except GLib.Error:
                return None
        if hit := until(look):
            return hit
        there = "\n".join(f"  {n.get_role_name()}: {n.get_name()!r}" for n in self.showing())
        sys.exit(f"there is no {role} called {name!r}; there is\n{there}")

    def covered(self, role, name):
        """What lies under a sheet or an alert must be out of reach."""
        if self.find(role, name, scrolled_away=True):
            sys.exit(f"the {role} {name!r} is still there, under what covers it")

    def focus(self, role, name):
        """Puts the focus on what may be out of sight and come into it by that."""
        hit = self.wait(role, name, scrolled_away=True)
        if not hit.grab_focus():
            sys.exit(f"the {role} {name!r} does not take the focus")

    def press(self, role, name):
        control = self.wait(role, name)
        self.check()
        actions = [control.get_action_name(i).lower() for i in range(control.get_n_actions())]
        if "press" not in actions or not control.do_action(actions.index("press")):
            sys.exit(f"the {role} {name!r} cannot be pressed; its actions are {actions}")

    def nameless(self):
        """The number of controls, and those that can be reached but have no name or role."""
        bad, controls = [], 0
        for node in self.showing():
            try:
                focusable = node.get_state_set().contains(Atspi.StateType.FOCUSABLE)
                actions = [node.get_action_name(i).lower() for i in range(node.get_n_actions())]
                role, name = node.get_role_name(), node.get_name()
            except GLib.Error:
                continue
            if role not in ("frame", "application", "window", "filler") and (focusable or "press" in actions):
                controls += 1
                if not name.strip() or role in NOT_A_ROLE:
                    bad.append(f"{role} {name!r} with the actions {actions}")
        return controls, bad

    def check(self):
        """Fails for a nameless control, unless it is one of a screen that is just leaving."""
        def controls_with_names():
            controls, bad = self.nameless()
            return controls if not bad else 0
        found = until(controls_with_names, 3)
        if not found:
            controls, bad = self.nameless()
            sys.exit(f"of {controls} controls these have no name or no role: " + "; ".join(bad))
        self.controls += found


def write(field, text):
    if not field.set_text_contents(text):
        sys.exit(f"the field {field.get_name()!r} takes no text")


def write_unheard(field, secret):
    """Nobody who listens or reads may get to know the text; that the caret moves shows that there is something to hear."""
    heard = []
    listener = Atspi.EventListener.new(lambda event: heard.append(f"{event.type} {event.any_data}"))
    listener.register("object:text-changed")
    listener.register("object:text-caret-moved")
    def writing_is_heard():
        write(field, "")
        write(field, secret)
        return any("caret" in event for event in heard)
    if not until(writing_is_heard):
        sys.exit("no move of the caret was announced")
    read = Atspi.Text.get_text(field.get_text_iface(), 0, -1)
    if read != "●" * len(secret) or any(secret in event for event in heard):
        sys.exit(f"of the password can be read {read!r}, and heard {heard}")


def hear(act, words):
    """Does it, and waits until these words, all in one line, are announced."""
    heard = []
    listener = Atspi.EventListener.new(lambda event: heard.append(event.source.get_name()))
    listener.register("object:state-changed:showing")
    act()
    if not until(lambda: any(re.fullmatch(words, name or "") for name in heard)):
        sys.exit(f"not announced: {words!r}, but {heard}")
    listener.deregister("object:state-changed:showing")


def walk(screen):
    screen.wait("document web", "Terms of service")
    screen.focus("link", "privacy notice")
    screen.press("link", "privacy notice")
    asked = screen.process.stdout.readline().strip() if select.select([screen.process.stdout], [], [], 30)[0] else None
    if asked != "https://www.example.com/fleetor/privacy":
        sys.exit(f"the link opened {asked}")
    screen.press("push button", "I agree")
    write(screen.wait("text", "User name"), "demo")
    password = screen.wait("password text", "Password")
    write_unheard(password, "hunter2")
    write(password, "wrong")
    screen.press("push button", "Sign in")
    screen.wait("label", "User name or password is wrong")
    if "wrong" not in password.get_description():
        sys.exit(f"the field of the password is described as {password.get_description()!r}")
    write(password, "demo")
    screen.press("push button", "Sign in")

    screen.wait("list", "My Vehicles")
    screen.press("list item", "Café van 1.*")
    screen.wait("list item", "Update time: .+")
    for tab, shown in (("Live", ("push button", "Vehicle, .+")), ("Map", ("push button", "Start, .+")),
                       ("Trips", ("list item", "(Trip|Parking|Driving|Stop).*"))):
        screen.press("page tab", tab)
        screen.wait(*shown)
        screen.check()
        if tab == "Map":
            screen.press("push button", "Show the whole track")
            screen.press("push button", "Zoom out")
    first = screen.wait("list item", r"(Trip|Parking|Driving|Stop).*").get_name()

    hear(lambda: screen.press("list item", "Driving.*"), r"[\d:]+ · .* km · .*→.*")
    screen.press("push button", "Back to the trips")
    screen.wait("list item", re.escape(first))

    screen.press("push button", "Choose date")
    screen.press("push button", "Previous year")
    screen.covered("page tab", "Trips")
    screen.press("push button", r".*\b15\b.*")
    screen.press("push button", "Done")
    year = time.localtime().tm_year - 1
    other = screen.wait("list item", rf"(?!{re.escape(first)}).*\b{year}-\d\d-15\b.*").get_name()
    print(f"{first!r}, and on the other day {other!r}")

    screen.press("page tab", "About")
    screen.press("push button", "Back")
    screen.press("push button", "Menu")
    screen.press("push button", "Account")
    screen.wait("list item", "Name: .+")
    screen.press("push button", "Menu")
    screen.press("push button", "About")
    screen.wait("document web", "About")
    screen.press("push button", "Menu")
    screen.press("push button", "Log out")
    screen.wait("push button", "Cancel")
    screen.covered("push button", "Account")
    screen.press("push button", "Log out")
    screen.wait("push button", "Sign in")
    screen.check()


service = subprocess.Popen([sys.argv[1], "--port", "0", "--seed", "7"], stdout=subprocess.PIPE, text=True)
address = re.search(r"http://[0-9.:]+", service.stdout.readline())
if not address:
    sys.exit("the demo service did not start")
client = subprocess.Popen([sys.argv[2], address.group()], stdout=subprocess.PIPE, text=True)
try:
    screen = Screen(client)
    walk(screen)
    print(f"{screen.controls} times a control was met, with a name and a role")
finally:
    client.kill()
    service.kill()
