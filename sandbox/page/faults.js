import { ask, byId, make } from './dom.js';

/// What the value of a kind is called; kinds without one are absent.
const valueNames = { status: 'Status', 'truncate-body': 'Bytes', 'truncate-headers': 'Bytes' };

let shown = '';

export function showFaults(faults) {
  const words = JSON.stringify(faults);
  if (words === shown) {
    return;
  }
  shown = words;
  byId('faults').replaceChildren(...faults.map((fault) => {
    const button = make('button', '', 'Switch off');
    button.type = 'button';
    button.addEventListener('click', () => change(`/sandbox/faults/${fault.number}`, 'DELETE'));
    return make('li', '', make('code', '', fault.text), button);
  }));
  byId('faults-count').textContent = faults.length > 0 ? faults.length : '';
}

async function change(path, method, body) {
  try {
    showFaults((await ask(path, method, body)).faults);
    byId('fault-problem').textContent = '';
  } catch (problem) {
    byId('fault-problem').textContent = problem.message;
  }
}

function faultText() {
  const kind = byId('fault-kind').value;
  const value = valueNames[kind] ? byId('fault-value').value : '';
  const part = (name, text, unit = '') => (text === '' ? [] : [`${name}=${text}${unit}`]);
  return [
    byId('fault-path').value,
    ...(kind === '' ? [] : [value === '' ? kind : `${kind}=${value}`]),
    ...part('delay', byId('fault-delay').value, 'ms'),
    ...part('count', byId('fault-count').value),
  ].join(':');
}

function showValue() {
  const kind = byId('fault-kind').value;
  byId('fault-value-label').hidden = !valueNames[kind];
  byId('fault-value-name').textContent = valueNames[kind] ?? '';
  byId('fault-value').value = kind === 'status' ? '503' : '';
  byId('fault-value').placeholder = kind === 'status' ? '' : 'half';
}

byId('fault-kind').addEventListener('change', showValue);
byId('fault-form').addEventListener('submit', (event) => {
  event.preventDefault();
  change('/sandbox/faults', 'POST', { fault: faultText() });
});
showValue();
