// Runs in the page's modules: folds lines and tells what came of it. `after` is held to change nothing that was
// there before, since all states are frozen to their depth.

const [fold, json, request, words, past] = await Promise.all(
  ["fold", "json", "request", "words", "history"].map((name) => import(`/state/${name}.js`)),
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
  const lines = answers.flatMap(linesIn);
  const history = new past.History();
  const all = folded(lines);
  history.append(lines.toReversed());
  history.clear();
  for (let at = 0; at < lines.length; at += batch) history.append(lines.slice(at, at + batch));
  return moments
    .map((moment) => moment % all.length)
    .filter((moment) => {
      history.lookAt(moment);
      return json.written(history.state) !== json.written(all[moment]) || history.moment !== moment;
    });
}

/** How a history goes on: [moment, isNow] while nobody looks back, while somebody does, and after that. */
export function followed(line) {
  const history = new past.History();
  let changes = 0;
  history.addEventListener("change", () => (changes += 1));
  const seen = [];
  const see = () => seen.push([history.moment, history.isNow]);
  history.append([line, line]);
  see();
  history.lookAt(1);
  history.append([line]);
  see();
  history.lookAt(3);
  history.append([line]);
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
