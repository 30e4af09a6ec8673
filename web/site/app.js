// Norvane in the browser: the desktop's calculators on norvane-cli compiled to WebAssembly.
// Every form comes from `describe --json` and every result from the same command line the desktop
// build prints, through window.norvane.cli(argv, input).
import NorvaneModule from './norvane.mjs';
import {Form} from './forms.js';
import {drawPicture} from './pictures.js';

// The desktop menu's calculators that need neither network nor database, in its order; a screen
// whose command this build lacks is left out.
const SCREENS = [
  {id: 'atmosphere', title: 'Atmosphere data', commands: ['atmosphere']},
  {id: 'speed', title: 'Speed calculations', commands: ['speed']},
  {id: 'changeover', title: 'Changeover level', commands: ['changeover']},
  {id: 'descent', title: 'Descent calculator', commands: ['descent'], picture: 'descent'},
  {id: 'density-altitude', title: 'Density altitude', commands: ['density-altitude']},
  {id: 'wind', title: 'Wind calculations', commands: ['wind known', 'wind unknown', 'wind runway'],
   tabs: ['Known wind', 'Unknown wind', 'Runway wind']},
  {id: 'turn', title: 'Turn parameters', commands: ['turn']},
  {id: 'tracks', title: 'Tracks and distance', commands: ['tracks']},
  {id: 'point', title: 'Point from track-distance', commands: ['point']},
  {id: 'intersection', title: 'Radial intersection', commands: ['intersection']},
  {id: 'magvar', title: 'Magnetic variation', commands: ['magvar']},
  {id: 'sun', title: 'Sunrise and sunset', commands: ['sun']},
  {id: 'convert', title: 'Unit conversions', commands: ['convert']},
  {id: 'stall', title: 'Stall speed calculation', commands: ['stall']},
  {id: 'racetrack', title: 'Racetrack calculator', commands: ['racetrack'], picture: 'racetrack'},
  {id: 'holding', title: 'Holding entry calculator', commands: ['holding'], picture: 'holding'},
  {id: 'calc', title: 'Tiny math calculator', commands: ['calc']},
  {id: 'tsd', title: 'Time, speed, distance and fuel', commands: ['tsd']},
  {id: 'metar', title: 'METAR/TAF decoder', commands: ['metar-decode'], input: 'METAR or TAF reports, one per line'},
];

const $ = id => document.getElementById(id);
const store = {
  get(key, fallback) {
    try {
      const v = localStorage.getItem('norvane.' + key);
      return v === null ? fallback : JSON.parse(v);
    } catch {
      return fallback;
    }
  },
  set(key, value) {
    try {
      localStorage.setItem('norvane.' + key, JSON.stringify(value));
    } catch { /* private mode or full: the page works without memory */ }
  },
};

// norvane-cli inside the page: the arguments after the program name and the standard input give
// {status, stdout, stderr} as the desktop build's norvane-cli prints them.
async function loadCli() {
  const module = await NorvaneModule();
  const encoder = new TextEncoder();
  return (argv, input = '') => {
    const words = argv.map(a => encoder.encode(String(a)));
    const bytes = new Uint8Array(words.reduce((n, w) => n + w.length + 1, 0));
    let at = 0;
    for (const w of words) {
      bytes.set(w, at);
      at += w.length + 1;
    }
    try {
      module.FS.writeFile('/stdin', input);
      const status = module.ccall('norvane_cli', 'number', ['array', 'number'], [bytes, words.length]);
      const read = name => module.FS.readFile(name, {encoding: 'utf8'});
      return {status, stdout: read('/stdout'), stderr: read('/stderr')};
    } catch (e) {
      return {status: 1, stdout: '', stderr: `error: ${e.message || e}\n`};
    }
  };
}

// "key: text" lines in order (a TAF's or several reports' repeated keys included).
function resultLines(stdout) {
  return stdout.split('\n').filter(l => l.includes(': ')).map(l => {
    const at = l.indexOf(': ');
    return [l.slice(0, at), l.slice(at + 2)];
  });
}
const caption = key => key.charAt(0).toUpperCase() + key.slice(1).replaceAll('_', ' ');

// Unit conversion's types and units, from its own help text.
function unitTable(cli) {
  const table = {};
  const help = cli(['convert', '--help']).stdout;
  const start = help.indexOf('Unit types and their units:');
  if (start < 0) return null;
  for (const line of help.slice(start).split('\n').slice(1)) {
    const m = /^ {2}(.+?): (.+)$/.exec(line);
    if (m) table[m[1]] = m[2].split(' ');
  }
  return table;
}

class App {
  constructor(cli, catalogue) {
    this.cli = cli;
    this.commands = new Map(catalogue.map(c => [c.name, c]));
    this.screens = SCREENS.filter(s => s.commands.every(c => this.commands.has(c) || c === 'metar-decode'));
    this.units = unitTable(cli);
    this.us = store.get('us', false);
    this.night = store.get('night', false);
    this.shown = false;  // results or an error on screen: edits recalculate
    this.buildMenu();
    this.bindSwitches();
    $('back').addEventListener('click', () => { location.hash = ''; });
    $('calculate').addEventListener('click', () => this.calculate());
    window.addEventListener('hashchange', () => this.route());
    this.route();
  }

