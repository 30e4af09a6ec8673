#!/usr/bin/python3
"""Checks norvane-cli metar-decode --json against two independent decoders on every METAR of the
table: Geo::METAR (Debian libgeo-metar-perl) for temperature, dew point, pressure, wind and
visibility, and pymetar (python3-pymetar) for the cloud cover and cloud type it reads from the code.
Usage: metar_oracle.py NORVANE_CLI CASES_FILE"""
import json, subprocess, sys

try:
    import pymetar
    subprocess.run(["perl", "-MGeo::METAR", "-e", "1"], check=True, capture_output=True)
except (ImportError, OSError, subprocess.CalledProcessError):
    print("python3-pymetar or libgeo-metar-perl is missing (scripts/deps.sh installs them)")
    sys.exit(77)

cli, cases = sys.argv[1], sys.argv[2]
metars, block = [], []
for line in open(cases, encoding="utf-8").read().split("\n") + [""]:
    if line.startswith("> "):
        block.append(line[2:])
    elif not line.strip() and block:
        if len(block) == 1 and not block[0].startswith("TAF"):
            metars.append(block[0])
        block = []

ours = [json.loads(l) for l in subprocess.run([cli, "metar-decode", "--json"], input="\n".join(metars) + "\n",
                                              capture_output=True, text=True, check=True).stdout.splitlines()]
perl = r'''use Geo::METAR; while (<STDIN>) { chomp; my $m = Geo::METAR->new; $m->metar($_);
  print join("|", map { defined $_ ? $_ : "" } ($m->TEMP_C, $m->DEW_C, $m->ALT_HP, $m->WIND_DIR_DEG,
    $m->WIND_KTS, $m->WIND_GUST_KTS, $m->VISIBILITY)), "\n"; }'''
geo = subprocess.run(["perl", "-e", perl], input="\n".join(metars) + "\n", capture_output=True, text=True,
                     check=True).stdout.splitlines()
assert len(ours) == len(metars) == len(geo), (len(ours), len(metars), len(geo))


def miles(text):  # "1 1/2", "3/4", "P6", "Less than 1/4"
    text = text.replace("Less than ", "").replace("P", "")
    return sum(float(p.split("/")[0]) / float(p.split("/")[1]) if "/" in p else float(p) for p in text.split())


failures, compared = [], 0
for report, j, g in zip(metars, ours, geo):
    t, d, hpa, wdir, wkt, gust, vis = g.split("|")
    if not t and not wdir and not vis:
        continue  # NIL, garbage: Geo::METAR reads nothing either
    compared += 1
    def check(what, mine, theirs, tol=0.0):
        if theirs is None:
            return
        if isinstance(theirs, str) or isinstance(mine, str):
            bad = mine != theirs
        else:
            bad = mine is None or abs(float(mine) - float(theirs)) > tol
        if bad:
            failures.append(f"{report}\n  {what}: ours {mine}, Geo::METAR {theirs}")
    check("temperature", j["temperature_c"], int(t) if t else None)
    check("dew point", j["dew_point_c"], int(d) if d else None)
    check("QNH", j["qnh_hpa"], float(hpa) if hpa else None, 0.05)
    if wdir and wkt:  # Geo::METAR knows no km/h and no P99KT
        check("wind direction", j["wind_direction"], "VRB" if wdir == "Variable" else int(wdir))
        check("wind speed", j["wind_speed_kt"], float(wkt), 0.5)
        check("gust", j["gust_kt"], float(gust) if gust else None, 0.5)
    if vis.endswith("statute miles"):
        check("visibility", j["visibility_m"], miles(vis[:-len(" statute miles")]) * 1609.344, 0.01)
    elif vis:
        metres = float(vis.split()[0])
        # CAVOK is 10 km or more: Geo::METAR writes it as 9999, the report's JSON as 10000.
        check("visibility", j["visibility_m"], 10000 if "CAVOK" in report.split() else metres)

    # pymetar reads cloud layers from the code: the cover of the last layer, the type of the first CB/TCU.
    w = pymetar.WeatherReport(report[:4])
    w.code = report
    sky, ctype, _ = pymetar.ReportParser(w).extractCloudInformation()
    layers = [c for c in j["clouds"] if c["cover"] in ("FEW", "SCT", "BKN", "OVC")]
    layers += [c for ch in j["changes"] for c in ch["clouds"] if c["cover"] in ("FEW", "SCT", "BKN", "OVC")]
    names = {"FEW": "Few clouds", "SCT": "Scattered clouds", "BKN": "Broken clouds", "OVC": "Overcast"}
    # A layer of unknown height (SCT///) and sky codes (CLR, NSC...) are outside pymetar's pattern.
    last = [c for c in layers if c["height_ft"] is not None]
    if last and sky not in (None, "Clear sky") and names[last[-1]["cover"]] != sky:
        failures.append(f"{report}\n  cloud cover: ours {last[-1]['cover']}, pymetar {sky}")
    first_type = next((c["type"] for c in layers if c["type"]), None)
    if {"CB": "cumulonimbus", "TCU": "towering cumulus"}.get(first_type) != ctype:
        failures.append(f"{report}\n  cloud type: ours {first_type}, pymetar {ctype}")

print(f"{len(metars)} METARs, {compared} compared with Geo::METAR and pymetar, {len(failures)} differences")
print("\n".join(failures))
sys.exit(1 if failures or compared < 40 else 0)
