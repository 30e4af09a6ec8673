// A calculator's form, built from its entry in `norvane-cli describe --json`: one box per option
// with the option's caption, unit and range, the desktop's rules (green when valid, red with the
// range when not), and the command line the entries make.

const NUMBER = /^[+-]?(\d+\.?\d*|\.\d+)$/;

// "50 to 1500 kt", "0.0 to 360.0 degrees", "-75 to 55 °C".
export function rangeText(q) {
  const d = q.decimals || 0;
  const unit = q.unit ? (q.unit.startsWith('°') ? q.unit : ' ' + q.unit) : '';
  return `${q.min.toFixed(d)} to ${q.max.toFixed(d)}${unit}`;
}

// The quantity of a number option under the chosen units and the form's other entries: the first
// variant whose words all hold ("--feet" a flag that is on, "--unit=km" a choice), else the listed.
export function quantityOf(option, us, holds = () => false) {
  for (const v of option.variants || []) if (v.when.every(holds)) return v;
  return us && option.us ? option.us : option;
}

// A short label from an option's help: "Distance unit: nm, km ..." -> "Distance unit",
// "Date YYYY-MM-DD, 1900-01-01 to 2100-12-31" -> "Date YYYY-MM-DD".
function labelOf(option) {
  if (option.caption) return option.caption;
  let text = option.help || option.name;
  for (const cut of [': ', ' (', '; ', '. ', ', ']) {
    const at = text.indexOf(cut);
    if (at > 0) text = text.slice(0, at);
  }
  return text;
}

function element(tag, attributes = {}, text) {
  const e = document.createElement(tag);
  for (const [k, v] of Object.entries(attributes)) if (v !== undefined && v !== null && v !== false) e.setAttribute(k, v);
  if (text !== undefined) e.textContent = text;
  return e;
}

export class Form {
  // entry: the command's catalogue entry; us: US units; values: saved texts by option name;
  // choices: {option name: values or (form) => values} replacing free text; input: standard
  // input box (label) or null; onChange(form): after every edit; onEnterLast(): Enter on the last box.
  constructor(root, entry, {us = false, values = {}, choices = {}, input = null, onChange, onEnterLast}) {
    this.root = root;
    this.entry = entry;
    this.us = us;
    this.choices = choices;
    this.onChange = onChange || (() => {});
    this.onEnterLast = onEnterLast || (() => {});
    this.fields = [];
    this.cliError = null;  // {option, text}: the command line's word on the last run
    root.replaceChildren();
    const shown = entry.options.filter(o => o.name !== '--us');
    for (const option of shown) this.addField(option, values[option.name]);
    if (input !== null) this.addInput(input, values['<stdin>']);
    for (const f of this.fields) if (f.refresh) f.refresh();
    this.update();
  }

  addField(option, saved) {
    const field = {option, kind: option.kind};
    const wrap = element('div', {class: 'field', 'data-option': option.name});
    const id = 'opt' + option.name.replace(/[^a-zA-Z0-9]/g, '_');
    const label = element('label', {for: id}, labelOf(option));
    wrap.append(label);
    const fixed = this.choices[option.name];
    if (option.kind === 'flag') {
      const b = element('button', {type: 'button', id, class: 'toggle', 'aria-pressed': saved === 'on' ? 'true' : 'false',
                                   title: option.help}, saved === 'on' ? 'On' : 'Off');
      b.addEventListener('click', () => {
        const on = b.getAttribute('aria-pressed') !== 'true';
        b.setAttribute('aria-pressed', on ? 'true' : 'false');
        b.textContent = on ? 'On' : 'Off';
        this.changed();
      });
      field.value = () => (b.getAttribute('aria-pressed') === 'true' ? 'on' : '');
      field.control = b;
      wrap.append(b);
    } else if (option.kind === 'choice' || fixed) {
      const values = () => (typeof fixed === 'function' ? fixed(this) : fixed) || option.values;
      const select = element('select', {id, title: option.help});
      field.control = select;
      field.refresh = () => {
        const keep = select.value || saved || option.default;
        select.replaceChildren(...values().map(v => element('option', {value: v}, v)));
        if (values().includes(keep)) select.value = keep;
      };
      field.refresh();
      select.addEventListener('change', () => this.changed(option.name));
      field.value = () => select.value;
      wrap.append(select);
    } else {
      const number = option.kind === 'number';
      const q = number ? quantityOf(option, this.us, w => this.holds(w)) : null;
      const box = element('input', {
        id, type: 'text', enterkeyhint: 'next', spellcheck: 'false', autocapitalize: 'off',
        inputmode: number ? (q.min < 0 ? 'text' : 'decimal') : 'text',
        placeholder: option.kind === 'date' ? 'YYYY-MM-DD' : option.kind === 'coordinates' ? 'N51 28 39,W000 27 41' : '',
        title: option.help, 'aria-describedby': id + '_hint'});
      box.value = saved !== undefined ? saved : option.default || '';
      if (option.kind === 'date' && !box.value && option.required) box.value = new Date().toISOString().slice(0, 10);
      const row = element('div', {class: 'box'});
      row.append(box);
      const unit = element('span', {class: 'unit'}, number ? q.unit : '');
      if (number) row.append(unit);
      const hint = element('small', {id: id + '_hint', class: 'hint'}, number ? rangeText(q) : option.help);
      wrap.append(row, hint);
      for (const type of ['input', 'change']) box.addEventListener(type, () => this.changed(option.name));
      box.addEventListener('keydown', e => {
        if (e.key !== 'Enter') return;
        e.preventDefault();
        this.next(field);
      });
      field.control = box;
      field.hint = hint;
      field.quantity = q;
      field.unit = unit;
      field.label = label;
      field.value = () => box.value.trim();
    }
    this.root.append(wrap);
    field.wrap = wrap;
    this.fields.push(field);
  }

