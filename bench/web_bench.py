#!/usr/bin/python3
"""Figures of the web build (build/web/site, made by scripts/web --build-only): the transfer size
gzipped, the time from navigation to ready in headless Chromium with a fresh profile (first visit)
and with the site in the service worker's cache (second visit), and the time per calculation.

    bench/web_bench.py [SITE] [RUNS]
    bench/web_bench.py --screenshot PNG [SITE]   # the README's picture: the holding screen on a tablet
"""
import gzip
import os
import statistics
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'tests', 'web'))
from web_test import Page  # noqa: E402  (the test's loopback server and browser)

here = os.path.dirname(os.path.abspath(__file__))
shot = sys.argv.pop(1) and sys.argv.pop(1) if len(sys.argv) > 2 and sys.argv[1] == '--screenshot' else None
site = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, '..', 'build', 'web', 'site')
runs = int(sys.argv[2]) if len(sys.argv) > 2 else 5

if shot:
    page = Page(site, '1180,820')
    try:
        page.open('holding')
        page.fill({'--outbound': '90', '--track': '200'})
        page.calculate()
        page.d.save_screenshot(shot)
    finally:
        page.d.quit()
        page.stop_server()
    sys.exit(0)

print('Transfer size (gzip -9 of each file):')
total = 0
for root, _, files in os.walk(site):
    for f in sorted(files):
        path = os.path.join(root, f)
        with open(path, 'rb') as fh:
            raw = fh.read()
        packed = len(gzip.compress(raw, 9))
        total += packed
        print(f'  {os.path.relpath(path, site):28} {len(raw) / 1024:8.1f} KiB  {packed / 1024:8.1f} KiB gzipped')
print(f'  {"all":28} {"":8}           {total / 1024:8.1f} KiB gzipped')

first, second, marks = [], [], []
calc_ms = form_ms = None
for i in range(runs):
    page = Page(site, '1024,768')  # a fresh profile each time
    try:
        page.open()
        first.append(page.js('return window.norvane.readyMs'))
        marks.append(page.js('return ["responseEnd", "domInteractive"].map(k => performance.getEntriesByType("navigation")[0][k])'
                             '.concat(["norvane-module", "norvane-described"].map(m => performance.getEntriesByName(m)[0].startTime))'))
        page.wait('return navigator.serviceWorker.controller !== null')
        page.open(reload=True)
        second.append(page.js('return window.norvane.readyMs'))
        if i == 0:
            calc_ms = page.js('''const n = 500, t = performance.now();
                for (let i = 0; i < n; ++i) window.norvane.cli(['racetrack', '--course', String(i % 360), '--tas', '180',
                                                                 '--wind', '300/30']);
                return (performance.now() - t) / n;''')
            page.open('racetrack')
            page.fill({'--course': '270', '--tas': '180', '--wind': '300/30'})
            form_ms = page.js('''const n = 100, t = performance.now();
                for (let i = 0; i < n; ++i) window.norvane.app.calculate();
                return (performance.now() - t) / n;''')
    finally:
        page.d.quit()
        page.stop_server()

print(f'Navigation to ready, fresh profile (median of {runs}): {statistics.median(first):.0f} ms '
      f'(runs: {", ".join(f"{v:.0f}" for v in first)})')
stages = [statistics.median(m[i] for m in marks) for i in range(4)]
print('  of which (medians, ms after navigation start): page received {:.0f}, parsed {:.0f}, module running {:.0f}, '
      'catalogue read {:.0f}'.format(*stages))
print(f'Navigation to ready, second visit from the cache (median of {runs}): {statistics.median(second):.0f} ms '
      f'(runs: {", ".join(f"{v:.0f}" for v in second)})')
print(f'One calculation through window.norvane.cli (racetrack, mean of 500): {calc_ms:.3f} ms')
print(f'One calculation through the form, results and picture drawn (mean of 100): {form_ms:.3f} ms')
