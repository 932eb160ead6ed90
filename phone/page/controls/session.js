// The session as a whole: begun again, opened from a file, and kept as one.

import { button } from "../views/element.js";
import { openButton, save, takeDropped } from "./files.js";
import { pageOf } from "../transport/saved_page.js";

export function sessionControls(root, transport, actions, history) {
  const open = (text) => actions.fresh(text);
  root.append(
    button("Fresh phone", () => actions.fresh(), { id: "fresh" }),
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
  takeDropped(document.body, open);
}
