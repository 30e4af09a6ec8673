#!/usr/bin/env python3
"""The page in headless Chromium against norvane-cli: web_test.py build/web/site build/test/norvane-cli"""
import json
import subprocess
import sys
import tempfile
import time

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import Select

# (screen, command, entries by option name): a name without "--" is a positional, "<stdin>" the
# standard input; True switches a flag on.
ROWS = [
    ('atmosphere', 'atmosphere', {'--altitude': '90000', '--feet': True, '--disa': '10'}),  # beyond 85999 m
    ('speed', 'speed', {'--fl': '350', '--mach': '0.78'}),
    ('changeover', 'changeover', {'--ias': '280', '--mach': '0.78'}),
    ('descent', 'descent', {'--from': '35000', '--to': '3000', '--ias': '280', '--mach': '0.78', '--rate': '2000'}),
    ('density-altitude', 'density-altitude', {'--qnh': '1005', '--temperature': '31', '--dewpoint': '20', '--elevation': '1500'}),
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
    ('sun', 'sun', {'--at': '47.62,-52.75', '--date': '2024-06-21', '--tz': 'America/St_Johns'}),
    ('convert', 'convert', {'--type': 'Speed', '--from': 'kt', '--to': 'km/h', 'VALUE': '250'}),
    ('stall', 'stall', {'--vs': '60', '--mtow': '1000', '--weight': '900', '--altitude': '5000', '--bank': '30'}),
    ('calc', 'calc', {'EXPRESSION': '2*sin(30)+sqrt(2)^2'}),
    ('tsd', 'tsd', {'--gs': '120', '--distance': '240'}),
    ('metar', 'metar-decode', {'<stdin>': 'EGLL 251020Z 24015KT 9999 FEW030 12/08 Q1013'}),
]
failures = []


def check(ok, what):
    if not ok:
        failures.append(what) or print('FAIL:', what)
    return ok


def native(cli, argv, stdin=''):
    p = subprocess.run([cli, *argv], input=stdin.encode(), capture_output=True)
    return p.returncode, p.stdout.decode()


