#!/usr/bin/env python3
"""The web page in headless Chromium against the desktop build's norvane-cli: one row of every
calculator typed into its form gives the native results; describe and the page's cli() give the
native bytes; the boxes' rules, Enter, night mode, remembered inputs and an offline reload.

    web_test.py --site build/web/site --cli build/test/norvane-cli [--screenshot PNG]
"""
import argparse
import json
import socket
import subprocess
import sys
import tempfile
import time

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import Select

# (screen, command, entries): entries by option name; a name without "--" is a positional, "<stdin>"
# the standard input; True switches a flag on.
ROWS = [
    ('atmosphere', 'atmosphere', {'--altitude': '5000', '--disa': '10'}),
    ('speed', 'speed', {'--fl': '350', '--mach': '0.78'}),
    ('changeover', 'changeover', {'--ias': '280', '--mach': '0.78'}),
    ('descent', 'descent', {'--from': '35000', '--to': '3000', '--ias': '280', '--mach': '0.78', '--rate': '2000'}),
    ('density-altitude', 'density-altitude', {'--qnh': '1005', '--temperature': '31', '--dewpoint': '20',
                                              '--elevation': '1500'}),
    ('wind', 'wind known', {'--tas': '120', '--track': '90', '--wind-speed': '20', '--wind-dir': '40'}),
    ('wind', 'wind unknown', {'--tas': '120', '--gs': '110', '--track': '90', '--heading': '100'}),
    ('wind', 'wind runway', {'--runway': '270', '--wind-speed': '20', '--wind-dir': '300'}),
    ('turn', 'turn', {'--tas': '250', '--intercept': '30', '--distance': '10'}),
    ('holding', 'holding', {'--outbound': '90', '--track': '200', '--left': True}),
    ('racetrack', 'racetrack', {'--course': '270', '--tas': '180', '--wind': '300/30'}),
    ('tracks', 'tracks', {'--from': 'N51 28 39,W000 27 41', '--to': '40.64,-73.78'}),
    ('point', 'point', {'--from': '51.47,-0.46', '--track': '285', '--distance': '3000'}),
    ('intersection', 'intersection', {'--p1': '51.47,-0.46', '--track1': '45', '--p2': '52,1', '--track2': '300'}),
    ('magvar', 'magvar', {'--at': '51.47,-0.46', '--date': '2007-06-01'}),
    ('sun', 'sun', {'--at': '51.47,-0.46', '--date': '2024-06-21'}),
    ('convert', 'convert', {'--type': 'Speed', '--from': 'kt', '--to': 'km/h', 'VALUE': '250'}),
    ('stall', 'stall', {'--vs': '60', '--mtow': '1000', '--weight': '900', '--altitude': '5000', '--bank': '30'}),
    ('calc', 'calc', {'EXPRESSION': '2*sin(30)+sqrt(2)^2'}),
    ('tsd', 'tsd', {'--gs': '120', '--distance': '240'}),
    ('metar', 'metar-decode', {'<stdin>': 'EGLL 251020Z 24015KT 9999 FEW030 12/08 Q1013'}),
]

failures = []


def check(ok, what):
    if not ok:
        failures.append(what)
        print('FAIL:', what)
    return ok


def native(cli, argv, stdin=''):
    p = subprocess.run([cli, *argv], input=stdin.encode(), capture_output=True)
    return p.returncode, p.stdout.decode()


def argv_of(command, entries, options):
    """The command line the page makes of the entries: options, then positionals after "--"."""
    argv, positionals = command.split(), []
    for o in options:
        value = entries.get(o)
        if value is None or o == '<stdin>':
            continue
        if value is True:
            argv.append(o)
        elif o.startswith('-'):
            argv += [o, value]
        else:
            positionals.append(value)
    return argv + (['--'] + positionals if positionals else [])


