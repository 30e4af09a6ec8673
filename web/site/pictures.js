// The holding, racetrack and descent pictures, drawn as SVG from a calculation's inputs and results.
// North is up; a course c points along (sin c, -cos c) on the screen.

const NS = 'http://www.w3.org/2000/svg';

function svg(tag, attributes = {}, text) {
  const e = document.createElementNS(NS, tag);
  for (const [k, v] of Object.entries(attributes)) e.setAttribute(k, v);
  if (text !== undefined) e.textContent = text;
  return e;
}

const rad = d => (d * Math.PI) / 180;
const along = (c, r) => [r * Math.sin(rad(c)), -r * Math.cos(rad(c))];
const pad3 = d => String(Math.round(((d % 360) + 360) % 360)).padStart(3, '0');

function frame(viewBox, label) {
  const s = svg('svg', {viewBox, role: 'img', 'aria-label': label, class: 'picture'});
  const defs = svg('defs');
  const marker = svg('marker', {id: 'arrow', viewBox: '0 0 10 10', refX: 9, refY: 5, markerWidth: 12, markerHeight: 12,
                                markerUnits: 'userSpaceOnUse',
                                orient: 'auto-start-reverse'});
  marker.append(svg('path', {d: 'M0 0 L10 5 L0 10 z', class: 'ink-fill'}));
  defs.append(marker);
  s.append(defs);
  return s;
}

// A holding pattern (1 unit long legs) with the entry sectors by the tracks to the fix, and the
// aircraft's track when given.
function holding(inputs, results) {
  const outbound = Number(inputs['--outbound']);
  const left = inputs['--left'] === 'on';
  const inbound = (outbound + 180) % 360;
  const s = frame('-120 -120 240 240', 'Holding entry');
  const leg = 70, width = 34;
  const side = left ? inbound - 90 : inbound + 90;
  const [ax, ay] = along(outbound, leg);
  const [wx, wy] = along(side, width);
  const sweep = left ? 0 : 1;
  s.append(svg('path', {class: 'pattern', d: `M${ax} ${ay} L0 0 A${width / 2} ${width / 2} 0 0 ${sweep} ${wx} ${wy} ` +
                        `L${wx + ax} ${wy + ay} A${width / 2} ${width / 2} 0 0 ${sweep} ${ax} ${ay}`}));
  s.append(svg('path', {class: 'pattern', d: `M${ax * 0.6} ${ay * 0.6} L${ax * 0.4} ${ay * 0.4}`, 'marker-end': 'url(#arrow)'}));
  // Sector boundaries: a track T to the fix comes from the direction T + 180.
  for (const name of ['direct', 'teardrop', 'parallel']) {
    const m = /(\d+)\s*->\s*(\d+)/.exec(results[name] || '');
    if (!m) continue;
    const from = Number(m[1]), to = Number(m[2]);
    const [bx, by] = along(from + 180, 110);
    s.append(svg('line', {class: 'sector', x1: 0, y1: 0, x2: bx, y2: by}));
    const span = ((to - from) % 360 + 360) % 360;
    const [tx, ty] = along(from + span / 2 + 180, 88);
    s.append(svg('text', {x: tx, y: ty, class: 'label', 'text-anchor': 'middle'}, name[0].toUpperCase() + name.slice(1)));
  }
  if (inputs['--track']) {
    const track = Number(inputs['--track']);
    const [px, py] = along(track + 180, 105);
    s.append(svg('line', {class: 'aircraft', x1: px, y1: py, x2: 0, y2: 0, 'marker-end': 'url(#arrow)'}));
  }
  s.append(svg('circle', {cx: 0, cy: 0, r: 4, class: 'fix'}));
  s.append(svg('text', {x: 0, y: -112, class: 'label north', 'text-anchor': 'middle'}, 'N'));
  s.append(svg('text', {x: 6, y: 14, class: 'label'}, 'Fix'));
  return s;
}