  buildMenu() {
    const menu = $('menu');
    for (const s of this.screens) {
      const a = document.createElement('a');
      a.href = '#' + s.id;
      a.textContent = s.title;
      menu.append(a);
    }
  }

  bindSwitches() {
    const apply = () => {
      document.documentElement.classList.toggle('night', this.night);
      $('night').setAttribute('aria-pressed', String(this.night));
      $('units').setAttribute('aria-pressed', String(this.us));
    };
    $('night').addEventListener('click', () => {
      this.night = !this.night;
      store.set('night', this.night);
      apply();
    });
    $('units').addEventListener('click', () => {
      this.us = !this.us;
      store.set('us', this.us);
      apply();
      if (this.screen) this.openForm();
    });
    apply();
  }

  route() {
    const screen = this.screens.find(s => s.id === location.hash.slice(1));
    this.screen = screen;
    $('menu').hidden = Boolean(screen);
    $('screen').hidden = !screen;
    $('back').hidden = !screen;
    $('title').textContent = screen ? screen.title : 'Norvane';
    document.title = screen ? `${screen.title} – Norvane` : 'Norvane';
    if (!screen) return;
    const tabs = $('tabs');
    tabs.replaceChildren();
    this.command = store.get('tab.' + screen.id, screen.commands[0]);
    if (!screen.commands.includes(this.command)) this.command = screen.commands[0];
    if (screen.commands.length > 1) {
      screen.commands.forEach((c, i) => {
        const b = document.createElement('button');
        b.type = 'button';
        b.setAttribute('role', 'tab');
        b.dataset.command = c;
        b.textContent = screen.tabs[i];
        b.addEventListener('click', () => {
          this.command = c;
          store.set('tab.' + screen.id, c);
          this.openForm();
        });
        tabs.append(b);
      });
    }
    this.openForm();
  }

  // The entry of a command; the METAR decoder reads its reports from standard input, options or not.
  entry(name) {
    return this.commands.get(name) || {name, options: [], results: []};
  }

  openForm() {
    for (const b of $('tabs').children) b.setAttribute('aria-selected', String(b.dataset.command === this.command));
    const entry = this.entry(this.command);
    const choices = {};
    if (this.command === 'convert' && this.units) {
      const types = Object.keys(this.units);
      choices['--type'] = types;
      const unitsOf = form => this.units[form.fields.find(f => f.option.name === '--type').value()] || [];
      choices['--from'] = unitsOf;
      choices['--to'] = unitsOf;
    }
    this.form = new Form($('form'), entry, {
      us: this.us,
      values: store.get('inputs.' + this.command, {}),
      choices,
      input: this.screen.input || null,
      onChange: form => {
        store.set('inputs.' + this.command, form.values());
        $('calculate').disabled = !form.valid;
        if (this.shown && form.valid) this.calculate();
      },
      onEnterLast: () => { if (this.form.valid) this.calculate(); },
    });
    $('calculate').disabled = !this.form.valid;
    this.clearOutput();
  }

  clearOutput() {
    this.shown = false;
    $('results').replaceChildren();
    $('picture').replaceChildren();
    $('message').textContent = '';
    $('message').className = '';
    delete $('results').dataset.status;
  }

  calculate() {
    const {argv, input} = this.form.args();
    const r = this.cli([...this.command.split(' '), ...argv], input);
    this.clearOutput();
    this.shown = true;
    const results = $('results');
    results.dataset.status = r.status;
    const byKey = {};
    for (const [key, text] of resultLines(r.stdout)) {
      if (key === 'message' || key === 'notice') {
        $('message').textContent = text;
        $('message').className = key;
        continue;
      }
      byKey[key] = text;
      const dt = document.createElement('dt');
      dt.textContent = caption(key);
      const dd = document.createElement('dd');
      dd.dataset.key = key;
      dd.textContent = text;
      results.append(dt, dd);
    }
    if (r.status === 2 || r.stderr) {
      this.form.showCliError(r.stderr);
      $('message').textContent = r.stderr.replace(/^error: /, '').trim();
      $('message').className = 'error';
      $('calculate').disabled = !this.form.valid;
    }
    if (r.status === 0 && this.screen.picture) {
      const picture = drawPicture(this.screen.picture, this.form.values(), byKey);
      if (picture) $('picture').append(picture);
    }
  }
}

async function start() {
  const cli = await loadCli();
  performance.mark('norvane-module');
  const described = cli(['describe', '--json']);
  performance.mark('norvane-described');
  const catalogue = JSON.parse(described.stdout).commands;
  window.norvane = {cli, catalogue, readyMs: 0};
  $('loading').hidden = true;
  window.norvane.app = new App(cli, catalogue);
  window.norvane.readyMs = performance.now();
  document.documentElement.dataset.ready = 'true';
}

if ('serviceWorker' in navigator && location.protocol !== 'file:') {
  navigator.serviceWorker.register('./sw.js').catch(() => { /* the page works without it, online */ });
}
start().catch(e => {
  $('loading').textContent = `The calculators could not start: ${e.message || e}`;
});
