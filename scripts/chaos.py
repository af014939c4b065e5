"""chaos.py PROGRAMS PICTURES PORT [ORDEAL...]: what a client must survive. Each ordeal ends in a client that works as before:
no crash, no more requests than its use explains, the sign-in neither lost nor kept after a sign-out, memory within 30 %."""

import glob
import json
import os
import random
import signal
import subprocess
import sys
import time
import traceback

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

import hostile_service as hostile  # noqa: E402
from tour_client import PROGRAMS, Demo  # noqa: E402
from watched_client import WatchedClient  # noqa: E402

CONFIG = os.path.join(os.environ["XDG_CONFIG_HOME"], "fleetor", "fleetor")
SIGN_IN = os.path.join(CONFIG, "sign-in")
POLL = 15
MEMORY = 0.3
SEED = int(os.environ.get("CHAOS_SEED") or random.SystemRandom().randrange(1 << 32))
CHANCE = random.Random(SEED)
BUS = Gio.bus_get_sync(Gio.BusType.SESSION)


class Broken(Exception):
    """Something that must hold did not."""


def must(holds, message):
    if not holds:
        raise Broken(message)


class World:
    """The demo service, the hostile one in front of it, and the client with what its requests may be."""

    def __init__(self):
        self.demo = Demo("0")
        self.service = hostile.HostileService(sys.argv[3], self.demo.port)
        self.client = None
        self.token = None  # not known
        self.walks = 0  # of this client
        self.allow(0)

    def allow(self, requests):
        """From here on: so many requests, besides the polls and what the client is used for."""
        self.began, self.allowed = time.monotonic(), requests

    def start(self, expected=None, **keywords):
        """Gives "in" or "out", which must be what is expected."""
        self.allowed += 2
        self.walks, since = 0, time.monotonic()
        self.client = WatchedClient(**keywords)
        first = self.client.wait_for("the list or the sign-in screen", lambda: (
            self.client.look("Log out") and "in") or (self.client.look("User name") and "out"))
        must(expected in (None, first), f"the client starts signed {first}")
        if first == "in":
            sent = self.sent_token("vehicles", since)
            must(sent and self.token in (None, sent), "the list is asked for with another token")
            self.token = sent
        return first

    def sent_token(self, endpoint, since):
        """That of the first such request."""
        def tokens():
            return [token for moment, name, token in self.service.requests if name == endpoint and moment >= since]

        self.client.wait_for(f"a request for /{endpoint}", tokens)
        return tokens()[0]

    def kill(self):
        self.client.process.kill()
        self.client.process.wait()

    def restart(self, expected=None, **keywords):
        self.kill()
        return self.start(expected, **keywords)

    def sign_in(self):
        self.allowed += 3
        since = time.monotonic()
        self.client.sign_in()
        self.client.find("Café van 1")
        self.token = self.sent_token("vehicles", since)
        must(self.token, "the list is asked for without a token")

    def sign_out(self):
        self.allowed += 2
        self.client.sign_out()
        self.client.find("User name")

    def walk(self):
        self.allowed += 5  # a vehicle and its pages, and the poll that the vehicle before had still to come
        self.walks += 1
        self.client.walk()

    def fault(self, fault):
        self.demo.no_faults()
        self.demo.fault(fault)

    def prepare(self):
        """A client that is signed in, and warm."""
        if not self.client:
            self.client = WatchedClient()
            self.client.first_visit()
            self.token = self.sent_token("vehicles", self.began)
        elif self.client.process.poll() is not None and self.start() == "out":
            self.sign_in()
        while self.walks < 4:
            self.walk()

    def recover(self):
        """The service is well again, and so must the client be."""
        self.service.heal()
        self.demo.no_faults()
        since = time.monotonic()
        self.walk()
        self.client.find("Speed")
        must(self.sent_token("live", since) == self.token, "the sign-in was lost")

    def requests(self):
        """How many there were, which must not be more than the client's use explains."""
        polls = (time.monotonic() - self.began) / POLL
        most = self.allowed + int(polls) + 1
        sent = self.service.count(since=self.began)
        must(sent <= most, f"{sent} requests, {most} at most were due")
        tiles = self.service.count("tiles", self.began)
        return f"{sent} of {most} requests, {tiles} of tiles"


# The service

FAULTS = ("delay:1500", "hang", "cut", "truncated", "content-type", "charset:utf-16", "charset-lie:utf-16",
          "charset-name:no-such-charset", "error-code", "404", "500", "empty", "space", "html", "null", "missing",
          "broken-element", "total:1000000")