// The racetrack to scale: length and width from the results (NM), turning at the fix onto the
// outbound leg, the wind blowing across it.
function racetrack(inputs, results) {
  const course = Number(inputs['--course']);
  const left = inputs['--left'] === 'on';
  const length = Number(results.length), width = Number(results.width);
  if (!(length > 0 && width > 0)) return null;
  const scale = 150 / Math.max(length, width * 2);
  const w = width * scale, straight = Math.max(0, (length - width) * scale), r = w / 2;
  const sweep = left ? 0 : 1;
  const xi = left ? r : -r, xo = -xi, h = straight / 2;  // inbound and outbound legs, centred
  const s = frame('-120 -120 240 240', 'Racetrack');
  const g = svg('g', {transform: `rotate(${course})`});
  g.append(svg('path', {class: 'pattern', d: `M${xi} ${h} L${xi} ${-h} A${r} ${r} 0 0 ${sweep} ${xo} ${-h} ` +
                        `L${xo} ${h} A${r} ${r} 0 0 ${sweep} ${xi} ${h}`}));
  g.append(svg('path', {class: 'pattern', d: `M${xi} ${h * 0.2} L${xi} ${-h * 0.2}`, 'marker-end': 'url(#arrow)'}));
  g.append(svg('circle', {cx: xi, cy: -h, r: 4, class: 'fix'}));
  s.append(g);
  const wind = /^(\d+)\/(\d+)$/.exec(inputs['--wind'] || '');
  if (wind && Number(wind[2]) > 0) {
    const [fx, fy] = along(Number(wind[1]), 110), [tx, ty] = along(Number(wind[1]), 80);
    s.append(svg('line', {class: 'wind', x1: fx, y1: fy, x2: tx, y2: ty, 'marker-end': 'url(#arrow)'}));
    s.append(svg('text', {x: fx, y: fy + (fy < 0 ? 14 : -6), class: 'label', 'text-anchor': 'middle'}, `${wind[2]} kt`));
  }
  s.append(svg('text', {x: 0, y: -112, class: 'label north', 'text-anchor': 'middle'}, 'N'));
  s.append(svg('text', {x: -116, y: 114, class: 'label'}, `Inbound ${pad3(course)}, outbound heading ${results.outbound_heading}`));
  return s;
}

// The descent path from the initial to the final altitude over the distance flown, with the
// altitude where the Mach number gives way to the IAS.
function descent(inputs, results) {
  const top = Number(inputs['--from']), bottom = Number(inputs['--to']), distance = Number(results.distance);
  if (!(top > bottom) || !(distance > 0)) return null;
  const s = frame('0 0 320 200', 'Descent profile');
  const x0 = 40, x1 = 300, y0 = 30, y1 = 160;
  const y = alt => y1 - ((alt - bottom) / (top - bottom)) * (y1 - y0);
  s.append(svg('line', {class: 'axis', x1: x0, y1: y1 + 10, x2: x1, y2: y1 + 10}));
  s.append(svg('line', {class: 'pattern', x1: x0, y1: y0, x2: x1, y2: y1, 'marker-end': 'url(#arrow)'}));
  s.append(svg('text', {x: x0, y: y0 - 8, class: 'label'}, `${top} ft`));
  s.append(svg('text', {x: x1, y: y1 - 8, class: 'label', 'text-anchor': 'end'}, `${bottom} ft`));
  s.append(svg('text', {x: (x0 + x1) / 2, y: y1 + 28, class: 'label', 'text-anchor': 'middle'},
               `${results.distance} NM in ${results.time}`));
  const changeover = Number(results.changeover);
  if (changeover > bottom && changeover < top) {
    const cy = y(changeover), cx = x0 + ((y0 - cy) / (y0 - y1)) * (x1 - x0);
    s.append(svg('circle', {cx, cy, r: 4, class: 'fix'}));
    s.append(svg('text', {x: cx + 8, y: cy + 16, class: 'label'}, `Mach → IAS ${changeover} ft`));
  }
  return s;
}

const PICTURES = {holding, racetrack, descent};

// The picture of a screen for the inputs (texts by option name) and results (texts by key), or
// null when there is none to draw.
export function drawPicture(kind, inputs, results) {
  const draw = PICTURES[kind];
  return draw ? draw(inputs, results) : null;
}
