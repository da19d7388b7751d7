import { ask, byId, counted, make } from './dom.js';
import { showFaults } from './faults.js';
import { addRequests, addResponses, clearLists, showClaims, showSpot } from './lists.js';
import { draw, selectByName, update } from './map.js';

const pause = 1000; // milliseconds between two questions

let run = null;
let lastRequest = 0;
let lastResponse = 0;
let tasks = new Map();
let claims = [];

async function begin(newRun) {
  const map = await ask('/sandbox/map');
  tasks = new Map(map.tasks.map((task) => [task.number, task]));
  const names = [...map.tasks.map((task) => task.key), ...new Set(map.places.map((place) => place.name))];
  byId('find-list').replaceChildren(...names.map((name) => {
    const option = make('option');
    option.value = name;
    return option;
  }));
  clearLists();
  [lastRequest, lastResponse, claims] = [0, 0, []];
  draw(map, (spot) => showSpot(spot, claims));
  run = newRun;
}

async function look() {
  const path = () => `/sandbox/activity?requests=${lastRequest}&responses=${lastResponse}`;
  let activity = await ask(path());
  if (activity.run !== run) {
    await begin(activity.run);
    activity = await ask(path());
  }
  claims = activity.claims;
  showClaims(claims, tasks);
  addResponses(activity.responses);
  addRequests(activity.requests);
  showFaults(activity.faults);
  lastRequest = activity.requests.at(-1)?.number ?? lastRequest;
  lastResponse = activity.responses.at(-1)?.number ?? lastResponse;
  const states = new Map();
  for (const claim of claims) {
    states.set(claim.task, claim.state === 'running' ? 'running' : states.get(claim.task) ?? claim.state);
  }
  update(activity.users, states);
}

function tell(text, isLive) {
  const status = byId('status');
  if (status.textContent !== text) {
    status.textContent = text;
  }
  status.classList.toggle('live', isLive);
}

async function watch() {
  try {
    await look();
    tell(`Live: ${counted(lastRequest, 'request')}, ${counted(claims.length, 'claim')}`, true);
  } catch {
    tell('The sandbox does not answer; trying again.', false);
  }
  setTimeout(watch, pause);
}

byId('find').addEventListener('change', (event) => {
  event.target.setCustomValidity(selectByName(event.target.value) || event.target.value === '' ? '' : 'There is none.');
  event.target.reportValidity();
});

watch();
