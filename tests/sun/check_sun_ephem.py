#!/usr/bin/env python3
"""Sunrise, sunset and twilight of norvane-cli against PyEphem (VSOP87 sun, full nutation).

The low-precision solar formulas promise about one minute of time below 60 degrees of latitude.
Events are compared without refraction model differences: the sun's centre at 50' below the
horizon for rise and set (34' refraction + 16' semi-diameter, zenith 90.833), and at 6, 12 and
18 degrees below it for the twilights, with no atmosphere in PyEphem.

Usage: check_sun_ephem.py PATH/TO/norvane-cli
Exit 0 all within tolerance, 1 a difference too large, 77 PyEphem missing (test skipped).
"""
import json
import math
import subprocess
import sys

try:
    import ephem
except ImportError:
    print("python3-ephem is not installed: cannot check the sun times (Debian package python3-ephem)")
    sys.exit(77)

TOLERANCE_MIN = 1.0
LATITUDES = [-59, -50, -40, -25, -10, 0, 10, 25, 40, 50, 59]
LONGITUDES = [-175, -100, -30, 0, 45, 120, 170]
DATES = ["1950-11-20", "1975-02-10", "1990-08-05", "2009-03-21", "2009-06-21", "2009-12-21",
         "2024-10-31", "2050-05-15"]
POLAR = [(78, 0, "2009-06-21"), (78, 15, "2009-12-21"), (-75, -60, "2009-06-21"), (-80, 120, "2024-01-05"),
         (85, -100, "1990-04-20")]
TWILIGHTS = {"civil": "-6", "nautical": "-12", "astronomical": "-18"}


def run_cli(cli, lat, lon, date, twilight):
    args = [cli, "--json", "--raw", "sun", "--at", f"{lat},{lon}", "--date", date, "--twilight", twilight]
    res = subprocess.run(args, capture_output=True, text=True)
    if res.returncode not in (0, 1):
        raise SystemExit(f"{' '.join(args)} failed ({res.returncode}): {res.stderr}")
    return json.loads(res.stdout)


def ephem_event(date, noon_minutes, lat, lon, horizon, rising):
    obs = ephem.Observer()
    obs.lat, obs.lon = str(lat), str(lon)
    obs.elevation = 0
    obs.pressure = 0  # no refraction: it is part of the horizon depth
    obs.horizon = horizon
    start = ephem.Date(ephem.Date(date.replace("-", "/")) + noon_minutes / 1440.0)
    obs.date = start
    try:
        t = obs.previous_rising(ephem.Sun(), use_center=True) if rising else obs.next_setting(ephem.Sun(), use_center=True)
    except (ephem.AlwaysUpError, ephem.NeverUpError):
        return None
    return (t - ephem.Date(date.replace("-", "/"))) * 1440.0


def main():
    if len(sys.argv) != 2:
        print(__doc__)
        return 2
    cli = sys.argv[1]
    worst = (0.0, "")
    compared = failures = 0
    for i, (lat, lon, date) in enumerate((a, b, c) for a in LATITUDES for b in LONGITUDES for c in DATES):
        twilight = list(TWILIGHTS)[i % 3]
        out = run_cli(cli, lat, lon, date, twilight)
        noon = 720 - 4 * lon
        events = [("sunrise", "-0:50", True), ("sunset", "-0:50", False),
                  ("dawn", TWILIGHTS[twilight], True), ("dusk", TWILIGHTS[twilight], False)]
        for key, horizon, rising in events:
            ref = ephem_event(date, noon, lat, lon, horizon, rising)
            if ref is None:
                continue  # the sun never reaches that depth (or never sets) on this date
            value = out[key]
            if not isinstance(value, float) and not isinstance(value, int):
                print(f"FAIL {lat},{lon} {date} {key}: '{value}' where PyEphem has an event")
                failures += 1
                continue
            # The CLI wraps times into the day; PyEphem gives this date's event (searched from local
            # noon), so the two are compared modulo a day.
            diff = (value - ref + 720) % 1440 - 720
            compared += 1
            what = f"{lat},{lon} {date} {key} ({twilight}): norvane {value:.2f} min, ephem {ref % 1440:.2f} min"
            if abs(diff) > abs(worst[0]):
                worst = (diff, what)
            if abs(diff) > TOLERANCE_MIN:
                print(f"FAIL {what}: {diff:+.2f} min")
                failures += 1
    # Midnight sun and polar night: PyEphem finds no rising where the CLI says "Permanent day/night".
    for lat, lon, date in POLAR:
        out = run_cli(cli, lat, lon, date, "civil")
        ref = ephem_event(date, 720 - 4 * lon, lat, lon, "-0:50", True)
        if ref is not None or out.get("message") != "Permanent day/night":
            print(f"FAIL {lat},{lon} {date}: norvane {out}, ephem rising {ref}")
            failures += 1
    print(f"{compared} events compared, largest difference {worst[0]:+.3f} min at {worst[1]}")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
