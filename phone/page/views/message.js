// Tells why something could not be done, or that it was.

import { button, element } from "./element.js";

export class Message {
  #root;

  constructor(root) {
    this.#root = root;
  }

  /** Why something could not be done. */
  show(text) {
    this.#root.className = "problem";
    this.#fill(text);
  }

  /** Something else to know. */
  tell(text) {
    this.#root.className = "";
    this.#fill(text);
  }

  #fill(text) {
    this.#root.replaceChildren(
      element("p", {}, text),
      button("×", () => this.clear(), { className: "plain-button", "aria-label": "Close this message" }),
    );
  }

  clear() {
    this.#root.replaceChildren();
  }
}
