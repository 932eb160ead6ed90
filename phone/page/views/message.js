// Tells why something could not be done.

import { button, element } from "./element.js";

export class Message {
  #root;

  constructor(root) {
    this.#root = root;
  }

  show(text) {
    this.#root.replaceChildren(
      element("p", {}, text),
      button("×", () => this.clear(), { className: "plain-button", "aria-label": "Close this message" }),
    );
  }

  clear() {
    this.#root.replaceChildren();
  }
}
