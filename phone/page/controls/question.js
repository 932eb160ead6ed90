// Asks before something is lost.

import { button, element } from "../views/element.js";

/** Whether a person goes on: `answer` says with what. */
export function asks(title, text, answer) {
  return new Promise((done) => {
    const dialog = element(
      "dialog",
      { className: "question", "aria-labelledby": "question", close: closed },
      element("h2", { id: "question" }, title),
      element("p", {}, text),
      element(
        "div",
        { className: "buttons" },
        button("Cancel", () => dialog.close(), { autofocus: true }),
        button(answer, () => dialog.close("yes"), { className: "primary" }),
      ),
    );
    function closed() {
      dialog.remove();
      done(dialog.returnValue === "yes");
    }
    document.body.append(dialog);
    dialog.showModal();
  });
}