def demo_faults(world):
    for fault in FAULTS:
        world.fault(f"all={fault}")
        world.walk()
    world.demo.no_faults()
    world.allowed += 5  # a request may go out again when a connection that was kept closes
    world.service.spoil_with(lambda handler: None)
    world.walk()
    return f"{len(FAULTS)} faults, and a connection that closes"


def trickle(world):
    world.service.spoil_with(hostile.trickle)
    began = time.monotonic()
    world.walk()
    used = time.monotonic() - began
    world.client.find("The call ended|An unexpected error", seconds=40)
    return f"used for {used:.0f} s meanwhile, given up after {time.monotonic() - began:.0f} s"


def peak_of(world, spoil, most):
    """Of several answers at the same time."""
    world.client.forget_peak()
    before = world.client.peak()
    world.service.spoil_with(spoil)
    world.walk()
    world.walk()
    time.sleep(3)
    more = (world.client.peak() - before) // 1024
    must(more <= most, f"{more} MB more at the peak, {most} are allowed")
    return f"at the peak {more} MB more"


def bomb(world):
    return peak_of(world, hostile.bomb, 512)  # four answers of 64 MB, each while it grows


def floods(world):
    results = []
    for name, flood in hostile.FLOODS.items():
        results.append(f"{name} {peak_of(world, flood, 512)}")
        world.service.heal()
    return ", ".join(results)


def redirects(world):
    other = hostile.HostileService(0, world.demo.port)
    other.spoil = lambda endpoint: hostile.status(500)
    here = world.service.port
    for to in (lambda handler: handler.path, f"http://127.0.0.1:{other.port}/live", "file:///etc/passwd", "",
               f"http://127.0.0.1:{here}/" + "x" * 100_000, f"//127.0.0.1:{other.port}/info", "http://["):
        world.service.spoil_with(hostile.redirect(to))
        world.walk()
    world.allowed += 8 * 16 * 2  # the loop, of four requests and whatever polls come with it
    must(other.requests, "no redirect led to the other origin")
    must(all(token is None for _, _, token in other.requests), "the token went to another origin")
    return f"{len(other.requests)} requests at another origin, none with the token"


def wrong_totals(world):
    asked = []
    for total in (25, 10, 0, -1, 10 ** 12, None):
        world.service.spoil_with(hostile.with_total(total), "vehicles")
        since = time.monotonic()
        world.restart("in")
        world.client.wheel("My Vehicles", -120, below=300)
        time.sleep(3)
        asked.append(world.service.count("vehicles", since))
        must(world.service.changed >= len(asked), f"total {total}: the client got no such list")
        world.allowed += 4  # three pages of 45 vehicles, and one that brings nothing
        must(asked[-1] <= 4, f"total {total}: the list was asked for {asked[-1]} times")
    world.service.heal()
    world.restart("in")
    return f"the list was asked for {asked} times"


def late_401(world):
    client, service = world.client, world.service
    service.spoil_with(hostile.status(401, after=5), "live")
    asked = service.count("live")
    client.open_next_vehicle()
    client.wait_for("the poll", lambda: service.count("live") > asked)
    world.sign_out()
    service.spoil_with(hostile.status(200), "none")
    world.sign_in()
    time.sleep(7)
    must(client.look("Log out"), "an answer to the session before ended this one")
    service.spoil_with(hostile.status(401), "live")
    client.open_next_vehicle()
    client.find("User name")
    client.find("Your session has expired")
    since = time.monotonic()
    time.sleep(POLL + 3)
    after = service.count(since=since)
    must(after == 0, f"{after} requests after the session's end")
    world.restart("out")
    service.heal()
    world.sign_in()
    return "the late one ignored, the other ended the session; no request for 18 s after"


# The machine

FULL_DISK = ("env", "--ignore-signal=XFSZ", "prlimit", "--fsize=0:")


def full_disk(world):
    world.restart("in", within=FULL_DISK)
    world.walk()
    world.sign_out()
    world.restart("out", within=FULL_DISK)
    world.sign_in()
    world.client.find("Your sign-in could not be stored")
    world.walk()
    world.restart("out")
    world.sign_in()
    stored()
    world.restart("in", within=FULL_DISK)
    world.restart("in")
    return "started 3 times on it, signed out and in"


def stored():
    """Waits until the sign-in is."""
    for _ in range(300):
        if os.path.exists(SIGN_IN):
            return
        time.sleep(0.1)
    raise Broken("the sign-in was not stored within 30 s")


SECRETS = "/org/freedesktop/secrets"
KEY_RING = SECRETS + "/aliases/default"


