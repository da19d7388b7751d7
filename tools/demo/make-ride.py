#!/usr/bin/env python3
"""Makes ride.gpx, the ride of `quorvane demo`: nobody ever rode it.

The same bytes each time:  ./make-ride.py > ride.gpx
"""
import math
import random
from datetime import datetime, timedelta, timezone

START = datetime(2024, 5, 18, 8, 30, 0, tzinfo=timezone.utc)
# Where the rider starts, in degrees, and the turns of the way in metres east and north of there.
HOME = (52.0931, 5.6642)
TURNS = [
    (0, 0), (180, 60), (420, 40), (560, 190), (610, 460), (820, 640), (1120, 700), (1290, 910), (1270, 1230),
    (1420, 1490), (1730, 1560), (1980, 1420), (2230, 1480), (2330, 1260), (2190, 980), (2260, 690), (2090, 420),
    (1790, 330), (1640, 90), (1330, -60), (1010, -20), (760, -180), (440, -210), (210, -110), (20, -20),
]
CRUISE = 5.2  # metres a second, on the straight
# (metres from the start, seconds): traffic lights, a bench with a view, a bakery, a friend on the way.
HALTS = [(540, 24), (2010, 75), (3560, 450), (5230, 420)]
INTERVAL = 8  # seconds between fixes


def curve(points, steps=40):
    """A smooth line through the points (Catmull-Rom)."""
    padded = [points[0], *points, points[-1]]
    for i in range(1, len(padded) - 2):
        a, b, c, d = padded[i - 1 : i + 3]
        for step in range(steps):
            t = step / steps
            yield tuple(
                0.5 * (2 * b[k] + (c[k] - a[k]) * t + (2 * a[k] - 5 * b[k] + 4 * c[k] - d[k]) * t**2
                       + (3 * b[k] - a[k] - 3 * c[k] + d[k]) * t**3)
                for k in (0, 1)
            )
    yield points[-1]


def main():
    chance = random.Random(1817)
    way = list(curve(TURNS))
    along = [0.0]
    for a, b in zip(way, way[1:]):
        along.append(along[-1] + math.dist(a, b))

    def place(metres):
        i = next((i for i, end in enumerate(along) if end > metres), len(way) - 1)
        share = (metres - along[i - 1]) / (along[i] - along[i - 1]) if i else 0.0
        share = min(share, 1.0)
        return tuple(way[i - 1][k] + share * (way[i][k] - way[i - 1][k]) for k in (0, 1)) if i else way[0]

    def bend(metres):
        """How much the way turns just ahead, in radians."""
        a, b, c = place(metres), place(min(metres + 25, along[-1])), place(min(metres + 50, along[-1]))
        turn = math.atan2(c[1] - b[1], c[0] - b[0]) - math.atan2(b[1] - a[1], b[0] - a[0])
        return abs(math.atan2(math.sin(turn), math.cos(turn)))

    def height(metres):
        return 21 + 9 * math.sin(metres / 1150) + 4 * math.sin(metres / 430 + 1)

    print('<?xml version="1.0" encoding="UTF-8"?>')
    print('<gpx version="1.1" creator="make-ride.py" xmlns="http://www.topografix.com/GPX/1/1">')
    print("  <trk>\n    <name>An invented ride</name>\n    <trkseg>")
    metres, second, halts, drift = 0.0, 0, list(HALTS), [0.0, 0.0]
    while metres < along[-1]:
        if second % INTERVAL == 0:
            east, north = place(metres)
            # A receiver's error wanders; it does not jump.
            drift = [0.82 * d + chance.gauss(0, 1.1) for d in drift]
            latitude = HOME[0] + (north + drift[1]) / 111_195
            longitude = HOME[1] + (east + drift[0]) / (111_195 * math.cos(math.radians(HOME[0])))
            moment = START + timedelta(seconds=second)
            print(f'      <trkpt lat="{latitude:.6f}" lon="{longitude:.6f}"><ele>{height(metres):.1f}</ele>'
                  f"<time>{moment:%Y-%m-%dT%H:%M:%SZ}</time></trkpt>")
        second += 1
        if halts and metres >= halts[0][0]:
            halts[0] = (halts[0][0], halts[0][1] - 1)
            if halts[0][1] <= 0:
                halts.pop(0)
            continue
        slope = (height(metres + 10) - height(metres)) / 10
        metres += max(2.2, CRUISE * (1 - 0.45 * min(bend(metres), 1)) - 22 * slope + chance.gauss(0, 0.25))
    print("    </trkseg>\n  </trk>\n</gpx>")


main()
