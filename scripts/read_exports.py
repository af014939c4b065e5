"""read_exports.py BUILD FOLDER: saves a day of the demo service in every format, with some texts that mean something to the
formats, and has programs of others read it: gpsbabel, xmllint, json, csv, pdftotext and zbarimg. Ends with status 1 where one
of them reads something else than the service has sent."""

import csv
import io
import json
import os
import subprocess
import sys
import urllib.request

BUILD, FOLDER = sys.argv[1:]
DAY = "2026-11-20"
NAME = 'Van <1> & "Söhne"'
STREET = "=Mill <b> & 'Lane', \"5\"\x07; ж"
READ = STREET.replace("\x07", "\N{REPLACEMENT CHARACTER}")
FILE = os.path.join(FOLDER, "day")


def expect(what, found, wanted):
    if found != wanted:
        sys.exit(f"read_exports: {what}: read {found!r}, expected {wanted!r}")
    print(f"{what}: {str(found)[:60]}")


def output(*command):
    done = subprocess.run(command, stdout=subprocess.PIPE)
    if done.returncode:
        sys.exit(f"read_exports: {' '.join(command)} ended with status {done.returncode}")
    return done.stdout.decode()


def ask(port, path, body=None, token=None):
    request = urllib.request.Request(f"http://127.0.0.1:{port}{path}", body)
    if token:
        request.add_header("Authorization", f"Bearer {token}")
    with urllib.request.urlopen(request, timeout=30) as answer:
        return json.loads(answer.read())


def answers():
    """A day's points and trips, with an unpleasant address at one stop."""
    command = [f"{BUILD}/demo/fleetor-demo-service", "--port", "0", "--seed", "7", "--now", f"{DAY} 23:59:00"]
    with subprocess.Popen(command, stdout=subprocess.PIPE, text=True) as service:
        try:
            port = service.stdout.readline().rstrip().rstrip("/").rpartition(":")[2]
            token = ask(port, "/token?grant_type=password", b"username=demo&password=demo&uid=x")["token"]["access_token"]
            vehicle = ask(port, "/vehicles?offset=0&limit=1", token=token)["vehicles"][0]["vehicleId"]
            day = [ask(port, f"/{kind}?vehid={vehicle}&date={DAY}", token=token) for kind in ("map", "route")]
        finally:
            service.terminate()
    next(point for point in day[0]["map"] if point["label"])["street"] = STREET
    day[1]["route"][0]["from"] = STREET
    return day


def place(point):
    return round(float(point["location"]["lat"]), 5), round(float(point["location"]["lon"]), 5)


def babel(kind, what):
    """What gpsbabel reads: the names and places of waypoints, or the places of the track."""
    table = output("gpsbabel", *(["-t"] if what == "track" else []), "-i", kind, "-f", f"{FILE}.{kind}",
                   "-o", "unicsv", "-F", "-")
    rows = list(csv.DictReader(io.StringIO(table)))
    places = [(round(float(row["Latitude"]), 5), round(float(row["Longitude"]), 5)) for row in rows]
    return places, [row.get("Name") for row in rows]


track, route = answers()
for name, content in (("map", track), ("route", route)):
    with open(os.path.join(FOLDER, f"{name}.json"), "w", encoding="utf-8") as file:
        json.dump(content, file)
subprocess.run([f"{BUILD}/tests/qt/exports/fleetor_save_day", f"{FOLDER}/map.json", f"{FOLDER}/route.json", NAME, FOLDER],
               check=True, env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
points = [place(point) for point in track["map"]]
stops = [(place(point), point["street"]) for point in track["map"] if point["label"] == "Parking"]

for kind in ("gpx", "kml"):
    output("xmllint", "--noout", f"{FILE}.{kind}")
    places, _ = babel(kind, "track")
    expect(f"{kind}, points of the track", places[-len(points):], points)
    places, names = babel(kind, "waypoints")
    expect(f"{kind}, stops", list(zip(places, names)), [(at, READ if street == STREET else street) for at, street in stops])

with open(f"{FILE}.geojson", encoding="utf-8") as file:
    features = json.load(file)["features"]
line = features[-1]
expect("geojson, line", [(round(lat, 5), round(lon, 5)) for lon, lat in line["geometry"]["coordinates"]], points)
expect("geojson, name", line["properties"]["vehicle"], NAME)
expect("geojson, times", len(line["properties"]["secondsOfDay"]), len(points))
expect("geojson, stops", [one["properties"]["address"] for one in features[:-1]], [street for _, street in stops])

with open(f"{FILE}.csv", encoding="utf-8-sig", newline="") as file:
    rows = list(csv.reader(file))
expect("csv, trips", [row[4] for row in rows[1:]], [trip["distance"] for trip in route["route"]])
expect("csv, no formula", rows[1][5], "'" + STREET.replace("\x07", " "))

text = output("pdftotext", "-layout", f"{FILE}.pdf", "-")
expect("pdf, pages", text.count("\f"), 1)
expect("pdf, vehicle and day", NAME in text and DAY in text, True)
shown = min(len(route["route"]), 20)  # as many have room on the page in any case
expect("pdf, trips", [trip["timeFrom"][11:] in text for trip in route["route"][:shown]], [True] * shown)

latitude, longitude = (track["map"][0]["location"][key] for key in ("lat", "lon"))
expect("QR code", output("zbarimg", "--quiet", "--raw", f"{FILE}.pbm").strip(), f"geo:{latitude},{longitude}")