def call(interface, method, arguments, name="org.freedesktop.secrets"):
    path = SECRETS if name == "org.freedesktop.secrets" else "/"
    return BUS.call_sync(name, path, interface, method, arguments, None, 0, 30_000, None).unpack()


def signal_key_ring(what):
    daemon = call("org.freedesktop.DBus", "GetConnectionUnixProcessID",
                  GLib.Variant("(s)", ("org.freedesktop.secrets",)), "org.freedesktop.DBus")[0]
    os.kill(daemon, what)


def lock_key_ring():
    call("org.freedesktop.Secret.Service", "Lock", GLib.Variant("(ao)", ([KEY_RING],)))


def unlock_key_ring():
    """The bus starts the daemon if it does not run."""
    _, session = call("org.freedesktop.Secret.Service", "OpenSession", GLib.Variant("(sv)", ("plain", GLib.Variant("s", ""))))
    call("org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface", "UnlockWithMasterPassword",
         GLib.Variant("(o(oayays))", (KEY_RING, (session, b"", b"desktop", "text/plain"))))


def decline(world):
    """The system's prompt for the key ring's password."""
    def prompt():
        return subprocess.run(["xdotool", "search", "--onlyvisible", "--class", "gcr-prompter"], capture_output=True,
                              check=False).stdout

    world.client.wait_for("the system's prompt", prompt)
    world.client.wait_for("the end of the system's prompt", lambda: world.client.key("Escape") or not prompt())


def key_ring(spoil, repair, prompts):
    def ordeal(world):
        stored()
        spoil()
        began = time.monotonic()
        first = world.restart("out")
        took = time.monotonic() - began
        if prompts:
            decline(world)
        world.kill()
        repair()
        world.start("in")  # never lost
        spoil()
        world.walk()
        world.sign_out()
        world.kill()
        repair()
        world.start("out")  # never kept
        spoil()
        world.sign_in()
        if prompts:
            decline(world)
        world.client.find("Your sign-in could not be stored")
        world.walk()
        world.kill()
        repair()
        later = world.start()
        if later == "out":
            world.sign_in()
            stored()
        return f"signed {first} after {took:.1f} s, in again with the key ring; signed {later} after a sign-in meanwhile"
    return ordeal


def display_gone(world):
    world.kill()
    statuses = []
    for _ in range(5):
        display = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "1280x1024x24", "-noreset"],
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        number = display.stdout.readline().strip()
        world.allowed += 2
        since = time.monotonic()
        client = bare_client({"DISPLAY": f":{number}"})
        try:
            while not world.service.count("vehicles", since):
                must(time.monotonic() - since < 60 and client.poll() is None, "the client does not start")
                time.sleep(0.05)
            time.sleep(CHANCE.uniform(0, 2))
            display.kill()
            statuses.append(client.wait(60))
        finally:
            display.kill()
            client.kill()
    must(statuses == [1] * 5, f"the client ends with {statuses}")
    world.start("in")
    return "ends with status 1, 5 times"


def bare_client(environment=None):
    folder = os.path.join(os.environ["HOME"], "runtime-client")
    return subprocess.Popen([f"{PROGRAMS}/app/fleetor", "--tablet", "--size", "1024x768"],
                            env=dict(os.environ, XDG_RUNTIME_DIR=folder, **(environment or {})))


def whole_files():
    for file in glob.glob(os.path.join(CONFIG, "*.json")):
        with open(file, encoding="utf-8") as text:
            must(isinstance(json.load(text), dict), f"{file} is no JSON object")
    if os.path.exists(SIGN_IN):
        with open(SIGN_IN, encoding="utf-8") as mark:
            must(len(mark.read()) == 38, f"half a name in {SIGN_IN}")


def kills(world):
    """Of a client that starts and, every sixth time, signs out or in: then the file that counts tells what the next start is."""
    stored()
    world.kill()
    state, starts = "in", {"in": 0, "out": 0}
    for number in range(100):
        if number % 6:
            world.allowed += 2
            process = bare_client()
            time.sleep(CHANCE.uniform(0, 4))
            must(process.poll() is None, f"the client ended with status {process.returncode}")
            process.kill()
            process.wait()
        else:
            world.start(state)
            starts[state] += 1
            world.allowed += 3
            if state == "in":
                world.client.sign_out()
            else:
                world.client.sign_in()
            time.sleep(CHANCE.uniform(0, 0.6))
            signed_out = state == "in" and world.client.look("User name")
            world.kill()
            must(not signed_out or not os.path.exists(SIGN_IN), "a sign-out that had ended is not stored")
            state = "in" if os.path.exists(SIGN_IN) else "out"
            if state == "in":
                world.token = None
        whole_files()
    if world.start(state) == "out":
        world.sign_in()
    return f"100 kills; {starts['in']} starts signed in and {starts['out']} signed out, as was due"


