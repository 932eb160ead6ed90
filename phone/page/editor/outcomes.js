// What a payload will do, in the linter's words: one card for each situation that makes a difference.

import { element } from "../views/element.js";
import { shown } from "../state/json.js";

const textIn = (value) => (value === null ? "" : shown(value));

const littleAlert = ({ title, message }) =>
  element(
    "span",
    { className: "little-alert" },
    element("strong", {}, textIn(title)),
    " ",
    textIn(message),
  );

/** How the sentences are drawn that are about something. */
const drawings = {
  alert: (text, { alert }) => [element("p", {}, text), element("p", {}, littleAlert(alert))],
  report: (text, { report }) => [
    element(
      "details",
      {},
      element("summary", {}, text),
      element("pre", { tabIndex: 0 }, shown(report)),
    ),
  ],
  end: (text) => [element("p", {}, element("strong", { className: "bad" }, text))],
};

const drawn = ({ about, text }, outcome) =>
  drawings[about]?.(text, outcome) ?? [element("p", {}, text)];

/** Whether it is what would happen to the phone as it is. */
const isNow = (situations, state) =>
  state.running &&
  situations.some(
    (situation) =>
      situation.arrives !== "tap" &&
      situation.applicationState === state.application.state &&
      situation.foregroundSwitch === state.host.foreground,
  );

function card(outcome, isCurrent) {
  return element(
    "li",
    { className: isCurrent ? "outcome now" : "outcome" },
    element(
      "h3",
      {},
      outcome.title,
      isCurrent && element("span", { className: "tag" }, "as it is now"),
    ),
    outcome.sentences.flatMap((sentence) => drawn(sentence, outcome)),
  );
}

/** A card for each outcome of the linter's report, those first that would come of the phone as it is. */
export function outcomeCards({ outcomes, footnote }, state) {
  const isCurrent = ({ situations }) => isNow(situations, state);
  const others = outcomes.filter((outcome) => !isCurrent(outcome));
  return [
    ...outcomes.filter(isCurrent).map((outcome) => card(outcome, true)),
    ...others.map((outcome) => card(outcome, false)),
    ...(footnote === null ? [] : [element("li", { className: "none" }, footnote)]),
  ];
}