  addInput(caption, saved) {
    const wrap = element('div', {class: 'field wide'});
    wrap.append(element('label', {for: 'stdin'}, caption));
    const area = element('textarea', {id: 'stdin', rows: 6, spellcheck: 'false', autocapitalize: 'characters'});
    area.value = saved || '';
    for (const type of ['input', 'change']) area.addEventListener(type, () => this.changed('<stdin>'));
    wrap.append(area);
    this.root.append(wrap);
    this.fields.push({option: {name: '<stdin>', required: true}, kind: 'stdin', control: area, wrap,
                      value: () => area.value});
  }

  next(field) {
    const boxes = this.fields.filter(f => f.control.tagName === 'INPUT' || f.control.tagName === 'TEXTAREA');
    const at = boxes.indexOf(field);
    if (at >= 0 && at + 1 < boxes.length) boxes[at + 1].control.focus();
    else this.onEnterLast();
  }

  changed(name) {
    if (this.cliError && this.cliError.option === name) this.cliError = null;
    for (const f of this.fields) if (f.refresh && f.option.name !== name) f.refresh();
    this.update();
    this.onChange(this);
  }

  // Whether a word of a variant holds: a flag that is on ("--feet"), a choice made ("--unit=km").
  holds(word) {
    const [name, value] = word.split('=');
    const f = this.fields.find(g => g.option.name === name);
    return Boolean(f) && f.value() === (value === undefined ? 'on' : value);
  }

  // Whether a field's entry is acceptable: numbers by their quantity, other texts when given.
  fieldState(f) {
    const text = f.value();
    if (f.kind === 'flag' || f.kind === 'choice' || f.control.tagName === 'SELECT') return 'valid';
    if (this.cliError && this.cliError.option === f.option.name) return 'invalid';
    if (text === '') return f.option.required ? 'invalid' : 'empty';
    if (f.kind !== 'number') return 'valid';
    const t = text.replace(',', '.');
    if (!NUMBER.test(t)) return 'invalid';
    const v = Number(t);
    const q = f.quantity;
    return v >= q.min && v <= q.max && (!q.whole || Number.isInteger(v)) ? 'valid' : 'invalid';
  }

  update() {
    this.valid = true;
    for (const f of this.fields) {
      if (f.quantity) {
        f.quantity = quantityOf(f.option, this.us, w => this.holds(w));
        f.unit.textContent = f.quantity.unit;
        f.label.textContent = f.quantity.caption || labelOf(f.option);
      }
      const state = this.fieldState(f);
      f.wrap.classList.toggle('valid', state === 'valid' && f.control.tagName !== 'SELECT' && f.kind !== 'flag');
      f.wrap.classList.toggle('invalid', state === 'invalid');
      if (f.hint) {
        const error = this.cliError && this.cliError.option === f.option.name ? this.cliError.text : '';
        f.hint.textContent = error || (f.quantity ? rangeText(f.quantity) : f.option.help);
      }
      if (state === 'invalid') this.valid = false;
    }
  }

  // The command line of the entries (after the command's name) and the standard input.
  args() {
    const argv = [], positionals = [];
    let input = '';
    for (const f of this.fields) {
      const text = f.value();
      if (f.kind === 'stdin') input = text;
      else if (f.kind === 'flag') { if (text) argv.push(f.option.name); }
      else if (text === '') continue;
      else if (!f.option.name.startsWith('-')) positionals.push(f.kind === 'number' ? text.replace(',', '.') : text);
      else argv.push(f.option.name, f.kind === 'number' ? text.replace(',', '.') : text);
    }
    if (this.us && this.entry.options.some(o => o.name === '--us')) argv.push('--us');
    if (positionals.length) argv.push('--', ...positionals);
    return {argv, input};
  }

  values() {
    const out = {};
    for (const f of this.fields) out[f.option.name === '<stdin>' ? '<stdin>' : f.option.name] = f.value();
    return out;
  }

  // The command line's refusal ("error: --from: expected LAT,LON ...") marks the box it names.
  showCliError(stderr) {
    const m = /^error: ([A-Za-z-]+):? (.*)$/m.exec(stderr || '');
    const named = m && this.fields.find(f => f.option.name === m[1]);
    this.cliError = named ? {option: m[1], text: m[2]} : null;
    this.update();
    return Boolean(named);
  }
}
