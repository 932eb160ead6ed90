// The session as a whole: begun again, opened from a file, and kept as one.

import { button } from "../views/element.js";
import { openButton, save, takeDropped } from "./files.js";
import { asks } from "./question.js";
import { pageOf } from "../transport/saved_page.js";

const loss = [
  "Begin anew with a fresh phone?",
  "What happened on this one is lost unless it is saved first, as a scenario or as a page.",
  "Begin anew",
];

/** Puts the address where it can be pasted, or else shows it. */
async function copied(address, message) {
  try {
    await navigator.clipboard.writeText(address);
    message.tell("The address is copied, with the key that lets another tab in.");
  } catch {
    message.tell(`The address, with the key that lets another tab in: ${address}`);
  }
}

export function sessionControls(root, transport, actions, history, message) {
  const begin = async (text) => {
    const isEmpty = !history.isReading && history.length === 0;
    if (isEmpty || (await asks(...loss))) actions.fresh(text);
  };
  const open = (text) => begin(text);
  root.append(
    button("Fresh phone", () => begin(), { id: "fresh" }),
    ...openButton("Open scenario …", ".jsonl,.scenario,.txt,application/jsonl", open, {
      id: "open-scenario",
    }),
    button(
      "Save as scenario",
      () =>
        actions.attempt(async () => save(await transport.scenario(), "phone.jsonl", "application/x-ndjson")),
      { id: "save-scenario" },
    ),
    button(
      "Save as page",
      () =>
        actions.attempt(async () => {
          const { version } = await transport.status();
          await history.complete();
          save(await pageOf(history.lines.written(), version), "phone.html", "text/html");
        }),
      { id: "save-page" },
    ),
  );
  root.append(
    button("Copy address", () => copied(transport.address, message), {
      id: "copy-address",
      title: "With the key, which the address bar does not show: for another tab or browser",
    }),
  );
  takeDropped(document.body, open);
}
