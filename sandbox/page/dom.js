/// An element with texts and elements in it. Texts are never read as markup.
export function make(name, className, ...content) {
  const element = document.createElement(name);
  if (className) {
    element.className = className;
  }
  element.append(...content.filter((item) => item !== null && item !== ''));
  return element;
}

export const byId = (id) => document.getElementById(id);

/// What an address of this service answers; throws an error with the service's own sentence.
export async function ask(path, method = 'GET', body = undefined) {
  const answer = await fetch(path, {
    method,
    headers: body === undefined ? {} : { 'Content-Type': 'application/json' },
    body: body === undefined ? undefined : JSON.stringify(body),
  });
  const content = await answer.json();
  if (!answer.ok) {
    throw new Error(content.error_description);
  }
  return content;
}

export const counted = (count, one, many = one + 's') => `${count} ${count === 1 ? one : many}`;
