"""Waits until the sign-in screen of a client stands, and accepts the terms on the way there: through AT-SPI alone, on the
session bus of the environment. Waits as long as it takes; whoever starts this knows when to give up."""

import time
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

warnings.simplefilter("ignore", DeprecationWarning)  # of names for which there are no others yet


def showing():
    """What the screen shows, by role and name."""
    shown, todo = {}, [Atspi.get_desktop(0)]
    while todo:
        node = todo.pop()
        if node is None:
            continue
        role = node.get_role()
        if role not in (Atspi.Role.DESKTOP_FRAME, Atspi.Role.APPLICATION) \
                and not node.get_state_set().contains(Atspi.StateType.SHOWING):
            continue
        shown[node.get_role_name(), node.get_name()] = node
        todo += [node.get_child_at_index(i) for i in range(node.get_child_count())]
    return shown


while True:
    try:
        screen = showing()
        if ("push button", "Sign in") in screen and ("text", "User name") in screen:
            break
        if agree := screen.get(("push button", "I agree")):
            agree.do_action(0)
    except GLib.Error:
        pass  # something went away while it was looked at
    time.sleep(0.2)
