"""soak.py PROGRAMS PICTURES PORT SECONDS: a client that polls 100 times faster than usual is used for so long, while a fifth
of the service's answers is spoiled. In the last half its memory must be flat, and descriptors and threads steady."""

import random
import sys
import time

from hostile_service import HostileService
from tour_client import Demo
from watched_client import TABS, WatchedClient

PORT, SECONDS = sys.argv[3], int(sys.argv[4])
PACE = 100  # as the client is built
INTERVAL = 15 / PACE
FAULTS = ("500", "404", "cut", "truncated", "empty", "space", "html", "delay:400", "error-code", "total:3", "null", "missing",
          "broken-element", "content-type", "charset:iso-8859-1", "charset-lie:utf-16", "charset-name:no-such-charset")
SHARE = 0.2
SAMPLE_EVERY = 5
MOST_GROWTH = 60 * PACE  # kB an hour: 60 for each hour of somebody's use
MOST_MORE = 8  # descriptors, and threads


def slope(points):
    """Of the line of least squares."""
    mean_x = sum(x for x, _ in points) / len(points)
    mean_y = sum(y for _, y in points) / len(points)
    return sum((x - mean_x) * (y - mean_y) for x, y in points) / sum((x - mean_x) ** 2 for x, _ in points)


class Faults:
    """Has the demo service spoil a fifth of its answers."""

    def __init__(self, demo, seed):
        self.demo, self.chance, self.spoiled, self.asked = demo, random.Random(seed), 0, 0

    def __call__(self, endpoint):
        if endpoint != "tiles":
            self.asked += 1
            if self.chance.random() < SHARE:
                self.spoiled += 1
                self.demo.fault(f"{endpoint}={self.chance.choice(FAULTS)}*1")


def fill_tiles(client):
    """Of both maps as many as are kept in memory, 64 MB: they would be taken for growth."""
    client.tab("Map")
    for _ in range(2):
        for zoom in 5 * ("Zoom in",) + 9 * ("Zoom out",) + 4 * ("Zoom in",):
            client.click(zoom, "push button")
            time.sleep(1)
        client.click("Satellite map")
    client.tab("Info")


def use(client, service, chance, seconds):
    """Opens vehicles and pages at random; gives the samples: seconds, memory, descriptors, threads."""
    began = time.monotonic()
    samples, opened, said = [], 0, 0
    while (now := time.monotonic() - began) < seconds:
        if now >= len(samples) * SAMPLE_EVERY:
            samples.append((now, client.memory(), client.descriptors(), client.threads()))
        if now >= said:
            said += 60
            print(f"{now:6.0f} s  {samples[-1][1]} kB  {samples[-1][2]} descriptors  {samples[-1][3]} threads  "
                  f"{service.count()} requests", flush=True)
        if chance.random() < 0.25:
            client.open_next_vehicle()
            opened += 1
        else:
            client.tab(chance.choice(TABS))
        time.sleep(1)
    return samples, opened


def main():
    seed = random.SystemRandom().randrange(1 << 32)
    print(f"Seed {seed}, {SECONDS} s, a poll every {INTERVAL:g} s")
    demo = Demo("0")
    service = HostileService(PORT, demo.port)
    client = WatchedClient()
    try:
        client.first_visit()
        client.walk()
        fill_tiles(client)
        faults = service.spoil = Faults(demo, seed)
        samples, opened = use(client, service, random.Random(seed), SECONDS)
        service.heal()
        client.open_next_vehicle()
        client.find("Speed")
    finally:
        client.close()
        demo.stop()

    half = len(samples) // 2
    first, last = samples[:half], samples[half:]
    growth = slope([(seconds / 3600, memory) for seconds, memory, _, _ in last])
    polls = service.count("live")
    most_polls = SECONDS / INTERVAL + 2 * opened + 10
    wrong = []

    def judge(holds, result):
        print(("ok    " if holds else "WRONG ") + result)
        if not holds:
            wrong.append(result)

    judge(growth <= MOST_GROWTH, f"memory in the last half: {growth:+.0f} kB an hour, {MOST_GROWTH} are allowed; "
          f"{min(s[1] for s in last)} to {max(s[1] for s in last)} kB")
    for name, index in (("descriptors", 2), ("threads", 3)):
        most, before = max(s[index] for s in last), max(s[index] for s in first)
        judge(most <= before + MOST_MORE, f"{name}: at most {before} in the first half, {most} in the last")
    judge(polls <= most_polls, f"{polls} polls, {most_polls:.0f} are allowed; {service.count()} requests")
    judge(faults.spoiled > 0.15 * faults.asked, f"{faults.spoiled} of {faults.asked} answers spoiled")
    sys.exit(1 if wrong else 0)


main()