def clock_jumps(world):
    clock = os.path.join(os.environ["HOME"], "clock")

    def set_clock(text):
        with open(clock + ".new", "w", encoding="ascii") as new:
            new.write(text + "\n")
        os.rename(clock + ".new", clock)

    set_clock("+0")
    library = "/usr/$LIB/faketime/libfaketimeMT.so.1"
    world.restart("in", environment={
        "LD_PRELOAD": library, "FAKETIME_TIMESTAMP_FILE": clock, "FAKETIME_NO_CACHE": "1",
        "FAKETIME_DONT_FAKE_MONOTONIC": "1", "NO_FAKE_STAT": "1"})
    jumps = ("+1d", "-1d", "@1970-01-02 00:00:00", "@2100-02-28 23:59:55")
    for jump in jumps:
        set_clock(jump)
        world.walk()
        asked = world.service.count("live")
        world.client.wait_for(f"a poll after the clock's jump to {jump}", lambda: world.service.count("live") > asked, POLL + 5)
    world.restart("in")
    return f"{len(jumps)} jumps, each followed by a poll"


def asleep(world):
    world.walk()
    world.client.process.send_signal(signal.SIGSTOP)
    time.sleep(2 * POLL)
    world.client.process.send_signal(signal.SIGCONT)
    return f"stopped for {2 * POLL} s"


ORDEALS = {
    "demo-faults": demo_faults,
    "trickle": trickle,
    "bomb": bomb,
    "floods": floods,
    "redirects": redirects,
    "wrong-totals": wrong_totals,
    "late-401": late_401,
    "asleep": asleep,
    "full-disk": full_disk,
    "key-ring-locked": key_ring(lock_key_ring, unlock_key_ring, prompts=True),
    "key-ring-killed": key_ring(lambda: signal_key_ring(signal.SIGKILL), unlock_key_ring, prompts=True),
    "key-ring-silent": key_ring(lambda: signal_key_ring(signal.SIGSTOP), lambda: signal_key_ring(signal.SIGCONT), prompts=False),
    "clock-jumps": clock_jumps,
    "display-gone": display_gone,
    "kills": kills,
}


def crash_reports():
    return set(glob.glob(os.path.join(os.environ["XDG_CACHE_HOME"], "**", "reports", "crash-*"), recursive=True))


def go_through(world, ordeal):
    """Its result in a line; Broken or SystemExit when something does not hold."""
    world.prepare()
    crashes, before = crash_reports(), world.client.memory()
    world.allow(2)
    result = ordeal(world)
    world.recover()
    requests = world.requests()
    must(world.client.process.poll() is None, "the client has ended")
    must(crash_reports() == crashes, "a client crashed")
    for _ in range(10):
        after = world.client.memory()
        if after <= before * (1 + MEMORY):
            break
        time.sleep(2)
    share = f"{before / 1024:.0f} -> {after / 1024:.0f} MB ({after / before - 1:+.0%})"
    must(after <= before * (1 + MEMORY), f"memory does not come back: {share}")
    return f"{requests}, {share}; {result}"


def main():
    chosen = sys.argv[4:] or list(ORDEALS)
    for name in chosen:
        if name not in ORDEALS:
            raise SystemExit(f"chaos: no ordeal is named {name}; there are {', '.join(ORDEALS)}")
    print(f"Seed {SEED} (CHAOS_SEED chooses another)", flush=True)
    world, failed, started = World(), [], time.monotonic()
    try:
        for name in chosen:
            began = time.monotonic()
            try:
                verdict, result = "ok   ", go_through(world, ORDEALS[name])
            except (Exception, SystemExit) as problem:  # pylint: disable=broad-except
                verdict, result = "WRONG", f"{type(problem).__name__}: {problem}"
                if not isinstance(problem, (Broken, SystemExit)):
                    traceback.print_exc()
                failed.append(name)
                world.service.heal()
                world.demo.no_faults()
                unlock_key_ring()
                if world.client:
                    world.kill()
            print(f"{verdict} {name:16} {time.monotonic() - began:4.0f} s  {result}", flush=True)
    finally:
        if world.client:
            world.kill()
        world.demo.stop()
    print(f"{len(chosen) - len(failed)} of {len(chosen)} ordeals survived in {time.monotonic() - started:.0f} s")
    sys.exit(1 if failed else 0)


main()
