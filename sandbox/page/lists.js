import { ask, byId, counted, make } from './dom.js';

const mostRows = 500;
const claimCards = new Map();

/// The map's spot that is selected, with its tasks and what users made of them.
export function showSpot(spot, claims) {
  const panel = byId('spot');
  const words = spot ? JSON.stringify([spot.point, claims.filter((one) => spot.tasks.some((task) => task.number === one.task))]) : '';
  if (panel.dataset.words === words) {
    return;
  }
  panel.dataset.words = words;
  if (!spot) {
    panel.replaceChildren(make('p', 'empty', 'Pick a point of the map.'));
    return;
  }
  const { latitude, longitude } = spot.point;
  const where = `${latitude.toFixed(5)}, ${longitude.toFixed(5)}`;
  const tasks = spot.tasks.map((task) => {
    const limit = `claimed within ${Math.round(task.limitMetres)} m`;
    const mine = claims.filter((claim) => claim.task === task.number);
    return make('li', '',
      make('strong', '', task.title || task.key),
      make('span', 'fact', make('code', '', task.key)),
      make('span', 'fact', [counted(task.questions, 'question'), limit, task.associatesOnly ? 'for associates only' : '',
        task.state === 'cancelled' ? 'cancelled' : ''].filter(Boolean).join(' · ')),
      ...mine.map((claim) => make('span', 'fact', badge(claim.state), ` by ${claim.user}, ${counted(claim.score, 'point')}`)));
  });
  panel.replaceChildren(
    make('h3', '', spot.place ? spot.place.name : 'A task without a place'),
    make('p', 'fact', spot.place ? make('code', '', spot.place.id) : '', ' ' + where),
    tasks.length > 0 ? make('ul', 'spot-tasks', ...tasks) : make('p', 'fact', 'No task here.'));
}

const badge = (state) => make('span', `badge ${state}`, state);

function makeCard(claim, task) {
  const card = make('article', 'claim');
  const state = make('span', 'state');
  const score = make('span', 'score');
  const answers = make('ol', 'answers');
  const rewards = make('ul', 'rewards');
  card.append(
    make('header', '', make('h3', '', task ? task.title || task.key : `task ${claim.task}`), state),
    make('p', 'fact', `${claim.user} · `, make('code', '', task ? task.key : ''), ' · ', score),
    answers,
    rewards);
  return { card, state, score, answers, rewards };
}

/// One card for each claim, the newest first.
export function showClaims(claims, tasks) {
  for (const claim of claims) {
    if (!claimCards.has(claim.number)) {
      const parts = makeCard(claim, tasks.get(claim.task));
      claimCards.set(claim.number, parts);
      byId('claims').querySelector('.empty')?.remove();
      byId('claims').prepend(parts.card);
    }
    const parts = claimCards.get(claim.number);
    parts.state.replaceChildren(badge(claim.state));
    parts.score.textContent = counted(claim.score, 'point');
    parts.rewards.replaceChildren(...claim.rewards.map((reward) => make('li', '', badge(reward.state), ' ' + reward.text)));
  }
  byId('claims-count').textContent = claims.length > 0 ? claims.length : '';
}

function makePhoto(response) {
  if (!response.photo) {
    return null;
  }
  const address = `/sandbox/photos/${encodeURIComponent(response.photo)}`;
  const image = make('img');
  image.src = address;
  image.alt = `Photo for “${response.question}”`;
  image.loading = 'lazy';
  const link = make('a', 'photo', image);
  link.href = address;
  link.target = '_blank';
  link.rel = 'noopener';
  return link;
}

export function addResponses(responses) {
  for (const response of responses) {
    const score = response.score === 0 ? '' : `+${response.score}`;
    claimCards.get(response.claim)?.answers.append(
      make('li', '',
        make('span', 'question', response.question),
        make('span', 'answer', response.answer || (response.photo ? 'a photo' : 'no answer')),
        make('span', 'points', score),
        makePhoto(response)));
  }
}

const isFailure = (request) => request.status === 0 || request.status >= 400 || request.fault !== '';

function sizeText(bytes) {
  return bytes < 1000 ? `${bytes} B` : bytes < 1e6 ? `${(bytes / 1000).toFixed(1)} kB` : `${(bytes / 1e6).toFixed(1)} MB`;
}

async function fillDetails(request, place) {
  try {
    const details = await ask(`/sandbox/requests/${request.number}`);
    const rest = details.bodyBytes - new TextEncoder().encode(details.body).length;
    place.textContent = [`${request.method} ${request.target}`, ...details.headers, '', details.body].join('\n') + (rest > 0 ? `\n… ${sizeText(rest)} more` : '');
  } catch (problem) {
    place.textContent = problem.message;
  }
}

function makeRow(request) {
  const status = request.status === 0 ? 'none' : String(request.status);
  const row = make('li', isFailure(request) ? 'failure' : '');
  const content = make('pre', '', '…');
  const details = make('details', '',
    make('summary', '',
      make('span', 'number', String(request.number)),
      make('span', `status s${status[0]}`, status),
      make('span', 'target', make('b', '', request.method || '?'), ' ', request.target || 'an unreadable request'),
      make('span', 'fact', [request.service, sizeText(request.bytes), `${request.milliseconds} ms`].join(' · ')),
      request.fault ? make('span', 'badge fault', request.fault) : null),
    content);
  details.addEventListener('toggle', () => details.open && fillDetails(request, content), { once: true });
  row.append(details);
  return row;
}

/// The newest request on top.
export function addRequests(requests) {
  const log = byId('log');
  log.prepend(...requests.map(makeRow).reverse());
  while (log.children.length > mostRows) {
    log.lastElementChild.remove();
  }
  byId('log-empty').hidden = log.children.length > 0;
  if (requests.length > 0) {
    byId('log-count').textContent = requests.at(-1).number;
  }
}

/// Everything is shown anew: another run of the service has begun.
export function clearLists() {
  claimCards.clear();
  byId('log').replaceChildren();
  byId('claims').replaceChildren(make('p', 'empty', 'Nobody has claimed a task yet.'));
}

byId('log-failures').addEventListener('change', (event) => {
  byId('log').classList.toggle('only-failures', event.target.checked);
});
