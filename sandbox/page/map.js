import { byId, counted } from './dom.js';

const svgSpace = 'http://www.w3.org/2000/svg';
const earthRadius = 6371008.8;
const nearEnough = 28; // pixels
const smallest = 40; // metres across
const largest = 4e7;

const svg = byId('map');
const key = (point) => `${point.latitude},${point.longitude}`;

let center = { latitude: 0, longitude: 0 };
let spots = new Map();
let view = { x: 0, y: 0, width: 1000 };
let everything = view;
let selected = null;
let users = [];
let onSelect = () => {};

const project = (point) => {
  const radians = Math.PI / 180;
  const turn = ((point.longitude - center.longitude + 540) % 360) - 180;
  return {
    x: earthRadius * turn * radians * Math.cos(center.latitude * radians),
    y: -earthRadius * (point.latitude - center.latitude) * radians,
  };
};

function makeShape(name, className, attributes) {
  const shape = document.createElementNS(svgSpace, name);
  shape.setAttribute('class', className);
  for (const [attribute, value] of Object.entries(attributes)) {
    shape.setAttribute(attribute, value);
  }
  return shape;
}

/// A dot of the same size at any zoom: a line without a length and with a wide pen.
const dot = (point, className) => makeShape('path', className, { d: `M${point.x} ${point.y}h0` });

const pixel = () => view.width / Math.max(1, svg.clientWidth);
const height = () => view.width * (svg.clientHeight / Math.max(1, svg.clientWidth));

/// The largest of 1, 2, 5, 10, ... metres that is at most @p metres.
function roundLength(metres) {
  const power = 10 ** Math.floor(Math.log10(metres));
  return power * [5, 2, 1].find((step) => step * power <= metres);
}

function drawGrid(step) {
  const lines = [];
  const left = view.x - view.width / 2;
  const top = view.y - height() / 2;
  for (let x = Math.ceil(left / step) * step; x < left + view.width; x += step) {
    lines.push(`M${x} ${top}v${height()}`);
  }
  for (let y = Math.ceil(top / step) * step; y < top + height(); y += step) {
    lines.push(`M${left} ${y}h${view.width}`);
  }
  byId('grid').replaceChildren(makeShape('path', 'grid', { d: lines.join('') }));
}

function drawUsers() {
  const names = new Map();
  for (const user of users) {
    names.set(key(user), { point: project(user), names: [...names.get(key(user))?.names ?? [], user.user] });
  }
  byId('users').replaceChildren(...[...names.values()].flatMap((group) => {
    const label = makeShape('text', 'user-name', {
      x: group.point.x + 10 * pixel(),
      y: group.point.y + 4 * pixel(),
      'font-size': 12 * pixel(),
      'stroke-width': 3 * pixel(),
    });
    label.textContent = group.names.length > 2 ? counted(group.names.length, 'user') : group.names.join(', ');
    return [dot(group.point, 'user-halo'), dot(group.point, 'user'), label];
  }));
}

function show() {
  view.width = Math.min(largest, Math.max(smallest, view.width));
  svg.setAttribute('viewBox', `${view.x - view.width / 2} ${view.y - height() / 2} ${view.width} ${height()}`);
  const length = roundLength(110 * pixel());
  byId('scale-bar').style.width = `${length / pixel()}px`;
  byId('scale-text').textContent = length >= 1000 ? `${length / 1000} km` : `${length} m`;
  drawGrid(length);
  drawUsers();
}

function zoom(factor, around = view) {
  const width = Math.min(largest, Math.max(smallest, view.width * factor));
  const share = width / view.width;
  view = { x: around.x + (view.x - around.x) * share, y: around.y + (view.y - around.y) * share, width };
  show();
}

function pointAt(event) {
  const box = svg.getBoundingClientRect();
  return {
    x: view.x + (event.clientX - box.left - box.width / 2) * pixel(),
    y: view.y + (event.clientY - box.top - box.height / 2) * pixel(),
  };
}

function select(spot) {
  selected = spot;
  const radii = new Set(spot ? spot.tasks.map((task) => Math.max(0, task.limitMetres)) : []);
  byId('selection').setAttribute('d', spot ? `M${spot.x} ${spot.y}h0` : '');
  byId('limits').replaceChildren(...[...radii].map((r) => makeShape('circle', 'limit', { cx: spot.x, cy: spot.y, r })));
  onSelect(spot);
}