class Page:
    def __init__(self, site, size):
        self.server = subprocess.Popen([sys.executable, '-u', '-m', 'http.server', '0', '--bind', '127.0.0.1',
                                        '--directory', site], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.port = int(self.server.stdout.readline().split()[5])  # "Serving HTTP on 127.0.0.1 port N ..."
        options = webdriver.ChromeOptions()
        for a in ['--headless', '--no-sandbox', '--disable-gpu', '--disable-background-networking',
                  '--disable-component-update', '--disable-sync', '--no-first-run', '--disable-dev-shm-usage',
                  '--user-data-dir=' + tempfile.mkdtemp(prefix='norvane-web-'), '--window-size=' + size]:
            options.add_argument(a)
        options.binary_location = '/usr/bin/chromium'
        self.d = webdriver.Chrome(service=Service('/usr/bin/chromedriver'), options=options)
        self.js = self.d.execute_script

    def stop_server(self):
        self.server.terminate() or self.server.wait()

    def open(self, screen='', reload=False):
        """Goes to a screen; with reload, loads the page afresh (a new hash alone does not)."""
        self.d.get(f'http://127.0.0.1:{self.port}/#{screen}')
        if reload:
            self.d.refresh()
        self.wait('return document.documentElement.dataset.ready === "true"')

    def wait(self, script):
        for _ in range(400):
            if self.js(script):
                return
            time.sleep(0.05)
        raise TimeoutError(script)

    def field(self, name, inner=''):
        return self.d.find_element(By.CSS_SELECTOR, f'.field[data-option="{name}"] {inner}')

    def fill(self, entries):
        """Types the entries into the form; other boxes are emptied and other flags switched off."""
        for f in self.d.find_elements(By.CSS_SELECTOR, '#form .field'):
            value = entries.get(f.get_attribute('data-option') or '<stdin>')
            control = f.find_element(By.CSS_SELECTOR, 'input, select, textarea, button')
            if control.tag_name == 'button' and (control.get_attribute('aria-pressed') == 'true') != (value is True):
                control.click()
            elif control.tag_name == 'select' and value is not None:
                Select(control).select_by_value(value)
            elif control.tag_name not in ('button', 'select'):
                control.clear()
                control.send_keys(value or '')

    def calculate(self):
        self.d.find_element(By.ID, 'calculate').click()
        self.wait('return document.getElementById("results").dataset.status !== undefined')
        lines = [f'{dd.get_attribute("data-key")}: {dd.text}' for dd in self.d.find_elements(By.CSS_SELECTOR, '#results dd')]
        return lines, self.d.find_element(By.ID, 'message').text

    def state(self, name):
        return self.field(name).get_attribute('class').split()


def check_rows(page, cli, catalogue):
    described = {c['name'] for c in catalogue} | {'metar-decode'}
    menu = page.js('return [...document.querySelectorAll("#menu a")].map(a => a.hash.slice(1))')
    for screen, command, entries in ROWS:
        if command not in described:
            print(f'note: {command} is not in the catalogue of this build: no row checked')
            continue
        if not check(screen in menu, f'{screen}: not in the menu'):
            continue
        page.open(screen)
        if ' ' in command:
            page.d.find_element(By.CSS_SELECTOR, f'#tabs [data-command="{command}"]').click()
        shown = [f.get_attribute('data-option') or '<stdin>' for f in page.d.find_elements(By.CSS_SELECTOR, '#form .field')]
        if not check(set(entries) <= set(shown), f'{command}: no box for {set(entries) - set(shown)}'):
            continue
        page.fill(entries)
        lines, message = page.calculate()
        made = page.js('return window.norvane.app.form.args()')  # the command line of the form
        argv, stdin = command.split() + made['argv'], made['input']
        check(all(v in argv + [stdin] or v is True and k in argv for k, v in entries.items()), f'{command}: {argv}')
        status, out = native(cli, argv, stdin)
        check(status == 0, f'{command}: native status {status} for the row')
        check(lines == out.splitlines() and not message, f'{command}: page {lines} {message!r} != native {out!r}')
        got = page.js('return window.norvane.cli(arguments[0], arguments[1])', argv, stdin)
        check(got['stdout'] == out and got['status'] == status, f'{command}: cli() differs from norvane-cli')
        if screen in ('holding', 'racetrack', 'descent'):
            check(page.js('return document.querySelectorAll("#picture path, #picture line").length') > 1,
                  f'{screen}: no picture')


def check_rules(page, catalogue):
    """The desktop's rules for boxes and Calculate, Enter, remembered inputs and night mode."""
    page.open('turn')
    page.fill({'--tas': '2000'})
    calculate, hint = page.d.find_element(By.ID, 'calculate'), page.field('--tas', '.hint').text
    check('invalid' in page.state('--tas') and '50 to 1500' in hint and not calculate.is_enabled(),
          f'turn --tas 2000: not red, range not shown ({hint!r}) or Calculate enabled')
    page.fill({'--tas': '250', '--intercept': '3'})
    check('valid' in page.state('--tas') and not calculate.is_enabled(), 'turn: --tas 250 not green or --intercept 3 taken')
    page.fill({'--tas': '321'})
    check(calculate.is_enabled(), 'Calculate disabled with valid boxes')
    page.field('--tas', 'input').send_keys(Keys.ENTER)
    check(page.js('return document.activeElement.closest(".field").dataset.option') != '--tas', 'Enter did not move on')
    page.open('atmosphere')
    page.fill({'--altitude': '90000', '--feet': True, '--geopotential': True})
    hint = page.field('--altitude', '.hint').text
    label = page.field('--altitude', 'label').text
    check('valid' in page.state('--altitude') and hint == '-1500 to 278385 ft, geopotential' and
          label == 'Geopotential altitude', f'feet and geopotential: {label!r} {hint!r}')
    page.d.find_element(By.ID, 'night').click()
    page.js('window.notReloaded = true')
    page.open('turn', reload=True)
    check(not page.js('return window.notReloaded'), 'the page did not reload')
    check(page.field('--tas', 'input').get_attribute('value') == '321', 'inputs not kept')
    check(page.js('return document.documentElement.classList.contains("night")'), 'night mode not kept')
    if 'tracks' in {c['name'] for c in catalogue}:
        page.open('tracks')
        page.fill({'--from': 'nowhere', '--to': '40.64,-73.78'})
        page.calculate()
        check('invalid' in page.state('--from'), 'tracks: a bad --from is not red')


def check_offline(page, cli):
    page.open('metar')
    page.wait('return navigator.serviceWorker.controller !== null')
    foreign = page.js('return performance.getEntriesByType("resource").filter(e => !e.name.startsWith(location.origin))')
    check(not foreign, f'requests outside the origin: {foreign}')
    page.stop_server()
    page.open('metar', reload=True)
    report = 'LFPG 251030Z 05008KT CAVOK 21/09 Q1021'
    page.fill({'<stdin>': report})
    lines, _ = page.calculate()
    check(lines == native(cli, ['metar-decode'], report)[1].splitlines(), f'offline: the decoder gives {lines}')


def main(site, cli):
    page = Page(site, '1024,1366')
    try:
        page.open()
        described = page.js('return window.norvane.cli(["describe", "--json"]).stdout')
        check(described == native(cli, ['describe', '--json'])[1], 'describe --json differs from norvane-cli')
        catalogue = json.loads(described)['commands']
        check_rows(page, cli, catalogue)
        check_rules(page, catalogue)
        check_offline(page, cli)
    finally:
        page.d.quit()
        page.server.terminate()
    print(f'web: {0 if failures else 1} passed, {1 if failures else 0} failed')
    return 1 if failures else 0


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:3]))
