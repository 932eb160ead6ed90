// A row of the timeline, opened: what changed, the request and its answer, the lines themselves.

import { element, pairs } from "./element.js";
import { findingsList } from "./findings.js";
import { shown, written } from "../state/json.js";
import { answerInWords, fields, ownAnswer } from "../state/request.js";

/** What differs between two settings: [key, value in words]. */
function changes(before, after) {
  const keys = [...new Set([...Object.keys(before), ...Object.keys(after)])].sort();
  return keys
    .filter((key) => before[key] !== after[key] && shown(before[key]) !== shown(after[key]))
    .map((key) => {
      const was = Object.hasOwn(before, key) ? `${shown(before[key])} → ` : "";
      return [key, was + (Object.hasOwn(after, key) ? shown(after[key]) : "removed")];
    });
}

function received({ body, answer }) {
  return [
    element("h3", {}, "The request, decrypted"),
    pairs(fields(body)),
    element("h3", {}, "Its answer"),
    element("p", {}, answer ? answerInWords(answer) : `${ownAnswer(body)} (the development server’s own)`),
  ];
}

/** `before` and `after` are the phone before and after the lines. */
export function details(lines, before, after) {
  const changed = changes(before.settings, after.settings);
  const [line] = lines;
  return [
    line.event === "received" && received(after.server.last),
    line.event === "request" && [
      element("h3", {}, "The request"),
      pairs([["to", line.url], ...fields(line.body)]),
    ],
    line.findings && [element("h3", {}, "What is wrong with its payload"), findingsList(line.findings)],
    changed.length > 0 && [element("h3", {}, "Changed in the settings"), pairs(changed)],
    element("h3", {}, lines.length > 1 ? "The lines" : "The line"),
    element("pre", { tabIndex: 0 }, lines.map(written).join("\n")),
  ];
}
