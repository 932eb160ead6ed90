// Runs in the page's modules: folds lines and tells what came of it. `after` is held to change nothing that was
// there before, since all states are frozen to their depth.

const [fold, json, request, words, past, { Sequence }] = await Promise.all(
  ["fold", "json", "request", "words", "history", "sequence"].map((name) => import(`/state/${name}.js`)),
);

function frozen(value) {
  if (typeof value === "object" && value !== null && !Object.isFrozen(value)) {
    Object.freeze(value);
    Object.values(value).forEach(frozen);
  }
  return value;
}

const folded = (lines) => {
  const states = [frozen(fold.start)];
  for (const line of lines) states.push(frozen(fold.after(states.at(-1), frozen(line))));
  return states;
};

const textsIn = (answer) => linesIn(answer).map(json.written);

const linesIn = (answer) => json.parse(answer).lines.map(({ line }) => line);

/** The states of a phone after so many of the lines that are kept, for each of `moments`, as JSON. */
export function states(answer, kept, moments) {
  const lines = linesIn(answer);
  const all = folded(kept.map((index) => lines[index]));
  return moments.map((count) => json.written(all[count]));
}

/** Which of these texts are others when they have been read and written. */
export const changed = (texts) =>
  texts.filter(
    (text) => json.written(json.parse(text)) !== text || JSON.stringify(json.parse(text)) !== text,
  );

/** What is in words is in words: lines that are told as they stand, or with something that is no text. */
export const wordless = (answers) =>
  answers
    .flatMap(linesIn)
    .filter((line) => {
      const { from, to, text } = words.inWords(line);
      const isSaid = words.actors.includes(from) && (to === "" || words.actors.includes(to)) && text !== "";
      return !isSaid || text === json.written(line) || /undefined|NaN|\[object|[0-9a-f]{25}/.test(text);
    })
    .map((line) => json.written(line));

/** Request bodies whose fields do not make the body again. */
export const torn = (bodies) =>
  bodies.filter(
    (body) =>
      request
        .fields(body)
        .map(([name, value]) => `&${name}=${value}`)
        .join("") !== body,
  );

export const { fields, ownAnswer } = request;
export const { textsOf } = fold;
export const { inWordsTogether } = words;
export const written = (text) => json.written(json.parse(text));

/** Moments at which a history of all these lines shows another phone than folding them from the start does. */
export function misremembered(answers, moments, batch) {
  const texts = answers.flatMap(textsIn);
  const history = new past.History();
  const all = folded(answers.flatMap(linesIn));
  history.append(texts.toReversed());
  history.clear();
  for (let at = 0; at < texts.length; at += batch) history.append(texts.slice(at, at + batch));
  return moments
    .map((moment) => moment % all.length)
    .filter((moment) => {
      history.lookAt(moment);
      return json.written(history.state) !== json.written(all[moment]) || history.moment !== moment;
    });
}

/** How a history goes on: [moment, isNow] while nobody looks back, while somebody does, and after that. */
export function followed(text) {
  const history = new past.History();
  let changes = 0;
  history.addEventListener("change", () => (changes += 1));
  const seen = [];
  const see = () => seen.push([history.moment, history.isNow]);
  history.append([text, text]);
  see();
  history.lookAt(1);
  history.append([text]);
  see();
  history.lookAt(3);
  history.append([text]);
  see();
  history.lookAt(-1);
  see();
  history.clear();
  see();
  return [...seen, changes];
}

/** The length of what a phone is like after so many rounds of the lines. */
export const sizeAfter = (lines, rounds) =>
  json.written(
    Array(rounds)
      .fill(lines)
      .flat()
      .reduce((state, line) => fold.after(state, line), fold.start),
  ).length;

/** What a history shows while it knows that lines are missing, and then: [its lines' length, the last, isReading]. */
export function readEndFirst(texts, count) {
  const history = new past.History();
  const seen = [];
  const see = () =>
    seen.push([history.lines.length, json.written(history.lines.at(texts.length - 1)), history.isReading]);
  history.clear(texts.length);
  history.showEnd(texts.slice(-count));
  see();
  history.append(texts.slice(0, -1));
  see();
  history.append(texts.slice(-1));
  see();
  return seen;
}

const numbered = {
  listed: (number) => ({ screen: "listed", notification: number, userInfo: {} }),
  alerts: (number) => ({ event: "alertShown", alert: number, title: "t", message: "m", buttons: [] }),
  requests: () => ({ event: "request", task: "t", url: "u", body: "b" }),
  answers: () => ({ do: "server", answers: [{ status: 200, body: "" }] }),
};

function parts(value, found = new Set()) {
  if (typeof value !== "object" || value === null || found.has(value)) return found;
  found.add(value);
  Object.values(value).forEach((part) => parts(part, found));
  return found;
}

/** How many objects one more line makes once there have been so many like it. */
export function madeByOneMore(kind, count) {
  let state = fold.start;
  for (let number = 1; number <= count; number += 1) state = fold.after(state, numbered[kind](number));
  const before = parts(state);
  return [...parts(fold.after(state, numbered[kind](count + 1)))].filter((part) => !before.has(part)).length;
}

/** What a sequence holds after each of the operations [name, number], and what it held when all are done. */
export function sequences(operations) {
  const all = [new Sequence()];
  for (const [name, number] of operations) all.push(all.at(-1)[name](number, number));
  return all.map((one) => [[...one], one.length, one.at(0) ?? null, one.at(-1) ?? null, one.slice(-3, -1)]);
}