/// Shows the place or task with this key, identifier or name; false when there is none.
export function selectByName(name) {
  for (const spot of spots.values()) {
    if ([spot.place?.id, spot.place?.name, ...spot.tasks.flatMap((task) => [task.key, task.title])].includes(name)) {
      view = { x: spot.x, y: spot.y, width: Math.min(view.width, 1200) };
      show();
      select(spot);
      return true;
    }
  }
  return false;
}

function selectNear(point) {
  let best = null;
  let least = nearEnough * pixel();
  for (const spot of spots.values()) {
    const distance = Math.hypot(spot.x - point.x, spot.y - point.y);
    if (distance < least) {
      [best, least] = [spot, distance];
    }
  }
  select(best);
}

function listen() {
  const pointers = new Map();
  let moved = 0;
  svg.addEventListener('pointerdown', (event) => {
    svg.setPointerCapture(event.pointerId);
    pointers.set(event.pointerId, event);
    moved = pointers.size > 1 ? Infinity : 0;
  });
  svg.addEventListener('pointermove', (event) => {
    const before = pointers.get(event.pointerId);
    if (!before) {
      return;
    }
    const others = [...pointers.values()].filter((other) => other.pointerId !== event.pointerId);
    const [dx, dy] = [event.clientX - before.clientX, event.clientY - before.clientY];
    pointers.set(event.pointerId, event);
    moved += Math.hypot(dx, dy);
    if (others.length === 1) {
      const distance = (one) => Math.hypot(one.clientX - others[0].clientX, one.clientY - others[0].clientY);
      zoom(distance(before) / Math.max(1, distance(event)), pointAt(others[0]));
    } else if (moved > 4) {
      view = { ...view, x: view.x - dx * pixel(), y: view.y - dy * pixel() };
      show();
    }
  });
  svg.addEventListener('pointerup', (event) => {
    if (pointers.delete(event.pointerId) && moved <= 4) {
      selectNear(pointAt(event));
    }
  });
  svg.addEventListener('pointercancel', (event) => pointers.delete(event.pointerId));
  svg.addEventListener('wheel', (event) => {
    event.preventDefault();
    zoom(Math.exp(event.deltaY / 400), pointAt(event));
  }, { passive: false });
  byId('zoom-in').addEventListener('click', () => zoom(1 / 1.6));
  byId('zoom-out').addEventListener('click', () => zoom(1.6));
  byId('zoom-all').addEventListener('click', () => {
    view = { ...everything };
    show();
  });
  new ResizeObserver(show).observe(svg);
}

function fit(points) {
  const xs = points.map((point) => point.x);
  const ys = points.map((point) => point.y);
  const range = (all) => [Math.min(...all), Math.max(...all)];
  const [left, right] = range(xs);
  const [top, bottom] = range(ys);
  const ratio = Math.max(1, svg.clientWidth) / Math.max(1, svg.clientHeight);
  everything = {
    x: (left + right) / 2,
    y: (top + bottom) / 2,
    width: 1.08 * Math.max(right - left, (bottom - top) * ratio, smallest),
  };
  view = { ...everything };
}

/// Draws places and tasks; @p selectionChanged is told of the spot that a user picks, or of none.
export function draw(map, selectionChanged) {
  onSelect = selectionChanged;
  center = map.places[0] ?? center;
  spots = new Map();
  const spotAt = (point) => {
    if (!spots.has(key(point))) {
      spots.set(key(point), { ...project(point), point, place: null, tasks: [] });
    }
    return spots.get(key(point));
  };
  for (const place of map.places) {
    spotAt(place).place = place;
  }
  for (const task of map.tasks) {
    spotAt(task).tasks.push(task);
  }
  const all = [...spots.values()];
  for (const spot of all) {
    spot.mark = spot.tasks.length > 0 ? dot(spot, 'task generated') : null;
  }
  byId('tasks').replaceChildren(...all.filter((spot) => spot.mark).map((spot) => spot.mark));
  byId('places').replaceChildren(...all.filter((spot) => spot.place).map((spot) => dot(spot, 'place')));
  svg.setAttribute('aria-label', `${counted(map.places.length, 'place')} and ${counted(map.tasks.length, 'task')}`);
  fit(all.filter((spot) => spot.place));
  select(null);
  show();
}

/// Where users are, and what has become of tasks: "running" or "completed" by their numbers.
export function update(newUsers, states) {
  for (const spot of spots.values()) {
    const found = spot.tasks.map((task) => states.get(task.number) ?? task.state);
    const state = ['running', 'generated', 'completed', 'cancelled'].find((one) => found.includes(one));
    spot.mark?.setAttribute('class', `task ${state}`);
  }
  users = newUsers;
  drawUsers();
  onSelect(selected);
}

listen();
