"""Walks through every screen of the client, on a phone and on a tablet, and leaves a picture of each and an index page."""

import datetime
import html
import json
import os
import re
import time

from tour_client import DAY, PICTURES, PROGRESS, Client, Demo

PHONE = ("--size", "390x844")
SMALL_PHONE = ("--size", "320x568")
LOW_PHONE = ("--size", "568x320")
TABLET = ("--tablet", "--size", "1024x768")
TABLET_AT = (400, 0)
BESIDE = (1430, 0)
STANDARD_GROUND = (0xEE, 0xF1, 0xEE)  # where no tile is
TAB, MARKER, CALLOUT = "page tab", "push button", "label"
PARKED = r".*\(\d+:\d\d:\d\d\)"


def words_of(code):
    """From an English text to that of the language."""
    here = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(here, "..", "resources", "languages", f"{code}.json"), encoding="utf-8") as table:
        return json.load(table).__getitem__


def tab(client, name):
    client.click(name, TAB)


def map_box(client):
    at = client.find("Map$", "image")
    return at.x, at.y, at.width, at.height


def share(colours, fits):
    return sum(count for colour, count in colours.items() if fits(colour)) / sum(colours.values())


def near(colour, wanted):
    return max(abs(a - b) for a, b in zip(colour, wanted)) < 24


def wait_for_line(client, vehicle, seconds=20):
    """Until the line in the vehicle's colour is seen: 60 pixels of it at least."""
    wanted = tuple(bytes.fromhex(vehicle["mapLineColor"][1:]))
    box = map_box(client)
    client.wait_for("the line on the map", lambda: sum(
        count for colour, count in client.colours(box).items() if near(colour, wanted)) > 60, seconds)


def wait_for_tiles(client, ground=STANDARD_GROUND, seconds=30):
    """Until there is a tile everywhere, next to none of the plain ground being left."""
    box = map_box(client)
    client.wait_for("the map's tiles", lambda: share(client.colours(box), lambda c: c == ground) < 0.01, seconds)


def day_track(client, vehicle):
    tab(client, "Map")
    wait_for_line(client, vehicle)
    client.click("Zoom in", "push button")
    client.click("Show the whole track", "push button")
    wait_for_tiles(client)
    client.picture("map-day-track")