class Page:
    def __init__(self, site, size):
        s = socket.socket()
        s.bind(('127.0.0.1', 0))
        self.port = s.getsockname()[1]
        s.close()
        self.site = site
        self.serve()
        options = webdriver.ChromeOptions()
        for a in ['--headless', '--no-sandbox', '--disable-gpu', '--disable-background-networking',
                  '--disable-component-update', '--disable-sync', '--no-first-run', '--disable-dev-shm-usage',
                  '--user-data-dir=' + tempfile.mkdtemp(prefix='norvane-web-'), '--window-size=' + size]:
            options.add_argument(a)
        options.binary_location = '/usr/bin/chromium'
        self.d = webdriver.Chrome(service=Service('/usr/bin/chromedriver'), options=options)
        self.d.set_page_load_timeout(30)
        self.base = f'http://127.0.0.1:{self.port}/'

    def serve(self):
        self.server = subprocess.Popen([sys.executable, '-m', 'http.server', str(self.port), '--bind', '127.0.0.1',
                                        '--directory', self.site],
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        for _ in range(100):
            try:
                socket.create_connection(('127.0.0.1', self.port), timeout=0.2).close()
                return
            except OSError:
                time.sleep(0.05)

    def stop_server(self):
        self.server.terminate()
        self.server.wait()

    def open(self, screen=''):
        self.d.get(self.base + ('#' + screen if screen else ''))
        self.wait('return document.documentElement.dataset.ready === "true"')

    def wait(self, script, seconds=20):
        end = time.time() + seconds
        while time.time() < end:
            if self.d.execute_script(script):
                return True
            time.sleep(0.05)
        raise TimeoutError(script)

    def js(self, script, *args):
        return self.d.execute_script(script, *args)

    def field(self, name):
        return self.d.find_element(By.CSS_SELECTOR, f'.field[data-option="{name}"]')

    def fill(self, entries):
        """Types the entries into the form; other boxes are emptied and other flags switched off."""
        for f in self.d.find_elements(By.CSS_SELECTOR, '#form .field'):
            name = f.get_attribute('data-option') or '<stdin>'
            value = entries.get(name)
            control = f.find_element(By.CSS_SELECTOR, 'input, select, textarea, button')
            if control.tag_name == 'button':
                if (control.get_attribute('aria-pressed') == 'true') != (value is True):
                    control.click()
            elif control.tag_name == 'select':
                if value is not None:
                    Select(control).select_by_value(value)
            else:
                control.clear()
                if value is not None:
                    control.send_keys(value)

    def calculate(self):
        self.d.find_element(By.ID, 'calculate').click()
        self.wait('return document.getElementById("results").dataset.status !== undefined')
        lines = [f'{dd.get_attribute("data-key")}: {dd.text}'
                 for dd in self.d.find_elements(By.CSS_SELECTOR, '#results dd')]
        return lines, self.d.find_element(By.ID, 'message').text

    def classes(self, name):
        return self.field(name).get_attribute('class').split()


def check_rows(page, cli, catalogue):
    described = {c['name']: c for c in catalogue}
    menu = page.js('return [...document.querySelectorAll("#menu a")].map(a => a.hash.slice(1))')
    for screen, command, entries in ROWS:
        if command not in described and command != 'metar-decode':
            print(f'note: {command} is not in the catalogue of this build: no row checked')
            continue
        if not check(screen in menu, f'{screen}: not in the menu'):
            continue
        page.open(screen)
        if ' ' in command:
            page.d.find_element(By.CSS_SELECTOR, f'#tabs [data-command="{command}"]').click()
        shown = [f.get_attribute('data-option') or '<stdin>'
                 for f in page.d.find_elements(By.CSS_SELECTOR, '#form .field')]
        missing = [o for o in entries if o not in shown]
        if not check(not missing, f'{command}: no box for {missing}'):
            continue
        page.fill(entries)
        lines, message = page.calculate()
        status, out = native(cli, argv_of(command, entries, shown), entries.get('<stdin>', ''))
        expected = [l for l in out.splitlines() if ': ' in l and not l.startswith(('message: ', 'notice: '))]
        notes = [l.split(': ', 1)[1] for l in out.splitlines() if l.startswith(('message: ', 'notice: '))]
        check(status == 0, f'{command}: native status {status} for the row')
        check(lines == expected, f'{command}: page {lines} != native {expected}')
        check(message == (notes[-1] if notes else ''), f'{command}: message {message!r}')
        # The page's cli() gives the native bytes for the same command line.
        got = page.js('return window.norvane.cli(arguments[0], arguments[1])', argv_of(command, entries, shown),
                      entries.get('<stdin>', ''))
        check(got['stdout'] == out and got['status'] == status, f'{command}: cli() differs from norvane-cli')
        if screen in ('holding', 'racetrack', 'descent'):
            check(page.js('return document.querySelectorAll("#picture svg path, #picture svg line").length') > 1,
                  f'{screen}: no picture')


def check_rules(page):
    """Green when valid, red with the range when not; Calculate follows; Enter moves on."""
    page.open('turn')
    page.fill({'--tas': '2000'})
    check('invalid' in page.classes('--tas'), 'turn --tas 2000 is not red')
    hint = page.field('--tas').find_element(By.CSS_SELECTOR, '.hint').text
    check('50 to 1500' in hint, f'turn --tas range not shown: {hint!r}')
    check(not page.d.find_element(By.ID, 'calculate').is_enabled(), 'Calculate enabled with a red box')
    page.fill({'--tas': '250', '--intercept': '3'})
    check('valid' in page.classes('--tas'), 'turn --tas 250 is not green')
    check(not page.d.find_element(By.ID, 'calculate').is_enabled(), 'Calculate enabled with intercept 3')
    page.fill({'--tas': '250'})
    check(page.d.find_element(By.ID, 'calculate').is_enabled(), 'Calculate disabled with valid boxes')
    box = page.field('--tas').find_element(By.TAG_NAME, 'input')
    box.send_keys(Keys.ENTER)
    focused = page.js('return document.activeElement.closest(".field").dataset.option')
    check(focused != '--tas', 'Enter did not move on')
    # A refusal of the command line marks the box it names.
    if 'tracks' not in page.js('return window.norvane.catalogue.map(c => c.name)'):
        return
    page.open('tracks')
    page.fill({'--from': 'nowhere', '--to': '40.64,-73.78'})
    page.calculate()
    check('invalid' in page.classes('--from'), 'tracks: a bad --from is not red')


def check_memory_and_night(page):
    page.open('turn')
    page.fill({'--tas': '321'})
    page.d.find_element(By.ID, 'night').click()
    page.open('turn')
    check(page.field('--tas').find_element(By.TAG_NAME, 'input').get_attribute('value') == '321',
          'inputs not kept across a reload')
    check(page.js('return document.documentElement.classList.contains("night")'), 'night mode not kept')
    page.d.find_element(By.ID, 'night').click()


def check_offline(page, cli):
    page.open('metar')
    page.wait('return navigator.serviceWorker.controller !== null')
    foreign = page.js('return performance.getEntriesByType("resource").map(e => e.name)'
                      '.filter(n => !n.startsWith(location.origin))')
    check(not foreign, f'requests outside the origin: {foreign}')
    page.stop_server()
    page.open('metar')
    report = 'LFPG 251030Z 05008KT CAVOK 21/09 Q1021'
    page.fill({'<stdin>': report})
    lines, _ = page.calculate()
    check(lines == native(cli, ['metar-decode'], report)[1].splitlines(), f'offline: the decoder gives {lines}')


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument('--site', required=True)
    ap.add_argument('--cli', required=True)
    ap.add_argument('--screenshot', help='write a tablet-sized picture of the holding screen here and stop')
    a = ap.parse_args()
    page = Page(a.site, '1180,820' if a.screenshot else '1024,1366')
    try:
        page.open()
        if a.screenshot:
            page.open('holding')
            page.fill({'--outbound': '90', '--track': '200'})
            page.calculate()
            page.d.save_screenshot(a.screenshot)
            return 0
        catalogue = page.js('return window.norvane.catalogue')
        described = page.js('return window.norvane.cli(["describe", "--json"]).stdout')
        check(described == native(a.cli, ['describe', '--json'])[1], 'describe --json differs from norvane-cli')
        check(json.loads(described)['commands'] == catalogue, 'the page does not use the catalogue it describes')
        check_rows(page, a.cli, catalogue)
        check_rules(page)
        check_memory_and_night(page)
        check_offline(page, a.cli)
    finally:
        page.d.quit()
        if page.server.poll() is None:
            page.stop_server()
    print(f'web: {0 if failures else 1} passed, {1 if failures else 0} failed')
    return 1 if failures else 0


if __name__ == '__main__':
    sys.exit(main())
