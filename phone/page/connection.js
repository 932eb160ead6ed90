// Says how the page stands to the program that holds the phone.

import { element } from "./element.js";

const states = {
  connecting: ["Connecting …", ""],
  open: ["Connected", ""],
  lost: ["The program is gone.", "The phone is shown as it was; it goes on when the program is back."],
  refused: ["The key is missing or wrong.", "Open the address that the program prints."],
};

export class Connection {
  #root;

  constructor(root) {
    this.#root = root;
    this.show("connecting");
  }

  show(state) {
    if (this.#root.dataset.state === state) return;
    const [name, about] = states[state];
    this.#root.dataset.state = state;
    this.#root.replaceChildren(element("strong", {}, name), ` ${about}`);
  }
}