def open_callout(client):
    """The one of a place where the vehicle stood, the nearest to the middle of the map."""
    x, y, width, height = map_box(client)

    def from_middle(at):
        return abs(at.x + at.width / 2 - x - width / 2) + abs(at.y + at.height / 2 - y - height / 2)

    client.find(PARKED, MARKER)
    at = min(client.seen(PARKED, MARKER), key=from_middle)
    client.click_at(at.x + at.width // 2, at.y + at.height // 2)
    client.find(PARKED, CALLOUT)


def callout(client):
    open_callout(client)
    client.picture("map-callout")
    x, y, _, height = map_box(client)
    client.click_at(x + 30, y + height - 30)  # in a corner, for the town is round
    client.gone(PARKED, CALLOUT)


def take_along(client):
    """The sheet of a position with its QR code, and that of the day's formats, of which one is saved."""
    tab(client, "Info")
    client.click("Address: ", "list item")
    client.find("Copy as degrees")
    client.picture("position")
    client.click("Show a QR code")
    client.find("Scan with another phone")
    client.picture("position-code")
    client.key("Escape")
    client.gone("Scan with another phone")
    tab(client, "Map")
    client.click("Save the day", "push button")
    client.find("GeoJSON")
    client.picture("save-day")
    client.click("PDF", "push button")
    client.find("Saved as")
    client.picture("saved-day")
    client.gone("Saved as")


def chart(client):
    """Of the speeds that were seen so far."""
    tab(client, "Info")
    client.click("Speed: ", "list item")
    client.find("Speed, ", "chart")
    client.picture("info-chart")
    client.click("Close", "push button")
    client.gone("Speed, ", "chart")


def scroll_to(client, name, role="list item"):
    """Turns the wheel over the list until the middle of the row is above the tabs."""
    def look():
        at = client.look(name, role)
        if at and at.y + at.height // 2 < client.look(".", TAB).y:
            return True
        client.wheel(".", -1, below=-12, role=TAB)
        return False
    client.wait_for(f'"{name}"', look, 60)


def sheets(client, word=str):
    """The sheets of a position, with its QR code, and of the day's formats, and what was seen of a reading."""
    tab(client, f"{word('Info')}$")
    scroll_to(client, f"{word('Speed')}: ")
    client.click(f"{word('Speed')}: ", "list item")
    client.find(f"{word('Speed')}, ", "chart", seconds=60)
    client.picture("info-chart")
    client.key("Escape")
    client.gone(f"{word('Speed')}, ", "chart")
    scroll_to(client, f"{word('Address')}: ")
    client.click(f"{word('Address')}: ", "list item")
    client.find(word("Copy as degrees"))
    client.picture("position")
    client.key("Escape")
    client.gone(word("Copy as degrees"))
    tab(client, word("Map"))
    client.click(word("Save the day"), "push button")
    client.find("PDF")
    client.picture("save-day")
    client.key("Escape")
    client.gone("PDF")


def replay(client):
    """The middle of the day, as it is played and in the charts."""
    client.click("Replay the day", "push button")
    ribbon = client.find(".", "slider")
    client.click_at(ribbon.x + ribbon.width * 2 // 5, ribbon.y + ribbon.height // 2)
    client.picture("map-replay")
    client.click("Charts of the day", "push button")
    client.find("Average speed", "chart")
    client.picture("map-charts")
    client.click("Close the replay", "push button")
    client.gone("Charts of the day")


def satellite(client):
    client.click("Satellite map")
    box = map_box(client)
    client.wait_for("the satellite map", lambda: share(client.colours(box), lambda c: min(c) > 225) < 0.05, 30)
    client.picture("map-satellite")
    client.click("Satellite map")
    wait_for_tiles(client)


def choose_other_day(client, demo, vehicle):
    """The day before yesterday, with the arrows where that is another month."""
    day = DAY - datetime.timedelta(days=2)
    client.click("Choose date", "push button")
    client.find("Choose date", "dialog")
    client.picture("date-picker")
    if day.month != DAY.month:
        client.click("Previous month")
    demo.forget_requests()
    client.click(rf".*\b{day.day}\b.*\b{day.year}$")
    client.click("Done")
    client.gone("Choose date", "dialog")
    client.wait_for("the other day's track", lambda: demo.requests("/map", vehicle))


def on_the_road(demo, client, place):
    """Opens the vehicle with the longest drive of the afternoon, or one of the next ones, when that is under way."""
    vehicle, begins = demo.longest_drives(first=8)[place]
    demo.stop()
    demo.start((datetime.datetime.combine(DAY, begins) + datetime.timedelta(seconds=45)).time())
    client.click(re.escape(vehicle["name"]) + r"\b")
    return vehicle


def live_trail(client, demo, vehicle):
    """After four positions of a vehicle that drives, 15 seconds apart."""
    client.wait_for("four positions", lambda: demo.requests("/live", vehicle) >= 4, 90)
    wait_for_tiles(client)
    client.wheel("Map$", 4, role="image")  # so that the trail is long on the screen
    wait_for_line(client, vehicle, 40)
    wait_for_tiles(client)
    client.picture("live-trail")


def search(client, name="search"):
    """What is typed, what nothing matches, the orders, and a pin by keyboard; Escape closes."""
    client.key("ctrl+f")
    client.find("Name or registration", "text")
    client.gone(r"\d+ of 45 vehicles")
    client.type("buss 3")
    client.find("Büssli 3")
    client.picture(name)
    client.type("xyz")
    client.find("No vehicle matches")
    client.picture(f"{name}-none")
    client.click("Clear", "push button")
    client.click("Order", "push button")
    client.find("By registration")
    client.picture(f"{name}-order")
    client.click("By registration", "push button")
    client.gone("By registration")
    client.click("Name or registration", "text")
    client.key("Down", "Tab", "space")
    client.find(".*, Pinned", "list item")
    client.picture(f"{name}-pinned")
    client.key("space")
    client.gone(".*, Pinned", "list item")
    client.key("Escape")
    client.gone("Name or registration", "text")
    client.settle()


def first_visit():
    client = Client("phone", *PHONE)
    client.find("I agree")
    client.picture("terms")
    client.click("I agree")
    client.find("User name")
    client.picture("sign-in")
    client.sign_in(password="wrong")
    client.find("Unable to sign in")
    client.picture("sign-in-refused")
    client.gone("Unable to sign in")
    client.sign_in()
    client.find("My Vehicles")
    client.find("Café van 1")
    client.picture("vehicles")
    client.wheel("My Vehicles", -120, below=300)
    client.find(r"\D* 45\b")
    client.picture("vehicles-end")
    search(client)
    return client


def board(client, word=str):
    """From the list: the fleet on one map, one callout, and one vehicle followed; then the list again."""
    client.find("Café van")
    menu, fleet = f"{word('Menu')}$", f"{word('Fleet')}$"
    on_a_phone = client.look(menu, "push button")
    if on_a_phone:
        client.click(menu, "push button")
    client.click(fleet, "push button")
    client.find(word("Show all vehicles"), "push button", 60)
    client.wait_for("all vehicles on the map", lambda: len(client.seen(".* km/h", MARKER)) == 24, 60)
    if word is str:
        wait_for_tiles(client)
    client.save(f"{client.prefix}-fleet.png")  # something of 24 vehicles always moves
    marker = client.seen(".* km/h", MARKER)[0]
    client.click_at(marker.x + marker.width // 2, marker.y + marker.height // 2)
    client.find(word("Open the vehicle"), "push button")
    client.save(f"{client.prefix}-fleet-callout.png")
    follow = client.seen(word("Follow the vehicle"), "push button")[0]
    client.click_at(follow.x + follow.width // 2, follow.y + follow.height // 2)
    client.wait_for("a closer look", lambda: len(client.seen(".* km/h", MARKER)) < 24, 30)
    if word is str:
        wait_for_tiles(client)
    client.save(f"{client.prefix}-fleet-followed.png")
    if on_a_phone:
        client.click(menu, "push button")
        client.click(word("My Vehicles"), "push button")
        client.gone(word("Show all vehicles"), "push button")
    client.find("Café van 1")


def side_menu(client):
    board(client)
    client.click("Menu")
    client.find("Account")
    client.picture("menu")
    client.click("Account")
    client.find("VAT ID")
    client.picture("account")
    client.click("Menu")
    client.click("About")
    client.gone("VAT ID")
    client.find("Fleetor")
    client.picture("about")
    client.drag(10, 400, 260, 4)
    client.find("Log out")
    client.picture("menu-by-drag")
    client.click("Log out")
    client.find("Are you sure")
    client.picture("log-out")
    client.click("Cancel")
    client.gone("Are you sure")
    client.click("My Vehicles", "push button")
    client.gone("Log out")
    client.find("Café van 1")


def choose_widget_vehicle(client):
    client.open_url("fleetor:vehicles")
    client.find("Choose vehicle")
    client.find("Büssli 3")
    client.picture("choose-vehicle")
    client.click("Büssli 3")
    client.gone("Choose vehicle")


def pages(client, vehicle):
    chart(client)
    day_track(client, vehicle)
    callout(client)
    take_along(client)
    replay(client)
    satellite(client)
    tab(client, "Trips")
    client.find("Driving|Parking")
    client.picture("trips")
    ribbon = client.find("Timeline of the day", "slider")
    client.click_at(ribbon.x + ribbon.width // 2, ribbon.y + ribbon.height // 3)
    client.find(r"\d\d:\d\d to \d\d:\d\d, .+", "slider")
    client.picture("trips-at-noon")
    trip_on_the_map(client)
    tab(client, "About")
    client.find("Localizer expiration date")
    client.picture("vehicle-about")


def card_of_a_stop(client):
    """On a day that the trips have not loaded yet."""
    open_callout(client)
    client.click("Show in the trips", "push button")
    client.find("Driving|Parking", "list item")
    client.picture("trips-at-a-stop")
    tab(client, "Map")


def trip_on_the_map(client):
    """From a card to its trip and back to it."""
    client.click("Driving", "list item")
    client.find("Whole day")
    wait_for_tiles(client)
    client.picture("map-trip")
    client.click("Back to the trips")
    client.find("Driving", "list item")


def day_that_fails(client, demo):
    demo.fault("map=500")
    client.click("Previous day")
    client.find(".* could not be loaded")
    client.gone("An unexpected error occurred")
    client.picture("map-day-not-loaded")
    demo.no_faults()
    client.click("Try again")
    client.gone(".* could not be loaded")
    client.click("Next day")


def small_phone():
    client = Client("small-phone", *SMALL_PHONE, at=BESIDE)
    client.picture("launch")
    client.find("Café van 1")
    client.picture("vehicles")
    client.click("Find a vehicle", "push button")
    search(client)
    client.click("Menu")
    client.find("Account")
    client.picture("menu")
    client.click("Account")
    client.find("VAT ID")
    client.picture("account")
    client.click("Menu")
    client.click("My Vehicles", "push button")
    client.click("Café van 1")
    client.find(".*Update time")
    client.picture("info")
    tab(client, "Trips")
    client.find("Driving|Parking")
    client.picture("trips")
    tab(client, "Map")
    wait_for_tiles(client)
    callout(client)
    replay(client)
    client.click("Choose date", "push button")
    client.find("Choose date", "dialog")
    client.picture("date-picker")
    client.click("Cancel")
    client.close()


def card_of_a_trip(client):
    """A place on the card that the ribbon brings to the top of the list."""
    ribbon = client.find("Timeline of the day", "slider")
    client.click_at(ribbon.x + ribbon.width // 3, ribbon.y + ribbon.height // 3)
    client.find(r"\d\d:\d\d to \d\d:\d\d, .+", "slider")
    if not client.look(".*, driving", "slider"):
        client.key("Right")
    client.find(".*, driving", "slider")
    card = client.find("Driving", "list item")
    return card.x + card.width // 2, ribbon.y + ribbon.height + 25


def list_to_map(client):
    """The list, and of its first vehicle the readings and the trips; then its map shows."""
    client.find("Café van 1")
    client.picture("vehicles")
    client.click("Café van 1")
    client.find(".*Update time")
    client.picture("info")
    tab(client, "Trips")
    client.find("Driving|Parking")
    client.picture("trips")
    tab(client, "Map")


def low_phone():
    """A phone held sideways, as low as they come."""
    client = Client("low-phone", *LOW_PHONE)
    board(client)
    list_to_map(client)
    wait_for_tiles(client)
    client.picture("map")
    tab(client, "Trips")
    client.click_at(*card_of_a_trip(client))
    client.find("Whole day")
    wait_for_tiles(client)
    client.picture("map-trip")
    client.click("Whole day")
    replay(client)
    sheets(client)
    client.close()


def account_sheet(client):
    client.click("Account")
    client.find("VAT ID")
    client.picture("account")
    client.key("Escape")
    client.gone("VAT ID")
    client.settle()  # until it is off the screen it takes every tap


def dark(device, *options, at=(0, 0)):
    client = Client(f"dark-{device}", *options, "--dark", at=at)
    client.find("Café van 1")
    client.picture("vehicles")
    board(client)
    if device == "phone":
        client.click("Menu")
        client.find("Account")
        client.picture("menu")
        client.click("My Vehicles", "push button")
        client.gone("Account")
    else:
        account_sheet(client)
    client.click("Café van 1")
    client.find(".*Update time")
    client.picture("info")
    tab(client, "Map")
    callout(client)
    tab(client, "Trips")
    client.find("Driving|Parking")
    client.picture("trips")
    client.click("Choose date", "push button")
    client.find("Choose date", "dialog")
    client.picture("date-picker")
    client.click("Cancel")
    client.gone("Choose date", "dialog")
    if device == "phone":
        sheets(client)
    client.close()


def language(code, device, *options, at=(0, 0)):
    """What does not depend on the words: the vehicles' names, and which tab it is."""
    client = Client(f"{code}-{device}", *options, "--language", code, at=at)
    client.find("Café van 1")
    client.picture("vehicles")
    client.click("Café van 1")
    client.wait_for("the five tabs", lambda: len(client.seen(".", TAB)) == 5)
    client.find(r".*km/h")
    client.picture("info")
    trips = client.seen(".", TAB)[3]
    client.click_at(trips.x + trips.width // 2, trips.y + trips.height // 2)
    client.find(r".*\d km")
    client.picture("trips")
    track = client.seen(".", TAB)[2]
    client.click_at(track.x + track.width // 2, track.y + track.height // 2)
    client.find(PARKED, MARKER)
    client.picture("map")
    if (code, device) == ("ar", "phone"):
        sheets(client, words_of(code))
    if (code, device) == ("ar", "tablet"):
        board(client, words_of(code))
    client.close()


def walk_on_the_phone(demo):
    phone = first_visit()
    side_menu(phone)
    choose_widget_vehicle(phone)
    vehicle = on_the_road(demo, phone, 0)
    phone.find(".*Update time")
    phone.picture("info")
    demo.fault("live=delay:8000")
    tab(phone, "Live")
    phone.find("Waiting for the next position")
    phone.save("phone-live-waiting.png")  # it never rests
    demo.no_faults()

    small_phone()  # beside it, while the vehicle draws its trail
    language("de", "phone", *PHONE, at=BESIDE)
    language("ar", "phone", *PHONE, at=BESIDE)
    live_trail(phone, demo, vehicle)
    pages(phone, vehicle)
    tab(phone, "Map")
    choose_other_day(phone, demo, vehicle)
    wait_for_line(phone, vehicle)
    wait_for_tiles(phone)
    phone.picture("map-other-day")
    card_of_a_stop(phone)

    day_that_fails(phone, demo)
    phone.resize(844, 390)
    phone.picture("map-turned")
    phone.click("Choose date", "push button")
    phone.find("Choose date", "dialog")
    phone.picture("date-picker-turned")
    phone.key("Escape")
    phone.gone("Choose date", "dialog")
    tab(phone, "Info")
    phone.picture("info-turned")
    phone.resize(390, 844)
    demo.stop()
    # Which of the two depends on whether this machine has a network besides loopback.
    phone.find("The call ended with an error|An unexpected error occurred", seconds=30)
    phone.picture("service-away")
    demo.start(datetime.time(14, 30))
    phone.drag(4, 400, 300, 4)
    phone.find("My Vehicles")
    phone.close()


def walk_on_the_tablet(demo):
    client = Client("tablet", *TABLET, at=TABLET_AT)
    client.picture("launch")
    client.find("Café van 1")
    client.picture("vehicles")
    account_sheet(client)
    board(client)
    search(client)
    client.click("About")
    client.find("Fleetor")
    client.picture("about")
    client.key("Escape")
    client.settle()
    choose_widget_vehicle(client)
    vehicle = on_the_road(demo, client, 1)
    client.find(".*Update time")
    client.picture("info")
    tab(client, "Live")
    dark("phone", *PHONE, at=BESIDE)
    live_trail(client, demo, vehicle)
    pages(client, vehicle)
    tab(client, "Map")
    choose_other_day(client, demo, vehicle)
    wait_for_line(client, vehicle)
    client.picture("map-other-day")
    client.close()


def tiles_away(demo, name, *options):
    """The tile server fails from the start: markers and lines on a plain ground; then it comes back."""
    demo.fault("tiles=500")
    client = Client(name, *options, empty_cache=True)
    vehicle = {"mapLineColor": "#d7263d"}
    client.click("Café van 1")
    client.find(".*Update time")
    tab(client, "Map")
    wait_for_line(client, vehicle)
    box = map_box(client)
    client.wait_for("a plain ground", lambda: share(client.colours(box), lambda c: c == STANDARD_GROUND) > 0.5)
    client.find("Map pictures are not available")
    client.picture("map-tiles-away")
    demo.no_faults()
    wait_for_tiles(client, seconds=60)
    client.picture("map-tiles-back")
    return client


def offline(demo, name, *options):
    """A start without the service: what an earlier run has received, in the list and on the pages of a vehicle."""
    demo.stop()
    client = Client(name, *options)
    client.find("Offline")
    client.picture("offline")
    client.click("Café van 1")
    client.find(".*Offline.*Larkhåven")
    client.save(f"{client.prefix}-offline-vehicle.png")  # it does not rest: it waits for a record
    client.close()
    demo.start(datetime.time(14, 30))


def sign_out(client):
    client.click("Log out")
    client.find("Are you sure")
    client.picture("log-out")
    client.click("Log out", "push button")
    client.find("User name")
    client.close()


def first_visit_elsewhere():
    """The terms and the sign-in on the other sizes; forgets what the walks before have left."""
    for name, options in (("tablet", TABLET), ("small-phone", SMALL_PHONE)):
        client = Client(name, *options, "--fresh")
        client.find("I agree")
        client.picture("terms")
        client.click("I agree")
        client.find("User name")
        client.picture("sign-in")
        client.close()


def large_text():
    """Text of twice its size where there is the least room, from the sign-in on."""
    client = Client("large-text", *SMALL_PHONE, "--text-size", "200")
    client.find("User name")
    client.picture("sign-in")
    client.sign_in()
    board(client)
    list_to_map(client)
    callout(client)
    replay(client)
    sheets(client)
    client.close()


def index():
    """The pictures of each device side by side, in the order in which they were taken."""
    names = sorted((name for name in os.listdir(PICTURES) if name.endswith(".png")),
                   key=lambda name: os.stat(os.path.join(PICTURES, name)).st_mtime_ns)
    body = ""
    for device in ("phone", "small-phone", "low-phone", "large-text", "dark-phone", "de-phone", "ar-phone", "tablet",
                   "dark-tablet", "ar-tablet"):
        body += f"<h2>{device.replace('-', ' ').capitalize()}</h2><section>"
        for name in names:
            if name.startswith(f"{device}-"):
                words = html.escape(name[len(device) + 1:-4].replace("-", " ").capitalize())
                body += f'<figure><a href="{name}"><img src="{name}" alt="{words}"></a>' \
                        f'<figcaption>{words}</figcaption></figure>'
        body += "</section>"
    style = "body{font:16px sans-serif;margin:24px;background:#eef2f4;color:#1b252d}" \
            "section{display:flex;flex-wrap:wrap;gap:24px;align-items:flex-end}figure{margin:0}" \
            "figcaption{padding-top:6px}img{max-height:560px;max-width:100%;border-radius:8px;box-shadow:0 2px 12px #0003}"
    with open(os.path.join(PICTURES, "index.html"), "w", encoding="utf-8") as page:
        page.write('<!doctype html><html lang="en"><meta charset="utf-8"><title>Fleetor, every screen</title>'
                   f"<style>{style}</style><h1>Fleetor, every screen</h1>{body}</html>\n")
    return len(names)


began = time.monotonic()
service = Demo()
STOPS = (
    ("phone", lambda: walk_on_the_phone(service)),
    ("tablet", lambda: walk_on_the_tablet(service)),
    ("dark tablet", lambda: dark("tablet", *TABLET)),
    ("Arabic tablet", lambda: language("ar", "tablet", *TABLET)),
    ("offline phone", lambda: offline(service, "phone", *PHONE)),
    ("offline tablet", lambda: offline(service, "tablet", *TABLET)),
    ("phone without tiles", lambda: tiles_away(service, "phone", *PHONE).close()),
    ("tablet without tiles", lambda: sign_out(tiles_away(service, "tablet", *TABLET))),
    ("first visits", first_visit_elsewhere),
    ("large text", large_text),
    ("low phone", low_phone),
)
try:
    for number, (name, walk) in enumerate(STOPS, 1):
        PROGRESS.arrive(f"[{number}/{len(STOPS)}] {name}")
        walk()
    PROGRESS.clear()
finally:
    service.stop()
print(f"{index()} pictures in {time.monotonic() - began:.0f} s")
