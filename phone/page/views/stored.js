// Beside the timeline: what is stored on the phone, and what the push server has been told and will answer.

import { element, pairs, refill } from "./element.js";
import { shown } from "../state/json.js";
import { answerInWords, fields, ownAnswer } from "../state/request.js";
import { abridged } from "../state/words.js";

const mostQueued = 20; // answers that are shown

const none = (text) => element("p", { className: "none" }, text);

function settingsTable(settings) {
  const keys = Object.keys(settings).sort();
  if (keys.length === 0) return none("Nothing is stored yet.");
  return element(
    "table",
    {},
    element(
      "thead",
      {},
      element(
        "tr",
        {},
        ["Key", "Value"].map((name) => element("th", { scope: "col" }, name)),
      ),
    ),
    element(
      "tbody",
      {},
      keys.map((key) =>
        element(
          "tr",
          {},
          element("th", { scope: "row" }, key),
          element("td", {}, abridged(shown(settings[key]))),
        ),
      ),
    ),
  );
}

/** Queued answers of the push server. */
export const queue = (answers) => [
  element(
    "ol",
    {},
    answers.slice(0, mostQueued).map((answer) => element("li", {}, answerInWords(answer))),
  ),
  answers.length > mostQueued && none(`and ${answers.length - mostQueued} more`),
];

function serverFacts({ answers, waiting, last }) {
  const sent = last ?? waiting.at(-1);
  const answered = last && (last.answer ? answerInWords(last.answer) : abridged(ownAnswer(last.body)));
  return [
    sent
      ? pairs([
          ...fields(sent.body).map(([name, value]) => [name, abridged(value)]),
          ...(last && !last.isElsewhere ? [["answered", answered]] : []),
        ])
      : none("No request has come yet."),
    waiting.length > 0 ? none(`Sent, with no answer seen yet: ${waiting.length}`) : null,
    answers.length > 0 ? [element("h3", {}, "It will answer next"), queue(answers)] : null,
  ].flat();
}

export class Stored {
  constructor(root) {
    this.settings = element("div", { className: "settings" });
    this.server = element("div", { className: "server" });
    root.append(
      element("h2", {}, "Stored on the phone"),
      this.settings,
      element("h2", {}, "Last at the push server"),
      this.server,
    );
  }

  draw(state) {
    refill(this.settings, [state.settings], () => settingsTable(state.settings));
    refill(this.server, [state.server], () => serverFacts(state.server));
  }
}
