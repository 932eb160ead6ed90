// Says how the page stands to the program that holds the phone.

import { element } from "./element.js";

const states = {
  connecting: ["Connecting …", ""],
  open: ["Connected", ""],
  lost: [
    "The program has stopped.",
    "The phone is shown as it was; it continues when the program runs again.",
  ],
  refused: [
    "The key is missing or wrong.",
    "Open the address that the program prints, or “Copy address” in a tab that works.",
  ],
};

export class Connection {
  #root;

  constructor(root) {
    this.#root = root;
    this.show("connecting");
  }

  /** Shows a state; a reason that the program gave says more than its absence. */
  show(state, reason = "") {
    if (this.#root.dataset.state === state) return;
    const [name, about] = reason ? ["Not connected.", reason] : states[state];
    this.#root.dataset.state = state;
    this.#root.replaceChildren(element("strong", {}, name), ` ${about}`);
  }
}
