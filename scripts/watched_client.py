"""A client on a tablet whose process is watched, and what is done to it in every ordeal and in the soak."""

import os

from tour_client import Client

VEHICLES = ("Café van 1", "Büssli 3")
TABS = ("Live", "Map", "Trips", "About", "Info")


class WatchedClient(Client):
    def __init__(self, name="client", *options, **keywords):
        super().__init__(name, "--tablet", "--size", "1024x768", *options, **keywords)
        self.vehicle = 1

    def wait_for(self, what, look, seconds=15):
        """With patience for a machine under load: it is hangs that are to be found."""
        return super().wait_for(what, look, 4 * seconds)

    def first_visit(self):
        self.click("I agree")
        self.sign_in()
        self.find(VEHICLES[0])

    def sign_out(self):
        self.click("Log out")
        self.find("Are you sure")
        self.click("Log out", "push button")

    def open_next_vehicle(self):
        self.vehicle = 1 - self.vehicle
        self.click(VEHICLES[self.vehicle])

    def tab(self, name):
        self.click(name, "page tab")

    def walk(self):
        """Asks for everything there is of a vehicle."""
        self.open_next_vehicle()
        for name in TABS:
            self.tab(name)

    # The process

    def memory(self):
        """In kB; what it shares with others in proportion."""
        with open(f"/proc/{self.process.pid}/smaps_rollup", encoding="ascii") as rollup:
            return next(int(line.split()[1]) for line in rollup if line.startswith("Pss:"))

    def peak(self):
        """The most memory that was resident since it was last forgotten, in kB."""
        with open(f"/proc/{self.process.pid}/status", encoding="ascii") as status:
            return next(int(line.split()[1]) for line in status if line.startswith("VmHWM:"))

    def forget_peak(self):
        with open(f"/proc/{self.process.pid}/clear_refs", "w", encoding="ascii") as references:
            references.write("5")

    def descriptors(self):
        return len(os.listdir(f"/proc/{self.process.pid}/fd"))

    def threads(self):
        return len(os.listdir(f"/proc/{self.process.pid}/task"))
